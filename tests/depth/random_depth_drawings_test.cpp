// SPDX-License-Identifier: MIT
//
// Random depth drawings: the library against the literal model, call by call, every pixel, every
// depth and every call to the window, and one checksum over many drawings that every build must
// reach.
//
// QUORIX_DEPTH_DRAWING=<number> runs that drawing alone; QUORIX_DEPTH_DRAWINGS=<count> compares
// that many.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <sstream>

#include "tests/depth/depth_targets.h"

namespace quorix::drawings {

namespace {

constexpr uint64_t compared_drawings = 12000;
constexpr uint64_t summed_drawings = 200000;
constexpr uint64_t literally_summed_drawings = 10000;
constexpr int most_failures = 3;

uint64_t number_from_environment(const char *name, uint64_t otherwise) {
  const char *text = std::getenv(name);
  if (text == nullptr || *text == '\0') return otherwise;
  return std::strtoull(text, nullptr, 10);
}

Run run_on(const DepthTarget &target) {
  Run run;
  run.target = target.raster;
  return run;
}

// --- Call by call ---

std::string list_of(const std::vector<int32_t> &values) {
  std::ostringstream out;
  for (const int32_t value : values)
    out << " " << value;
  return out.str();
}

std::string first_differences(const Part &expected, const Part &actual) {
  std::ostringstream out;
  const auto *wanted = static_cast<const uint8_t *>(expected.data);
  const auto *found = static_cast<const uint8_t *>(actual.data);
  size_t count = 0;
  for (size_t i = 0; i < expected.size; ++i) {
    if (wanted[i] == found[i]) continue;
    ++count;
    if (count <= 8) out << " [" << i << "] " << +found[i] << " for " << +wanted[i];
  }
  return std::to_string(count) + " bytes of the " + expected.name + " (" +
         std::to_string(expected.width) + " wide) differ:" + out.str();
}

std::string part_difference(const Part &expected, const Part &actual) {
  if (std::strcmp(expected.name, actual.name) != 0) {
    return std::string("there is ") + actual.name + " instead of " + expected.name;
  }
  if (same(expected, actual)) return "";
  if (expected.size == actual.size) return first_differences(expected, actual);
  return std::string(expected.name) + " has " + std::to_string(actual.size) + " bytes instead of " +
         std::to_string(expected.size);
}

std::string parts_difference(const DepthTarget &expected, const DepthTarget &actual) {
  const std::vector<Part> wanted = expected.parts();
  const std::vector<Part> found = actual.parts();
  for (size_t i = 0; i < wanted.size() && i < found.size(); ++i) {
    const std::string difference = part_difference(wanted[i], found[i]);
    if (!difference.empty()) return difference;
  }
  if (wanted.size() == found.size()) return "";
  const bool more = found.size() > wanted.size();
  return std::string(more ? "there is also " : "there is no ") +
         (more ? found[wanted.size()] : wanted[found.size()]).name;
}

std::string outcome_difference(const Outcome &expected, const Outcome &actual) {
  std::ostringstream out;
  if (expected.result != actual.result) {
    out << "returned " << actual.result << " instead of " << expected.result;
  } else if (expected.numbers != actual.numbers) {
    out << "gave" << list_of(actual.numbers) << " instead of" << list_of(expected.numbers);
  } else if (expected.bytes != actual.bytes) {
    out << "gave other bytes";
  }
  return out.str();
}

std::string calls_difference(const DepthTarget &expected, const DepthTarget &actual) {
  const std::vector<std::string> &wanted = expected.window()->calls;
  const std::vector<std::string> &found = actual.window()->calls;
  if (wanted == found) return "";
  for (size_t i = 0; i < wanted.size() || i < found.size(); ++i) {
    const std::string a = i < found.size() ? found[i] : "nothing";
    const std::string e = i < wanted.size() ? wanted[i] : "nothing";
    if (a == e) continue;
    return "called " + a + " instead of " + e + " after " + (i > 0 ? wanted[i - 1] : "nothing");
  }
  return "";
}

std::string state_difference(const DepthTarget &expected, const DepthTarget &actual) {
  if (expected.state() == actual.state()) return "";
  return "the record's numbers are" + list_of(actual.state()) + " instead of" +
         list_of(expected.state());
}

std::string difference_after(const Outcome &wanted, const Outcome &found,
                             const DepthTarget &expected, const DepthTarget &actual) {
  std::string difference = outcome_difference(wanted, found);
  if (difference.empty()) difference = calls_difference(expected, actual);
  if (difference.empty()) difference = state_difference(expected, actual);
  if (difference.empty()) difference = parts_difference(expected, actual);
  return difference;
}

// What the two targets do differently in this drawing, with its calls; empty if nothing.
std::string compare_drawing(uint64_t number) {
  const DepthDrawing drawing = make_depth_drawing(number);
  const DepthTarget &expected = literal_depth_target();
  const DepthTarget &actual = library_depth_target();
  expected.start(drawing.window);
  actual.start(drawing.window);
  Run expected_run = run_on(expected);
  Run actual_run = run_on(actual);
  for (size_t i = 0; i < drawing.calls.size(); ++i) {
    const DepthCall &call = drawing.calls[i];
    const Outcome wanted = run_depth_call(expected, expected_run, drawing.window, call);
    const Outcome found = run_depth_call(actual, actual_run, drawing.window, call);
    const std::string difference = difference_after(wanted, found, expected, actual);
    if (difference.empty()) continue;
    std::ostringstream out;
    out << "QUORIX_DEPTH_DRAWING=" << number << ": call " << i << ", " << difference << "\n  "
        << describe(drawing.window) << "\n";
    for (size_t k = 0; k <= i; ++k)
      out << "  " << describe(drawing.calls[k]) << "\n";
    return out.str();
  }
  return "";
}

// --- Checksums ---

uint64_t mixed(uint64_t sum, uint64_t word) {
  sum = (sum ^ word) * 0x9FB21C651E98DF25U;
  return sum ^ (sum >> 32);
}

uint64_t mixed_bytes(uint64_t sum, const uint8_t *bytes, size_t count) {
  size_t i = 0;
  for (; i + 8 <= count; i += 8) {
    uint64_t word = 0;
    for (size_t k = 0; k < 8; ++k)
      word |= static_cast<uint64_t>(bytes[i + k]) << (8 * k);
    sum = mixed(sum, word);
  }
  for (; i < count; ++i)
    sum = mixed(sum, bytes[i]);
  return mixed(sum, count);
}

uint64_t mixed_parts(uint64_t sum, const DepthTarget &target) {
  for (const Part &part : target.parts()) {
    if (part.floats) {
      for (size_t i = 0; i < part.size / sizeof(float); ++i)
        sum = mixed(sum, depth_bits(part, i));
    } else {
      sum = mixed_bytes(sum, static_cast<const uint8_t *>(part.data), part.size);
    }
  }
  return sum;
}

bool drops_pixels(const DepthCall &call) {
  if (call.operation == DepthOperation::zbuf) return call.op == 1;
  if (call.operation != DepthOperation::raster) return false;
  return call.raster.operation == Operation::vini || call.raster.operation == Operation::vfin ||
         call.raster.operation == Operation::wfree;
}

uint64_t mixed_drawing(uint64_t sum, const DepthTarget &target, uint64_t number) {
  const DepthDrawing drawing = make_depth_drawing(number);
  target.start(drawing.window);
  Run run = run_on(target);
  for (const DepthCall &call : drawing.calls) {
    if (drops_pixels(call)) sum = mixed_parts(sum, target);
    const Outcome outcome = run_depth_call(target, run, drawing.window, call);
    sum = mixed(sum, static_cast<uint32_t>(outcome.result));
    for (const int32_t number_out : outcome.numbers)
      sum = mixed(sum, static_cast<uint32_t>(number_out));
  }
  return mixed_parts(sum, target);
}

uint64_t checksum(const DepthTarget &target, uint64_t count) {
  uint64_t sum = 0;
  for (uint64_t number = 0; number < count; ++number)
    sum = mixed_drawing(sum, target, number);
  target.finish();
  return sum;
}

}  // namespace

TEST(RandomDepthDrawings, AreTheSameByteForByteAsThoseOfTheLiteralModel) {
  uint64_t first = 0;
  uint64_t last = number_from_environment("QUORIX_DEPTH_DRAWINGS", compared_drawings) - 1;
  if (std::getenv("QUORIX_DEPTH_DRAWING") != nullptr) {
    first = last = number_from_environment("QUORIX_DEPTH_DRAWING", 0);
  }
  int failures = 0;
  for (uint64_t number = first; number <= last && failures < most_failures; ++number) {
    const std::string difference = compare_drawing(number);
    if (difference.empty()) continue;
    ADD_FAILURE() << difference;
    ++failures;
  }
  literal_depth_target().finish();
  library_depth_target().finish();
}

TEST(RandomDepthDrawings, HaveTheLiteralModelsChecksum) {
  EXPECT_EQ(checksum(literal_depth_target(), literally_summed_drawings),
            checksum(library_depth_target(), literally_summed_drawings));
}

TEST(RandomDepthDrawings, HaveOneChecksumInEveryBuild) {
  // The literal model gives this too. After a change of the drawings: make sure that all of them
  // are the same (QUORIX_DEPTH_DRAWINGS=200000), then take the new sum over.
  constexpr uint64_t expected = 0x1EFE0D6FA55258D2U;
  EXPECT_EQ(checksum(library_depth_target(), summed_drawings), expected);
}

}  // namespace quorix::drawings

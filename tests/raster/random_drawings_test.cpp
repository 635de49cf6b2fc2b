// SPDX-License-Identifier: MIT
// Random drawings: the library against the literal raster, call by call and byte by byte, and one
// checksum over many drawings that every build must reach.
//
// QUORIX_DRAWING=<number> runs that drawing alone; QUORIX_DRAWINGS=<count> compares that many.

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <sstream>

#include "core/output_context.h"
#include "quorix/quorix.h"
#include "tests/raster/drawing_targets.h"

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

// --- Call by call ---

std::string list_of(const std::vector<int32_t> &values) {
  std::ostringstream out;
  for (const int32_t value : values)
    out << " " << value;
  return out.str();
}

std::string outcome_difference(const Outcome &expected, const Outcome &actual) {
  std::ostringstream out;
  if (expected.result != actual.result) {
    out << "returned " << actual.result << " instead of " << expected.result;
  } else if (expected.numbers != actual.numbers) {
    out << "gave" << list_of(actual.numbers) << " instead of" << list_of(expected.numbers);
  } else if (expected.bytes.size() != actual.bytes.size()) {
    out << "gave " << actual.bytes.size() << " bytes instead of " << expected.bytes.size();
  } else {
    for (size_t i = 0; i < expected.bytes.size(); i++) {
      if (expected.bytes[i] == actual.bytes[i]) continue;
      out << "gave byte " << +actual.bytes[i] << " instead of " << +expected.bytes[i] << " at "
          << i;
      break;
    }
  }
  return out.str();
}

std::string page_difference(const Run &expected, const Run &actual) {
  const size_t size = page_size(expected.page);
  if (size != page_size(actual.page)) return "the pages differ in size";
  if (size == 0) return "";
  const uint8_t *wanted = page_bytes(expected);
  const uint8_t *found = page_bytes(actual);
  if (wanted == nullptr || found == nullptr) return "a page has no bytes";
  if (std::memcmp(wanted, found, size) == 0) return "";
  std::ostringstream out;
  size_t count = 0;
  const size_t pixel = static_cast<size_t>(expected.page.bytes_per_pixel);
  const size_t stride = static_cast<size_t>(expected.page.width) * pixel;
  for (size_t i = 0; i < size; i++) {
    if (wanted[i] == found[i]) continue;
    count++;
    if (count <= 8) {
      out << " (" << i % stride / pixel << ", " << i / stride << ")." << i % pixel << ": "
          << +found[i] << " instead of " << +wanted[i] << ";";
    }
  }
  return std::to_string(count) + " bytes of the page differ:" + out.str();
}

template <class T>
void note(std::ostringstream &out, const char *name, T expected, T actual) {
  if (expected != actual)
    out << " " << name << " " << +actual << " instead of " << +expected << ";";
}

std::string pen_difference(const literal::LiteralRaster &e, const OutputContext &a) {
  std::ostringstream out;
  note(out, "line_width", e.line_width, a.pen.line_width);
  note(out, "line_cap", e.line_cap, a.pen.line_cap);
  note(out, "line_join", e.line_join, a.pen.line_join);
  note(out, "line_smooth_on", e.line_smooth_on, a.pen.line_smooth_on);
  note(out, "poly_count", e.poly_count, a.accumulator.poly_count);
  note(out, "poly_pen_up", e.poly_pen_up, a.accumulator.poly_pen_up);
  for (int32_t i = 0; i < e.poly_count && i < a.accumulator.poly_count; i++) {
    note(out, "poly_x", e.poly_x[i], a.accumulator.poly_x[i]);
    note(out, "poly_y", e.poly_y[i], a.accumulator.poly_y[i]);
  }
  return out.str();
}

std::string colour_difference(const literal::LiteralRaster &e, const OutputContext &a) {
  std::ostringstream out;
  note(out, "colour_arg", e.colour_arg, a.colours.colour_arg);
  note(out, "colour_index", e.colour_index, a.colours.colour_index);
  note(out, "colour_r", e.colour_r, a.colours.colour_r);
  note(out, "colour_g", e.colour_g, a.colours.colour_g);
  note(out, "colour_b", e.colour_b, a.colours.colour_b);
  note(out, "colour_alpha", e.colour_alpha, a.colours.colour_alpha);
  note(out, "transparent_colour", e.transparent_colour, a.colours.transparent_colour);
  note(out, "transparent_r", e.transparent_r, a.colours.transparent_r);
  note(out, "transparent_g", e.transparent_g, a.colours.transparent_g);
  note(out, "transparent_b", e.transparent_b, a.colours.transparent_b);
  note(out, "palette_kind", e.palette_kind, a.colours.palette_kind);
  if (std::memcmp(e.palette_r, a.colours.palette_r, 256) != 0) out << " palette_r;";
  if (std::memcmp(e.palette_g, a.colours.palette_g, 256) != 0) out << " palette_g;";
  if (std::memcmp(e.palette_b, a.colours.palette_b, 256) != 0) out << " palette_b;";
  return out.str();
}

std::string area_difference(const literal::LiteralRaster &e, const OutputContext &a) {
  std::ostringstream out;
  note(out, "width", e.width, a.page.width);
  note(out, "height", e.height, a.page.height);
  if (e.page_valid) note(out, "stride", e.stride, a.page.stride);
  note(out, "clip_x1", e.clip_x1, a.page.clip_x1);
  note(out, "clip_y1", e.clip_y1, a.page.clip_y1);
  note(out, "clip_x2", e.clip_x2, a.page.clip_x2);
  note(out, "clip_y2", e.clip_y2, a.page.clip_y2);
  note(out, "clip_on", e.clip_on, a.page.clip_on);
  note(out, "rgba_mode", e.rgba_mode, a.page.rgba_mode);
  note(out, "white_background", e.white_background, a.page.white_background);
  note(out, "blend_over_background", e.blend_over_background, a.depth.blend_over_background);
  note(out, "swap_black_white", e.swap_black_white, a.options.swap_black_white);
  note(out, "text_map_level", e.text_map_level, a.options.text_map_level);
  note(out, "depth_bias", e.depth_bias, a.depth.depth_bias);
  return out.str();
}

std::string record_difference(const literal::LiteralRaster &expected, const OutputContext *actual) {
  if (!expected.exists) return actual == nullptr ? "" : "there is a record";
  if (actual == nullptr) return "there is no record";
  return area_difference(expected, *actual) + colour_difference(expected, *actual) +
         pen_difference(expected, *actual);
}

// What the two targets do differently in this drawing, with its calls; empty if nothing.
std::string compare_drawing(uint64_t number) {
  const std::vector<Call> calls = make_drawing(number);
  Run expected = start_run(literal_target());
  Run actual = start_run(library_target());
  for (size_t i = 0; i < calls.size(); i++) {
    const Outcome expected_outcome = run_call(expected, calls[i]);
    const Outcome actual_outcome = run_call(actual, calls[i]);
    std::string difference = outcome_difference(expected_outcome, actual_outcome);
    if (difference.empty()) difference = page_difference(expected, actual);
    if (difference.empty()) difference = record_difference(literal_record(), output_context);
    if (difference.empty()) continue;
    std::ostringstream out;
    out << "QUORIX_DRAWING=" << number << ": call " << i << ", " << difference << "\n";
    for (size_t k = 0; k <= i; k++)
      out << "  " << describe(calls[k]) << "\n";
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
    for (size_t k = 0; k < 8; k++)
      word |= static_cast<uint64_t>(bytes[i + k]) << (8 * k);
    sum = mixed(sum, word);
  }
  for (; i < count; i++)
    sum = mixed(sum, bytes[i]);
  return mixed(sum, count);
}

uint64_t mixed_outcome(uint64_t sum, const Outcome &outcome) {
  sum = mixed(sum, static_cast<uint32_t>(outcome.result));
  for (const int32_t number : outcome.numbers)
    sum = mixed(sum, static_cast<uint32_t>(number));
  return mixed_bytes(sum, outcome.bytes.data(), outcome.bytes.size());
}

bool drops_the_page(Operation operation) {
  return operation == Operation::vini || operation == Operation::vfin ||
         operation == Operation::wfree;
}

uint64_t mixed_drawing(uint64_t sum, const DrawingTarget &target, uint64_t number) {
  Run run = start_run(target);
  for (const Call &call : make_drawing(number)) {
    if (drops_the_page(call.operation)) {
      sum = mixed_bytes(sum, page_bytes(run), page_size(run.page));
    }
    sum = mixed_outcome(sum, run_call(run, call));
  }
  return mixed_bytes(sum, page_bytes(run), page_size(run.page));
}

uint64_t checksum(const DrawingTarget &target, uint64_t count) {
  uint64_t sum = 0;
  for (uint64_t number = 0; number < count; number++)
    sum = mixed_drawing(sum, target, number);
  target.wfree();
  return sum;
}

}  // namespace

TEST(RandomDrawings, AreTheSameByteForByteAsThoseOfTheLiteralRaster) {
  uint64_t first = 0;
  const uint64_t count = number_from_environment("QUORIX_DRAWINGS", compared_drawings);
  uint64_t last = count > 0 ? count - 1 : 0;
  if (std::getenv("QUORIX_DRAWING") != nullptr) {
    first = last = number_from_environment("QUORIX_DRAWING", 0);
  }
  int failures = 0;
  for (uint64_t number = first; number <= last && failures < most_failures; number++) {
    const std::string difference = compare_drawing(number);
    if (difference.empty()) continue;
    ADD_FAILURE() << difference;
    failures++;
  }
  qqwfree();
}

TEST(RandomDrawings, HaveTheLiteralRastersChecksum) {
  EXPECT_EQ(checksum(literal_target(), literally_summed_drawings),
            checksum(library_target(), literally_summed_drawings));
}

TEST(RandomDrawings, HaveOneChecksumInEveryBuild) {
  // The literal raster gives this too. After a change of the drawings: make sure that all of them
  // are the same (QUORIX_DRAWINGS=200000), then take the new sum over.
  constexpr uint64_t expected = 0xE9A901088915477BU;
  EXPECT_EQ(checksum(library_target(), summed_drawings), expected);
}

}  // namespace quorix::drawings

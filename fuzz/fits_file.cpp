// SPDX-License-Identifier: MIT
//
// The input is a FITS file. It is opened, its keywords are asked for, units are selected and their
// data read, into blocks of exactly the size that the library is told. All answers must be those of
// the literal reader, as far as that one's plain arithmetic goes.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "fuzz/target.h"
#include "quorix/datafiles.h"
#include "tests/formats/literal_fits.h"
#include "tests/support/memory_files.h"

namespace {

using quorix::testing::LiteralFits;

constexpr size_t card_bytes = 80;
constexpr int32_t most_data = 65536;  // larger sizes are told, not read
constexpr int32_t far_unit = 1000000000;

void require(bool condition) {
  if (!condition) std::abort();
}

size_t longest_digit_run(const std::vector<uint8_t> &file) {
  size_t longest = 0;
  size_t run = 0;
  for (const uint8_t byte : file) {
    run = byte >= '0' && byte <= '9' ? run + 1 : 0;
    longest = run > longest ? run : longest;
  }
  return longest;
}

size_t count_axis_cards(const std::vector<uint8_t> &file) {
  size_t count = 0;
  for (size_t at = 0; at + card_bytes <= file.size(); at += card_bytes)
    count += std::memcmp(&file[at], "NAXIS", 5) == 0 ? 1 : 0;
  return count;
}

// What the literal reader can take without an overflow, and where atof reads what is told.
struct Comparable {
  bool integers, reals, sizes;
};

Comparable comparable_parts(const std::vector<uint8_t> &file) {
  const size_t digits = longest_digit_run(file);
  const bool plain = file.end() == std::find_if(file.begin(), file.end(), [](uint8_t byte) {
                       return byte != 0 && std::strchr("xXnNiI", byte) != nullptr;
                     });
  return {digits <= 9, plain, digits <= 4 && count_axis_cards(file) <= 5};
}

void ask_for_numbers(const LiteralFits &model, const Comparable &parts, const char *keyword) {
  for (const int32_t type : {1, 2, 3}) {
    int32_t integer = 0;
    int32_t expected_integer = 0;
    int32_t status = 1;
    double real = -7.0;
    double expected_real = -7.0;
    qqfits3(keyword, &integer, &real, &type, &status);
    if (type == 1 && !parts.integers) continue;
    require(status == model.number(keyword, type, &expected_integer, &expected_real));
    require(integer == expected_integer);
    if (parts.reals) require(std::memcmp(&real, &expected_real, sizeof real) == 0);
  }
}

void ask_for_text(const LiteralFits &model, const char *keyword) {
  for (const int32_t size : {81, 5, 2, 1}) {
    std::vector<char> buffer(static_cast<size_t>(size), 'x');
    std::string expected;
    int32_t status = 1;
    qqfits5(keyword, buffer.data(), &size, &status);
    require(status == model.text(keyword, size, &expected));
    if (status == 0 || status == -4) require(expected == buffer.data());
  }
}

void ask_for_data(const LiteralFits &model, bool comparable) {
  int32_t none = 0;
  int32_t bytes = 0;
  qqfits4(nullptr, &none, &bytes);
  require(bytes >= -1);
  if (bytes <= 0 || bytes > most_data) return;
  std::vector<uint8_t> buffer(static_cast<size_t>(bytes));
  std::vector<uint8_t> expected;
  int32_t result = 0;
  qqfits4(buffer.data(), &bytes, &result);
  require(result == bytes || result == -2);
  if (!comparable) return;
  require(result == model.data(bytes, &expected));
  require(result == -2 || buffer == expected);
}

// The first eight letters of every line, and some that no line need have.
void ask_for_keywords(const LiteralFits &model, const Comparable &parts,
                      const std::vector<uint8_t> &file) {
  for (size_t at = 0; at + card_bytes <= file.size(); at += card_bytes) {
    char keyword[9] = {};
    std::memcpy(keyword, &file[at], 8);
    ask_for_numbers(model, parts, keyword);
    ask_for_text(model, keyword);
  }
  for (const char *keyword : {"", "SIMPLE", "NAXIS", "OBJECTNAME"}) {
    ask_for_numbers(model, parts, keyword);
    ask_for_text(model, keyword);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::vector<uint8_t> file(data, data + size);
  quorix::testing::MemoryFiles files;
  files.put("input", file);
  const Comparable parts = comparable_parts(file);
  LiteralFits model(file);
  int32_t status = 1;
  qqfits1("input", &status);
  require(status == 0 || (status >= -5 && status <= -3));
  if (parts.sizes) require(status == model.open());
  ask_for_data(model, parts.sizes);
  ask_for_keywords(model, parts, file);
  for (const int32_t number : {1, 2, 3, far_unit}) {
    int32_t result = 9;
    qqfits6(&number, &result);
    require(result >= -5 && result <= 3 && result != -2);
    // Behind the last unit that the file has room for, all are the same.
    const auto last = static_cast<int32_t>(file.size() / card_bytes + 2);
    if (parts.sizes) require(result == model.select(std::min(number, last)));
    ask_for_data(model, parts.sizes);
  }
  qqfits2(&status);
  require(status == 0 && files.open_files() == 0);
  return 0;
}

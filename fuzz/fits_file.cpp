// SPDX-License-Identifier: MIT
//
// The input is a FITS file. It is opened, its keywords are asked for, units are selected and their
// data read. Texts and data go into blocks of exactly the size that the library is told.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "fuzz/target.h"
#include "quorix/datafiles.h"
#include "tests/support/memory_files.h"

namespace {

constexpr int32_t most_data = 65536;  // larger sizes are told, not read

void require(bool condition) {
  if (!condition) std::abort();
}

// The kind and the number have to agree with each other, whatever the card says.
void ask_for_numbers(const char *keyword) {
  int32_t kind = 0;
  int32_t integer = 0;
  int32_t status = 1;
  double real = -7.0;
  const int32_t types[] = {3, 1, 2};
  qqfits3(keyword, &kind, &real, &types[0], &status);
  require(status == (kind == -1 ? -1 : 0) && kind >= -1 && kind <= 9 && real == -7.0);
  const bool found = status == 0;
  qqfits3(keyword, &integer, &real, &types[1], &status);
  const bool whole = kind == 0 || kind == 4 || kind == 5;
  require(status == (!found ? -1 : whole ? 0 : -2));
  if (kind == 4 || kind == 5) require(integer == 5 - kind);
  qqfits3(keyword, &integer, &real, &types[2], &status);
  require(status == (!found ? -1 : kind == 0 || kind == 1 ? 0 : -2));
}

void ask_for_text(const char *keyword) {
  for (const int32_t size : {81, 5, 1, 0}) {
    std::vector<char> buffer(static_cast<size_t>(size), 'x');
    int32_t status = 1;
    qqfits5(keyword, buffer.data(), &size, &status);
    require(status == 0 || status == -1 || status == -2 || status == -4);
    if (size == 0 || (status != 0 && status != -4)) continue;
    const void *const end = std::memchr(buffer.data(), 0, buffer.size());
    require(end != nullptr);
    require(status == 0 || static_cast<const char *>(end) == buffer.data() + size - 1);
  }
}

void ask_for_data() {
  int32_t size = 0;
  int32_t bytes = 0;
  qqfits4(nullptr, &size, &bytes);
  require(bytes >= -1);
  if (bytes <= 0 || bytes > most_data) return;
  std::vector<uint8_t> buffer(static_cast<size_t>(bytes));
  qqfits4(buffer.data(), &bytes, &size);
  require(size == bytes || size == -2);
  const int32_t too_small = bytes - 1;
  if (too_small == 0) return;
  qqfits4(buffer.data(), &too_small, &size);
  require(size == -1);
}

// Every keyword of eight letters that stands at the start of a line, and some that need not.
void ask_for_keywords(const uint8_t *data, size_t size) {
  constexpr size_t card = 80;
  for (size_t start = 0; start + 8 <= size && start < 40 * card; start += card) {
    char keyword[9] = {};
    std::memcpy(keyword, data + start, 8);
    ask_for_numbers(keyword);
    ask_for_text(keyword);
  }
  for (const char *keyword : {"", "SIMPLE", "NAXIS", "OBJECTNAME"}) {
    ask_for_numbers(keyword);
    ask_for_text(keyword);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  quorix::testing::MemoryFiles files;
  files.put("input", std::vector<uint8_t>(data, data + size));
  int32_t status = 1;
  qqfits1("input", &status);
  require(status == 0 || (status >= -5 && status <= -3));
  ask_for_data();
  ask_for_keywords(data, size);
  for (const int32_t number : {1, 2, 3, 1000000000}) {
    int32_t result = 9;
    qqfits6(&number, &result);
    require(result >= -5 && result <= 3 && result != -2);
    ask_for_data();
  }
  qqfits2(&status);
  require(status == 0 && files.open_files() == 0);
  return 0;
}

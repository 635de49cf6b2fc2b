// SPDX-License-Identifier: MIT
//
// The input is a TrueType font, opened in both byte orders. Outlines of characters that lead to
// different glyphs are counted and then read into arrays of exactly that size, and into smaller
// ones; what the calls tell has to agree.
#include <cstdlib>
#include <set>
#include <vector>

#include "formats/truetype.h"
#include "fuzz/target.h"
#include "quorix/fonts.h"
#include "tests/support/memory_files.h"

namespace {

constexpr size_t most_glyphs = 16;      // of a font
constexpr int32_t most_points = 20000;  // read; larger numbers are counted alone
constexpr int64_t most_work = 1000000;  // points counted, in all of a font

void require(bool condition) {
  if (!condition) std::abort();
}

struct Counts {
  int32_t points, contours, status;
};

Counts count(int32_t code, int32_t size) {
  Counts c = {-1, -1, 1};
  qqttf2(code, nullptr, nullptr, 0, &c.points, nullptr, 0, &c.contours, size, &c.status);
  require(c.points >= 0 && c.contours >= 0);
  require(c.status == 0 || c.status == 7 || c.status == 8);
  return c;
}

// Arrays of exactly the room that the call is told of.
Counts read(int32_t code, int32_t size, const Counts &wanted, int32_t room) {
  std::vector<double> x(static_cast<size_t>(room)), y(x.size());
  std::vector<int32_t> sizes(static_cast<size_t>(wanted.contours));
  Counts c = {-1, -1, 1};
  qqttf2(code, x.data(), y.data(), room, &c.points, sizes.data(), wanted.contours, &c.contours,
         size, &c.status);
  int64_t sum = 0;
  for (const int32_t n : sizes)
    sum += n;
  require(c.contours == wanted.contours && sum == wanted.points);
  return c;
}

void check_outline(int32_t code, int32_t size, int64_t *work) {
  const Counts wanted = count(code, size);
  *work += wanted.points;
  if (wanted.points == 0 || wanted.points > most_points) return;
  const Counts all = read(code, size, wanted, wanted.points);
  require(all.points == wanted.points && all.status == wanted.status);
  if (wanted.points == 1) return;
  const Counts less = read(code, size, wanted, wanted.points - 1);
  require(less.points == 0);
  require(less.status == 6 || less.status == wanted.status);
}

// One character for each of the first glyphs that the map leads to.
std::vector<int32_t> some_codes() {
  std::set<int32_t> glyphs;
  std::vector<int32_t> codes = {-1, 65536};
  for (int32_t code = 0; code < 65536 && glyphs.size() < most_glyphs; ++code) {
    if (glyphs.insert(quorix::ttf_font->glyph_of_code[code]).second) codes.push_back(code);
  }
  return codes;
}

void check_font(uint8_t swap_bytes) {
  int32_t status = -1;
  qqttf1("input", swap_bytes, &status);
  require(status >= 0 && status <= 24);
  if (status == 0) {
    int64_t work = 0;
    for (const int32_t code : some_codes()) {
      if (work > most_work) break;
      check_outline(code, 24, &work);
      check_outline(code, 100, &work);
    }
  } else {
    Counts c = {-1, -1, 0};
    qqttf2('A', nullptr, nullptr, 0, &c.points, nullptr, 0, &c.contours, 24, &c.status);
    require(c.status == 1 && c.points == 0 && c.contours == 0);
  }
  qqttf3();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  quorix::testing::MemoryFiles files;
  files.put("input", {data, data + size});
  check_font(1);
  check_font(0);
  require(files.open_files() == 0);
  return 0;
}

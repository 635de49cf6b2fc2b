// SPDX-License-Identifier: MIT
// Random numbers, coordinates, colours, pages, palettes and options.

#include "tests/raster/drawing_sketch.h"

#include <utility>

namespace quorix::drawings {

uint64_t next_number(Random &random) {
  random.state += 0x9E3779B97F4A7C15U;
  uint64_t z = random.state;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
  return z ^ (z >> 31);
}

int32_t below(Random &random, int32_t count) {
  const uint64_t high_half = next_number(random) >> 32;
  return static_cast<int32_t>((high_half * static_cast<uint64_t>(count)) >> 32);
}

int32_t between(Random &random, int32_t low, int32_t high) {
  return low + below(random, high - low + 1);
}

bool one_in(Random &random, int32_t count) {
  return below(random, count) == 0;
}

void add(Sketch &sketch, Operation operation, std::array<int32_t, 6> args) {
  Call call;
  call.operation = operation;
  call.args = args;
  sketch.calls.push_back(call);
}

void set_option(Sketch &sketch, int32_t option, int32_t value) {
  add(sketch, Operation::wwid, {option, value, 1});
}

int32_t any_number(Random &random) {
  return static_cast<int32_t>(static_cast<uint32_t>(next_number(random) >> 32));
}

int32_t coordinate(Sketch &sketch, int32_t extent) {
  Random &random = sketch.random;
  switch (below(random, 16)) {
    case 0:
      return between(random, -1, 1);
    case 1:
      return extent + between(random, -2, 1);
    case 2:
      return between(random, -300, 300);
    case 3:
      if (sketch.huge && one_in(random, 2)) return any_number(random);
      if (one_in(random, 4)) return between(random, -20000, 20000);
      return between(random, -extent, 2 * extent);
    default:
      return between(random, -extent / 4 - 1, extent + extent / 4 + 1);
  }
}

void new_point(Sketch &sketch, int32_t *x, int32_t *y) {
  *x = coordinate(sketch, sketch.width);
  *y = coordinate(sketch, sketch.height);
  const int32_t how = below(sketch.random, 10);
  if (how == 0 || how == 1) *x = sketch.recent_x;
  if (how == 0 || how == 2) *y = sketch.recent_y;
  sketch.recent_x = *x;
  sketch.recent_y = *y;
}

namespace {

int32_t packed(Random &random) {
  static const int32_t common[] = {0x01000000, 0x01FFFFFF, 0x010000FF, 0x01FF0000, 0x01808080};
  if (one_in(random, 3)) return common[below(random, 5)];
  return 0x01000000 | (any_number(random) & 0xFFFFFF);
}

int32_t any_colour(Random &random) {
  switch (below(random, 12)) {
    case 0:
      return any_number(random);
    case 1:
      return between(random, -3, 3);
    case 2:
      return between(random, 250, 520);
    case 3:
    case 4:
    case 5:
    case 6:
    case 7:
      return packed(random);
    default:
      return below(random, 256);
  }
}

}  // namespace

int32_t colour(Sketch &sketch) {
  if (sketch.transparent != -1 && one_in(sketch.random, 3)) return sketch.transparent;
  return any_colour(sketch.random);
}

// --- Pages, palettes, options ---

namespace {

void page_side(Random &random, int32_t *w, int32_t *h) {
  *w = between(random, 8, 40);
  *h = between(random, 8, 32);
  switch (below(random, 16)) {
    case 0:
      *w = 1;
      break;
    case 1:
      *h = 1;
      break;
    case 2:
      *w = between(random, 1, 5);
      *h = between(random, 1, 5);
      break;
    case 3:
      *w = between(random, 40, 64);
      *h = between(random, 32, 48);
      break;
    case 4:  // long rows
      *w = between(random, 64, 400);
      *h = between(random, 1, 5);
      break;
    default:
      break;
  }
  if (one_in(random, 1000)) {
    *w = between(random, 100, 600);
    *h = between(random, 100, 400);
  }
}

}  // namespace

void open_page(Sketch &sketch) {
  Random &random = sketch.random;
  int32_t w = 0;
  int32_t h = 0;
  page_side(random, &w, &h);
  int32_t have_size = one_in(random, 4) ? -1 : 1;
  if (one_in(random, 1500)) have_size = 0;
  const int32_t page_w = one_in(random, 2) ? -100 : 100;
  const int32_t page_h = between(random, 99, 101);
  const int32_t status_in = one_in(random, 3) ? below(random, 3) * 128 : below(random, 2);
  if (one_in(random, 60)) w = between(random, -2, 0);
  if (one_in(random, 60)) h = between(random, -2, 0);
  add(sketch, Operation::vini, {page_w, page_h, w, h, have_size, status_in});
  if (have_size == 0) w = h = 600;
  if (w > 0 && h > 0) {
    sketch.width = w;
    sketch.height = h;
  }
}

namespace {

uint32_t palette_word(Random &random, int32_t style, uint32_t i) {
  switch (style) {
    case 0:
      return i * 0x010101U;
    case 1:
      return (255 - i) * 0x010101U;
    case 2: {  // few values per channel, so that many distances are equal
      const uint32_t bits = static_cast<uint32_t>(next_number(random) >> 40);
      return ((bits & 3) * 85) << 16 | (((bits >> 2) & 3) * 85) << 8 | ((bits >> 4) & 3) * 85;
    }
    default:
      return static_cast<uint32_t>(next_number(random) >> 32);
  }
}

}  // namespace

void load_palette(Sketch &sketch) {
  Random &random = sketch.random;
  Call call;
  call.operation = Operation::vvlt;
  static const int32_t kinds[] = {0, 7, 1, 2, 8, 255};
  call.args[0] = kinds[below(random, 6)];
  const int32_t style = below(random, 4);
  uint32_t count = 256;
  if (call.args[0] == 0) count = 9;
  if (call.args[0] == 7) count = 16;
  for (uint32_t i = 0; i < count; i++)
    call.words.push_back(palette_word(random, style, i));
  if (one_in(random, 3)) call.words[0] = one_in(random, 2) ? 0x000000 : 0xFFFFFF;
  if (one_in(random, 3)) call.words[count - 1] = one_in(random, 2) ? 0x000000 : 0xFFFFFF;
  sketch.calls.push_back(call);
}

void set_clip_rectangle(Sketch &sketch) {
  int32_t x1 = 0;
  int32_t y1 = 0;
  int32_t x2 = 0;
  int32_t y2 = 0;
  new_point(sketch, &x1, &y1);
  new_point(sketch, &x2, &y2);
  // Mostly the right way round; a rectangle that is not holds no pixel.
  if (x1 > x2 && !one_in(sketch.random, 8)) std::swap(x1, x2);
  if (y1 > y2 && !one_in(sketch.random, 8)) std::swap(y1, y2);
  set_option(sketch, 11, x1);
  set_option(sketch, 12, y1);
  set_option(sketch, 13, x2);
  set_option(sketch, 14, y2);
}

namespace {

void set_width(Sketch &sketch) {
  Random &random = sketch.random;
  int32_t width = between(random, 1, 12);
  if (one_in(random, 4)) width = 1;
  if (one_in(random, 16)) width = between(random, -3, 0);
  if (one_in(random, 32)) width = between(random, 13, 90);
  set_option(sketch, 26, width);
}

}  // namespace

void set_pen(Sketch &sketch) {
  Random &random = sketch.random;
  set_width(sketch);
  if (one_in(random, 2)) set_option(sketch, 27, between(random, 0, 2));
  if (!one_in(random, 3)) set_option(sketch, 28, between(random, 0, 2));
  if (one_in(random, 16)) set_option(sketch, 27, between(random, -1, 4));
  if (one_in(random, 16)) set_option(sketch, 28, between(random, -1, 4));
}

void set_any_option(Sketch &sketch) {
  Random &random = sketch.random;
  switch (below(random, 10)) {
    case 0:
    case 1:
      set_option(sketch, 33, one_in(random, 12) ? any_number(random) : below(random, 2));
      return;
    case 2:
    case 3:
      if (!sketch.huge) set_option(sketch, 34, one_in(random, 8) ? 513 : between(random, 0, 2));
      return;
    case 4:
    case 5:
      set_option(sketch, 19, one_in(random, 4) ? any_number(random) : below(random, 256));
      return;
    case 6:
    case 7:
      sketch.transparent = one_in(random, 2) ? between(random, -1, 3) : any_colour(random);
      set_option(sketch, 32, sketch.transparent);
      return;
    case 8: {
      if (one_in(random, 2)) {
        const int32_t side = between(random, 11, 14);
        set_option(sketch, side, coordinate(sketch, sketch.width));
        return;
      }
      static const int32_t others[] = {3, 17, 18, 21, 25, 99, 0, -1, 35};
      add(sketch, Operation::wwid, {others[below(random, 8)], any_number(random), 1});
      return;
    }
    default:
      add(sketch, Operation::wwid, {between(random, 3, 40), any_number(random), 0});
      return;
  }
}

}  // namespace quorix::drawings

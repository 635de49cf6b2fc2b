// SPDX-License-Identifier: MIT
//
// Drawing into the copy of a window's bitmap that direct access holds.
//
// Pixels of 24 and 32 bits are blue, green, red, and a fourth byte that stays as it is; others are
// one byte, an entry of the palette. On screens of 16 bits the copy is left alone and pixels go to
// the canvas. Nothing is drawn off the bitmap.
#include <algorithm>
#include <cstring>

#include "base/numbers.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/window.h"

namespace quorix {

namespace {

// One pixel of the current colour, by how the bitmap stores it.
void store_pixel(const OutputContext *context, const WindowSet *set, int64_t x, int64_t y) {
  uint8_t *const pixel = direct_pixel(set, x, y);
  const Colours &c = context->colours;
  if (bytes_per_pixel(set) == 1) {
    pixel[0] = c.window_colour_index;
    return;
  }
  pixel[0] = c.colour_b;
  pixel[1] = c.colour_g;
  pixel[2] = c.colour_r;
}

void fill_row(const OutputContext *context, uint8_t *row, size_t count, size_t step) {
  const Colours &c = context->colours;
  if (step == 1) {
    std::memset(row, c.window_colour_index, count);
    return;
  }
  if (step == 4) {
    const uint32_t colour = display_rgb(c.colour_b, c.colour_g, c.colour_r);
    constexpr uint32_t fourth_byte = 0xFF000000;
    for (size_t i = 0; i < count; ++i, row += 4) {
      uint32_t word = 0;
      std::memcpy(&word, row, 4);
      word = (word & fourth_byte) | colour;
      std::memcpy(row, &word, 4);
    }
    return;
  }
  for (size_t i = 0; i < count; ++i, row += 3) {
    row[0] = c.colour_b;
    row[1] = c.colour_g;
    row[2] = c.colour_r;
  }
}

// ---- Segments

struct Walk {
  int64_t x, y;    // the first point
  int64_t dx, dy;  // signs of the steps
  uint64_t major, minor;
  bool along_x;  // the axis of the longer difference, where every step goes
};

Walk walk_of(CanvasPoint from, CanvasPoint to) {
  const int64_t x = static_cast<int64_t>(to.x) - from.x;
  const int64_t y = static_cast<int64_t>(to.y) - from.y;
  const auto dx = static_cast<uint64_t>(x < 0 ? -x : x);
  const auto dy = static_cast<uint64_t>(y < 0 ? -y : y);
  const bool along_x = dx > dy;
  return {from.x, from.y, x < 0 ? -1 : 1, y < 0 ? -1 : 1, along_x ? dx : dy, along_x ? dy : dx,
          along_x};
}

// Steps of the shorter axis after `step` steps of the longer one. The error begins at minus half
// the longer difference, gains the shorter one in each step, and gives it up above 0: so this is
// the error before any was given up, in whole longer differences, rounded up.
int64_t minor_steps(const Walk &walk, uint64_t step) {
  const uint64_t half = walk.major / 2;
  const uint64_t gained = step * walk.minor;  // both below 2 to the 32nd
  if (gained <= half) return 0;
  const uint64_t error = gained - half;
  return static_cast<int64_t>(error / walk.major + (error % walk.major != 0 ? 1 : 0));
}

// The error after those steps, from -major to 0; the products may pass 2 to the 64th together.
int64_t minor_error(const Walk &walk, uint64_t step, int64_t minor) {
  return static_cast<int64_t>(step * walk.minor - walk.major / 2 -
                              static_cast<uint64_t>(minor) * walk.major);
}

// The steps in which a coordinate that starts at `at` and moves by `sign` is within 0 to size - 1.
struct Steps {
  int64_t first, last;
};

Steps steps_within(int64_t at, int64_t sign, int64_t size, uint64_t count) {
  const int64_t enters = sign > 0 ? -at : at - (size - 1);
  const int64_t leaves = sign > 0 ? size - 1 - at : at;
  return {std::max<int64_t>(enters, 0), std::min(leaves, static_cast<int64_t>(count))};
}

}  // namespace

void put_direct_pixel(OutputContext *context, int64_t x, int64_t y) {
  const WindowSet *set = context->window.window_set;
  if (!on_direct_bitmap(set, x, y)) return;
  if (bytes_per_pixel(set) != 0) return store_pixel(context, set, x, y);
  if (set->draw_canvas == nullptr) return;
  ask(set->draw_canvas->calls->set_pixel, set->draw_canvas, static_cast<int32_t>(x),
      static_cast<int32_t>(y), set->colorref);
}

void fill_direct_rectangle(OutputContext *context, int64_t x, int64_t y, int64_t width,
                           int64_t height) {
  const WindowSet *set = context->window.window_set;
  const int64_t first = std::max<int64_t>(x, 0);
  const int64_t end = std::min<int64_t>(x + width, bitmap_columns(set));
  const int64_t last = std::min<int64_t>(y + height, set->bitmap_info.height);
  if (end <= first) return;
  const auto step = static_cast<size_t>(bytes_per_pixel(set));
  for (int64_t row = std::max<int64_t>(y, 0); row < last; ++row) {
    if (step != 0 && set->image_bits != nullptr) {
      fill_row(context, direct_pixel(set, first, row), static_cast<size_t>(end - first), step);
      continue;
    }
    for (int64_t column = first; column < end; ++column)
      put_direct_pixel(context, column, row);
  }
}

void draw_direct_segment(OutputContext *context, CanvasPoint from, CanvasPoint to) {
  const BitmapInfo &info = context->window.window_set->bitmap_info;
  const Walk walk = walk_of(from, to);
  const Steps steps = walk.along_x ? steps_within(walk.x, walk.dx, info.width, walk.major)
                                   : steps_within(walk.y, walk.dy, info.height, walk.major);
  if (steps.first > steps.last) return;
  const auto first = static_cast<uint64_t>(steps.first);
  int64_t minor = minor_steps(walk, first);
  int64_t error = minor_error(walk, first, minor);
  for (int64_t step = steps.first;; ++step) {
    put_direct_pixel(context, walk.x + walk.dx * (walk.along_x ? step : minor),
                     walk.y + walk.dy * (walk.along_x ? minor : step));
    if (step == steps.last) return;
    error += static_cast<int64_t>(walk.minor);
    if (error <= 0) continue;
    error -= static_cast<int64_t>(walk.major);
    ++minor;
  }
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// Lines and rectangles as anybody would write them who has one page, one kind of pixel and nothing
// to ask about: no clipping, no pen, no record.
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>

#include "raster_peers.h"

namespace {

std::vector<uint32_t> page;
uint32_t ink;

void open_page() {
  page.assign(size_t{page_width} * page_height, 0x01010101);
  ink = 0xFF603020;
}

void set_colour(uint8_t r, uint8_t g, uint8_t b) {
  ink = 0xFF000000U | static_cast<uint32_t>(b) << 16 | static_cast<uint32_t>(g) << 8 | r;
}

void draw_line(const Segment &s) {
  const int dx = std::abs(s.x1 - s.x0);
  const int dy = std::abs(s.y1 - s.y0);
  const bool steep = dx <= dy;
  const int along = steep ? dy : dx;
  const int across = steep ? dx : dy;
  const ptrdiff_t step_x = s.x1 < s.x0 ? -1 : 1;
  const ptrdiff_t step_y = s.y1 < s.y0 ? -page_width : page_width;
  const ptrdiff_t major = steep ? step_y : step_x;
  const ptrdiff_t minor = steep ? step_x : step_y;
  uint32_t *to = page.data() + ptrdiff_t{s.y0} * page_width + s.x0;
  int error = -(along / 2);
  for (int i = 0; i <= along; ++i) {
    *to = ink;
    to += major;
    error += across;
    if (error > 0) {
      error -= along;
      to += minor;
    }
  }
}

void fill_rectangle(int x, int y, int w, int h) {
  uint32_t *row = page.data() + ptrdiff_t{y} * page_width + x;
  for (int i = 0; i < h; ++i, row += page_width)
    std::fill_n(row, w, ink);
}

void erase() {
  std::memset(page.data(), 0, page.size() * sizeof(uint32_t));
}

}  // namespace

Contender plain_contender() {
  return {.name = "plain loops",
          .open = open_page,
          .colour = set_colour,
          .line = draw_line,
          .rectangle = fill_rectangle,
          .erase = erase};
}

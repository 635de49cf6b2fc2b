// SPDX-License-Identifier: MIT
//
// A window that is nothing but memory: what stands behind the test devices, and behind the literal
// model. Both sides of a comparison own one, and draw on it in their own way.
//
// A window is either a bitmap of 24, 32 or at most 8 bits a pixel, whose rows may be longer than
// their pixels, or a surface that takes one pixel at a time (16 bits). Beside that it has a frame
// of RGBA pixels that stands for what OpenGL drew, its lower row first.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

struct PlainWindow {
  int32_t width = 0;
  int32_t height = 0;
  int32_t bits = 24;
  size_t row_bytes = 0;
  std::vector<uint8_t> bytes;    // the bitmap, rows from the top; empty with 16 bits
  std::vector<uint32_t> pixels;  // with 16 bits: the colours given, 0x00BBGGRR
  std::vector<uint8_t> frame;    // RGBA

  // How a palette display stores an index.
  int32_t colour_mode = 0;
  bool compressed = false;

  // What was asked of the window, in order: flushes, colours, fills, OpenGL calls.
  std::vector<std::string> calls;
  int32_t raster_x = 0;  // where OpenGL's next pixels go
  int32_t raster_y = 0;
};

// A window whose bytes all differ from what surrounds them, so that a byte that should stay is seen
// to stay. `extra` bytes are added to every row.
PlainWindow make_window(int32_t bits, int32_t width, int32_t height, size_t extra);

int32_t bytes_per_pixel(const PlainWindow &window);
bool contains(const PlainWindow &window, int64_t x, int64_t y);
// The first byte of a pixel that the window contains.
uint8_t *pixel_at(PlainWindow &window, int64_t x, int64_t y);
// The byte that stands for an index on a palette display.
uint8_t index_to_pixel(const PlainWindow &window, uint8_t index);

void note(PlainWindow &window, const std::string &call);
// A filled rectangle, corners inclusive, noted and, with 16 bits, painted in the colour 0x00BBGGRR.
void fill_rectangle(PlainWindow &window, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                    int32_t colour, uint32_t painted);
std::string call_text(const char *name, const std::vector<double> &arguments);

// The OpenGL transfers of one row, noted and done.
void read_pixels(PlainWindow &window, int32_t x, int32_t y, int32_t n, uint8_t *row);
void set_raster_position(PlainWindow &window, int32_t x, int32_t y);
void draw_pixels(PlainWindow &window, int32_t n, const uint8_t *row);

}  // namespace quorix::testing

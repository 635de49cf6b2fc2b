// SPDX-License-Identifier: MIT
// A second raster device, written to be obviously right and for nothing else. It has its own
// record and takes every operation one statement at a time; each pixel is written through one
// function that knows the page. The real device is compared with it byte for byte.
//
// Call init_record (or qqvini, or qqwwid) first; every operation on a record that does not
// exist does nothing and reports its failure status. All state lives in LiteralRaster, so several
// can be alive at once, and dropping one releases everything.
//
// Costs: a record is under 2 KB plus its page; every operation takes time in proportion to the
// pixels it visits, and lines are walked step by step. Walks of more than long_walk steps enter
// the page by a closed form, and rows and columns that lie off the page are not visited.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::literal {

constexpr int max_points = 100;
constexpr int max_crossings = 99;

struct LiteralRaster {
  bool exists = false;

  // The page: what was allocated, whatever the record says later.
  bool page_valid = false;
  bool page_rgba = false;
  int32_t page_width = 0;
  int32_t page_height = 0;
  std::vector<uint8_t> pixels;

  int32_t width = 0;
  int32_t height = 0;
  int32_t stride = 0;
  int32_t clip_x1 = 0;
  int32_t clip_y1 = 0;
  int32_t clip_x2 = 0;
  int32_t clip_y2 = 0;

  int32_t transparent_colour = -1;
  uint8_t transparent_r = 0;
  uint8_t transparent_g = 0;
  uint8_t transparent_b = 0;

  int32_t line_width = 1;
  int32_t line_cap = 2;
  int32_t line_join = 2;
  int32_t poly_x[max_points] = {};
  int32_t poly_y[max_points] = {};
  int32_t poly_count = 0;
  uint8_t poly_pen_up = 0;

  float depth_bias = 0.001F;
  int32_t text_map_level = 0;
  int32_t colour_arg = 0;
  uint8_t white_background = 0;
  uint8_t palette_kind = 0;
  uint8_t palette_r[256] = {};
  uint8_t palette_g[256] = {};
  uint8_t palette_b[256] = {};
  uint8_t colour_index = 0;
  uint8_t colour_r = 0;
  uint8_t colour_g = 0;
  uint8_t colour_b = 0;
  uint8_t colour_alpha = 255;
  uint8_t raster_state = 0;
  uint8_t blend_over_background = 1;
  uint8_t clip_on = 0;
  uint8_t swap_black_white = 0;
  uint8_t line_smooth_on = 0;
  uint8_t rgba_mode = 0;
};

struct Rgb {
  uint8_t r;
  uint8_t g;
  uint8_t b;
};

struct Point {
  double x;
  double y;
};

// --- The exported operations, with the record in front ---

int32_t qqvini(LiteralRaster &raster, int32_t page_w, int32_t page_h, int32_t *w, int32_t *h,
               int32_t have_size, int32_t *status);
int32_t qqvfin(LiteralRaster &raster);
int32_t qqvers(LiteralRaster &raster);
int32_t qqvclr(LiteralRaster &raster, int32_t colour);
int32_t qqvvlt(LiteralRaster &raster, uint8_t kind, const uint32_t *table);
// The first byte of the page, or null without a page.
int32_t qqvptr(LiteralRaster &raster, uint8_t **bytes);
int32_t qqvwin(LiteralRaster &raster, const int32_t *x, const int32_t *y, const int32_t *w,
               const int32_t *h, int32_t *status);
int32_t qqvcrp(LiteralRaster &raster, int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2);
int32_t qqvlin(LiteralRaster &raster, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
int32_t qqvdrw(LiteralRaster &raster, int32_t x, int32_t y, int32_t code);
int32_t qqvfll(LiteralRaster &raster, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
               int32_t colour);
int32_t qqvpix(LiteralRaster &raster, int32_t x, int32_t y, int32_t colour);
int32_t qqvpol(LiteralRaster &raster, const double *xs, const double *ys, const int32_t *n,
               int32_t *status);
int32_t qqvsym(LiteralRaster &raster, int32_t symbol, int32_t x, int32_t y, int32_t size);
int32_t qqvftr(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t colour);
int32_t qqvwpx(LiteralRaster &raster, int32_t x, int32_t y, int32_t colour);
int32_t qqvrow(LiteralRaster &raster, const uint8_t *buffer, int32_t x, int32_t y, int32_t n);
int32_t qqvrpx(LiteralRaster &raster, int32_t x, int32_t y, int32_t *colour);
int32_t qqvrdr(LiteralRaster &raster, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
               int32_t rows);
// The raster file as the bytes it would have on disk.
int32_t write_file(LiteralRaster &raster, std::vector<uint8_t> *file, int32_t *status);
int32_t read_file(LiteralRaster &raster, const std::vector<uint8_t> &file, int32_t *status);
int32_t qqwwid(LiteralRaster &raster, int32_t option, int32_t *value, int32_t set);
int32_t qqwfree(LiteralRaster &raster);

// --- Shared steps ---

// literal_record.cpp
void init_record(LiteralRaster &raster);
void set_output_defaults(LiteralRaster &raster);
int32_t to_int(double value);
uint8_t low_byte(int64_t value);

// literal_colours.cpp
bool is_packed(int32_t colour);
Rgb packed_bytes(int32_t colour);
uint8_t index_of(int32_t colour);
uint8_t nearest_colour(const LiteralRaster &raster, Rgb wanted);
Rgb palette_entry(const LiteralRaster &raster, uint8_t index);
void sort3_int(const int32_t *v, int32_t *first, int32_t *second, int32_t *third);

// literal_pixels.cpp
bool on_page(const LiteralRaster &raster, int64_t x, int64_t y);
bool in_clip(const LiteralRaster &raster, int64_t x, int64_t y);
bool in_clip_rows(const LiteralRaster &raster, int64_t y);
bool in_clip_columns(const LiteralRaster &raster, int64_t x);
// One pixel, if it lies on the page: in the current colour, or in any colour argument.
void write_current(LiteralRaster &raster, int64_t x, int64_t y);
void write_colour(LiteralRaster &raster, int64_t x, int64_t y, int32_t colour);
void fill_row_current(LiteralRaster &raster, int64_t x1, int64_t x2, int64_t y);
void write_raster_row(LiteralRaster &raster, const uint8_t *buffer, int32_t x, int32_t y,
                      int64_t count, bool rgb);
// Raw access; the pixel must be on the page.
uint8_t *pixel_at(LiteralRaster &raster, int64_t x, int64_t y);

// literal_lines.cpp
void flush_polyline(LiteralRaster &raster);
void render_polyline(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n);
void draw_hline(LiteralRaster &raster, int64_t x1, int64_t y, int64_t x2);
void draw_vline(LiteralRaster &raster, int64_t x, int64_t y1, int64_t y2);

// literal_thin_lines.cpp
constexpr int64_t long_walk = 100000;

// A stretch of a Bresenham walk: its steps `first` to `last`, and where the walk stands before
// step `first`: `moved` steps taken along the minor axis, with the error term at `error`.
struct Walk {
  int64_t first;
  int64_t last;
  int64_t moved;
  int64_t error;
};
Walk walk_from(int64_t step, int64_t major, int64_t minor);
void draw_fast(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n);
void draw_wide(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n);
void draw_smooth(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n);

// literal_thick_lines.cpp
void draw_thick(LiteralRaster &raster, const int32_t *xs, const int32_t *ys, int32_t n);
bool line_intersection(Point a, Point b, Point c, Point d, Point *where);

// literal_areas.cpp
void fill_polygon(LiteralRaster &raster, const std::vector<Point> &points, int32_t *status);
void draw_disc(LiteralRaster &raster, int32_t cx, int32_t cy, int32_t r, bool upper_half_only);

}  // namespace quorix::literal

// SPDX-License-Identifier: MIT
//
// A second depth renderer, written to be obviously right and for nothing else: the depth buffer,
// depth lines, the blend layer, shaded triangles and quadrilaterals, one pixel and one statement at
// a time, on top of the literal raster.
//
// All state lives in LiteralDepth. The raster operations that make, crop or drop a page have forms
// of their own here, since the depth buffer and the layer live and die with the page; all others
// are those of the literal raster, on `raster`. The window is a PlainWindow that the caller owns;
// without one, calls for a window do nothing.
//
// Costs: a call takes time in proportion to the pixels, and the steps above the page, that it
// visits; walks end at the lower end of the page.

#pragma once

#include <cstdint>
#include <vector>

#include "tests/depth/plain_window.h"
#include "tests/raster/literal_raster.h"

namespace quorix::literal {

// Pixels, and what they were allocated for.
struct Buffer {
  bool valid = false;
  bool rgba = false;
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint8_t> pixels;
};

struct LiteralDepth {
  LiteralRaster raster;  // its pixels are those that drawing goes to: the page's or the layer's
  Buffer base;           // the page, while a layer is open
  Buffer layer;          // the layer, while it is not open
  bool layer_open = false;
  uint8_t saved_state = 0;

  bool depth_on = false;
  int32_t depth_width = 0;
  int32_t depth_height = 0;
  std::vector<float> depth;

  bool alpha_blend_on = false;
  bool window_active = false;
  bool opengl_on = false;
  testing::PlainWindow *window = nullptr;
};

// --- Operations of the raster that the depth buffer or the layer take part in ---

int32_t qqvini(LiteralDepth &record, int32_t page_w, int32_t page_h, int32_t *w, int32_t *h,
               int32_t have_size, int32_t *status);
int32_t qqvfin(LiteralDepth &record);
int32_t qqvwin(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *w,
               const int32_t *h, int32_t *status);
int32_t qqwwid(LiteralDepth &record, int32_t option, int32_t *value, int32_t set);
int32_t qqwfree(LiteralDepth &record);

// --- The depth family ---

int32_t qqzbuf(LiteralDepth &record, int32_t op, int32_t *status);
int32_t qqzlin(LiteralDepth &record, const int32_t *x, const int32_t *y, int32_t colour,
               const double *z, int32_t device);
int32_t qqzlin2(LiteralDepth &record, const double *x, const double *y, int32_t colour,
                const double *z, int32_t device);
int32_t qqwabl(LiteralDepth &record, int32_t op, int32_t *status);
int32_t qqgllin(LiteralDepth &record, const double *x1, const double *y1, const double *x2,
                const double *y2);
int32_t qqztri(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour,
               const double *z, int32_t device);
int32_t qqztri2(LiteralDepth &record, const double *x, const double *y, const int32_t *colour,
                const double *z, int32_t device);
int32_t qqztri3(LiteralDepth &record, const double *x, const double *y, const double *z,
                const double *r, const double *g, const double *b, int32_t device);
int32_t qqdtri(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour,
               int32_t device);
int32_t qqdtri2(LiteralDepth &record, const int32_t *x, const int32_t *y, const int32_t *colour,
                int32_t half, int32_t device);

// --- Shared steps ---

// literal_targets.cpp
bool is_raster(int32_t device);
int32_t rounded(double value);
Rgb resolved(const LiteralRaster &raster, int32_t colour);
// True if the device has such a pixel at all.
bool has_pixel(const LiteralDepth &record, int32_t device, int64_t x, int64_t y);
// The last row and column that anything can be drawn in; -1 at most where the device has none.
int64_t last_row(const LiteralDepth &record, int32_t device);
int64_t last_column(const LiteralDepth &record, int32_t device);
// A colour as the device stores it. Alpha is written to an RGBA raster alone.
void put_rgb(LiteralDepth &record, int32_t device, int64_t x, int64_t y, Rgb rgb);
// A palette index as the device stores it.
void put_index(LiteralDepth &record, int32_t device, int64_t x, int64_t y, uint8_t index);
// The window draws what it has gathered.
void flush_window(LiteralDepth &record);
// False also where it is OpenGL that tests depths, and there is no buffer.
bool tests_depth(const LiteralDepth &record);
bool has_depth(const LiteralDepth &record, int64_t x, int64_t y);
float &depth_at(LiteralDepth &record, int64_t x, int64_t y);
void fill_depth(LiteralDepth &record);
void clear_page(LiteralRaster &raster);

// literal_shading.cpp
void sort3_double(const double *v, int32_t *first, int32_t *second, int32_t *third);

// literal_quads.cpp
int32_t quad_value(int64_t x, int64_t y, const int32_t *X, const int32_t *Y, const int32_t *C);

// literal_depth_opengl.cpp: the calls that go to OpenGL instead
bool forwards(const LiteralDepth &record);
void begin(LiteralDepth &record, int32_t mode);
void end(LiteralDepth &record);
void call(LiteralDepth &record, const char *name, const std::vector<double> &arguments);
void call_floats(LiteralDepth &record, const char *name, const std::vector<float> &arguments);

}  // namespace quorix::literal

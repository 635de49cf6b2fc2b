// SPDX-License-Identifier: MIT
//
// What the files of the raster family share, grouped by file.
//
// An exported operation flushes the gathered polyline where it changes colour, pen or pixels, makes
// a Surface, and hands it to loops that are templates over the pixel.
#pragma once

#include <cstdint>

#include "core/device.h"
#include "core/output_context.h"
#include "raster/surface.h"

namespace quorix {

// ---- record.cpp
// The drawing record, made if there is none, with the raster as one of its devices. Without memory
// it says so and ends the process with code 0.
OutputContext *require_output_context();

// ---- life_cycle.cpp
// Releases what the raster keeps in the record.
void release_raster(OutputContext *context);
// Makes all of `raster` background.
void fill_page(OutputContext *context);
// The background: bytes for RGB and for alpha.
inline uint8_t background_byte(const OutputContext *context) {
  return context->page.white_background != 0 && context->page.rgba_mode != 0 ? 255 : 0;
}
// Makes raster_base or blend_raster what drawing writes to.
void select_raster_buffer(OutputContext *context, const PixelBuffer &buffer);

// ---- depth_memory.cpp: the depth buffer follows the page, so its memory is the raster's affair
// Releases the buffer, if there is one.
void release_depth_buffer(OutputContext *context);
// A cleared buffer of the given size in place of any other. False without memory: then all is as it
// was.
bool renew_depth_buffer(OutputContext *context, int32_t width, int32_t height);
// Puts all of the buffer, if there is one, beyond any depth that is ever drawn.
void clear_depth_buffer(OutputContext *context);

// ---- colours.cpp
// A colour argument as the pixel that the current raster mode stores.
uint8_t palette_pixel(const OutputContext *context, int32_t colour);
uint32_t rgba_pixel(const OutputContext *context, int32_t colour);
// Sets the current colour; the raster polyline is flushed first.
void set_current_colour(OutputContext *context, int32_t colour);

// ---- polyline.cpp
// Draws n points as one polyline, with the pen, colour and clipping in force.
void render_polyline(OutputContext *context, const int32_t *xs, const int32_t *ys, int32_t n);
// Draws what is gathered; the pen stays where it is.
void flush_raster(OutputContext *context);

// ---- polyline_straight.cpp: pens of width below 4, and the base lines of symbols
template <class Pixel>
void draw_hline(const Surface<Pixel> &s, const OutputContext *context, int32_t x1, int32_t y,
                int32_t x2);
template <class Pixel>
void draw_vline(const Surface<Pixel> &s, const OutputContext *context, int32_t x, int32_t y1,
                int32_t y2);

// ---- polyline_thin.cpp: pens of width below 4
// Draws what is gathered if it is one sloping segment of a plain one-pixel pen, all of it inside:
// most of what a plot draws. False, and nothing drawn, for all else.
bool draw_lone_segment(const OutputContext *context);
// One-pixel lines that stop at the page alone.
template <class Pixel>
void draw_fast(const Surface<Pixel> &s, const OutputContext *context, const int32_t *xs,
               const int32_t *ys, int32_t n);
// Lines that stop at the clip rectangle. The two differ by design: on a palette raster the extra
// pixels of a step are drawn only where its centre is.
void draw_wide_palette(const PaletteSurface &s, const OutputContext *context, const int32_t *xs,
                       const int32_t *ys, int32_t n);
void draw_wide_rgba(const RgbaSurface &s, const OutputContext *context, const int32_t *xs,
                    const int32_t *ys, int32_t n);

// ---- polyline_smooth.cpp: antialiased lines of width 1
void draw_smooth_rgba(const RgbaSurface &s, const OutputContext *context, const int32_t *xs,
                      const int32_t *ys, int32_t n);

// ---- polyline_thick.cpp: pens of width 4 and more
template <class Pixel>
void draw_thick(const Surface<Pixel> &s, const OutputContext *context, const int32_t *xs,
                const int32_t *ys, int32_t n);
struct Point {
  double x, y;
};
// Where the lines through a, b and through c, d meet; 0 if they are (nearly) parallel, else 1.
int32_t line_intersection(Point a, Point b, Point c, Point d, double *xi, double *yi);

// ---- disc.cpp
template <class Pixel>
void draw_disc(const Surface<Pixel> &s, int32_t cx, int32_t cy, int32_t r, bool upper_half_only);
void draw_disc(const OutputContext *context, int32_t cx, int32_t cy, int32_t r,
               int32_t upper_half_only);

// ---- symbols.cpp
// The round ones among the markers; the others are strokes.
inline constexpr int32_t symbol_circle = 15;
inline constexpr int32_t symbol_disc = 21;
inline constexpr int32_t symbol_half_circle = 22;
inline constexpr int32_t symbol_half_disc = 23;
// A marker of half size h, within the clip rectangle.
void draw_symbol(OutputContext *context, int32_t symbol, int32_t x, int32_t y, int32_t h);

// ---- polygon.cpp
// Most crossings of one row that are kept; what comes after them in edge order is dropped.
inline constexpr int32_t max_crossings = 99;
// Fills within the clip rectangle; 1 if some row had more crossings than are kept, else 0.
template <class Pixel>
int32_t fill_polygon(const Surface<Pixel> &s, const double *xs, const double *ys, int32_t n);
void fill_polygon(const OutputContext *context, const double *xs, const double *ys, int32_t n,
                  int32_t *status);

// ---- polygon_plain.cpp: the same by looking at every edge in every row
template <class Pixel>
int32_t fill_polygon_plainly(const Surface<Pixel> &s, const double *xs, const double *ys,
                             int32_t n);

// ---- device.cpp
extern const Device raster_device;

// ---- areas.cpp
// Corners inclusive.
void fill_raster_rectangle(OutputContext *context, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                           int32_t colour);

// ---- pixels.cpp
// As a Device's read_rectangle and write_row.
void read_raster_rectangle(OutputContext *context, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                           int32_t rows);
void write_raster_pixels(OutputContext *context, const uint8_t *buffer, int32_t x, int32_t y,
                         int32_t n);
// Writes n pixels into the raster from (x, y): RGB triples or indices. Off the page: skipped.
void write_raster_row(OutputContext *context, const uint8_t *buffer, int32_t x, int32_t y,
                      int32_t n, bool rgb);

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The one drawing record of the process, shared by all families that draw. Not installed.
//
// It is made by the first operation that needs it (qqvini, qqwwid) and lives until qqwfree. Every
// operation reaches it through `output_context` and returns at once where that is null.
#pragma once

#include <cstdint>

#include "quorix/window_set.h"

namespace quorix {

struct BdfFont;
struct SubWindow;

inline constexpr int32_t poly_capacity = 100;
inline constexpr int32_t bdf_font_count = 12;

enum RasterState : uint8_t { raster_none = 0, raster_open = 1, raster_blending = 2 };

// What a pixel buffer was allocated for. The record's own `width`, `height`, `stride` and
// `rgba_mode` belong to whichever device is current and may change while a buffer lives, so every
// write is held against this instead. All zero: no buffer, nothing may be written.
struct RasterPage {
  int32_t width;
  int32_t height;
  uint8_t rgba;  // 0 one byte per pixel, 1 four bytes per pixel
};

struct OutputContext {
  WindowSet *window_set;               // owned, null until the window device or a metafile needs it
  SubWindow **widget_windows;          // owned, sub-windows served by the window device
  float *depth_buffer;                 // owned, valid only while depth_on
  BdfFont *bdf_current;                // one of bdf_fonts, or null
  BdfFont *bdf_fonts[bdf_font_count];  // owned, released by qqwfree
  uint8_t *raster;                     // what drawing writes to: raster_base, or blend_raster
  uint8_t *raster_base;                // owned, allocated by qqvini
  uint8_t *blend_raster;               // owned, same size, for translucent layers
  uint8_t *gl_row;                     // owned, one row of width * 4 bytes
  int32_t screen_width, screen_height;
  int32_t width, height;
  int32_t clip_x1, clip_y1, clip_x2, clip_y2;  // inclusive
  int32_t screen_bits;
  int32_t font_charset;
  int32_t transparent_colour;  // -1 none
  int32_t line_width;
  int32_t line_cap;   // 0 butt, 1 round, 2 square
  int32_t line_join;  // 0 miter, 1 round, 2 bevel
  int32_t poly_x[poly_capacity], poly_y[poly_capacity];
  int32_t poly_count;
  float depth_bias;
  int32_t widget_window_count;
  int32_t stride;  // bytes per row: width, or width * 4
  int32_t text_map_level;
  int32_t pending_window_event;
  int32_t colour_arg;  // the colour as last given
  uint8_t transparent_r, transparent_g, transparent_b;
  uint8_t white_background;
  uint8_t palette_kind;  // 0: 9 entries, 7: 16, others: 256
  uint8_t palette_r[256], palette_g[256], palette_b[256];
  uint8_t window_active;
  uint8_t direct_bitmap;
  uint8_t colour_index;
  uint8_t colour_r, colour_g, colour_b;
  uint8_t window_colour_index;
  uint8_t colour_alpha;
  uint8_t raster_state;        // RasterState
  uint8_t saved_raster_state;  // RasterState before a blend layer
  uint8_t blend_over_background;
  uint8_t poly_pen_up;  // the one gathered point is a start point, not a dot
  uint8_t clip_on;
  uint8_t opengl_on;
  uint8_t swap_black_white;
  uint8_t depth_on;
  uint8_t alpha_blend_on;
  uint8_t line_smooth_on;
  uint8_t rgba_mode;
  uint8_t bdf_loaded[bdf_font_count];

  // Not part of what other families see: what the buffers really are, and what the colour cache
  // was filled from.
  RasterPage page;        // of raster
  RasterPage base_page;   // of raster_base
  RasterPage blend_page;  // of blend_raster
  int32_t depth_width;    // of depth_buffer; 0 without one
  int32_t depth_height;
  int32_t gl_row_width;  // of gl_row, in pixels
  uint32_t palette_version;
};

extern OutputContext *output_context;

// mode 0 makes a record with a WindowSet, 1 a record alone, 2 adds a WindowSet to `context`.
// Returns the record. Without memory it says so and ends the process with code 0.
OutputContext *create_output_context(OutputContext *context, int32_t mode);

// Puts the options back to their defaults; the current colour, palette and clip rectangle stay.
void set_output_defaults(OutputContext *context);

// The record of the process, made with mode 1 if there is none.
OutputContext *require_output_context();

// Draws what the polyline accumulator of a side holds: 0 the raster's, 1 the window's.
void flush_polyline(OutputContext *context, int32_t side);

// Which entry of the palette is nearest to a colour, by city-block distance.
int32_t nearest_colour(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b);

// The three bytes of a colour argument.
void colour_to_rgb(const OutputContext *context, int32_t colour, uint8_t *r, uint8_t *g,
                   uint8_t *b);

// To be called by whoever changes a palette table or palette_kind.
void palette_changed(OutputContext *context);

// gl_row with room for at least `width` pixels of 4 bytes, or null without memory.
uint8_t *require_gl_row(OutputContext *context, int32_t width);

// Draws the open blend layer onto what lies under it, and empties the layer; 1 on failure, else 0.
int32_t composite_blend_layer(OutputContext *context);

// Gives the bitmap fonts back; to be called before the record goes.
void release_bdf_fonts(OutputContext *context);

// Where the smallest, the middle and the largest of three values stand.
void sort3_int(const int32_t *values, int32_t *first, int32_t *second, int32_t *third);
void sort3_double(const double *values, int32_t *first, int32_t *second, int32_t *third);

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// What the files of the depth family share, grouped by file.
//
// An exported operation asks depth_calls for what its target does, and calls that. For bitmaps it
// opens a Target and draws into its pixels through one of the formats of pixel_formats.h.
#pragma once

#include <cstdint>

#include "core/device.h"
#include "core/output_context.h"
#include "raster/surface.h"

namespace quorix {

// ---- target.cpp
// Who draws: a layer lies in memory, so while one is open depth-tested drawing is done here, on
// top of it. What knows no depths goes past the layer.
enum class OpenLayer { drawn_on, passed_by };

// The calls of what is drawn on now; null where a window should draw through OpenGL and there is
// none.
const DepthCalls *depth_calls(const OutputContext *context, OpenLayer layer);

// The pixels of a device, the depths beside them, and where both may be written.
struct Target {
  OutputContext *context;
  const Device *device;
  DeviceBitmap bitmap;
  Rect clip;     // as the caller set it
  Rect page;     // what there is memory for, depths included where they are used
  Rect box;      // the two together
  float *depth;  // null where every pixel passes
  ptrdiff_t depth_pitch;
};

enum class Depths { used, ignored };

// False where the device has no pixels to draw into.
bool open_target(OutputContext *context, int32_t device, Depths depths, Target *target);

// ---- As DepthCalls, for bitmaps
// depth_buffer.cpp
DepthStatus switch_bitmap_depths(OutputContext *context, bool on);
DepthStatus clear_bitmap_depths(OutputContext *context);
DepthStatus clear_bitmap(OutputContext *context, int32_t device);
// depth_line.cpp
void draw_depth_line(OutputContext *context, int32_t device, const DepthLine &line);
// shaded_triangle.cpp
void draw_shaded_triangle(OutputContext *context, int32_t device, const ShadedTriangle &triangle);
// index_triangle.cpp
void draw_index_triangle(OutputContext *context, int32_t device, const IndexTriangle &triangle);
void draw_quad_half(OutputContext *context, int32_t device, const IndexTriangle &half,
                    const IndexQuad &quad);

// ---- blend_layer.cpp
// The box of the layer's pixels whose alpha is not 0; x1 = width, y1 = height, x2 = y2 = -1 where
// there are none.
Rect blend_bbox(const OutputContext *context);
// Draws the open blend layer onto what lies under it, and empties the layer; 1 on failure, else 0.
int32_t composite_blend_layer(OutputContext *context);

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// What the files of the depth family share, grouped by file.
//
// An exported operation either forwards to OpenGL (opengl.h) or opens a Target and draws into its
// pixels through one of the formats of pixel_formats.h.
#pragma once

#include <cstdint>

#include "core/device.h"
#include "core/output_context.h"
#include "raster/surface.h"

namespace quorix {

// ---- target.cpp
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

// ---- blend_layer.cpp
// The box of the layer's pixels whose alpha is not 0; x1 = width, y1 = height, x2 = y2 = -1 where
// there are none.
Rect blend_bbox(const OutputContext *context);
// Draws the open blend layer onto what lies under it, and empties the layer; 1 on failure, else 0.
int32_t composite_blend_layer(OutputContext *context);

}  // namespace quorix

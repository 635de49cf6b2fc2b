// SPDX-License-Identifier: MIT
//
// Forwarding to the OpenGL calls of a device. The numbers are OpenGL's own.
#pragma once

#include "base/numbers.h"
#include "depth/depth.h"

namespace quorix {

inline constexpr uint32_t gl_points = 0;
inline constexpr uint32_t gl_line_strip = 3;
inline constexpr uint32_t gl_triangles = 4;
inline constexpr uint32_t gl_depth_buffer_bit = 256;
inline constexpr uint32_t gl_lequal = 515;
inline constexpr uint32_t gl_src_alpha = 770;
inline constexpr uint32_t gl_one_minus_src_alpha = 771;
inline constexpr uint32_t gl_depth_test = 2929;
inline constexpr uint32_t gl_blend = 3042;
inline constexpr uint32_t gl_unsigned_byte = 5121;
inline constexpr uint32_t gl_rgba = 6408;
inline constexpr uint32_t gl_color_buffer_bit = 16384;

// The window's calls, or null where it has none.
inline const GlCalls *window_gl(const OutputContext *context) {
  const Device *device = window_family_device(context);
  return device == nullptr ? nullptr : device->gl;
}

// Whether depth-tested drawing is OpenGL's affair. A blend layer lies in memory, so while one is
// open drawing is done here.
inline bool forwards_to_gl(const OutputContext *context) {
  return context->window.opengl_on != 0 && context->buffers.raster_state != raster_blending;
}

// A row, counted from the lower edge.
inline double turned(const OutputContext *context, double y) {
  return static_cast<double>(context->page.height) - 1.0 - y;
}

inline int32_t turned(const OutputContext *context, int32_t y) {
  return to_int32(turned(context, static_cast<double>(y)));
}

}  // namespace quorix

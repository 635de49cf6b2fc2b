// SPDX-License-Identifier: MIT
//
// Depth rendering, and text pixel by pixel, of a window that draws through OpenGL.
//
// A window system that has OpenGL fills in a GlCalls, hands it over with use_gl_calls, and then
// lets the `depth` of its Device point at opengl_depth_calls. It stays the owner of the record,
// which has to stand for as long.
#pragma once

#include <cstdint>

#include "core/device.h"

namespace quorix {

// The functions of OpenGL that drawing needs, by their OpenGL meaning and with OpenGL's own
// numbers. y grows upward here.
struct GlCalls {
  void (*enable)(uint32_t capability);
  void (*disable)(uint32_t capability);
  void (*depth_function)(uint32_t function);
  void (*blend_function)(uint32_t source, uint32_t target);
  void (*clear)(uint32_t buffers);
  void (*begin)(uint32_t primitive);
  void (*end)();
  void (*vertex_2f)(float x, float y);
  void (*vertex_2i)(int32_t x, int32_t y);
  void (*vertex_3f)(float x, float y, float z);
  void (*colour_3f)(float r, float g, float b);
  void (*colour_4f)(float r, float g, float b, float a);
  void (*raster_position)(int32_t x, int32_t y);
  void (*read_pixels)(int32_t x, int32_t y, int32_t width, int32_t height, uint32_t format,
                      uint32_t type, void *pixels);
  void (*draw_pixels)(int32_t width, int32_t height, uint32_t format, uint32_t type,
                      const void *pixels);
};

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
inline constexpr uint32_t gl_rgb = 6407;
inline constexpr uint32_t gl_rgba = 6408;
inline constexpr uint32_t gl_color_buffer_bit = 16384;

// What opengl_depth_calls forward to from now on. Not null while a Device points at them.
void use_gl_calls(const GlCalls *calls);

extern const DepthCalls opengl_depth_calls;

}  // namespace quorix

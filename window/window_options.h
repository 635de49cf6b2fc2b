// SPDX-License-Identifier: MIT
//
// What options of qqwwid do to windows, canvases and OpenGL.
#pragma once

#include <cstdint>

#include "core/output_context.h"

namespace quorix {

// Top-level windows from now on.
void use_own_windows(OutputContext *context);
// The caller's window, and its bitmap. The value is the handle itself, or the address of four bytes
// that hold it.
void use_host_window(OutputContext *context, void *value);
void use_host_bitmap(OutputContext *context, void *value);

// One edge of the current window's clip rectangle follows the page's.
void store_window_clip(OutputContext *context);
// The width of lines to come, on the current canvas and in OpenGL as well.
void set_pen_width(OutputContext *context, int32_t width);
// Caps and joins take effect with the next pen.
void apply_line_style(OutputContext *context);
void apply_line_smooth(const OutputContext *context);
// Clips a window or a metafile; `on` is what is wanted, the record's clip_on what was before.
void apply_clip(OutputContext *context, bool on);
// The cursor of the current window, and of an interaction's end.
void set_end_cursor(OutputContext *context, int32_t kind);

// Options 0 and 2 tell: the current window, and its bitmap where the system has numbers for those.
int32_t current_window_handle(const OutputContext *context);
int32_t current_bitmap_handle(const OutputContext *context);

}  // namespace quorix

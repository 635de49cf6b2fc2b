// SPDX-License-Identifier: MIT
//
// The one drawing record of the process, shared by all families that draw.
//
// It is made by the first operation that needs it and lives until qqwfree. Every operation reaches
// it through `output_context` and returns at once where that is null; what an operation calls gets
// the record handed on. Its parts belong to their owners, who say in a release function of their
// own how to give back what hangs on them.
#pragma once

#include <cstdint>

#include "core/bitmap_fonts.h"
#include "core/colours.h"
#include "core/depth_state.h"
#include "core/options.h"
#include "core/page.h"
#include "core/pen.h"
#include "core/raster_buffers.h"
#include "core/window_state.h"

namespace quorix {

using ReleasePart = void (*)(OutputContext *context);
inline constexpr int32_t release_capacity = 8;  // more than there are owners

struct OutputContext {
  Page page;
  Pen pen;
  Accumulator accumulator;
  Colours colours;
  RasterBuffers buffers;
  DepthState depth;
  BitmapFonts fonts;
  Options options;
  WindowState window;
  ReleasePart release[release_capacity];  // called before the record goes, the last one first
  int32_t release_count;
};

extern OutputContext *output_context;

// A record with its options at their defaults, or null without memory. Whoever makes it puts it
// into `output_context`.
OutputContext *create_output_context();

// Puts the options back to their defaults; the current colour, palette and clip rectangle stay.
void set_output_defaults(OutputContext *context);

// Has `release` called before the record goes; a second time is the same as once.
void release_with_context(OutputContext *context, ReleasePart release);

// Releases the record and all that hangs on it, and clears `output_context`.
void release_output_context();

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// qqwwid, the one setter of the drawing record's options, and qqwfree, which ends the record.
//
// This is the part that needs no window system. Options are set before a device opens, so the
// record is made here if there is none.
#include "quorix/window.h"

#include <algorithm>
#include <iterator>

#include "raster/raster.h"
#include "window/window_set.h"

namespace quorix {

namespace {

enum Option : int32_t {
  option_swap_black_white = 3,
  option_clip_x1 = 11,
  option_clip_y1 = 12,
  option_clip_x2 = 13,
  option_clip_y2 = 14,
  option_fine_depth = 17,
  option_coarse_depth = 18,
  option_alpha = 19,
  option_blend_background = 21,
  option_text_map_level = 25,
  option_line_width = 26,
  option_line_cap = 27,
  option_line_join = 28,
  option_transparent = 32,
  option_no_clip = 33,
  option_smooth = 34,
  option_defaults = 99,
};

constexpr float fine_depth_bias = 1e-5F;
constexpr float coarse_depth_bias = 0.001F;

uint8_t low_byte(int32_t value) {
  return static_cast<uint8_t>(value & 255);
}

// The value is an address, or for some options of the window device a handle: it is looked at only
// where the option is known to take a number.
bool takes_number(int32_t option) {
  constexpr int32_t options[] = {option_swap_black_white, option_clip_x1,        option_clip_y1,
                                 option_clip_x2,          option_clip_y2,        option_alpha,
                                 option_blend_background, option_text_map_level, option_line_width,
                                 option_line_cap,         option_line_join,      option_transparent,
                                 option_no_clip,          option_smooth};
  return std::find(std::begin(options), std::end(options), option) != std::end(options);
}

// Options that concern the window device bring its record along, and so does every read.
bool needs_window_set(int32_t option, bool reads) {
  constexpr int32_t window_options[] = {0, 1, 2, 5, 20, 26, 27, 28, 29, 30, 33};
  return reads || std::find(std::begin(window_options), std::end(window_options), option) !=
                      std::end(window_options);
}

void set_transparent_colour(OutputContext *context, int32_t value) {
  context->colours.transparent_colour = value;
  if (value == -1) return;
  colour_to_rgb(context, value, &context->colours.transparent_r, &context->colours.transparent_g,
                &context->colours.transparent_b);
  if (is_packed_colour(value)) {
    context->colours.transparent_colour =
        nearest_colour(context, context->colours.transparent_r, context->colours.transparent_g,
                       context->colours.transparent_b);
  }
}

// The pen and clipping; each first draws what was gathered under the old state.
void set_pen_option(OutputContext *context, int32_t option, int32_t value) {
  flush_raster(context);
  switch (option) {
    case option_line_width:
      context->pen.line_width = value;
      break;
    case option_line_cap:
      context->pen.line_cap = value;
      break;
    case option_line_join:
      context->pen.line_join = value;
      break;
    case option_no_clip:
      context->page.clip_on = value == 1 ? 0 : 1;
      break;
    default:
      break;
  }
}

// Only the left edge flushes. Kept: the four edges are always set in the order of their numbers.
void set_clip_edge(OutputContext *context, int32_t option, int32_t value) {
  switch (option) {
    case option_clip_x1:
      flush_raster(context);
      context->page.clip_x1 = value;
      break;
    case option_clip_y1:
      context->page.clip_y1 = value;
      break;
    case option_clip_x2:
      context->page.clip_x2 = value;
      break;
    default:
      context->page.clip_y2 = value;
      break;
  }
}

void set_plain_option(OutputContext *context, int32_t option, int32_t value) {
  switch (option) {
    case option_swap_black_white:
      context->options.swap_black_white = low_byte(value);
      break;
    case option_fine_depth:
      context->depth.depth_bias = fine_depth_bias;
      break;
    case option_coarse_depth:
      context->depth.depth_bias = coarse_depth_bias;
      break;
    case option_alpha:
      context->colours.colour_alpha = low_byte(value);
      break;
    case option_blend_background:
      context->depth.blend_over_background = low_byte(1 - low_byte(value));
      break;
    case option_text_map_level:
      context->options.text_map_level = value;
      break;
    case option_transparent:
      set_transparent_colour(context, value);
      break;
    case option_smooth:
      context->pen.line_smooth_on = low_byte(low_byte(value) - 1);
      break;
    case option_defaults:
      restore_defaults(context);
      break;
    default:
      break;
  }
}

void set_option(OutputContext *context, int32_t option, int32_t value) {
  switch (option) {
    case option_line_width:
    case option_line_cap:
    case option_line_join:
    case option_no_clip:
      set_pen_option(context, option, value);
      break;
    case option_clip_x1:
    case option_clip_y1:
    case option_clip_x2:
    case option_clip_y2:
      set_clip_edge(context, option, value);
      break;
    default:
      set_plain_option(context, option, value);
      break;
  }
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwwid(int32_t option, void *value, int32_t set) {
  OutputContext *context = require_output_context();
  if (needs_window_set(option, set == 0)) require_window_set(context);
  auto *number = static_cast<int32_t *>(value);
  if (set == 0) {
    *number = -1;
  } else {
    set_option(context, option, takes_number(option) ? *number : 0);
  }
  return 0;
}

extern "C" int32_t qqwfree(void) {
  quorix::release_output_context();
  return 0;
}

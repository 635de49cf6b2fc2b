// SPDX-License-Identifier: MIT
//
// qqwwid, the one setter of the drawing record's options, and qqwfree, which ends the record.
//
// Options are set before a device opens, so the record is made here if there is none. Each option
// is a row of one table; what is not in the table is ignored.
#include "quorix/window.h"

#include "raster/raster.h"
#include "window/window_options.h"
#include "window/window_set.h"

namespace quorix {

namespace {

// What the caller's value is: of no meaning, the address of a number, or a handle itself.
enum class Takes : uint8_t { nothing, a_number, a_handle };

// What there has to be: the WindowSet is made where there is none.
enum class Needs : uint8_t { the_record, the_window_set };

// What is drawn under the old state before the option is set: nothing, the raster's lines unless a
// window is current, or the lines of whichever is current.
enum class Flush : uint8_t { no_lines, raster_lines, current_lines };

struct Value {
  int32_t number;
  void *handle;
};

using Context = OutputContext;

struct Option {
  int32_t number;
  Takes takes;
  Needs needs;
  Flush flush;
  void (*set)(Context *c, const Value &v);  // null: nothing more to do
};

uint8_t low_byte(int32_t value) {
  return static_cast<uint8_t>(value & 255);
}

// ---- The page and its lines

void set_clip_x1(Context *c, const Value &v) {
  c->page.clip_x1 = v.number;
  store_window_clip(c);
}

void set_clip_y1(Context *c, const Value &v) {
  c->page.clip_y1 = v.number;
  store_window_clip(c);
}

void set_clip_x2(Context *c, const Value &v) {
  c->page.clip_x2 = v.number;
  store_window_clip(c);
}

void set_clip_y2(Context *c, const Value &v) {
  c->page.clip_y2 = v.number;
  store_window_clip(c);
}

// Kept: 1 is off.
void set_clip_switch(Context *c, const Value &v) {
  const bool on = v.number != 1;
  apply_clip(c, on);
  c->page.clip_on = on ? 1 : 0;
}

void set_line_width(Context *c, const Value &v) {
  set_pen_width(c, v.number);
}

void set_line_cap(Context *c, const Value &v) {
  c->pen.line_cap = v.number;
  apply_line_style(c);
}

void set_line_join(Context *c, const Value &v) {
  c->pen.line_join = v.number;
  apply_line_style(c);
}

void set_line_smooth(Context *c, const Value &v) {
  c->pen.line_smooth_on = low_byte(low_byte(v.number) - 1);
  apply_line_smooth(c);
}

// ---- Colours

void set_swap_black_white(Context *c, const Value &v) {
  c->options.swap_black_white = low_byte(v.number);
}

void set_alpha(Context *c, const Value &v) {
  c->colours.colour_alpha = low_byte(v.number);
}

void set_transparent(Context *c, const Value &v) {
  Colours &colours = c->colours;
  colours.transparent_colour = v.number;
  if (v.number == -1) return;
  colour_to_rgb(c, v.number, &colours.transparent_r, &colours.transparent_g,
                &colours.transparent_b);
  if (is_packed_colour(v.number)) {
    colours.transparent_colour =
        nearest_colour(c, colours.transparent_r, colours.transparent_g, colours.transparent_b);
  }
}

// ---- Windows

void set_own_windows(Context *c, const Value & /*v*/) {
  use_own_windows(c);
}

void set_host_window(Context *c, const Value &v) {
  use_host_window(c, v.handle);
}

void set_host_bitmap(Context *c, const Value &v) {
  use_host_bitmap(c, v.handle);
}

void set_scroll_bitmap(Context *c, const Value &v) {
  c->window.window_set->scroll_bitmap = low_byte(v.number) != 0;
}

void set_active_cursor(Context *c, const Value &v) {
  c->window.window_set->active_cursor = v.number;
}

void set_cursor_at_end(Context *c, const Value &v) {
  set_end_cursor(c, v.number);
}

// ---- Depth, text, all

void set_fine_depth(Context *c, const Value & /*v*/) {
  c->depth.depth_bias = 1e-5F;
}

void set_coarse_depth(Context *c, const Value & /*v*/) {
  c->depth.depth_bias = 0.001F;
}

// Kept: 1 is off.
void set_blend_over_background(Context *c, const Value &v) {
  c->depth.blend_over_background = low_byte(1 - low_byte(v.number));
}

void set_text_map_level(Context *c, const Value &v) {
  c->options.text_map_level = v.number;
}

void set_defaults(Context *c, const Value & /*v*/) {
  restore_defaults(c);
}

// ---- The table

using enum Takes;
using enum Needs;
using enum Flush;

// Of the four edges of the clip rectangle only the left one flushes. Kept: they are always set in
// the order of their numbers.
constexpr Option options[] = {
    {0, nothing, the_window_set, no_lines, set_own_windows},
    {1, a_handle, the_window_set, no_lines, set_host_window},
    {2, a_handle, the_window_set, no_lines, set_host_bitmap},
    {3, a_number, the_record, no_lines, set_swap_black_white},
    {5, a_number, the_window_set, no_lines, set_scroll_bitmap},
    {11, a_number, the_record, raster_lines, set_clip_x1},
    {12, a_number, the_record, no_lines, set_clip_y1},
    {13, a_number, the_record, no_lines, set_clip_x2},
    {14, a_number, the_record, no_lines, set_clip_y2},
    {17, nothing, the_record, no_lines, set_fine_depth},
    {18, nothing, the_record, no_lines, set_coarse_depth},
    {19, a_number, the_record, no_lines, set_alpha},
    {20, a_number, the_window_set, no_lines, set_active_cursor},
    {21, a_number, the_record, no_lines, set_blend_over_background},
    {25, a_number, the_record, no_lines, set_text_map_level},
    {26, a_number, the_window_set, raster_lines, set_line_width},
    {27, a_number, the_window_set, current_lines, set_line_cap},
    {28, a_number, the_window_set, current_lines, set_line_join},
    {29, nothing, the_window_set, no_lines, nullptr},
    {30, a_number, the_window_set, no_lines, set_cursor_at_end},
    {32, a_number, the_record, no_lines, set_transparent},
    {33, a_number, the_window_set, current_lines, set_clip_switch},
    {34, a_number, the_record, no_lines, set_line_smooth},
    {99, nothing, the_record, no_lines, set_defaults},
};

const Option *find_option(int32_t wanted) {
  for (const Option &option : options) {
    if (option.number == wanted) return &option;
  }
  return nullptr;
}

void flush_for(OutputContext *context, Flush flush) {
  const bool window = context->window.window_active != 0;
  if (flush == current_lines || (flush == raster_lines && !window)) flush_current_device(context);
}

// A handle is not looked at, and a number only where the option takes one.
void set_option(OutputContext *context, const Option &option, void *value) {
  Value given = {0, value};
  if (option.takes == a_number) {
    if (value == nullptr) return;
    given.number = *static_cast<const int32_t *>(value);
  }
  flush_for(context, option.flush);
  if (option.set != nullptr) option.set(context, given);
}

// Only handles can be read, and those have 32 bits.
int32_t read_option(const OutputContext *context, int32_t option) {
  switch (option) {
    case 0:
      return current_window_handle(context);
    case 2:
      return current_bitmap_handle(context);
    default:
      return -1;
  }
}

}  // namespace

}  // namespace quorix

using namespace quorix;

// Every read brings the WindowSet along, as options of windows do when they are set.
extern "C" int32_t qqwwid(int32_t option, void *value, int32_t set) {
  OutputContext *context = require_output_context();
  const bool reads = set == 0;
  const Option *row = find_option(option);
  if (reads || (row != nullptr && row->needs == the_window_set)) {
    require_window_set(context);
  }
  if (!reads) {
    if (row != nullptr) set_option(context, *row, value);
  } else if (value != nullptr) {
    *static_cast<int32_t *>(value) = read_option(context, option);
  }
  return 0;
}

extern "C" int32_t qqwfree(void) {
  release_output_context();
  return 0;
}

// SPDX-License-Identifier: MIT
//
// The current colour of a window, and its palette.
//
// On displays of more than 8 bits a colour is its red, green and blue. Smaller displays have a
// palette of 129 or 16 entries; a palette index is mapped onto them by one of the rules of
// palette_slot, and the palette is filled by the inverse of the same rule.
#include "quorix/window.h"
#include "window/ask.h"
#include "window/opengl_drawing.h"
#include "window/palette_maps.h"
#include "window/window.h"

namespace quorix {

namespace {

int32_t palette_slot(const OutputContext *context, int32_t index) {
  const int32_t bits = context->page.screen_bits;
  const uint8_t mode = context->window.window_set->colour_mode;
  if (context->colours.palette_kind == kind_of_8)
    return index == 0 ? 0 : (index % 8 == 0 ? 8 : index % 8);
  if (context->colours.palette_kind == kind_of_16) return index % 16;
  if (bits == 8 && mode == mode_spread) return (index + 1) / 2;
  if (bits == 8 && mode == mode_first_128) return index % 128;
  if (bits != 4) return index;
  return mode == mode_spread ? spread_onto_16(index) : index % 16;
}

// The index whose colour an entry of the palette takes.
int32_t palette_source(const OutputContext *context, int32_t entry) {
  const WindowSet *set = context->window.window_set;
  const uint8_t kind = context->colours.palette_kind;
  if (kind == kind_of_8 || kind == kind_of_16 || set->palette_size == 256) return entry;
  const bool every_second = set->colour_mode == mode_spread;
  if (context->page.screen_bits == 4) return every_second ? spread_from_16(entry) : entry % 16;
  return every_second && entry > 0 ? 2 * entry - 1 : entry;
}

void set_gl_colour(const OutputContext *context) {
  const Colours &c = context->colours;
  const auto share = [](uint8_t level) { return static_cast<float>(level / 255.0); };
  const GlCalls *gl = drawing_gl(context);
  if (gl != nullptr) gl->colour_3f(share(c.colour_r), share(c.colour_g), share(c.colour_b));
}

void set_rgb(OutputContext *context, uint8_t r, uint8_t g, uint8_t b) {
  context->colours.colour_r = r;
  context->colours.colour_g = g;
  context->colours.colour_b = b;
}

// Red, green and blue from a packed colour or a table of the record's.
void resolve_colour(OutputContext *context, int32_t colour) {
  const WindowSet *set = context->window.window_set;
  const bool from_record = is_packed_colour(colour) || context->window.opengl_on != 0;
  if (from_record) {
    uint8_t r = 0;
    uint8_t g = 0;
    uint8_t b = 0;
    colour_to_rgb(context, colour, &r, &g, &b);
    set_rgb(context, r, g, b);
  } else if (set->palette_mode == palette_true_colour) {
    const PaletteEntry &entry = set->palette_entries[colour & 255];
    set_rgb(context, entry.r, entry.g, entry.b);
  }
}

void set_display_colour(OutputContext *context, int32_t colour) {
  WindowSet *set = context->window.window_set;
  const Colours &c = context->colours;
  if (uses_palette(set)) {
    const int32_t index = is_packed_colour(colour)
                              ? cached_nearest_colour(context, c.colour_r, c.colour_g, c.colour_b)
                              : colour & 255;
    const int32_t slot = palette_slot(context, index);
    context->colours.window_colour_index = static_cast<uint8_t>(slot & 255);
    set->colorref = palette_colour + static_cast<uint32_t>(slot);
  } else {
    set->colorref = display_rgb(c.colour_r, c.colour_g, c.colour_b);
  }
}

bool same_pen(const CanvasPen &a, const CanvasPen &b) {
  return a.style == b.style && a.width == b.width && a.colour == b.colour;
}

}  // namespace

uint32_t display_colour_of_index(const OutputContext *context, int32_t index) {
  const WindowSet *set = context->window.window_set;
  if (uses_palette(set))
    return palette_colour + static_cast<uint32_t>(palette_slot(context, index & 255));
  const PaletteEntry &entry = set->palette_entries[index & 255];
  return display_rgb(entry.r, entry.g, entry.b);
}

uint32_t display_colour_of_rgb(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b) {
  if (!uses_palette(context->window.window_set)) return display_rgb(r, g, b);
  return display_colour_of_index(context, cached_nearest_colour(context, r, g, b));
}

// Making a pen costs a system much more than the comparison.
void renew_pen(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  const int32_t width = context->pen.line_width;
  const CanvasPen pen =
      width <= 1 ? CanvasPen{0, 1, set->colorref} : CanvasPen{set->pen_style, width, set->colorref};
  if (same_pen(pen, set->pen)) return;
  const bool recoloured = pen.colour != set->pen.colour;
  set->pen = pen;
  Canvas *canvas = set->draw_canvas;
  if (canvas == nullptr) return;
  if (recoloured) ask(canvas->calls->set_text_colour, canvas, pen.colour);
  ask(canvas->calls->set_pen, canvas, pen);
}

void set_window_colour(OutputContext *context, int32_t colour) {
  const WindowSet *set = context->window.window_set;
  if (set == nullptr) return;
  context->colours.colour_arg = colour;
  flush_window(context);
  const bool gl = context->window.opengl_on != 0;
  if (set->palette_mode == palette_none && !gl) return;
  resolve_colour(context, colour);
  if (gl) return set_gl_colour(context);
  set_display_colour(context, colour);
  renew_pen(context);
}

}  // namespace quorix

using namespace quorix;

namespace {

void load_tables(OutputContext *context, uint8_t kind, const int32_t *table) {
  for (int32_t i = 0; i < 256; ++i) {
    const auto word = static_cast<uint32_t>(table[i]);
    context->colours.palette_r[i] = static_cast<uint8_t>(word >> 16 & 255);
    context->colours.palette_g[i] = static_cast<uint8_t>(word >> 8 & 255);
    context->colours.palette_b[i] = static_cast<uint8_t>(word & 255);
  }
  context->colours.palette_kind = kind;
  palette_changed(context);
}

// What the display shows follows the tables; returns how many entries do.
int32_t load_palette_entries(OutputContext *context) {
  WindowSet *set = context->window.window_set;
  const Colours &c = context->colours;
  const int32_t count = c.palette_kind == kind_of_8 || c.palette_kind == kind_of_16
                            ? palette_entries(c.palette_kind)
                            : set->palette_size;
  for (int32_t i = 0; i < count; ++i) {
    const int32_t j = palette_source(context, i);
    set->palette_entries[i].r = c.palette_r[j];
    set->palette_entries[i].g = c.palette_g[j];
    set->palette_entries[i].b = c.palette_b[j];
  }
  return count;
}

}  // namespace

extern "C" int32_t qqwclr(int32_t colour) {
  if (output_context != nullptr) set_window_colour(output_context, colour);
  return 0;
}

extern "C" int32_t qqwvlt(uint8_t kind, const int32_t *table) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  load_tables(context, kind, table);
  WindowSet *set = context->window.window_set;
  if (set == nullptr || set->palette_mode == palette_none || context->window.opengl_on != 0)
    return 0;
  const int32_t count = load_palette_entries(context);
  if (uses_palette(set) && set->draw_canvas != nullptr) {
    ask(set->draw_canvas->calls->set_palette, set->draw_canvas, set->palette_entries, count);
  }
  return 0;
}

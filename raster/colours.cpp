// SPDX-License-Identifier: MIT
//
// Setting the colour and the palette, and what a colour is as a pixel.
#include "quorix/raster.h"
#include "raster/raster.h"

namespace quorix {

uint8_t palette_pixel(const OutputContext *context, int32_t colour) {
  if (!is_packed_colour(colour)) return static_cast<uint8_t>(colour & 255);
  uint8_t r = 0;
  uint8_t g = 0;
  uint8_t b = 0;
  colour_to_rgb(context, colour, &r, &g, &b);
  return static_cast<uint8_t>(cached_nearest_colour(context, r, g, b));
}

uint32_t rgba_pixel(const OutputContext *context, int32_t colour) {
  uint8_t r = 0;
  uint8_t g = 0;
  uint8_t b = 0;
  colour_to_rgb(context, colour, &r, &g, &b);
  return pack_rgba(r, g, b, context->colours.colour_alpha);
}

void set_current_colour(OutputContext *context, int32_t colour) {
  flush_raster(context);
  context->colours.colour_arg = colour;
  if (is_packed_colour(colour) && context->page.rgba_mode != 0) {
    // colour_index stays as it was: nothing reads it in this mode.
    colour_to_rgb(context, colour, &context->colours.colour_r, &context->colours.colour_g,
                  &context->colours.colour_b);
    return;
  }
  context->colours.colour_index = palette_pixel(context, colour);
  colour_to_rgb(context, context->colours.colour_index, &context->colours.colour_r,
                &context->colours.colour_g, &context->colours.colour_b);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvclr(int32_t colour) {
  if (output_context != nullptr) set_current_colour(output_context, colour);
  return 0;
}

extern "C" int32_t qqvvlt(uint8_t kind, const uint32_t *table) {
  OutputContext *context = output_context;
  if (context == nullptr) return 0;
  flush_raster(context);
  context->colours.palette_kind = kind;
  const int32_t count = palette_entries(kind);
  for (int32_t i = 0; i < count; ++i) {
    context->colours.palette_r[i] = static_cast<uint8_t>(table[i] >> 16 & 255);
    context->colours.palette_g[i] = static_cast<uint8_t>(table[i] >> 8 & 255);
    context->colours.palette_b[i] = static_cast<uint8_t>(table[i] & 255);
  }
  palette_changed(context);
  return 0;
}

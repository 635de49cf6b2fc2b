// SPDX-License-Identifier: MIT
//
// Between palette indices and the bytes of a bitmap on a display with a palette.
//
// The display's first 10 entries belong to the system, so indices stand 10 further on; and where
// the palette has fewer than 256 entries (`image_compressed`) several indices share one.
#include "window/direct_bitmap.h"
#include "window/palette_maps.h"

namespace quorix {

namespace {

constexpr int32_t system_entries = 10;

bool is_spread(const OutputContext *context) {
  return context->window.window_set->colour_mode == mode_spread;
}

// Of displays of 4 bits, which have no entries to spare.
int32_t small_pixel(const OutputContext *context, int32_t index) {
  return is_spread(context) ? spread_onto_16(index) : index % 16;
}

int32_t compressed_pixel(const OutputContext *context, int32_t index) {
  if (context->page.screen_bits == 4) return small_pixel(context, index);
  switch (context->window.window_set->colour_mode) {
    case mode_spread:
      return (index + 1) / 2 + system_entries;
    case mode_first_128:
      return index % 128 + system_entries;
    default:
      return index;
  }
}

int32_t small_index(const OutputContext *context, int32_t pixel) {
  return is_spread(context) ? spread_from_16(pixel) : pixel;
}

// Kept: an even index comes back one less, since it shares its entry with the odd one before it.
int32_t compressed_index(const OutputContext *context, int32_t pixel) {
  if (context->page.screen_bits == 4) return small_index(context, pixel);
  const int32_t entry = pixel - system_entries;
  switch (context->window.window_set->colour_mode) {
    case mode_spread:
      return entry == 0 ? 0 : 2 * entry - 1;
    case mode_first_128:
      return entry;
    default:
      return pixel;
  }
}

}  // namespace

uint8_t index_to_pixel(const OutputContext *context, int32_t index) {
  const WindowSet *set = context->window.window_set;
  const int32_t i = index & 255;
  if (set == nullptr) return static_cast<uint8_t>(i);
  int32_t pixel = i;
  if (set->image_compressed) {
    pixel = compressed_pixel(context, i);
  } else if (set->colour_mode != mode_own) {
    pixel = i + system_entries;
  }
  return static_cast<uint8_t>(pixel & 255);
}

uint8_t pixel_to_index(const OutputContext *context, uint8_t pixel) {
  const WindowSet *set = context->window.window_set;
  int32_t index = pixel;
  if (set->image_compressed) {
    index = compressed_index(context, pixel);
  } else if (set->colour_mode != mode_own) {
    index = pixel - system_entries;
  }
  return static_cast<uint8_t>(index & 255);
}

}  // namespace quorix

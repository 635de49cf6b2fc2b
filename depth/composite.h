// SPDX-License-Identifier: MIT
//
// Blending one row of a layer onto one row of a picture.
//
// With a = alpha + 1, a channel becomes ((a * (s - d)) >> 8) + d; an alpha of 255 therefore
// replaces and one of 0 leaves the pixel alone. Every pixel that was blended gets the alpha 0 in
// the layer, so that the layer is clean for its next use; its colours stay.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

struct CompositeRule {
  uint8_t background;        // all channels of an untouched pixel
  bool replaces_background;  // such a pixel takes the layer's colour in full
};

// What becomes of the fourth byte of the picture's pixels.
enum class FourthByte { takes_alpha, opaque, untouched };

// The plain form; composite_row.cpp. `reversed`: the picture's pixels are blue, green, red.
void composite_row_plain(uint8_t *to, size_t step, bool reversed, FourthByte fourth, uint8_t *layer,
                         size_t count, CompositeRule rule);

// RGBA onto RGBA, alpha and all: the form for this processor.
using CompositeRow = void (*)(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule);
CompositeRow composite_row();

void composite_row_rgba(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule);
void composite_row_sse2(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule);
void composite_row_avx2(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule);
void composite_row_neon(uint8_t *to, uint8_t *layer, size_t count, CompositeRule rule);

}  // namespace quorix

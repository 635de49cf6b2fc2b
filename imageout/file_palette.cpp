// SPDX-License-Identifier: MIT
//
// Palettes on their way into files, and pictures that need one computed.
//
// Decision. Entries that a computed palette does not need are 0, so that files are reproducible.
#include "imageout/imageout.h"

namespace quorix {

void palette_entry(const FilePalette &palette, size_t i, uint8_t *rgb) {
  if (palette.words != nullptr) {
    const uint32_t word = palette.words[i];
    rgb[0] = static_cast<uint8_t>(word >> 16 & 0xff);
    rgb[1] = static_cast<uint8_t>(word >> 8 & 0xff);
    rgb[2] = static_cast<uint8_t>(word & 0xff);
    return;
  }
  const bool known = i < quantised_colours;
  rgb[0] = known ? palette.reds[i] : uint8_t{0};
  rgb[1] = known ? palette.greens[i] : uint8_t{0};
  rgb[2] = known ? palette.blues[i] : uint8_t{0};
}

WriterStatus quantise_picture(const PictureSource &source, FilePalette *palette,
                              OwnedArray<uint8_t> *indices) {
  *palette = {};
  if (!has_pixels(source.area)) return writer_done;
  size_t bytes = 0;
  *indices = read_picture(source, Samples::rgb, &bytes);
  uint8_t *const pixels = indices->get();
  if (pixels == nullptr) return writer_no_memory;
  quantise(pixels, static_cast<size_t>(source.area.width), static_cast<size_t>(source.area.height),
           pixels, palette->reds, palette->greens, palette->blues);
  return writer_done;
}

}  // namespace quorix

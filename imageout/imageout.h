// SPDX-License-Identifier: MIT
//
// What the image writers share, grouped by file. The quantiser has a header of its own.
//
// Every writer goes the same way: it finds its source (before it touches a file), opens the file,
// writes what comes before the pixels, asks for memory, reads, writes the pixels. No result of a
// write is looked at: what fails is noted for its FileWork (base/file_failures.h). What a writer
// needs besides is between it and its format.
//
// Decisions. Without a drawing record the status is -1. Where a device has no page yet, or no page
// any more, and wherever a rectangle leaves the page, pixels are 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "base/memory.h"
#include "core/device.h"
#include "core/output_context.h"
#include "imageout/quantiser.h"

namespace quorix {

enum WriterStatus : int32_t {
  writer_done = 0,
  writer_no_file = -1,  // also where nothing was ever drawn
  writer_no_memory = -2,
  writer_no_device = -9,
};

// ---- image_clip.cpp

struct ImageClip {
  int32_t x, y, width, height;
  bool enabled;
};

// In force for all writers until qqpclp changes it; none of them does.
extern ImageClip image_clip;

// The pixels to be written. Sizes are as the caller gave them: 0 and below mean no pixels at all,
// and the absolute value of the smallest integer needs the wider type.
struct PictureArea {
  int32_t x, y;
  int64_t width, height;
};

PictureArea picture_area(int32_t width, int32_t height);

inline bool has_pixels(const PictureArea &area) {
  return area.width > 0 && area.height > 0;
}

// A size as file headers have it, in 32 bits.
inline int32_t header_size(int64_t size) {
  return static_cast<int32_t>(size);
}

// ---- picture_source.cpp

enum class Samples : uint8_t { index, rgb };  // one or three bytes per pixel

inline size_t bytes_per_pixel(Samples samples) {
  return samples == Samples::rgb ? 3 : 1;
}

// How a picture travels from the device into a file that knows palettes.
enum class PixelPath : uint8_t {
  true_colour,  // RGB all the way
  indexed,      // the device's indices with the caller's palette
  quantised,    // read as RGB, a palette is computed
};

// A negative device number asks for true colour; a negative height says that the device holds true
// colours.
PixelPath pixel_path(int32_t device, int32_t height);

struct PictureSource {
  OutputContext *context;
  const Device *device;
  PictureArea area;
};

// The source for the arguments that all writers have. writer_no_file where there is no drawing
// record (`context` is null), writer_no_device where no device answers to the number; then nothing
// may be written.
WriterStatus find_source(PictureSource *source, OutputContext *context, int32_t device,
                         int32_t width, int32_t height);

// The size of the whole picture; false if it does not fit.
bool picture_bytes(const PictureSource &source, Samples samples, size_t *bytes);

// One row, counted from the top of the area, into bytes_per_pixel * width bytes. The picture fits.
void read_picture_row(const PictureSource &source, int64_t row, Samples samples, uint8_t *pixels);

// The whole picture, `bytes` of it, rows from the top without padding; empty if there is no memory
// for it. To be called only where there are pixels.
OwnedArray<uint8_t> read_picture(const PictureSource &source, Samples samples, size_t *bytes);

// ---- page_fit.cpp: a picture on a page of paper

// Where a picture comes on a page, in PostScript points.
struct PageFit {
  bool landscape;  // strictly wider than high: turned by 90 degrees
  double page_width, page_height;
  double drawn_width, drawn_height;
};

// What callers of qqpps and qqppdf say of the page; page_set is 1 where its size counts.
struct PageRequest {
  int32_t page_set, page_width, page_height;
};

// The size of one internal unit, a twentieth of a millimetre, in points.
inline constexpr double points_per_unit = 0.1417322835;

// A caller's length, in tenths of a millimetre, in internal units.
inline double page_units(int32_t length) {
  return 2.0 * length;
}

PageFit fit_on_page(const PictureArea &area, const PageRequest &request);

// ---- file_palette.cpp

// The colours that stand in a file beside its indices: the caller's, or computed ones.
struct FilePalette {
  const uint32_t *words;  // 0xRRGGBB; null: the computed ones
  uint8_t reds[quantised_colours], greens[quantised_colours], blues[quantised_colours];
};

// One entry, red first. Computed palettes have zeros where they have no colour, also beyond their
// end; the caller's are trusted to have the entry.
void palette_entry(const FilePalette &palette, size_t i, uint8_t *rgb);

// Reads a picture as RGB, computes the palette, and leaves an index per pixel. A picture without
// pixels needs neither. writer_no_memory if the picture does not fit.
WriterStatus quantise_picture(const PictureSource &source, FilePalette *palette,
                              OwnedArray<uint8_t> *indices);

// ---- Words of file headers

// The caller says whether words have to be turned, and is believed: a wrong answer gives a file
// with all its words reversed. Kept, since that is what callers on other hosts ask for.
template <class Word>
void put_word(uint8_t *to, Word word, bool swap) {
  static_assert(sizeof word == 2 || sizeof word == 4);
  if (swap) {
    if constexpr (sizeof word == 2) {
      word = __builtin_bswap16(word);
    } else {
      word = __builtin_bswap32(word);
    }
  }
  std::memcpy(to, &word, sizeof word);
}

// A header that grows in a buffer, which has room for it.
struct HeaderBytes {
  uint8_t *next;
  bool swap;
};

template <class Word>
void add_word(HeaderBytes *header, Word word) {
  put_word(header->next, word, header->swap);
  header->next += sizeof word;
}

inline void add_u16(HeaderBytes *header, uint16_t word) {
  add_word(header, word);
}

inline void add_u32(HeaderBytes *header, uint32_t word) {
  add_word(header, word);
}

inline void add_bytes(HeaderBytes *header, const void *bytes, size_t count) {
  std::memcpy(header->next, bytes, count);
  header->next += count;
}

}  // namespace quorix

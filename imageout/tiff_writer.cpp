// SPDX-License-Identifier: MIT
//
// Baseline TIFF, little-endian, not compressed, one row per strip: palette colour, RGB or bilevel.
//
// The file is: header, the only directory, the offsets and the sizes of the strips, the two
// resolutions, the table of the form, the strips.
//
// Decisions. A picture of one row has offset and size of its strip in the directory itself, as the
// format wants it; the arrays stay where they are. A picture without pixels has no strips. If there
// is no memory for a picture that no TIFF can hold (4 GB), its file ends behind the directory.
#include <algorithm>

#include "base/file_failures.h"
#include "base/files.h"
#include "base/numbers.h"
#include "base/tiff_format.h"
#include "imageout/imageout.h"
#include "quorix/imageout.h"

namespace quorix {

namespace {

enum class TiffForm : uint8_t { palette, rgb, bilevel };

constexpr uint32_t directory_at = tiff_header_bytes;
constexpr uint32_t entry_bytes = tiff_entry_bytes;
// What stands around the entries: their number before, the next directory behind.
constexpr uint32_t directory_ends = sizeof(uint16_t) + sizeof(uint32_t);
constexpr uint32_t default_resolution = 100;  // per inch
constexpr uint32_t colour_map_values = 3 * quantised_colours;

struct TiffWriter {
  PictureSource source;
  TiffForm form;
  Samples samples;    // as the picture is read
  bool quantised;     // a palette is computed from it
  bool swap;          // words of this host have to be turned
  bool white_is_one;  // bilevel: only white gives 1; otherwise all but black does
  uint32_t resolution;
  TiffUnit unit;  // of the resolution
  FilePalette palette;
  std::FILE *file;
};

// Where things stand. Offsets have 32 bits and wrap beyond them.
struct TiffLayout {
  uint32_t entries;
  uint32_t rows;
  uint32_t strip_bytes;
  uint32_t offsets, sizes, x_resolution, y_resolution, table, strips;
};

TiffLayout make_layout(const TiffWriter &tiff) {
  const PictureArea &area = tiff.source.area;
  const auto width = static_cast<uint32_t>(std::max<int64_t>(area.width, 0));
  TiffLayout layout = {};
  layout.entries = tiff.form == TiffForm::palette ? 14 : 13;
  // Rows without pixels are no strips: there may be billions of them.
  layout.rows = has_pixels(area) ? static_cast<uint32_t>(area.height) : 0;
  layout.strip_bytes = width;
  uint32_t table_bytes = colour_map_values * sizeof(uint16_t);
  if (tiff.form == TiffForm::rgb) {
    layout.strip_bytes = 3 * width;
    table_bytes = 3 * sizeof(uint16_t);
  } else if (tiff.form == TiffForm::bilevel) {
    layout.strip_bytes = width / 8 + (width % 8 != 0 ? 1U : 0U);
    table_bytes = 0;
  }
  layout.offsets = directory_at + directory_ends + entry_bytes * layout.entries;
  layout.sizes = layout.offsets + 4 * layout.rows;
  layout.x_resolution = layout.sizes + 4 * layout.rows;
  layout.y_resolution = layout.x_resolution + 8;
  layout.table = layout.y_resolution + 8;
  layout.strips = layout.table + table_bytes;
  return layout;
}

// ---- directory

void add_entry(HeaderBytes *directory, TiffTag tag, TiffType type, uint32_t count, uint32_t value) {
  add_u16(directory, static_cast<uint16_t>(tag));
  add_u16(directory, static_cast<uint16_t>(type));
  add_u32(directory, count);
  if (type == TiffType::shorts && count == 1) {
    add_u16(directory, static_cast<uint16_t>(value));
    add_u16(directory, 0);
  } else {
    add_u32(directory, value);
  }
}

TiffPhotometric photometric(TiffForm form) {
  if (form == TiffForm::palette) return tiff_palette;
  return form == TiffForm::rgb ? tiff_rgb : tiff_black_is_zero;
}

void add_entries(const TiffWriter &tiff, const TiffLayout &layout, HeaderBytes *directory) {
  const PictureArea &area = tiff.source.area;
  const bool rgb = tiff.form == TiffForm::rgb;
  const bool one_strip = layout.rows == 1;
  const uint32_t offsets = one_strip ? layout.strips : layout.offsets;
  const uint32_t sizes = one_strip ? layout.strip_bytes : layout.sizes;
  const auto add_short = [&](TiffTag tag, uint32_t value) {
    add_entry(directory, tag, TiffType::shorts, 1, value);
  };
  const auto add_long = [&](TiffTag tag, uint32_t value) {
    add_entry(directory, tag, TiffType::longs, 1, value);
  };
  add_long(TiffTag::new_subfile_type, 0);  // an ordinary picture
  add_long(TiffTag::image_width, static_cast<uint32_t>(header_size(area.width)));
  add_long(TiffTag::image_length, static_cast<uint32_t>(header_size(area.height)));
  if (rgb) {
    add_entry(directory, TiffTag::bits_per_sample, TiffType::shorts, 3, layout.table);
  } else {
    add_short(TiffTag::bits_per_sample, tiff.form == TiffForm::palette ? 8 : 1);
  }
  add_short(TiffTag::compression, tiff_raw);
  add_short(TiffTag::photometric, photometric(tiff.form));
  add_entry(directory, TiffTag::strip_offsets, TiffType::longs, layout.rows, offsets);
  add_short(TiffTag::samples_per_pixel, rgb ? 3 : 1);
  add_short(TiffTag::rows_per_strip, 1);
  add_entry(directory, TiffTag::strip_byte_counts, TiffType::longs, layout.rows, sizes);
  add_entry(directory, TiffTag::x_resolution, TiffType::rationals, 1, layout.x_resolution);
  add_entry(directory, TiffTag::y_resolution, TiffType::rationals, 1, layout.y_resolution);
  add_short(TiffTag::resolution_unit, tiff.unit);
  if (tiff.form == TiffForm::palette)
    add_entry(directory, TiffTag::colour_map, TiffType::shorts, colour_map_values, layout.table);
}

void write_directory(const TiffWriter &tiff, const TiffLayout &layout) {
  constexpr size_t most_entries = 14;
  uint8_t bytes[directory_at + directory_ends + most_entries * entry_bytes];
  HeaderBytes header = {bytes, tiff.swap};
  constexpr char mark[] = {tiff_little_endian, tiff_little_endian};
  add_bytes(&header, mark, sizeof mark);
  add_u16(&header, tiff_version);
  add_u32(&header, directory_at);
  add_u16(&header, static_cast<uint16_t>(layout.entries));
  add_entries(tiff, layout, &header);
  add_u32(&header, 0);  // no further directory
  write_file(tiff.file, bytes, layout.offsets);
}

// ---- arrays

// As many words as there are strips, each larger by `step` than the one before.
void write_strip_words(const TiffWriter &tiff, const TiffLayout &layout, uint32_t first,
                       uint32_t step) {
  constexpr uint32_t block = 1024;
  uint8_t bytes[block * sizeof(uint32_t)];
  uint32_t word = first;
  for (uint32_t left = layout.rows; left != 0;) {
    const uint32_t count = std::min(left, block);
    HeaderBytes words = {bytes, tiff.swap};
    for (uint32_t i = 0; i < count; ++i, word += step)
      add_u32(&words, word);
    write_file(tiff.file, bytes, count * sizeof(uint32_t));
    left -= count;
  }
}

void write_resolutions(const TiffWriter &tiff) {
  uint8_t bytes[4 * sizeof(uint32_t)];
  HeaderBytes words = {bytes, tiff.swap};
  for (int i = 0; i < 2; ++i) {
    add_u32(&words, tiff.resolution);
    add_u32(&words, 1);
  }
  write_file(tiff.file, bytes, sizeof bytes);
}

void write_colour_map(const TiffWriter &tiff) {
  constexpr uint32_t to_16_bits = 257;
  uint8_t bytes[colour_map_values * sizeof(uint16_t)];
  HeaderBytes words = {bytes, tiff.swap};
  for (size_t component = 0; component < 3; ++component) {
    for (size_t i = 0; i < quantised_colours; ++i) {
      uint8_t rgb[3];
      palette_entry(tiff.palette, i, rgb);
      add_u16(&words, static_cast<uint16_t>(rgb[component] * to_16_bits));
    }
  }
  write_file(tiff.file, bytes, sizeof bytes);
}

void write_table(const TiffWriter &tiff) {
  if (tiff.form == TiffForm::palette) write_colour_map(tiff);
  if (tiff.form != TiffForm::rgb) return;
  uint8_t bytes[3 * sizeof(uint16_t)];
  HeaderBytes words = {bytes, tiff.swap};
  for (int i = 0; i < 3; ++i)
    add_u16(&words, 8);  // bits per sample
  write_file(tiff.file, bytes, sizeof bytes);
}

// ---- pixels

// The bit of a colour.
bool bit_of(const TiffWriter &tiff, const uint8_t *rgb) {
  const int limit = tiff.white_is_one ? 255 : 0;
  const bool at_limit = rgb[0] == limit && rgb[1] == limit && rgb[2] == limit;
  return at_limit == tiff.white_is_one;
}

// Packs one row of bits, the first pixel highest. `to` may be where the row stands, or before it.
template <class Bit>
void pack_row(uint8_t *to, size_t width, Bit bit) {
  for (size_t x = 0; x < width; x += 8) {
    const size_t count = std::min<size_t>(8, width - x);
    uint32_t byte = 0;
    for (size_t i = 0; i < count; ++i)
      byte |= static_cast<uint32_t>(bit(x + i)) << (7 - i);
    *to++ = static_cast<uint8_t>(byte);
  }
}

// Turns the picture into bits where it stands: a packed row is never longer than the row itself, so
// none is overwritten before its turn.
void pack_bits(const TiffWriter &tiff, const TiffLayout &layout, uint8_t *pixels) {
  const auto width = static_cast<size_t>(tiff.source.area.width);
  bool bits[quantised_colours];
  for (size_t i = 0; i < quantised_colours && tiff.samples == Samples::index; ++i) {
    uint8_t rgb[3];
    palette_entry(tiff.palette, i, rgb);
    bits[i] = bit_of(tiff, rgb);
  }
  const uint8_t *from = pixels;
  uint8_t *to = pixels;
  for (uint32_t row = 0; row < layout.rows; ++row, to += layout.strip_bytes) {
    if (tiff.samples == Samples::rgb) {
      pack_row(to, width, [&](size_t x) { return bit_of(tiff, from + 3 * x); });
      from += 3 * width;
    } else {
      pack_row(to, width, [&](size_t x) { return bits[from[x]]; });
      from += width;
    }
  }
}

// Leaves in `pixels` what the strips hold.
WriterStatus make_strips(TiffWriter *tiff, const TiffLayout &layout, OwnedArray<uint8_t> *pixels) {
  if (tiff->quantised) return quantise_picture(tiff->source, &tiff->palette, pixels);
  if (!has_pixels(tiff->source.area)) return writer_done;
  size_t bytes = 0;
  *pixels = read_picture(tiff->source, tiff->samples, &bytes);
  if (*pixels == nullptr) return writer_no_memory;
  if (tiff->form == TiffForm::bilevel) pack_bits(*tiff, layout, pixels->get());
  return writer_done;
}

// Whether offsets of 32 bits reach the end of the file.
bool fits_in_file(const TiffLayout &layout) {
  const uint64_t per_row = uint64_t{layout.strip_bytes} + 2 * sizeof(uint32_t);
  return per_row * layout.rows <= UINT32_MAX;
}

// Without memory the file ends before the table of the form. Memory is asked for before that much
// is written, since there may be no end to the arrays of a picture that nobody can hold.
WriterStatus write_tiff(TiffWriter *tiff, const char *name) {
  const FileWork work("qqptif", name);
  const OwnedFile file = open_file(name, "wb");
  if (file == nullptr) return writer_no_file;
  tiff->file = file.get();
  const TiffLayout layout = make_layout(*tiff);
  OwnedArray<uint8_t> pixels;
  const WriterStatus status = make_strips(tiff, layout, &pixels);
  write_directory(*tiff, layout);
  if (status != writer_done && !fits_in_file(layout)) return status;
  write_strip_words(*tiff, layout, layout.strips, layout.strip_bytes);
  write_strip_words(*tiff, layout, layout.strip_bytes, 0);
  write_resolutions(*tiff);
  if (status != writer_done) return status;
  write_table(*tiff);
  if (!has_pixels(tiff->source.area)) return writer_done;
  write_file(tiff->file, pixels.get(), static_cast<size_t>(layout.strip_bytes) * layout.rows);
  return writer_done;
}

// The form is asked for by two arguments, of which `form` is stronger.
void choose_form(TiffWriter *tiff, int32_t device, int32_t height, int32_t form) {
  tiff->form = device < 0 ? TiffForm::rgb : TiffForm::palette;
  if (form < 0) tiff->form = TiffForm::bilevel;
  const bool rgb = tiff->form == TiffForm::rgb || height < 0;
  tiff->samples = rgb ? Samples::rgb : Samples::index;
  tiff->quantised = tiff->form == TiffForm::palette && rgb;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqptif(const char *file, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const int32_t *form, int32_t *resolution) {
  quorix::TiffWriter tiff = {};
  const quorix::WriterStatus found =
      quorix::find_source(&tiff.source, quorix::output_context, *device, *width, *height);
  if (found != quorix::writer_done) {
    *resolution = found;
    return 0;
  }
  quorix::choose_form(&tiff, *device, *height, *form);
  tiff.swap = *order == 0;
  tiff.white_is_one = *width < 0;
  tiff.unit = *resolution < 0 ? quorix::tiff_centimetre : quorix::tiff_inch;
  tiff.resolution = static_cast<uint32_t>(quorix::magnitude(*resolution));
  if (tiff.resolution == 0) tiff.resolution = quorix::default_resolution;
  tiff.palette.words = tiff.samples == quorix::Samples::index ? palette : nullptr;
  *resolution = quorix::write_tiff(&tiff, file);
  return 0;
}

// SPDX-License-Identifier: MIT
//
// GIF with one picture: a global table of 256 colours, not interlaced. A transparent colour makes
// it GIF89a, otherwise it is GIF87a.
//
// Decision. Sizes have 16 bits in the file; of larger ones the low bits are written.
#include "base/file_failures.h"
#include "base/files.h"
#include "base/gif_format.h"
#include "base/numbers.h"
#include "imageout/gif_encoder.h"
#include "imageout/imageout.h"
#include "quorix/imageout.h"

namespace quorix {

namespace {

constexpr uint8_t pixel_bits = 8;

struct GifWriter {
  PictureSource source;
  Samples samples;  // as the picture is read
  bool quantised;   // a palette is computed from it
  bool swap;        // words of this host have to be turned
  bool transparent;
  uint8_t background;
  FilePalette palette;
  std::FILE *file;
};

void add_sizes(const GifWriter &gif, HeaderBytes *header) {
  add_u16(header, static_cast<uint16_t>(gif.source.area.width));
  add_u16(header, static_cast<uint16_t>(gif.source.area.height));
}

void write_screen(const GifWriter &gif) {
  uint8_t bytes[gif_signature_bytes + gif_screen_bytes];
  HeaderBytes header = {bytes, gif.swap};
  add_bytes(&header, gif.transparent ? gif_89a : gif_87a, gif_signature_bytes);
  add_sizes(gif, &header);
  // A global table of 2^8 entries of 8 bits, not sorted; no aspect ratio.
  constexpr uint8_t bits = pixel_bits - 1;
  constexpr uint8_t flags = gif_has_table | bits << gif_colour_bits_shift | bits;
  const uint8_t rest[] = {flags, gif.background, 0};
  add_bytes(&header, rest, sizeof rest);
  write_file(gif.file, bytes, sizeof bytes);
}

void write_colour_table(const GifWriter &gif) {
  uint8_t bytes[3 * quantised_colours];
  for (size_t i = 0; i < quantised_colours; ++i)
    palette_entry(gif.palette, i, bytes + 3 * i);
  write_file(gif.file, bytes, sizeof bytes);
}

void write_transparency(const GifWriter &gif) {
  constexpr uint8_t no_delay = 0;  // twice: a word
  const uint8_t bytes[] = {gif_extension_mark,
                           gif_graphic_control,
                           gif_graphic_control_bytes,
                           gif_has_transparency,
                           no_delay,
                           no_delay,
                           gif.background,
                           gif_blocks_end};
  write_file(gif.file, bytes, sizeof bytes);
}

void write_descriptor(const GifWriter &gif) {
  constexpr uint8_t start[] = {gif_image_mark, 0, 0, 0, 0};  // left and top
  constexpr uint8_t end[] = {0, pixel_bits};  // no table of its own; the minimum code size
  uint8_t bytes[sizeof start + 2 * sizeof(uint16_t) + sizeof end];
  HeaderBytes header = {bytes, gif.swap};
  add_bytes(&header, start, sizeof start);
  add_sizes(gif, &header);
  add_bytes(&header, end, sizeof end);
  write_file(gif.file, bytes, sizeof bytes);
}

// Reads the picture; its first bytes are the indices then, one per pixel. The quantiser wants RGB:
// where indices were read, it finds zeros behind them; where RGB was read and no quantiser runs,
// its bytes are taken for indices. Callers do neither.
WriterStatus read_indices(GifWriter *gif, OwnedArray<uint8_t> *pixels) {
  const PictureArea &area = gif->source.area;
  if (!has_pixels(area)) return writer_done;
  const Samples room = gif->quantised ? Samples::rgb : gif->samples;
  size_t bytes = 0;
  if (!picture_bytes(gif->source, room, &bytes)) return writer_no_memory;
  *pixels = allocate_zeroed_array<uint8_t>(bytes);
  if (*pixels == nullptr) return writer_no_memory;
  uint8_t *const picture = pixels->get();
  const auto width = static_cast<int32_t>(area.width);
  gif->source.device->read_rectangle(gif->source.context, picture, area.x, area.y,
                                     gif->samples == Samples::rgb ? -width : width,
                                     static_cast<int32_t>(area.height));
  if (gif->quantised)
    quantise(picture, static_cast<size_t>(width), static_cast<size_t>(area.height), picture,
             gif->palette.reds, gif->palette.greens, gif->palette.blues);
  return writer_done;
}

WriterStatus write_gif(GifWriter *gif, const char *name) {
  const FileWork work("qqpgif", name);
  const OwnedFile file = open_file(name, "wb");
  if (file == nullptr) return writer_no_file;
  gif->file = file.get();
  write_screen(*gif);
  OwnedArray<uint8_t> pixels;
  const WriterStatus read = read_indices(gif, &pixels);
  if (read != writer_done) return read;
  write_colour_table(*gif);
  if (gif->transparent) write_transparency(*gif);
  write_descriptor(*gif);
  size_t count = 0;
  picture_bytes(gif->source, Samples::index, &count);  // fits, since the picture was read
  const WriterStatus written = write_gif_codes(gif->file, pixels.get(), count);
  if (written != writer_done) return written;
  constexpr uint8_t end[] = {gif_blocks_end, gif_trailer};
  write_file(gif->file, end, sizeof end);
  return writer_done;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpgif(const char *file, const int32_t *device, const int32_t *order,
                          const int32_t *width, const int32_t *height, const uint32_t *palette,
                          const void * /*unused*/, const uint8_t *background,
                          const int32_t *transparent, int32_t *status) {
  quorix::GifWriter gif = {};
  const quorix::WriterStatus found =
      quorix::find_source(&gif.source, quorix::output_context, *device, *width, *height);
  if (found != quorix::writer_done) {
    *status = found;
    return 0;
  }
  gif.samples = *height < 0 ? quorix::Samples::rgb : quorix::Samples::index;
  // Whether colours are true: a window says it by the height, the raster by the sign of its device.
  const bool is_window = quorix::window_device(quorix::magnitude(*device));
  gif.quantised = is_window ? *height < 0 : *device < 0;
  gif.swap = *order == 0;
  gif.transparent = *transparent == 1;
  gif.background = *background;
  gif.palette.words = gif.quantised ? nullptr : palette;
  *status = quorix::write_gif(&gif, file);
  return 0;
}

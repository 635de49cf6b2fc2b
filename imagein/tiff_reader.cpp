// SPDX-License-Identifier: MIT
//
// TIFF pictures: the first directory of a file, in strips or tiles, raw or compressed.
//
// Decisions. Uncompressed data that the file does not have are left out (black in a held picture),
// without an error; compressed data that are missing are damage. The extremes of a picture of
// floats are those of all that is stored, so the parts of tiles that hang over the picture count
// too.
#include <algorithm>

#include "imagein/imagein.h"
#include "imagein/tiff_blocks.h"
#include "imagein/tiff_rows.h"
#include "quorix/imagein.h"

namespace quorix {

namespace {

struct TiffReader {
  TiffFile tiff;
  TiffBlocks blocks;
  TiffRows rows;
  RowSink *sink;
};

void take_extremes(void *context, const TiffRow &row) {
  find_extremes(&static_cast<TiffReader *>(context)->rows, row);
}

void take_pixels(void *context, const TiffRow &row) {
  auto *const reader = static_cast<TiffReader *>(context);
  if (row.y >= reader->tiff.height) return;
  int64_t pixels = std::min(reader->tiff.width - row.x, reader->tiff.block_width);
  const uint8_t *const rgb = convert_tiff_row(&reader->rows, row, &pixels);
  // Without alphas the sink writes nothing.
  put_row(reader->sink, const_cast<uint8_t *>(rgb), nullptr, row.x, row.y, pixels);
}

int32_t decode_picture(TiffReader *reader) {
  if (!prepare_tiff_rows(reader->tiff, &reader->rows)) return reader_no_memory;
  if (has_float_pixels(reader->tiff)) {
    const int32_t status = take_rows(&reader->blocks, take_extremes, reader);
    if (status != reader_done && !reader->blocks.overfull) return status;
  }
  const int32_t status = take_rows(&reader->blocks, take_pixels, reader);
  // Kept: the warning is only given for strips.
  const bool warns = reader->rows.bad_index && !reader->tiff.tiled;
  return status == reader_done && warns ? int32_t{reader_bad_index} : status;
}

int32_t decode_tiff_file(ByteSource *source, RowSink *sink) {
  TiffReader reader;
  reader.sink = sink;
  const int32_t status = read_tiff_directory(source, TiffMark::lenient, &reader.tiff);
  if (status != reader_done) return status;
  open_blocks(reader.tiff, source, &reader.blocks);
  if (!blocks_fit(reader.blocks)) return reader_bad_format;
  // Rows of RGB that are to be held are read and unpacked where they stay.
  const bool in_place = !reader.tiff.tiled && is_rgb_already(reader.tiff);
  PictureForm form = {reader.tiff.width, reader.tiff.height};
  form.sets_all = in_place && fills_picture(reader.blocks);
  if (!start_picture(sink, form)) return reader_no_memory;
  if (in_place && sink->picture != nullptr)
    return put_strips(&reader.blocks, sink->picture->pixels);
  return decode_picture(&reader);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpitif(const char *file, const int32_t *device, const void * /*unused*/,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status) {
  return quorix::read_image(quorix::output_context, file,
                            {*device, *device_width, *device_height, *x, *y}, status,
                            quorix::decode_tiff_file);
}

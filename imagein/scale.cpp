// SPDX-License-Identifier: MIT
//
// The held picture shown at another size, once.
//
// Decisions. Without a device, and of a picture without pixels, nothing is shown and the status is
// 0. A size below 1 is -2.
#include "imagein/scale.h"

#include <cstdlib>

#include "imagein/imagein.h"
#include "quorix/imagein.h"

namespace quorix {

namespace {

OwnedArray<ScaleColumn> make_columns(int32_t width, int32_t source_width) {
  OwnedArray<ScaleColumn> columns = allocate_array<ScaleColumn>(static_cast<size_t>(width));
  for (int32_t i = 0; i < width && columns != nullptr; ++i) {
    const ScalePlace place = scale_place(i, width, source_width);
    columns[static_cast<size_t>(i)] = {static_cast<size_t>(place.index), place.share,
                                       1.0 - place.share};
  }
  return columns;
}

// Two rows of one plane of the source, `pixel_bytes` a pixel.
ScaleRow source_rows(const Picture &from, const uint8_t *plane, size_t pixel_bytes,
                     const ScalePlace &place) {
  const size_t row_bytes = static_cast<size_t>(from.width) * pixel_bytes;
  const uint8_t *const upper = plane + static_cast<size_t>(place.index) * row_bytes;
  return {upper, from.height > 1 ? upper + row_bytes : upper, place.share, 1.0 - place.share};
}

void fill_scaled(const Picture &from, const ScaleColumn *columns, Picture *to) {
  const ScaleRgb scale = scale_rgb();
  const auto width = static_cast<size_t>(to->width);
  for (int32_t row = 0; row < to->height; ++row) {
    const ScalePlace place = scale_place(row, to->height, from.height);
    const size_t at = static_cast<size_t>(row) * width;
    scale(source_rows(from, from.pixels, rgb_bytes, place), columns, width,
          to->pixels + at * rgb_bytes);
    if (to->alpha != nullptr)
      scale_alpha(source_rows(from, from.alpha, 1, place), columns, width, to->alpha + at);
  }
}

// Kept: a row that is sent has the width before scaling, though rows stand apart by the new one. So
// of a picture made wider the first columns are seen, and in one made narrower the rows run on into
// the next ones, which a blended row has changed by then; behind the last are zeros.
void send_rows(RowSink *sink, const Picture &scaled, int32_t old_width) {
  const auto step = static_cast<size_t>(scaled.width);
  for (int32_t row = 0; row < scaled.height; ++row) {
    const size_t at = static_cast<size_t>(row) * step;
    put_row(sink, scaled.pixels + at * rgb_bytes,
            scaled.alpha != nullptr ? scaled.alpha + at : nullptr, 0, row, old_width);
  }
}

ReaderStatus show_scaled(RowSink *sink, const Picture &from, int32_t width, int32_t height) {
  const auto longer = static_cast<size_t>(std::abs(int64_t{from.width} - width));
  const OwnedArray<ScaleColumn> columns = make_columns(width, from.width);
  if (columns == nullptr) return reader_no_memory;
  const OwnedPicture scaled = make_picture(width, height, open_alpha(from) != nullptr, longer);
  if (scaled == nullptr) return reader_no_memory;
  fill_scaled(from, columns.get(), scaled.get());
  send_rows(sink, *scaled, from.width);
  return reader_done;
}

// Without a device the rows would go into the picture that is given back at once.
ReaderStatus show_held_picture(OutputContext *context, int32_t device, int32_t width,
                               int32_t height, int32_t x, int32_t y) {
  Picture *const picture = held_picture;
  if (width <= 0 || height <= 0) return reader_no_memory;
  RowSink sink;
  const ReaderTarget target = {device, picture->device_width, picture->device_height, x, y};
  const ReaderStatus found = open_sink(&sink, context, target);
  if (found != reader_done || sink.device == nullptr) return found;
  if (width == picture->width && height == picture->height) {
    show_picture(&sink, picture);
    return reader_done;
  }
  if (picture->width == 0 || picture->height == 0) return reader_done;
  return show_scaled(&sink, *picture, width, height);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpiscl(const int32_t *device, const void * /*unused*/, const int32_t *width,
                           const int32_t *height, const int32_t *x, const int32_t *y,
                           int32_t *status) {
  if (quorix::held_picture == nullptr) {
    *status = quorix::reader_bad_format;
    return 0;
  }
  *status = quorix::show_held_picture(quorix::output_context, *device, *width, *height, *x, *y);
  quorix::hold_picture({});
  return 0;
}

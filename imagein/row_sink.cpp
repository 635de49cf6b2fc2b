// SPDX-License-Identifier: MIT
//
// The two ways of a decoded row: into the held picture, or onto a device.
#include <algorithm>
#include <cstring>

#include "imagein/imagein.h"

namespace quorix {

namespace {

// Pixels of a device that are read at a time to be blended with.
constexpr int64_t blend_pixels = 4096;

constexpr auto triple = static_cast<int64_t>(rgb_bytes);

void store_row(const Picture &picture, const uint8_t *rgb, const uint8_t *alpha, int64_t x,
               int64_t y, int64_t count) {
  if (y < 0 || y >= picture.height || x < 0 || x >= picture.width) return;
  const auto pixels = static_cast<size_t>(std::min<int64_t>(count, picture.width - x));
  const auto at =
      static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(x);
  std::memcpy(picture.pixels + at * rgb_bytes, rgb, pixels * rgb_bytes);
  if (alpha != nullptr && picture.alpha != nullptr) std::memcpy(picture.alpha + at, alpha, pixels);
}

void blend_with(const uint8_t *under, const uint8_t *alpha, size_t count, uint8_t *rgb) {
  for (size_t i = 0; i < count; ++i, rgb += rgb_bytes, under += rgb_bytes) {
    if (alpha[i] == 255) continue;
    for (size_t k = 0; k < rgb_bytes; ++k)
      rgb[k] = blend_component(rgb[k], alpha[i], under[k]);
  }
}

// Blends a row, which lies within the device's limits, with what the device has there.
void blend_row(const RowSink &sink, uint8_t *rgb, const uint8_t *alpha, int32_t x, int32_t y,
               int64_t count) {
  uint8_t under[blend_pixels * triple];
  for (int64_t done = 0; done < count; done += blend_pixels) {
    const auto part = static_cast<int32_t>(std::min(count - done, blend_pixels));
    const auto pixels = static_cast<size_t>(part);
    std::memset(under, 0, pixels * rgb_bytes);  // for a device that cannot be read
    sink.device->read_rectangle(sink.context, under, static_cast<int32_t>(x + done), y, -part, 1);
    blend_with(under, alpha + done, pixels, rgb + done * triple);
  }
}

void show_row(const RowSink &sink, uint8_t *rgb, const uint8_t *alpha, int64_t x, int64_t y,
              int64_t count) {
  if (y < 0 || y >= sink.target.device_height || x >= sink.target.device_width) return;
  const int64_t first = std::max<int64_t>(x, 0);
  const int64_t end = std::min<int64_t>(x + count, sink.target.device_width);
  if (end <= first) return;
  // Both lie within the device's limits from here on, so they have 32 bits.
  const auto column = static_cast<int32_t>(first);
  const auto row = static_cast<int32_t>(y);
  const int64_t cut = first - x;
  if (alpha != nullptr) blend_row(sink, rgb + cut * triple, alpha + cut, column, row, end - first);
  sink.device->write_row(sink.context, rgb + cut * triple, column, row,
                         -static_cast<int32_t>(end - first));
}

// Nothing is as far out as that, and sums of such numbers stay within 64 bits.
bool is_near(int64_t number) {
  constexpr int64_t far = int64_t{1} << 40;
  return number > -far && number < far;
}

}  // namespace

ReaderStatus open_sink(RowSink *sink, OutputContext *context, const ReaderTarget &target) {
  *sink = {target, context, nullptr, nullptr};
  if (target.device == 0) return reader_done;
  if (context == nullptr) return reader_no_file;
  sink->device = device_for(context, target.device);
  return sink->device != nullptr ? reader_done : reader_no_device;
}

bool start_picture(RowSink *sink, const PictureForm &form) {
  if (sink->device != nullptr && !form.complete_first) return true;
  hold_picture({});  // before there is need for room for the next
  hold_picture(make_picture(std::max(form.width, 0), std::max(form.height, 0), form.alpha, 0,
                            !form.sets_all));
  sink->picture = held_picture;
  if (held_picture == nullptr) return false;
  held_picture->device_width = sink->target.device_width;
  held_picture->device_height = sink->target.device_height;
  held_picture->background_done = form.background_done;
  return true;
}

void put_row(RowSink *sink, uint8_t *rgb, const uint8_t *alpha, int64_t column, int64_t row,
             int64_t count) {
  if (count <= 0 || !is_near(count) || !is_near(column) || !is_near(row)) return;
  if (sink->picture != nullptr) {
    store_row(*sink->picture, rgb, alpha, column, row, count);
  } else {
    show_row(*sink, rgb, alpha, sink->target.x + column, sink->target.y + row, count);
  }
}

// A file may claim rows without number, so those beside the device are not even tried.
void show_picture(RowSink *sink, Picture *picture) {
  const auto width = static_cast<size_t>(picture->width);
  uint8_t *const alpha = open_alpha(*picture);
  const int64_t first = std::max<int64_t>(-int64_t{sink->target.y}, 0);
  const int64_t behind = int64_t{sink->target.device_height} - sink->target.y;
  const int64_t end = std::min<int64_t>(picture->height, behind);
  for (int64_t row = first; row < end; ++row) {
    const size_t at = static_cast<size_t>(row) * width;
    put_row(sink, picture->pixels + at * rgb_bytes, alpha != nullptr ? alpha + at : nullptr, 0, row,
            picture->width);
  }
}

}  // namespace quorix

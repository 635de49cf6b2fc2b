// SPDX-License-Identifier: MIT
//
// Where a writer's pixels come from. What an area has beyond the device's page is the device's
// affair (it reads as 0); here only the arithmetic has to survive any numbers.
#include <algorithm>

#include "base/numbers.h"
#include "imageout/imageout.h"

namespace quorix {

namespace {

// A device takes the kind of samples from the sign of the width.
int32_t request_width(const PictureSource &source, Samples samples) {
  const auto width = static_cast<int32_t>(source.area.width);
  return samples == Samples::rgb ? -width : width;
}

}  // namespace

PixelPath pixel_path(int32_t device, int32_t height) {
  if (device < 0) return PixelPath::true_colour;
  return height < 0 ? PixelPath::quantised : PixelPath::indexed;
}

WriterStatus find_source(PictureSource *source, OutputContext *context, int32_t device,
                         int32_t width, int32_t height) {
  if (context == nullptr) return writer_no_file;
  const auto number = static_cast<int32_t>(std::min<int64_t>(magnitude(device), INT32_MAX));
  const Device *const found = device_for(context, number);
  if (found == nullptr) return writer_no_device;
  *source = {context, found, picture_area(width, height)};
  return writer_done;
}

bool picture_bytes(const PictureSource &source, Samples samples, size_t *bytes) {
  const PictureArea &area = source.area;
  *bytes = 0;
  if (!has_pixels(area)) return true;
  if (area.width > INT32_MAX || area.height > INT32_MAX) return false;
  return checked_product(bytes, static_cast<size_t>(area.width), static_cast<size_t>(area.height),
                         bytes_per_pixel(samples));
}

void read_picture_row(const PictureSource &source, int64_t row, Samples samples, uint8_t *pixels) {
  // Rows beyond the largest number wrap to negative ones, which lie off every page as well.
  const auto y = static_cast<int32_t>(source.area.y + row);
  source.device->read_rectangle(source.context, pixels, source.area.x, y,
                                request_width(source, samples), 1);
}

OwnedArray<uint8_t> read_picture(const PictureSource &source, Samples samples, size_t *bytes) {
  if (!picture_bytes(source, samples, bytes)) return {};
  OwnedArray<uint8_t> pixels = allocate_array<uint8_t>(*bytes);
  if (pixels == nullptr) return {};
  source.device->read_rectangle(source.context, pixels.get(), source.area.x, source.area.y,
                                request_width(source, samples),
                                static_cast<int32_t>(source.area.height));
  return pixels;
}

}  // namespace quorix

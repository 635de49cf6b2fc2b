// SPDX-License-Identifier: MIT
//
// The held picture in parts: qqpiwin keeps a rectangle of it, qqpgrow copies rows out.
//
// A rectangle is copied into a picture of its own before the old one goes, so both are in memory
// for a moment, and without memory the old one stays.
#include <algorithm>
#include <cstring>
#include <utility>

#include "imagein/imagein.h"
#include "quorix/imagein.h"

namespace quorix {

namespace {

// A rectangle may have no columns or no rows, but its corner lies inside.
bool is_inside(const Picture &picture, int32_t x, int32_t y, int32_t width, int32_t height) {
  if (x < 0 || y < 0 || x >= picture.width || y >= picture.height) return false;
  if (width < 0 || height < 0) return false;
  return width <= picture.width - x && height <= picture.height - y;
}

void copy_rectangle(const Picture &from, int32_t x, int32_t y, Picture *to) {
  const auto width = static_cast<size_t>(to->width);
  const auto from_width = static_cast<size_t>(from.width);
  size_t at = static_cast<size_t>(y) * from_width + static_cast<size_t>(x);
  size_t target = 0;
  for (int32_t row = 0; row < to->height; ++row, at += from_width, target += width) {
    std::memcpy(to->pixels + target * rgb_bytes, from.pixels + at * rgb_bytes, width * rgb_bytes);
    if (to->alpha != nullptr) std::memcpy(to->alpha + target, from.alpha + at, width);
  }
}

ReaderStatus crop_held_picture(int32_t x, int32_t y, int32_t width, int32_t height) {
  if (held_picture == nullptr || !is_inside(*held_picture, x, y, width, height))
    return reader_bad_format;
  const Picture &from = *held_picture;
  OwnedPicture part = make_picture(width, height, open_alpha(from) != nullptr);
  if (part == nullptr) return reader_no_memory;
  part->device_width = from.device_width;
  part->device_height = from.device_height;
  copy_rectangle(from, x, y, part.get());
  hold_picture(std::move(part));
  return reader_done;
}

// What lies beside the picture is black.
void copy_row(const Picture &picture, uint8_t *row, int64_t x, int32_t y, int64_t count) {
  std::memset(row, 0, static_cast<size_t>(count) * rgb_bytes);
  const int64_t first = std::max<int64_t>(x, 0);
  const int64_t end = std::min<int64_t>(x + count, picture.width);
  if (y < 0 || y >= picture.height || end <= first) return;
  const auto at =
      static_cast<size_t>(y) * static_cast<size_t>(picture.width) + static_cast<size_t>(first);
  std::memcpy(row + static_cast<size_t>(first - x) * rgb_bytes, picture.pixels + at * rgb_bytes,
              static_cast<size_t>(end - first) * rgb_bytes);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqpiwin(const int32_t *x, const int32_t *y, const int32_t *width,
                           const int32_t *height, int32_t *status) {
  *status = quorix::crop_held_picture(*x, *y, *width, *height);
  return *status == quorix::reader_done ? 0 : 1;
}

extern "C" int32_t qqpgrow(uint8_t *row, const int32_t *x, const int32_t *y, const int32_t *count) {
  constexpr int32_t give_back = -1;
  if (*count == give_back) {
    quorix::hold_picture({});
  } else if (quorix::held_picture != nullptr && *count > 0) {
    quorix::copy_row(*quorix::held_picture, row, *x, *y, *count);
  }
  return 0;
}

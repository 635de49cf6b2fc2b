// SPDX-License-Identifier: MIT
//
// Pictures in memory, and the one that is held between calls.
//
// A picture is three blocks from the memory gate: the record, its colours, its alpha. Sizes are
// checked as products before anything is asked for.
#include <utility>

#include "imagein/imagein.h"

namespace quorix {

Picture *held_picture = nullptr;

namespace {

// Bytes of `pixels` and `alpha`; false if they do not fit in a size.
bool picture_sizes(size_t width, size_t height, size_t extra, size_t *rgb, size_t *alpha) {
  size_t pixels = 0;
  if (!checked_product(&pixels, width, height)) return false;
  if (__builtin_add_overflow(pixels, extra, alpha)) return false;
  return checked_product(rgb, *alpha, rgb_bytes) && *rgb <= SIZE_MAX - pixel_slack;
}

}  // namespace

OwnedPicture make_picture(int32_t width, int32_t height, bool with_alpha, size_t extra,
                          bool cleared) {
  if (width < 0 || height < 0) return {};
  size_t rgb = 0;
  size_t alpha = 0;
  if (!picture_sizes(static_cast<size_t>(width), static_cast<size_t>(height), extra, &rgb, &alpha))
    return {};
  OwnedPicture picture(static_cast<Picture *>(allocate_zeroed_bytes(sizeof(Picture))));
  if (picture == nullptr) return {};
  picture->width = width;
  picture->height = height;
  const auto allocate = cleared ? allocate_zeroed_bytes : allocate_bytes;
  picture->pixels = static_cast<uint8_t *>(allocate(rgb + pixel_slack));
  if (with_alpha)
    picture->alpha = static_cast<uint8_t *>(allocate_zeroed_bytes(alpha + pixel_slack));
  const bool whole = picture->pixels != nullptr && (picture->alpha != nullptr || !with_alpha);
  return whole ? std::move(picture) : OwnedPicture();
}

void release_picture(Picture *picture) {
  if (picture == nullptr) return;
  release_bytes(picture->pixels);
  release_bytes(picture->alpha);
  release_bytes(picture);
}

void hold_picture(OwnedPicture picture) {
  release_picture(held_picture);
  held_picture = picture.release();
}

}  // namespace quorix

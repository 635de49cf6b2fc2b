// SPDX-License-Identifier: MIT
//
// qqpclp and what it does to a picture's size.
//
// Decision. A rectangle without pixels is written like any other: its numbers go into the header,
// and no pixels follow.
#include "base/numbers.h"
#include "imageout/imageout.h"
#include "quorix/imageout.h"

namespace quorix {

ImageClip image_clip = {};

PictureArea picture_area(int32_t width, int32_t height) {
  if (image_clip.enabled) return {image_clip.x, image_clip.y, image_clip.width, image_clip.height};
  return {0, 0, magnitude(width), magnitude(height)};
}

}  // namespace quorix

extern "C" int32_t qqpclp(const int32_t *x, const int32_t *y, const int32_t *width,
                          const int32_t *height, const int32_t *enabled) {
  quorix::image_clip = {*x, *y, *width, *height, *enabled != 0};
  return 0;
}

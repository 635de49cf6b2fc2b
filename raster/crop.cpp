// SPDX-License-Identifier: MIT
//
// Cropping the raster, and finding the box of what was drawn.
#include <cstring>

#include "base/memory.h"
#include "quorix/raster.h"
#include "raster/raster.h"

namespace quorix {

namespace {

constexpr int32_t bad_rectangle = -3;
constexpr int32_t no_memory = -2;

bool within_page(const RasterPage &page, int32_t x, int32_t y, int32_t w, int32_t h) {
  return x >= 0 && y >= 0 && w > 0 && h > 0 && static_cast<int64_t>(x) + w <= page.width &&
         static_cast<int64_t>(y) + h <= page.height;
}

// A copy of a rectangle of `from`, or null.
uint8_t *copy_rectangle(const PixelBuffer &from, const Rect &r) {
  const RasterPage &page = from.page;
  const size_t bytes_per_pixel = page.rgba != 0 ? 4 : 1;
  const size_t row = (static_cast<size_t>(r.x2 - r.x1) + 1) * bytes_per_pixel;
  const size_t from_row = static_cast<size_t>(page.width) * bytes_per_pixel;
  const size_t rows = static_cast<size_t>(r.y2 - r.y1) + 1;
  auto copy = allocate_array<uint8_t>(row * rows);
  if (!copy) return nullptr;
  const uint8_t *source = from.pixels + static_cast<size_t>(r.y1) * from_row +
                          static_cast<size_t>(r.x1) * bytes_per_pixel;
  for (size_t i = 0; i < rows; ++i)
    std::memcpy(copy.get() + i * row, source + i * from_row, row);
  return copy.release();
}

void replace_buffer(PixelBuffer *buffer, const PixelBuffer &replacement) {
  release_bytes(buffer->pixels);
  *buffer = replacement;
}

bool contains_rectangle(const RasterPage &page, const Rect &r) {
  return r.x2 < page.width && r.y2 < page.height;
}

// Crops the depth buffer, so that depths stay with their pixels. One that does not reach over the
// rectangle belongs to another device's page and is left alone.
bool crop_depth(const OutputContext *context, const Rect &r, uint8_t **cropped) {
  const DepthBuffer &depths = context->depth.buffer;
  *cropped = nullptr;
  const RasterPage floats = {depths.width, depths.height, 1};  // 4 bytes each
  if (depths.values == nullptr || !contains_rectangle(floats, r)) return true;
  *cropped = copy_rectangle({reinterpret_cast<uint8_t *>(depths.values), floats}, r);
  return *cropped != nullptr;
}

void replace_depth(OutputContext *context, uint8_t *cropped, const RasterPage &page) {
  if (cropped == nullptr) return;
  release_depth_buffer(context);
  context->depth.buffer = {reinterpret_cast<float *>(cropped), page.width, page.height};
}

// Crops the raster, and while a layer is open both of its buffers, since the layer has to meet the
// same pixels when it closes. A layer that is not open is given up: the next one is made anew, of
// the new size.
bool crop_buffers(OutputContext *context, const Rect &r) {
  RasterBuffers &buffers = context->buffers;
  const RasterPage cropped = {r.x2 - r.x1 + 1, r.y2 - r.y1 + 1, buffers.raster.page.rgba};
  const bool layer_open = buffers.raster_state == raster_blending &&
                          buffers.raster.pixels == buffers.blend_raster.pixels;
  // The layer may lie over a window, and what is under it be of another size and kind.
  const bool has_base =
      buffers.raster_base.pixels != nullptr && contains_rectangle(buffers.raster_base.page, r);
  uint8_t *base = has_base ? copy_rectangle(buffers.raster_base, r) : nullptr;
  uint8_t *layer = layer_open ? copy_rectangle(buffers.blend_raster, r) : nullptr;
  uint8_t *depth = nullptr;
  if ((has_base && base == nullptr) || (layer_open && layer == nullptr) ||
      !crop_depth(context, r, &depth)) {
    release_bytes(base);
    release_bytes(layer);
    return false;
  }
  if (has_base) {
    const RasterPage base_page = {cropped.width, cropped.height, buffers.raster_base.page.rgba};
    replace_buffer(&buffers.raster_base, {base, base_page});
  }
  replace_buffer(&buffers.blend_raster, {layer, layer_open ? cropped : RasterPage{}});
  replace_depth(context, depth, cropped);
  select_raster_buffer(context,
                       {(layer_open ? buffers.blend_raster : buffers.raster_base).pixels, cropped});
  return true;
}

// ---- The box of what was drawn

// What a pixel is compared with: (pixel ^ background) & mask is 0 exactly on the background.
struct Difference {
  uint64_t background;  // repeated over the word
  uint64_t mask;        // without alpha
};

// First pixel of row[0..n) that differs, or n.
template <class Pixel>
int32_t first_difference(const Pixel *row, int32_t n, Difference d) {
  constexpr int32_t step = 8 / static_cast<int32_t>(sizeof(Pixel));
  int32_t x = 0;
  for (; x + step <= n; x += step) {
    uint64_t word = 0;
    std::memcpy(&word, row + x, 8);
    if (((word ^ d.background) & d.mask) != 0) break;
  }
  while (x < n && ((row[x] ^ d.background) & static_cast<Pixel>(d.mask)) == 0)
    ++x;
  return x;
}

// Last pixel of row(low..n) that differs, or low.
template <class Pixel>
int32_t last_difference(const Pixel *row, int32_t low, int32_t n, Difference d) {
  constexpr int32_t step = 8 / static_cast<int32_t>(sizeof(Pixel));
  int32_t x = n - 1;
  for (; x - step >= low; x -= step) {
    uint64_t word = 0;
    std::memcpy(&word, row + x - step + 1, 8);
    if (((word ^ d.background) & d.mask) != 0) break;
  }
  while (x > low && ((row[x] ^ d.background) & static_cast<Pixel>(d.mask)) == 0)
    --x;
  return x;
}

template <class Pixel>
Rect find_drawn_box(const Pixel *base, int32_t width, int32_t height, Difference d) {
  Rect box = {width, height, -1, -1};
  for (int32_t y = 0; y < height; ++y) {
    const Pixel *row = base + static_cast<ptrdiff_t>(y) * width;
    // The first row is looked at whole: until something is found, x1 is the width.
    const int32_t x = first_difference(row, box.x1, d);
    if (x >= box.x1) continue;
    if (box.y1 == height) box.y1 = y;
    box.x1 = x;
  }
  if (box.y1 == height) return box;
  for (int32_t y = height - 1; y >= 0; --y) {
    const Pixel *row = base + static_cast<ptrdiff_t>(y) * width;
    const int32_t x = last_difference(row, box.x2, width, d);
    if (x <= box.x2) continue;
    if (box.y2 < 0) box.y2 = y;
    box.x2 = x;
  }
  return box;
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvwin(const int32_t *x, const int32_t *y, const int32_t *w, const int32_t *h,
                          int32_t *status) {
  OutputContext *context = output_context;
  *status = 0;
  // Lines still gathered are drawn later, on the cropped page.
  if (context == nullptr || !has_raster(context) ||
      !within_page(context->buffers.raster.page, *x, *y, *w, *h)) {
    *status = bad_rectangle;
    return 1;
  }
  const Rect r = {*x, *y, *x + *w - 1, *y + *h - 1};
  if (!crop_buffers(context, r)) {
    *status = no_memory;
    return 1;
  }
  context->page.width = *w;
  context->page.height = *h;
  context->page.stride = *w * (context->buffers.raster.page.rgba != 0 ? 4 : 1);
  context->page.clip_x2 = *w - 1;
  context->page.clip_y2 = *h - 1;
  return 0;
}

extern "C" int32_t qqvcrp(int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2) {
  OutputContext *context = output_context;
  Rect box = {0, 0, -1, -1};
  if (context != nullptr) {
    flush_raster(context);
    box = {context->page.width, context->page.height, -1, -1};
    if (has_raster(context)) {
      const int32_t width = context->buffers.raster.page.width;
      const int32_t height = context->buffers.raster.page.height;
      if (context->page.rgba_mode != 0) {
        const uint64_t rgb = 0x00FFFFFF00FFFFFFULL;
        const uint64_t background = background_byte(context) != 0 ? rgb : 0;
        box = find_drawn_box(reinterpret_cast<const uint32_t *>(context->buffers.raster.pixels),
                             width, height, {background, rgb});
      } else {
        box = find_drawn_box(context->buffers.raster.pixels, width, height, {0, ~0ULL});
      }
    }
  }
  *x1 = box.x1;
  *y1 = box.y1;
  *x2 = box.x2;
  *y2 = box.y2;
  return 0;
}

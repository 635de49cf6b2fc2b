// SPDX-License-Identifier: MIT
//
// Opening, erasing and releasing the raster.
//
// `raster` is what drawing writes to and `page` what that memory was allocated for. Both are set
// together by select_raster_buffer, so that no write can trust a size that belongs to another
// buffer.
//
// A size below 1 gives status 1 and no raster. Before the first qqvini, and after qqvfin, pixels
// read as 0. Kept: qqvptr goes on giving the address of released memory after qqvfin; no operation
// of the library uses it any more.
#include "quorix/raster.h"

#include <cstring>

#include "base/memory.h"
#include "base/numbers.h"
#include "raster/raster.h"

namespace quorix {

namespace {

constexpr int32_t short_side = 603;
constexpr int32_t long_side = 853;

size_t page_bytes(const RasterPage &page) {
  return static_cast<size_t>(page.width) * static_cast<size_t>(page.height) *
         (page.rgba != 0 ? 4U : 1U);
}

// A depth buffer that is in use has to fit the new page; without memory for it, it ends.
void follow_page(OutputContext *context) {
  if (context->depth.depth_on == 0) return;
  if (renew_depth_buffer(context, context->buffers.raster.page.width,
                         context->buffers.raster.page.height))
    return;
  release_depth_buffer(context);
  context->depth.depth_on = 0;
}

// `raster` keeps its address for qqvptr, but nothing may be written there.
void release_buffers(OutputContext *context) {
  RasterBuffers &buffers = context->buffers;
  release_bytes(buffers.raster_base.pixels);
  release_bytes(buffers.blend_raster.pixels);
  buffers.raster_base = buffers.blend_raster = {};
  buffers.raster.page = {};
}

// False where the page has no pixels or there is no memory for them.
bool allocate_page(OutputContext *context, int32_t w, int32_t h) {
  if (w < 1 || h < 1 || context->page.stride < w) return false;
  const RasterPage page = {w, h, context->page.rgba_mode};
  size_t bytes = 0;
  if (!checked_product(&bytes, static_cast<size_t>(context->page.stride), static_cast<size_t>(h))) {
    return false;
  }
  // Most pages are black, and zeroed memory comes without being touched.
  auto *pixels = static_cast<uint8_t *>(allocate_zeroed_bytes(bytes));
  if (pixels == nullptr) return false;
  context->buffers.raster_base = {pixels, page};
  select_raster_buffer(context, context->buffers.raster_base);
  return true;
}

}  // namespace

void release_raster(OutputContext *context) {
  release_buffers(context);
  release_depth_buffer(context);
}

void select_raster_buffer(OutputContext *context, const PixelBuffer &buffer) {
  context->buffers.raster = buffer;
}

void fill_page(OutputContext *context) {
  if (!has_raster(context)) return;
  const size_t bytes = page_bytes(context->buffers.raster.page);
  if (background_byte(context) == 0) {
    std::memset(context->buffers.raster.pixels, 0, bytes);
  } else {
    fill_run(reinterpret_cast<uint32_t *>(context->buffers.raster.pixels), bytes / 4,
             pack_rgba(255, 255, 255, 0));
  }
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvini(int32_t page_w, int32_t page_h, int32_t *w, int32_t *h, int32_t have_size,
                          int32_t *status) {
  OutputContext *context = require_output_context();
  context->page.rgba_mode = static_cast<uint8_t>(page_w < 0);
  // The status is an input too: its first byte in memory chooses the background.
  std::memcpy(&context->page.white_background, status, 1);
  context->window.window_active = 0;
  *status = 0;
  if (have_size == 0) {
    const bool portrait = magnitude(page_w) <= page_h;
    *w = portrait ? short_side : long_side;
    *h = portrait ? long_side : short_side;
  }
  context->page.width = *w;
  context->page.height = *h;
  const int64_t stride = static_cast<int64_t>(*w) * (context->page.rgba_mode != 0 ? 4 : 1);
  context->page.stride = stride > INT32_MAX || stride < 0 ? 0 : static_cast<int32_t>(stride);
  release_buffers(context);
  context->buffers.raster.pixels = nullptr;
  context->buffers.raster_state = raster_none;
  if (!allocate_page(context, *w, *h)) {
    *status = 1;
    return 0;
  }
  context->buffers.raster_state = raster_open;
  if (background_byte(context) != 0) fill_page(context);
  context->page.clip_x1 = 0;
  context->page.clip_y1 = 0;
  context->page.clip_x2 = *w - 1;
  context->page.clip_y2 = *h - 1;
  follow_page(context);
  return 0;
}

extern "C" int32_t qqvfin(void) {
  if (output_context != nullptr) release_buffers(output_context);
  return 0;
}

extern "C" int32_t qqvers(void) {
  if (output_context == nullptr) return 0;
  flush_raster(output_context);
  fill_page(output_context);
  return 0;
}

extern "C" int32_t qqvptr(uint8_t **raster) {
  *raster = output_context != nullptr ? output_context->buffers.raster.pixels : nullptr;
  return 0;
}

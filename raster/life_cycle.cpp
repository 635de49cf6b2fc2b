// SPDX-License-Identifier: MIT
//
// Opening, erasing and releasing the raster.
//
// `raster` is what drawing writes to and `page` what that memory was allocated for. Both are set
// together by select_raster_buffer, so that no write can trust a size that belongs to another
// buffer.
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
  if (context->depth_on == 0) return;
  if (renew_depth_buffer(context, context->page.width, context->page.height)) return;
  release_depth_buffer(context);
  context->depth_on = 0;
}

void release_buffers(OutputContext *context) {
  release_bytes(context->raster_base);
  release_bytes(context->blend_raster);
  context->raster_base = nullptr;
  context->blend_raster = nullptr;
  context->page = context->base_page = context->blend_page = {};
}

// False where the page has no pixels or its memory cannot be had.
bool allocate_page(OutputContext *context, int32_t w, int32_t h) {
  if (w < 1 || h < 1 || context->stride < w) return false;
  const RasterPage page = {w, h, context->rgba_mode};
  size_t bytes = 0;
  if (!checked_product(&bytes, static_cast<size_t>(context->stride), static_cast<size_t>(h))) {
    return false;
  }
  // Most pages are black, and zeroed memory comes without being touched.
  context->raster_base = static_cast<uint8_t *>(allocate_zeroed_bytes(bytes));
  if (context->raster_base == nullptr) return false;
  context->base_page = page;
  select_raster_buffer(context, context->raster_base, page);
  return true;
}

}  // namespace

void select_raster_buffer(OutputContext *context, uint8_t *buffer, RasterPage page) {
  context->raster = buffer;
  context->page = page;
}

void fill_page(OutputContext *context) {
  if (!has_raster(context)) return;
  const size_t bytes = page_bytes(context->page);
  if (background_byte(context) == 0) {
    std::memset(context->raster, 0, bytes);
  } else {
    fill_run(reinterpret_cast<uint32_t *>(context->raster), bytes / 4, pack_rgba(255, 255, 255, 0));
  }
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqvini(int32_t page_w, int32_t page_h, int32_t *w, int32_t *h, int32_t have_size,
                          int32_t *status) {
  OutputContext *context = require_output_context();
  context->rgba_mode = static_cast<uint8_t>(page_w < 0);
  // The status is an input too: its first byte in memory tells the background.
  std::memcpy(&context->white_background, status, 1);
  context->window_active = 0;
  *status = 0;
  if (have_size == 0) {
    const bool portrait = magnitude(page_w) <= page_h;
    *w = portrait ? short_side : long_side;
    *h = portrait ? long_side : short_side;
  }
  context->width = *w;
  context->height = *h;
  const int64_t stride = static_cast<int64_t>(*w) * (context->rgba_mode != 0 ? 4 : 1);
  context->stride = stride > INT32_MAX || stride < 0 ? 0 : static_cast<int32_t>(stride);
  release_buffers(context);
  context->raster = nullptr;
  context->raster_state = raster_none;
  if (!allocate_page(context, *w, *h)) {
    *status = 1;
    return 0;
  }
  context->raster_state = raster_open;
  if (background_byte(context) != 0) fill_page(context);
  context->clip_x1 = 0;
  context->clip_y1 = 0;
  context->clip_x2 = *w - 1;
  context->clip_y2 = *h - 1;
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
  *raster = output_context != nullptr ? output_context->raster : nullptr;
  return 0;
}

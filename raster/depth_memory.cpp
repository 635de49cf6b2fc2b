// SPDX-License-Identifier: MIT
//
// The memory of the depth buffer.
//
// The buffer's own width and height are what it was allocated for; the page's `width` and
// `height` may belong to another device by the time it is used. depth_on without a buffer means
// that the depths are kept elsewhere, by OpenGL. A buffer in use follows the size of a new page;
// without memory for it, depth buffering is switched off.
#include <algorithm>

#include "base/memory.h"
#include "raster/raster.h"

namespace quorix {

namespace {

constexpr float cleared_depth = 2.0F;

size_t depth_count(const OutputContext *context) {
  return static_cast<size_t>(context->depth.buffer.width) *
         static_cast<size_t>(context->depth.buffer.height);
}

}  // namespace

void release_depth_buffer(OutputContext *context) {
  release_bytes(context->depth.buffer.values);
  context->depth.buffer.values = nullptr;
  context->depth.buffer.width = 0;
  context->depth.buffer.height = 0;
}

bool renew_depth_buffer(OutputContext *context, int32_t width, int32_t height) {
  if (width < 1 || height < 1) return false;
  size_t count = 0;
  if (!checked_product(&count, static_cast<size_t>(width), static_cast<size_t>(height))) {
    return false;
  }
  auto buffer = allocate_array<float>(count);
  if (!buffer) return false;
  release_depth_buffer(context);
  context->depth.buffer.values = buffer.release();
  context->depth.buffer.width = width;
  context->depth.buffer.height = height;
  clear_depth_buffer(context);
  return true;
}

void clear_depth_buffer(OutputContext *context) {
  if (context->depth.buffer.values == nullptr) return;
  std::fill_n(context->depth.buffer.values, depth_count(context), cleared_depth);
}

}  // namespace quorix

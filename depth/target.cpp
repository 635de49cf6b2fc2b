// SPDX-License-Identifier: MIT
//
// Finding the pixels that a device number means.
#include "depth/depth.h"

namespace quorix {

bool open_target(OutputContext *context, int32_t device, Depths depths, Target *target) {
  Target &t = *target;
  t.context = context;
  t.device = device_for(context, device);
  if (t.device == nullptr || !t.device->bitmap(context, &t.bitmap)) return false;
  t.clip = {context->page.clip_x1, context->page.clip_y1, context->page.clip_x2,
            context->page.clip_y2};
  t.page = {0, 0, t.bitmap.width - 1, t.bitmap.height - 1};
  t.depth = nullptr;
  t.depth_pitch = 0;
  // depth_on without a buffer: OpenGL keeps the depths, and nothing is tested here.
  if (depths == Depths::used && context->depth.depth_on != 0 &&
      context->depth.buffer.values != nullptr) {
    t.depth = context->depth.buffer.values;
    t.depth_pitch = context->depth.buffer.width;
    t.page = intersection(
        t.page, {0, 0, context->depth.buffer.width - 1, context->depth.buffer.height - 1});
  }
  t.box = intersection(t.clip, t.page);
  return true;
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The raster as a Device.
#include "core/device.h"

#include "raster/raster.h"

namespace quorix {

namespace {

bool bitmap(OutputContext *context, DeviceBitmap *result) {
  if (!has_raster(context)) return false;
  const PixelBuffer &buffer = context->buffers.raster;
  const bool rgba = buffer.page.rgba != 0;
  *result = {buffer.pixels,
             static_cast<size_t>(buffer.page.width) * (rgba ? 4U : 1U),
             buffer.page.width,
             buffer.page.height,
             rgba ? 32 : 8,
             rgba ? PixelOrder::rgba : PixelOrder::index,
             nullptr};
  return true;
}

}  // namespace

const Device raster_device = {flush_raster,       read_raster_rectangle, write_raster_pixels,
                              set_current_colour, fill_raster_rectangle, bitmap};

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The raster as a Device, and the choice between it and the window's.
#include "quorix/device.h"

#include "quorix/raster.h"
#include "raster/raster.h"

namespace quorix {

namespace {

const Device *window_device = nullptr;

void read_rectangle(OutputContext * /*context*/, uint8_t *buffer, int32_t x, int32_t y, int32_t n,
                    int32_t rows) {
  qqvrdr(buffer, x, y, n, rows);
}

void write_row(OutputContext * /*context*/, const uint8_t *buffer, int32_t x, int32_t y,
               int32_t n) {
  qqvrow(buffer, x, y, n);
}

void fill_rectangle(OutputContext * /*context*/, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                    int32_t colour) {
  qqvfll(x1, y1, x2, y2, colour);
}

bool bitmap(OutputContext *context, DeviceBitmap *result) {
  if (!has_raster(context)) return false;
  const RasterPage &page = context->page;
  const bool rgba = page.rgba != 0;
  *result = {
      context->raster, static_cast<size_t>(page.width) * (rgba ? 4U : 1U), page.width, page.height,
      rgba ? 32 : 8,   rgba ? PixelOrder::rgba : PixelOrder::index,        nullptr};
  return true;
}

}  // namespace

const Device raster_device = {flush_raster,       read_rectangle, write_row,
                              set_current_colour, fill_rectangle, bitmap};

void register_window_device(const Device *device) {
  window_device = device;
}

const Device *device_for(const OutputContext *context, int32_t number) {
  if (context == nullptr) return nullptr;
  return number > last_window_device ? &raster_device : window_device;
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The registry of devices, and the choice between them.
#include "core/device.h"

namespace quorix {

namespace {

const Device *raster = nullptr;
const Device *window = nullptr;

}  // namespace

void register_raster_device(const Device *device) {
  raster = device;
}

void register_window_device(const Device *device) {
  window = device;
}

const Device *device_for(const OutputContext *context, int32_t number) {
  if (context == nullptr) return nullptr;
  return window_device(number) ? window : raster;
}

const Device *window_family_device(const OutputContext *context) {
  return device_for(context, last_window_device);
}

void flush_current_device(OutputContext *context) {
  const Device *device = context->window.window_active != 0 ? window : raster;
  if (device != nullptr) device->flush(context);
}

}  // namespace quorix

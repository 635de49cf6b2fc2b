// SPDX-License-Identifier: MIT
//
// The drawing record as operations ask for it: with the raster as one of its devices.
#include <cstdlib>

#include "platform/callbacks.h"
#include "platform/message.h"
#include "raster/raster.h"

namespace quorix {

OutputContext *require_output_context() {
  if (output_context != nullptr) return output_context;
  output_context = create_output_context();
  if (output_context == nullptr) {
    show_message("Not enough memory for windows output", "quoini");
    std::exit(0);
  }
  clear_callbacks();
  register_raster_device(&raster_device);
  release_with_context(output_context, release_raster);
  return output_context;
}

}  // namespace quorix

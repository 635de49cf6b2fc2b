// SPDX-License-Identifier: MIT
//
// Files of the library's own format, of a window that draws through OpenGL.
#pragma once

#include <cstdint>

#include "core/output_context.h"

namespace quorix {

enum FileStatus : int32_t {
  file_done = 0,
  file_not_opened = 1,
  file_no_memory = 2,
  file_bad = 3,
  file_bad_depth = 4
};

FileStatus save_gl_picture(const OutputContext *context, const char *filename);
FileStatus load_gl_picture(const OutputContext *context, const char *filename);

// How four-byte pixels of a file are ordered, as convert_quads knows it: types without a known
// order count as red, green, blue.
int32_t order_of_quads(int32_t pixel_type);

}  // namespace quorix

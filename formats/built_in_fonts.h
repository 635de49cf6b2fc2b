// SPDX-License-Identifier: MIT
//
// The bitmap fonts inside the library, for programs that are not near any font file. The build
// makes them of the files in fonts/ (cmake/built_in_fonts.cmake): each is the bare deflate stream
// of its whole file.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

struct BuiltInFont {
  const char *name;  // as the file's, without its suffix; null behind the last font
  const uint8_t *bytes;
  size_t count;
  size_t size;  // of the file
};

extern const BuiltInFont built_in_fonts[];

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// A file as one block of memory, for the readers that go through all of it anyway.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/byte_source.h"
#include "base/memory.h"

namespace quorix {

// So many bytes of 0 follow the last byte.
inline constexpr size_t whole_file_padding = 16;

struct WholeFile {
  OwnedArray<uint8_t> bytes;
  size_t size = 0;  // without the padding
};

// Reads what is left of a source, by few large reads. What the system refuses to give counts as not
// there. False without memory.
bool read_whole_file(ByteSource *source, WholeFile *file);

}  // namespace quorix

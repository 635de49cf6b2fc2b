// SPDX-License-Identifier: MIT
//
// One block for the rest of a source, and zeros behind it.
#include "imagein/whole_file.h"

#include <cstring>

namespace quorix {

// The first byte is asked for before the memory: a folder opens like a file of absurd size.
bool read_whole_file(ByteSource *source, WholeFile *file) {
  const uint8_t first = read_u8(source);
  const uint64_t rest = bytes_left(*source);
  const uint64_t there = source->failed ? 0 : rest + 1;
  if (there > SIZE_MAX - whole_file_padding) return false;
  const auto size = static_cast<size_t>(there);
  file->bytes = allocate_array<uint8_t>(size + whole_file_padding);
  uint8_t *const bytes = file->bytes.get();
  if (bytes == nullptr) return false;
  bytes[0] = first;
  file->size = size == 0 ? 0 : 1 + read_available(source, bytes + 1, size - 1);
  std::memset(bytes + file->size, 0, whole_file_padding);
  return true;
}

}  // namespace quorix

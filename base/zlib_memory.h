// SPDX-License-Identifier: MIT
//
// zlib asks for its memory through the memory gate, like everyone else.
#pragma once

#include <zlib.h>

#include "base/memory.h"

namespace quorix {

inline void *zlib_allocate(void * /*opaque*/, uInt items, uInt size) {
  size_t bytes = 0;
  return checked_product(&bytes, items, size) ? allocate_bytes(bytes) : nullptr;
}

inline void zlib_release(void * /*opaque*/, void *block) {
  release_bytes(block);
}

// To be called before the stream is started.
inline void use_memory_gate(z_stream *stream) {
  stream->zalloc = zlib_allocate;
  stream->zfree = zlib_release;
}

}  // namespace quorix

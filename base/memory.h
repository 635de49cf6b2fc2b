// SPDX-License-Identifier: MIT
//
// The one gate through which the library asks for memory whose size a caller's data decides.
//
// Every request answers a null pointer when it cannot be met, so each caller has a status for it.
// A test replaces `memory_gate` and makes the n-th request fail, for every n. Buffers are owned
// through `OwnedArray`, or through a field of a record whose comment says who releases it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace quorix {

struct MemoryGate {
  void *(*allocate)(size_t bytes);         // uninitialised, null on failure
  void *(*allocate_zeroed)(size_t bytes);  // all bytes 0, null on failure
  void (*release)(void *block);            // a null block is fine
};

extern MemoryGate memory_gate;

// The product of up to three sizes in `result`; false if it does not fit in a size_t.
bool checked_product(size_t *result, size_t a, size_t b, size_t c = 1);

// A block of `bytes` bytes (a request of 0 is met by a block of 1), or null.
void *allocate_bytes(size_t bytes);
void *allocate_zeroed_bytes(size_t bytes);
void release_bytes(void *block);

struct ReleaseBytes {
  void operator()(void *block) const { release_bytes(block); }
};

// Owns an array of plain values that came from the gate.
template <class T>
using OwnedArray = std::unique_ptr<T[], ReleaseBytes>;

// `count` values, uninitialised; an empty owner if they cannot be had.
template <class T>
OwnedArray<T> allocate_array(size_t count) {
  size_t bytes = 0;
  if (!checked_product(&bytes, count, sizeof(T))) return {};
  return OwnedArray<T>(static_cast<T *>(allocate_bytes(bytes)));
}

template <class T>
OwnedArray<T> allocate_zeroed_array(size_t count) {
  size_t bytes = 0;
  if (!checked_product(&bytes, count, sizeof(T))) return {};
  return OwnedArray<T>(static_cast<T *>(allocate_zeroed_bytes(bytes)));
}

}  // namespace quorix

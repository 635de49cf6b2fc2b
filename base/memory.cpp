// SPDX-License-Identifier: MIT
//
// The memory gate as it is outside tests: the C library, with advice about large blocks.
#include "base/memory.h"

#include <cstdlib>

#include "base/large_blocks.h"

namespace quorix {

namespace {

void *plain_allocate(size_t bytes) {
  void *block = std::malloc(bytes);
  expect_scattered_use(block, bytes);
  return block;
}

// The C library hands out untouched zero pages for large blocks, which a fill could not match.
void *plain_allocate_zeroed(size_t bytes) {
  void *block = std::calloc(bytes, 1);
  expect_scattered_use(block, bytes);
  return block;
}

void plain_release(void *block) {
  std::free(block);
}

}  // namespace

MemoryGate memory_gate = {plain_allocate, plain_allocate_zeroed, plain_release};

bool checked_product(size_t *result, size_t a, size_t b, size_t c) {
  size_t partial = 0;
  return !__builtin_mul_overflow(a, b, &partial) && !__builtin_mul_overflow(partial, c, result);
}

void *allocate_bytes(size_t bytes) {
  return memory_gate.allocate(bytes == 0 ? 1 : bytes);
}

void *allocate_zeroed_bytes(size_t bytes) {
  return memory_gate.allocate_zeroed(bytes == 0 ? 1 : bytes);
}

void release_bytes(void *block) {
  if (block != nullptr) memory_gate.release(block);
}

}  // namespace quorix

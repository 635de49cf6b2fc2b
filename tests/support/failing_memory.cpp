// SPDX-License-Identifier: MIT
#include "tests/support/failing_memory.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unordered_map>

#include "base/memory.h"

namespace quorix::testing {

namespace {

struct Watch {
  MemoryGate before;
  size_t fail_at;
  Failures failures;
  bool failed = false;
  size_t requests = 0;
  size_t live_bytes = 0;
  size_t peak_bytes = 0;
  std::unordered_map<void *, size_t> blocks = {};  // those that were requested inside the scope
};

Watch *watch = nullptr;

bool refuse() {
  ++watch->requests;
  const bool hit = watch->fail_at != 0 &&
                   (watch->failures == Failures::only_that_one ? watch->requests == watch->fail_at
                                                               : watch->requests >= watch->fail_at);
  watch->failed = watch->failed || hit;
  return hit;
}

void *noted(void *block, size_t bytes) {
  if (block == nullptr) return nullptr;
  watch->blocks[block] = bytes;
  watch->live_bytes += bytes;
  watch->peak_bytes = std::max(watch->peak_bytes, watch->live_bytes);
  return block;
}

void *watched_allocate(size_t bytes) {
  return refuse() ? nullptr : noted(watch->before.allocate(bytes), bytes);
}

void *watched_allocate_zeroed(size_t bytes) {
  return refuse() ? nullptr : noted(watch->before.allocate_zeroed(bytes), bytes);
}

void watched_release(void *block) {
  const auto found = watch->blocks.find(block);
  if (found != watch->blocks.end()) {
    watch->live_bytes -= found->second;
    watch->blocks.erase(found);
  }
  watch->before.release(block);
}

}  // namespace

FailingMemory::FailingMemory(size_t fail_at, Failures failures) {
  if (watch != nullptr) {
    std::fputs("FailingMemory: one at a time\n", stderr);
    std::abort();
  }
  watch = new Watch{memory_gate, fail_at, failures};
  memory_gate = {watched_allocate, watched_allocate_zeroed, watched_release};
}

FailingMemory::~FailingMemory() {
  memory_gate = watch->before;
  delete watch;
  watch = nullptr;
}

bool FailingMemory::failed() const {
  return watch->failed;
}
size_t FailingMemory::requests() const {
  return watch->requests;
}
size_t FailingMemory::live_blocks() const {
  return watch->blocks.size();
}
size_t FailingMemory::live_bytes() const {
  return watch->live_bytes;
}
size_t FailingMemory::peak_bytes() const {
  return watch->peak_bytes;
}

}  // namespace quorix::testing

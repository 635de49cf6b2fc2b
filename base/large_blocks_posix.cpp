// SPDX-License-Identifier: MIT
//
// The whole large pages of a block are advised; where the system has none, nothing is done.
#include <sys/mman.h>

#include <cstdint>

#include "base/large_blocks.h"

namespace quorix {

void expect_scattered_use(void *block, size_t bytes) {
#ifdef MADV_HUGEPAGE
  constexpr uintptr_t large_page = uintptr_t{1} << 21;
  const auto begin = reinterpret_cast<uintptr_t>(block);
  const uintptr_t first = (begin + large_page - 1) / large_page * large_page;
  const uintptr_t last = (begin + bytes) / large_page * large_page;
  if (block != nullptr && first < last) {
    madvise(reinterpret_cast<void *>(first), last - first, MADV_HUGEPAGE);
  }
#else
  (void)block;
  (void)bytes;
#endif
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// What the fuzz targets of the image readers share. The input is read three times: held in memory,
// shown on an RGBA raster and on a palette raster. Nothing may leak or stay open, a picture is held
// exactly after a status that says so, and what is shown must be what is held, or background where
// no row was decoded.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <vector>

#include "base/memory.h"
#include "imagein/imagein.h"
#include "quorix/quorix.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::fuzz {

using Reader = int32_t (*)(const char *file, const int32_t *device, const void *unused,
                           const int32_t *device_width, const int32_t *device_height,
                           const int32_t *x, const int32_t *y, int32_t *status);

inline void require(bool condition, int line = __builtin_LINE()) {
  if (condition) return;
  std::fprintf(stderr, "image_reader.h or target, line %d\n", line);
  std::abort();
}

// Refuses large blocks, as a small machine would: headers may claim any size.
class SmallMemory {
 public:
  SmallMemory() : before_(memory_gate) {
    gate_before() = before_;
    memory_gate.allocate = allocate;
    memory_gate.allocate_zeroed = allocate_zeroed;
  }
  ~SmallMemory() { memory_gate = before_; }
  SmallMemory(const SmallMemory &) = delete;
  SmallMemory &operator=(const SmallMemory &) = delete;

 private:
  static constexpr size_t largest_block = 1 << 20;

  static MemoryGate &gate_before() {
    static MemoryGate gate;
    return gate;
  }
  static void *allocate(size_t bytes) {
    return bytes <= largest_block ? gate_before().allocate(bytes) : nullptr;
  }
  static void *allocate_zeroed(size_t bytes) {
    return bytes <= largest_block ? gate_before().allocate_zeroed(bytes) : nullptr;
  }

  MemoryGate before_;
};

inline constexpr int32_t page_width = 24, page_height = 20;
inline constexpr int32_t corner_x = 2, corner_y = 1;
inline constexpr uint8_t background = 255;

inline int32_t read(Reader reader, int32_t device, int32_t x, int32_t y) {
  int32_t status = 77;
  require(reader("input", &device, nullptr, &page_width, &page_height, &x, &y, &status) == 0);
  return status;
}

struct HeldPicture {
  int32_t width = 0, height = 0;
  std::vector<uint8_t> rgb, alpha;  // no alpha: all of it counts
};

inline HeldPicture copy_held_picture() {
  HeldPicture copy;
  copy.width = held_picture->width;
  copy.height = held_picture->height;
  const auto pixels = static_cast<size_t>(copy.width) * static_cast<size_t>(copy.height);
  copy.rgb.assign(held_picture->pixels, held_picture->pixels + 3 * pixels);
  const uint8_t *const alpha = open_alpha(*held_picture);
  if (alpha != nullptr) copy.alpha.assign(alpha, alpha + pixels);
  return copy;
}

// Whether a pixel of the page shows the held one.
inline bool shows(const uint8_t *page, const HeldPicture &held, size_t pixel) {
  const uint32_t alpha = held.alpha.empty() ? 255 : held.alpha[pixel];
  for (size_t k = 0; k < 3; ++k) {
    if (page[k] != blend_component(held.rgb[3 * pixel + k], alpha, background)) return false;
  }
  return true;
}

inline bool shows_background(const uint8_t *page) {
  return page[0] == background && page[1] == background && page[2] == background;
}

// `cut`: the file may have more pixels than are held.
inline void compare_with_page(const HeldPicture &held, bool cut) {
  uint8_t page[3 * page_width];
  for (int32_t y = 0; y < page_height; ++y) {
    qqvrdr(page, 0, y, -page_width, 1);
    for (int32_t x = 0; x < page_width; ++x) {
      const int32_t column = x - corner_x;
      const int32_t row = y - corner_y;
      const bool before = column < 0 || row < 0;
      const bool behind = column >= held.width || row >= held.height;
      const bool inside = !before && !behind;
      if (cut && !before && behind) continue;
      const size_t pixel =
          static_cast<size_t>(row) * static_cast<size_t>(held.width) + static_cast<size_t>(column);
      require(shows_background(page + 3 * x) || (inside && shows(page + 3 * x, held, pixel)));
    }
  }
}

inline void open_page(int32_t page_w) {
  int32_t width = page_width;
  int32_t height = page_height;
  int32_t status = 1;  // asks for white
  qqvini(page_w, 1, &width, &height, 1, &status);
  require(status == 0);
}

// `comparable`: what is shown is made of what is held.
inline void run_image_reader(Reader reader, const uint8_t *data, size_t size,
                             std::initializer_list<int32_t> statuses, bool comparable) {
  const SmallMemory small_memory;
  testing::MemoryFiles files;
  files.put("input", std::vector<uint8_t>(data, data + size));
  HeldPicture held;
  int32_t status = 0;
  {
    const testing::FailingMemory memory;
    status = read(reader, 0, 0, 0);
    require((status == 0 || status == reader_bad_index) == (held_picture != nullptr));
    if (held_picture != nullptr) held = copy_held_picture();
    const int32_t give_back = -1;
    qqpgrow(nullptr, nullptr, nullptr, &give_back);
    require(memory.live_blocks() == 0);
  }
  require(std::find(statuses.begin(), statuses.end(), status) != statuses.end());
  open_page(-1);
  const int32_t shown = read(reader, 101, corner_x, corner_y);
  require(held_picture == nullptr);
  require(!comparable || shown == status || status == reader_no_memory);
  if (comparable && shown == status && !held.rgb.empty())
    compare_with_page(held, reader == qqpigif);
  open_page(1);
  require(read(reader, 101, -3, -2) == shown);
  qqwfree();
  require(files.open_files() == 0);
}

}  // namespace quorix::fuzz

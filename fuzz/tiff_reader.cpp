// SPDX-License-Identifier: MIT
//
// The input is a TIFF file, read as a picture and as channels of five values.
#include "fuzz/image_reader.h"
#include "fuzz/target.h"

namespace {

using quorix::fuzz::require;

constexpr int32_t most_elements = 1 << 20;  // more are counted, not read

// The array has exactly as many elements as the library is told.
void read_channel(int32_t channel) {
  int32_t size = 0;
  int32_t count = 0;
  qqpltif("input", nullptr, &size, &channel, &count);
  require(count >= 0 || count == -2 || count == -3 || count == -11 || count == -12);
  if (count <= 0 || count > most_elements) return;
  std::vector<uint16_t> array(static_cast<size_t>(count));
  size = count;
  int32_t status = 0;
  qqpltif("input", array.data(), &size, &channel, &status);
  require(status == count || status == -2);
  size -= 1;
  qqpltif("input", array.data(), &size, &channel, &status);
  require(status == -12 || (size == 0 && status == count));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  quorix::fuzz::run_image_reader(qqpitif, data, size, {0, -2, -3, -5, -11, -12}, true);
  const quorix::fuzz::SmallMemory small_memory;
  quorix::testing::MemoryFiles files;
  files.put("input", std::vector<uint8_t>(data, data + size));
  for (int32_t channel = -2; channel <= 6; ++channel)
    read_channel(channel);
  require(files.open_files() == 0);
  return 0;
}

// SPDX-License-Identifier: MIT
//
// Blocks of bare deflate streams. What zlib streams do is tested with the PNG reader.
#include "base/inflate.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

using Bytes = std::vector<uint8_t>;

// By hand: the last block (1), stored (00), five bits to the byte's end, then the length, its
// complement and the bytes.
const Bytes stored = {0x01, 0x03, 0x00, 0xFC, 0xFF, 'a', 'b', 'c'};

bool inflates(const Bytes &stream, size_t size, std::string *text) {
  text->assign(size, '?');
  return inflate_block(stream.data(), stream.size(), reinterpret_cast<uint8_t *>(text->data()),
                       size);
}

TEST(InflateBlock, UnpacksAWholeStream) {
  std::string text;
  EXPECT_TRUE(inflates(stored, 3, &text));
  EXPECT_EQ(text, "abc");
}

// Fixed codes: the last block (1), fixed (01), 'a' is 0x30 + 0x61 in 8 bits, a length of 4 (code
// 258, 0000010) at distance 1 (00000), the end (0000000). Bits fill bytes from the low end.
TEST(InflateBlock, UnpacksRepetitions) {
  std::string bits =
      "1"
      "10"
      "10010001"
      "0000010"
      "00000"
      "0000000";
  Bytes stream((bits.size() + 7) / 8, 0);
  for (size_t i = 0; i < bits.size(); ++i)
    if (bits[i] == '1') stream[i / 8] = static_cast<uint8_t>(stream[i / 8] | 1U << i % 8);
  std::string text;
  EXPECT_TRUE(inflates(stream, 5, &text));
  EXPECT_EQ(text, "aaaaa");
}

TEST(InflateBlock, IsOfTheSizeThatWasSaid) {
  std::string text;
  EXPECT_FALSE(inflates(stored, 2, &text));
  EXPECT_EQ(text, "ab") << "and nothing beyond the room";
  EXPECT_FALSE(inflates(stored, 4, &text));
}

TEST(InflateBlock, RefusesStreamsThatAreCutOrDamaged) {
  std::string text;
  for (size_t length = 0; length < stored.size(); ++length)
    EXPECT_FALSE(
        inflates(Bytes(stored.begin(), stored.begin() + static_cast<ptrdiff_t>(length)), 3, &text))
        << length;
  Bytes damaged = stored;
  damaged[3] = 0;
  EXPECT_FALSE(inflates(damaged, 3, &text));
}

TEST(InflateBlock, FailsWithoutMemory) {
  for (size_t n = 1;; ++n) {
    const FailingMemory memory(n);
    std::string text;
    const bool done = inflates(stored, 3, &text);
    EXPECT_EQ(memory.live_blocks(), 0U);
    EXPECT_EQ(done, !memory.failed());
    if (!memory.failed()) break;
  }
}

}  // namespace
}  // namespace quorix::testing

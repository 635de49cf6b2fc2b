// SPDX-License-Identifier: MIT
//
// Where one content stream ends and the next begins, and documents that go to memory.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class PdfStreams : public ::testing::Test {
 protected:
  void TearDown() override { qqpfree(); }
};
class PdfMemory : public PdfStreams {};

constexpr size_t room = 300000;
constexpr size_t start_lines = 16;  // "0.709 w\n2 J\n2 j\n"

// Comment lines, which differ, so that nothing can be exchanged unseen.
std::string comment(size_t size, uint32_t seed) {
  std::string text = "%";
  uint32_t state = seed * 2654435761U + 1;
  while (text.size() + 1 < size) {
    state = state * 1664525U + 1013904223U;
    text += static_cast<char>('a' + (state >> 16) % 26);
  }
  return text.substr(0, size - 1) + "\n";
}

// The sizes of the streams of the first page, whose content must be `expected`.
std::vector<size_t> stream_sizes(const std::string &document, const std::string &expected) {
  const PdfParts parts = take_apart(document);
  EXPECT_EQ(parts.problem, "");
  if (parts.pages.empty()) return {};
  EXPECT_TRUE(content_of_page(parts, parts.pages[0]) == "0.709 w\n2 J\n2 j\n" + expected);
  std::vector<size_t> sizes;
  for (const size_t stream : streams_of_page(parts, parts.pages[0]))
    sizes.push_back(parts.objects[stream].data.size());
  return sizes;
}

using Sizes = std::vector<size_t>;

Sizes sizes_of(bool compress, const std::vector<size_t> &pieces) {
  std::string all;
  const std::string document = document_of(compress, [&] {
    uint32_t seed = 0;
    for (const size_t size : pieces) {
      const std::string piece = comment(size, ++seed);
      send(piece);
      all += piece;
    }
  });
  return stream_sizes(document, all);
}

TEST_F(PdfStreams, HoldUpTo300000BytesWhereTheyAreCompressed) {
  EXPECT_EQ(sizes_of(true, {room - start_lines}), Sizes{room});
  EXPECT_EQ(sizes_of(true, {room - start_lines + 1}), (Sizes{start_lines, room - start_lines + 1}));
  EXPECT_EQ(sizes_of(true, {room - start_lines, 2}), (Sizes{room, 2}));
  EXPECT_EQ(sizes_of(true, {200000, 100000, 200000}), (Sizes{200000 + start_lines, 300000}));
  EXPECT_EQ(sizes_of(true, {200000, 150000, 150000, 2}), (Sizes{200016, 300000, 2}));
}

TEST_F(PdfStreams, AreNotSplitWhereTheyAreNotCompressed) {
  EXPECT_EQ(sizes_of(false, {200000, 200000, 900000}), Sizes{start_lines + 1300000});
}

TEST_F(PdfStreams, TakeOneWriteLargerThanABufferAsAWhole) {
  EXPECT_EQ(sizes_of(true, {room}), (Sizes{start_lines, room}));
  EXPECT_EQ(sizes_of(true, {room + 1}), (Sizes{start_lines, room + 1}));
  EXPECT_EQ(sizes_of(true, {1000000, 5, 6}), (Sizes{start_lines, 1000000, 11}));
  EXPECT_EQ(sizes_of(true, {1000000, 1000000}), (Sizes{start_lines, 1000000, 1000000}));
}

TEST_F(PdfStreams, AreNotSplitByAWriteOfNothing) {
  const std::string document = document_of(true, [] {
    send(comment(room - start_lines, 1));
    send("");
    EXPECT_EQ(qqpdf7(reinterpret_cast<const uint8_t *>(""), -1), 0);
  });
  EXPECT_EQ(stream_sizes(document, comment(room - start_lines, 1)), Sizes{room});
}

TEST_F(PdfStreams, GoOnInTheNextWhereLinesFillThem) {
  std::string all = "0.00 0.00 m\n";
  const std::string document = document_of(true, [&] {
    for (int32_t i = 1; i <= 60000; ++i) {
      draw(op_line, i, 0.25 * (i % 7));
      all += std::to_string(i) + ".00 " + std::to_string(i % 7 / 4) + "." +
             std::to_string(i % 7 % 4 * 25 + 100).substr(1) + " l\n";
    }
    all += "S\n";
  });
  const Sizes sizes = stream_sizes(document, all);
  ASSERT_EQ(sizes.size(), (all.size() + start_lines + room - 1) / room);
  constexpr size_t longest_line = 13;  // "60000.00 1.50 l", and what ends it
  for (size_t i = 0; i + 1 < sizes.size(); ++i) {
    EXPECT_LE(sizes[i], room);
    EXPECT_GE(sizes[i], room - longest_line - 3);
  }
}

TEST_F(PdfStreams, AreListedLineByLineWhereAPageHasSeveral) {
  const std::string document = document_of(true, [] {
    send(comment(room, 1));  // streams 3 and 4
    draw(op_page);           // page 5
    send(comment(room - 5, 2));
    send(comment(room - 5, 3));  // streams 6 and 7
  });
  EXPECT_NE(document.find("/Contents [\n3 0 R\n4 0 R\n]\n>>\nendobj\n"), std::string::npos);
  EXPECT_NE(document.find("/Contents [\n6 0 R\n7 0 R\n]\n>>\nendobj\n"), std::string::npos);
}

TEST_F(PdfStreams, HaveTheirLengthInTheNextObjectHoweverLong) {
  const std::string document = document_of(false, [] { send(comment(1234567, 1)); });
  EXPECT_NE(document.find("3 0 obj\n<< /Length 4 0 R >>\nstream\n"), std::string::npos);
  EXPECT_NE(document.find("endstream\nendobj\n4 0 obj\n1234583\nendobj\n5 0 obj\n"),
            std::string::npos);
}

size_t peak_of_file(int32_t pages) {
  MemoryFiles files;
  qqpfree();
  const FailingMemory memory;
  EXPECT_EQ(begin_document(compressed_file), 0);
  for (int32_t page = 0; page < pages; ++page) {
    send(comment(250000, static_cast<uint32_t>(page)));
    send(comment(250000, static_cast<uint32_t>(page)));
    draw(op_begin_image, 100, 100);
    send(comment(30000, 1));
    draw(op_end_image);
    draw(op_page);
  }
  draw(op_end);
  qqpfree();
  EXPECT_EQ(memory.live_blocks(), 0U);
  return memory.peak_bytes();
}

TEST_F(PdfStreams, NeedNoMoreMemoryForMorePages) {
  constexpr size_t tables = 20 * 8 * 64;  // 8 objects for each page more, some room for growth
  const size_t few = peak_of_file(5);
  const size_t many = peak_of_file(25);
  EXPECT_GT(few, 300000U);  // one buffer of a stream at least
  EXPECT_LE(many, few + tables);
}

// ---- memory

TEST_F(PdfMemory, TellsItsLengthAndIsThenHandedOver) {
  ASSERT_EQ(begin_document(plain_memory, 100, 200), 0);
  draw(op_end);
  const int32_t length = memory_length();
  EXPECT_EQ(length, 401 + 9 + 7 * 20 + 46 + 14 + 6);  // see the text of an empty page
  EXPECT_EQ(memory_length(), length);
  std::string bytes;
  EXPECT_EQ(take_memory(length, &bytes), length);
  EXPECT_EQ(bytes.substr(0, 9), "%PDF-1.3\n");
  EXPECT_EQ(bytes.substr(bytes.size() - 6), "%%EOF\n");
}

TEST_F(PdfMemory, FitsIntoMoreRoomToo) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  draw(op_end);
  const int32_t length = memory_length();
  std::string bytes;
  EXPECT_EQ(take_memory(length + 1000, &bytes), length);
  EXPECT_EQ(bytes.substr(bytes.size() - 6), "%%EOF\n");
}

TEST_F(PdfMemory, StaysWhereTheRoomIsTooSmall) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  draw(op_end);
  const int32_t length = memory_length();
  std::string bytes;
  for (const int32_t size : {1, 100, length - 1})
    EXPECT_EQ(take_memory(size, &bytes), -3) << size;
  EXPECT_EQ(take_memory(length, &bytes), length);
}

TEST_F(PdfMemory, StaysWhereTheRoomIsNegative) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  draw(op_end);
  const int32_t length = memory_length();
  std::string bytes;
  for (const int32_t size : {-1, INT32_MIN})
    EXPECT_EQ(take_memory(size, &bytes), -3) << size;
  EXPECT_EQ(take_memory(length, &bytes), length);
}

TEST_F(PdfMemory, IsHandedOverOnce) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  draw(op_end);
  const int32_t length = memory_length();
  std::string bytes;
  EXPECT_EQ(take_memory(length, &bytes), length);
  EXPECT_EQ(take_memory(length, &bytes), -2);
  EXPECT_EQ(take_memory(1, &bytes), -2);
}

TEST_F(PdfMemory, IsNotThereForADocumentInAFile) {
  MemoryFiles files;
  ASSERT_EQ(begin_document(plain_file), 0);
  draw(op_end);
  std::string bytes;
  EXPECT_EQ(take_memory(1000000, &bytes), -2);
}

TEST_F(PdfMemory, GrowsBeyondItsFirstBlock) {
  for (const size_t size : {511000U, 512000U, 513000U, 1024000U, 3000000U}) {
    std::string all;
    const std::string document = document_of(false, [&] {
      for (size_t sent = 0; sent < size; sent += 1000) {
        const std::string piece = comment(1000, static_cast<uint32_t>(sent));
        send(piece);
        all += piece;
      }
    });
    EXPECT_EQ(stream_sizes(document, all), Sizes{start_lines + size});
  }
}

TEST_F(PdfMemory, GrowsAtOnceForOneLargeWrite) {
  const std::string piece = comment(2000000, 1);
  const std::string document = document_of(false, [&] { send(piece); });
  EXPECT_EQ(stream_sizes(document, piece), Sizes{start_lines + 2000000});
}

TEST_F(PdfMemory, FillsItsBlockToTheLastByte) {
  // So many bytes more or less around each multiple of the block.
  const auto rest = static_cast<int32_t>(document_of(false, [] {}).size());
  for (int32_t blocks = 1; blocks <= 2; ++blocks) {
    for (int32_t more = -20; more <= 4; more += 4) {
      const auto size = static_cast<size_t>(512000 * blocks + more - rest - 5);
      const std::string piece = comment(size, 1);
      const std::string document = document_of(false, [&] { send(piece); });
      EXPECT_EQ(stream_sizes(document, piece), Sizes{start_lines + size}) << more;
    }
  }
}

TEST_F(PdfMemory, IsDroppedByTheNextDocument) {
  const std::string first = document_of(
      false, [] {}, 1, 1);
  ASSERT_EQ(begin_document(plain_memory, 2, 2), 0);
  draw(op_end);
  ASSERT_EQ(begin_document(plain_memory, 3, 3), 0);
  draw(op_end);
  const std::string third = memory_bytes();
  EXPECT_NE(third.find("/MediaBox [0 0 3 3]"), std::string::npos);
  EXPECT_EQ(third.size(), first.size());
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Calls at the wrong time: without a document, after its end, in the middle of another.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

class PdfMisuse : public ::testing::Test {
 protected:
  void SetUp() override { qqpfree(); }
  void TearDown() override { qqpfree(); }
};

const literal::FormCall some_form = {"0 0 m\n", 0, 0, 10, 20, 0, 0, 10, 20, 1, 0};

// Every operation but those that begin and end documents.
void call_everything() {
  for (int32_t op = -1; op <= 20; ++op)
    if (op != op_end) draw(op, 2, 3);
  colour(1, 2, 3, 0);
  colour(1, 2, 3, 1);
  rectangle(1, 2, 3, 4);
  character('a', 1, 2);
  send("bytes");
  EXPECT_EQ(form(some_form), 0);
  EXPECT_EQ(outline("title", 0), 1);
}

std::string text_of(const std::vector<uint8_t> &bytes) {
  return {bytes.begin(), bytes.end()};
}

TEST_F(PdfMisuse, WithoutADocumentDoesNothing) {
  MemoryFiles files;
  const FailingMemory memory;
  call_everything();
  draw(op_end);
  EXPECT_EQ(memory.requests(), 0U);
  EXPECT_EQ(memory_length(), 0);
  std::string bytes;
  EXPECT_EQ(take_memory(1000, &bytes), -2);
  EXPECT_EQ(qqpfree(), 0);
  EXPECT_EQ(qqpfree(), 0);
}

TEST_F(PdfMisuse, WithoutADocumentLeavesARectangleAsItIs) {
  double x = 1;
  double y = 2;
  double width = 0;
  double height = 0;
  EXPECT_EQ(qqpdf4(&x, &y, &width, &height), 0);
  EXPECT_EQ(x, 1);
  EXPECT_EQ(y, 2);
  EXPECT_EQ(width, 0);
  EXPECT_EQ(height, 0);
}

TEST_F(PdfMisuse, AfterTheEndLeavesAMemoryDocumentAsItIs) {
  const std::string untouched = document_of(true, [] { draw(op_line, 1, 2); });
  ASSERT_EQ(begin_document(compressed_memory), 0);
  draw(op_line, 1, 2);
  draw(op_end);
  call_everything();
  draw(op_end);
  call_everything();
  EXPECT_EQ(mask_date(memory_bytes()), untouched);
}

TEST_F(PdfMisuse, AfterTheEndLeavesAFileAsItIs) {
  MemoryFiles files;
  const FailingFiles calls;
  ASSERT_EQ(begin_document(plain_file), 0);
  draw(op_line, 1, 2);
  draw(op_end);
  const std::vector<uint8_t> file = files.bytes("out");
  EXPECT_EQ(take_apart(text_of(file)).problem, "");
  const size_t before = calls.calls();
  call_everything();
  draw(op_end);
  EXPECT_EQ(calls.calls(), before);
  EXPECT_EQ(files.bytes("out"), file);
  EXPECT_EQ(files.open_files(), 0U);
}

TEST_F(PdfMisuse, AfterTheEndTakesNoMemory) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  draw(op_end);
  const FailingMemory memory;
  call_everything();
  draw(op_end);
  EXPECT_EQ(memory.requests(), 0U);
}

TEST_F(PdfMisuse, FreeingEndsADocumentWhereItStands) {
  MemoryFiles files;
  const FailingMemory memory;
  for (const int32_t mode : {plain_file, compressed_file, plain_memory, compressed_memory}) {
    ASSERT_EQ(begin_document(mode), 0);
    draw(op_line, 1, 2);
    outline("title", 0);
    qqpfree();
    EXPECT_EQ(memory.live_blocks(), 0U) << mode;
    EXPECT_EQ(files.open_files(), 0U) << mode;
    call_everything();
    EXPECT_EQ(memory_length(), 0);
  }
}

TEST_F(PdfMisuse, FreeingAFinishedDocumentReleasesAll) {
  MemoryFiles files;
  const FailingMemory memory;
  for (const int32_t mode : {plain_file, compressed_file, plain_memory, compressed_memory}) {
    ASSERT_EQ(begin_document(mode), 0);
    outline("title", 0);
    draw(op_end);
    qqpfree();
    EXPECT_EQ(memory.live_blocks(), 0U) << mode;
  }
}

TEST_F(PdfMisuse, AFinishedFileHoldsNoTables) {
  MemoryFiles files;
  ASSERT_EQ(begin_document(plain_file), 0);
  draw(op_end);  // the record stays
  const FailingMemory memory;
  for (const int32_t mode : {plain_file, compressed_file}) {
    ASSERT_EQ(begin_document(mode), 0);
    for (int32_t i = 0; i < 300; ++i) {
      outline("title", 0);
      draw(op_page);
    }
    draw(op_end);
    EXPECT_EQ(memory.live_blocks(), 0U);
  }
}

TEST_F(PdfMisuse, ASecondDocumentReplacesTheOpenOne) {
  const std::string untouched = document_of(
      false, [] {}, 10, 20);
  for (const int32_t first : {plain_file, compressed_file, plain_memory, compressed_memory}) {
    qqpfree();
    MemoryFiles files;
    const FailingMemory memory;
    ASSERT_EQ(begin_document(first, 595, 842, 1, "first"), 0);
    // All that a document and a page remember.
    outline("title", 0);
    colour(9, 9, 9, 0);
    draw(op_mask, 1);
    draw(op_corner1, 1, 1);
    draw(op_clip, 0);
    draw(op_page);
    form(some_form);
    draw(op_begin_image, 1, 1);
    draw(op_end_image);
    character('a', 1, 2);
    draw(op_line, 1, 2);
    ASSERT_EQ(begin_document(plain_memory, 10, 20, 0), 0);
    EXPECT_EQ(files.open_files(), 0U);
    draw(op_end);
    EXPECT_EQ(mask_date(memory_bytes()), untouched);
    qqpfree();
    EXPECT_EQ(memory.live_blocks(), 0U);
  }
}

TEST_F(PdfMisuse, ASecondDocumentStartsWithNothingRemembered) {
  const auto drawing = [] {
    draw(op_line, 0, 0);
    draw(op_clip, 0);
    draw(op_clip, 0);
    draw(op_begin_image, 1, 1);
    draw(op_end_image);
    draw(op_place, 1, 1);
    form(some_form);
    outline("title", 0);
    draw(op_page);
    character('a', 1, 2);
  };
  const std::string alone = document_of(false, drawing);
  ASSERT_EQ(begin_document(compressed_memory, 1, 2, 1), 0);
  drawing();
  colour(9, 9, 9, 0);
  draw(op_mask, 1);
  draw(op_corner1, 1, 1);
  draw(op_corner2, 1, 1);
  draw(op_begin_image, 5, 5);
  draw(op_move, 5, 6);
  draw(op_end);
  EXPECT_EQ(document_of(false, drawing), alone);
}

TEST_F(PdfMisuse, TheSameFileTwiceHoldsTheSecondDocument) {
  MemoryFiles files;
  ASSERT_EQ(begin_document(plain_file, 1, 1), 0);
  draw(op_line, 100, 200);
  ASSERT_EQ(begin_document(plain_file, 10, 20), 0);
  draw(op_end);
  EXPECT_EQ(mask_date(text_of(files.bytes("out"))), document_of(
                                                        false, [] {}, 10, 20));
}

TEST_F(PdfMisuse, AFileThatCannotBeOpenedGivesMinus1AndNoDocument) {
  const TemporaryFolder folder;
  for (const int32_t mode : {plain_file, compressed_file}) {
    EXPECT_EQ(begin_document(mode, 595, 842, 1, folder.file("no folder") + "/out.pdf"), -1);
    EXPECT_EQ(begin_document(mode, 595, 842, 0, ""), -1);
    int32_t word = 1;
    EXPECT_EQ(qqpdf1(nullptr, 10, 20, mode, &word), 0);
    EXPECT_EQ(word, -1);
    call_everything();
    draw(op_end);
    std::string bytes;
    EXPECT_EQ(take_memory(1000, &bytes), -2);
  }
}

TEST_F(PdfMisuse, AFileThatCannotBeOpenedStillEndsTheDocumentBefore) {
  MemoryFiles files;
  ASSERT_EQ(begin_document(plain_file, 595, 842, 0, "first"), 0);
  {
    const FailingFiles refuse(1, file_open);
    ASSERT_EQ(begin_document(plain_file, 595, 842, 0, "second"), -1);
  }
  EXPECT_EQ(files.open_files(), 0U);
  const std::vector<uint8_t> file = files.bytes("first");
  call_everything();
  draw(op_end);
  EXPECT_EQ(files.bytes("first"), file);
}

TEST_F(PdfMisuse, MemoryNeedsNoName) {
  int32_t word = 0;
  EXPECT_EQ(qqpdf1(nullptr, 10, 20, plain_memory, &word), 0);
  EXPECT_EQ(word, 0);
  draw(op_end);
  EXPECT_EQ(take_apart(memory_bytes()).problem, "");
}

TEST_F(PdfMisuse, MemoryHandedOverTooEarlyLeavesOnlyTheRest) {
  for (const int32_t mode : {plain_memory, compressed_memory}) {
    ASSERT_EQ(begin_document(mode), 0);
    std::string bytes;
    const int32_t length = memory_length();
    EXPECT_EQ(take_memory(1000, &bytes), length);
    EXPECT_EQ(bytes.substr(0, 9), "%PDF-1.3\n");
    draw(op_line, 1, 2);
    send(std::string(600000, ' '));
    draw(op_end);
    // What follows is no whole document; it must only do no harm.
    const int32_t after = take_memory(5000000, &bytes);
    EXPECT_TRUE(after == -1 || after == -2 || after > 0) << after;
  }
}

TEST_F(PdfMisuse, TwoTextsOpenAtTheEndAreClosed) {
  const PdfParts parts = take_apart(document_of(true, [] {
    character('a', 1, 2);
    character('b', 1, 2, 3);
  }));
  ASSERT_EQ(parts.problem, "");
  const std::string content = content_of_page(parts, parts.pages.at(0));
  EXPECT_EQ(content.substr(content.size() - 10), "(b) Tj\nET\n");
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Documents while memory, the disk or the compressor fail.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "base/deflate.h"
#include "pdf/pdf.h"
#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

class PdfFailures : public ::testing::Test {
 protected:
  void SetUp() override {
    qqpfree();
    usual_gate_ = deflate_gate;
  }
  void TearDown() override {
    deflate_gate = usual_gate_;
    qqpfree();
  }
  DeflateGate usual_gate_ = {};
};

std::string text_of(const std::vector<uint8_t> &bytes) {
  return {bytes.begin(), bytes.end()};
}

const std::string pixels = std::string(300, 'a') + std::string(300, 'b');
const literal::FormCall some_form = {"0 0 m\n10 10 l\nS\n", 0, 0, 10, 20, 0, 0, 10, 20, 1, 0};

// A bit of everything on two pages; gives the statuses of the outlines.
std::vector<int32_t> draw_everything() {
  std::vector<int32_t> statuses;
  colour(10, 20, 30, 0);
  draw(op_line, 100, 200);
  statuses.push_back(outline("first", 0));
  draw(op_begin_image, 20, 10);
  send(pixels);
  draw(op_end_image);
  draw(op_place, 30, 40);
  statuses.push_back(outline("second", 1));
  draw(op_page);
  character('a', 10, 10);
  statuses.push_back(outline("third", 0));
  form(some_form);
  draw(op_line, 5, 5);
  draw(op_end);
  return statuses;
}

std::vector<std::string> contents_of(const PdfParts &parts) {
  std::vector<std::string> contents;
  for (const size_t page : parts.pages)
    contents.push_back(content_of_page(parts, page));
  return contents;
}

std::string image_of(const PdfParts &parts) {
  for (const PdfObject &object : parts.objects)
    if (object.text.find("/Subtype /Image") != std::string::npos) return object.data;
  return "no image";
}

std::string form_of(const PdfParts &parts) {
  for (const PdfObject &object : parts.objects)
    if (object.text.find("/Subtype /Form") != std::string::npos) return object.data;
  return "no form";
}

// Whatever was not compressed for want of memory, pages, image and form are the same.
void expect_same_drawing(const std::string &document, const std::string &expected, size_t n) {
  const PdfParts parts = take_apart(document);
  const PdfParts wanted = take_apart(expected);
  ASSERT_EQ(parts.problem, "") << n;
  EXPECT_EQ(contents_of(parts), contents_of(wanted)) << n;
  EXPECT_EQ(image_of(parts), pixels) << n;
  EXPECT_EQ(form_of(parts), some_form.data) << n;
}

struct Outcome {
  int32_t status;  // of the start
  std::vector<int32_t> outlines;
  std::string document;  // empty where it was not begun
};

Outcome draw_in_mode(int32_t mode, const MemoryFiles &files) {
  Outcome outcome = {begin_document(mode), {}, ""};
  if (outcome.status != 0) return outcome;
  outcome.outlines = draw_everything();
  if (mode < plain_memory) {
    outcome.document = text_of(files.bytes("out"));
  } else {
    EXPECT_GT(take_memory(1000000, &outcome.document), 0);
  }
  return outcome;
}

// ---- memory

TEST_F(PdfFailures, RefusedMemoryLeavesAWholeDocumentOrAStatus) {
  for (const int32_t mode : {plain_file, compressed_file, plain_memory, compressed_memory}) {
    const std::string whole = document_of(mode % 2 != 0, [] { draw_everything(); });
    qqpfree();
    size_t begun = 0;
    size_t refused_outlines = 0;
    bool refused = true;
    for (size_t n = 1; refused; ++n) {
      MemoryFiles files;
      const FailingMemory memory(n);
      const Outcome outcome = draw_in_mode(mode, files);
      refused = memory.failed();
      qqpfree();
      EXPECT_EQ(memory.live_blocks(), 0U) << n;
      EXPECT_EQ(files.open_files(), 0U) << n;
      if (!refused) {
        EXPECT_EQ(mask_date(outcome.document), whole);
        break;
      }
      if (outcome.status != 0) {
        EXPECT_EQ(outcome.status, -2) << n;
        continue;
      }
      ++begun;
      expect_same_drawing(outcome.document, whole, n);
      for (const int32_t status : outcome.outlines)
        if (status != 0) ++refused_outlines;
    }
    EXPECT_GT(begun, 0U) << mode;
    EXPECT_GT(refused_outlines, 0U) << mode;
  }
}

TEST_F(PdfFailures, WithoutAnyMoreMemoryADocumentStillComesOut) {
  for (const int32_t mode : {plain_file, compressed_file, plain_memory, compressed_memory}) {
    MemoryFiles files;
    EXPECT_EQ(begin_document(mode), 0);
    std::string document;
    {
      const FailingMemory none(1, Failures::that_and_all_later);
      for (const int32_t status : draw_everything())
        EXPECT_TRUE(status == 3 || status == 4 || status == 2) << status;
      if (mode >= plain_memory) take_memory(1000000, &document);
    }
    if (mode < plain_memory) document = text_of(files.bytes("out"));
    const std::string whole = document_of(false, [] { draw_everything(); });
    expect_same_drawing(document, whole, 0);
    EXPECT_EQ(document.find("/Outlines"), std::string::npos);
  }
}

// The offset of each object from the cross-reference table, by its number; entry 0 is none.
std::vector<size_t> offsets_in(const std::string &document) {
  constexpr size_t entry_size = 20;
  std::vector<size_t> offsets;
  const size_t table = document.find("\nxref\n0 ");
  if (table == std::string::npos) return offsets;
  size_t at = document.find('\n', table + 8) + 1;
  for (; document.compare(at, 7, "trailer") != 0; at += entry_size)
    offsets.push_back(std::stoul(document.substr(at, 10)));
  return offsets;
}

TEST_F(PdfFailures, ObjectsThatTheTableCannotTakeHaveAnOffsetOfZero) {
  constexpr size_t table_size = 200;
  constexpr int pages = 100;
  ASSERT_EQ(begin_document(plain_memory), 0);
  {
    const FailingMemory none(1, Failures::that_and_all_later);
    for (int i = 1; i < pages; ++i)
      draw(op_page);
    draw(op_end);
  }
  const std::string document = memory_bytes();
  const std::vector<size_t> offsets = offsets_in(document);
  // Three for each page, catalogue and page tree, /Info, and the entry 0.
  ASSERT_EQ(offsets.size(), 3U * pages + 4);
  for (size_t number = 1; number < offsets.size(); ++number) {
    if (number >= table_size) {
      ASSERT_EQ(offsets[number], 0U) << number;
      continue;
    }
    const std::string start = std::to_string(number) + " 0 obj\n";
    ASSERT_EQ(document.compare(offsets[number], start.size(), start), 0) << number;
  }
}

TEST_F(PdfFailures, MemoryThatCannotDoubleGrowsByWhatIsNeeded) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  const std::string first(1000000, 'a'), second(500000, 'b'), third(100000, 'c');
  send(first);  // the room is about 1,512,000 bytes from here on
  send(second);
  {
    const FailingMemory memory(1);
    send(third);
    EXPECT_TRUE(memory.failed());
    EXPECT_EQ(memory.requests(), 2U);
  }
  draw(op_end);
  EXPECT_NE(memory_bytes().find(first + second + third), std::string::npos);
}

TEST_F(PdfFailures, AWriteBeyondWhatMemoryOutputCountsIsLostAndCounted) {
  const std::string bytes = "nothing of this is read";
  for (const size_t count : {size_t{INT32_MAX}, size_t{INT32_MAX} + 1}) {
    PdfDocument *const document = make_document();
    ASSERT_NE(document, nullptr);
    const PdfSettings settings = {100, 100, false, true, false};
    ASSERT_EQ(start_document(document, nullptr, settings), pdf_done);
    const FailingMemory memory;
    put_output(&document->output, bytes.data(), count);
    EXPECT_EQ(memory.requests(), 0U);
    std::vector<uint8_t> room(1000);
    EXPECT_EQ(take_memory_output(&document->output, room.data(), 0), INT32_MAX);
    EXPECT_EQ(take_memory_output(&document->output, room.data(), 1000), -1);
    release_document(document);
  }
}

TEST_F(PdfFailures, AStreamWithoutABufferIsWrittenAsItComesAndTheNextTriesAgain) {
  size_t unbuffered = 0;
  for (size_t n = 1; n < 10; ++n) {
    qqpfree();
    int32_t status = 0;
    {
      const FailingMemory memory(n);
      status = begin_document(compressed_memory);
    }
    if (status != 0) continue;
    draw(op_line, 1, 2);
    draw(op_page);
    draw(op_line, 3, 4);
    draw(op_end);
    const std::string document = memory_bytes();
    if (document.find("3 0 obj\n<< /Length 4 0 R >>\n") == std::string::npos) continue;
    ++unbuffered;
    EXPECT_EQ(document.find("%PDF-1.3\n3 0 obj\n<< /Length 4 0 R >>\nstream\n0.709 w\n2 J\n2 j\n"
                            "0.00 0.00 m\n1.00 2.00 l\nS\nendstream\nendobj\n"
                            "4 0 obj\n42\nendobj\n5 0 obj\n<<\n/Type /Page\n"),
              0U);
    const PdfParts parts = take_apart(document);
    ASSERT_EQ(parts.problem, "");
    ASSERT_EQ(parts.pages, (std::vector<size_t>{5, 7}));
    EXPECT_TRUE(parts.objects[6].was_compressed);
    EXPECT_EQ(parts.objects[6].data, "1.00 2.00 m\n3.00 4.00 l\nS\n");
  }
  EXPECT_EQ(unbuffered, 1U);
}

TEST_F(PdfFailures, AWriteLargerThanABufferNeedsNone) {
  const std::string large(400000, ' ');
  ASSERT_EQ(begin_document(compressed_memory), 0);
  {
    const FailingMemory none(1, Failures::that_and_all_later);
    send(large);
  }
  send("% more\n");
  draw(op_end);
  const std::string document = memory_bytes();
  const PdfParts parts = take_apart(document);
  ASSERT_EQ(parts.problem, "");
  EXPECT_EQ(document.substr(0, 99),
            ("%PDF-1.3\n3 0 obj\n<< /Length 16 >>\nstream\n0.709 w\n2 J\n2 j\nendstream\nendobj\n"
             "4 0 obj\n<< /Length 5 0 R >>\nstream\n" +
             large)
                .substr(0, 99));
  EXPECT_EQ(streams_of_page(parts, parts.pages.at(0)), (std::vector<size_t>{3, 4}));
  EXPECT_EQ(parts.objects[4].data, large + "% more\n");
}

TEST_F(PdfFailures, RefusedTablesOfManyObjectsDoNoHarm) {
  for (const int32_t mode : {plain_file, compressed_memory}) {
    bool refused = true;
    for (size_t n = 1; refused; n += mode == plain_file ? 1 : 37) {
      MemoryFiles files;
      const FailingMemory memory(n);
      if (begin_document(mode) == 0) {
        for (int32_t page = 0; page < 250; ++page) {
          outline("title", 0);
          draw(op_line, page, page);
          draw(op_page);
        }
        draw(op_end);
        if (mode == plain_file) {
          const std::string document = text_of(files.bytes("out"));
          EXPECT_EQ(document.substr(document.size() - 6), "%%EOF\n") << n;
        }
      }
      refused = memory.failed();
      qqpfree();
      EXPECT_EQ(memory.live_blocks(), 0U) << n;
    }
  }
}

TEST_F(PdfFailures, OutlinesTellTableAndTitleApart) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  {
    const FailingMemory none(1, Failures::that_and_all_later);
    EXPECT_EQ(outline("lost", 0), 3);
  }
  {
    const FailingMemory none(2, Failures::that_and_all_later);
    EXPECT_EQ(outline("lost", 0), 4);
  }
  EXPECT_EQ(outline("kept", 0), 0);
  EXPECT_EQ(outline("below", 1), 0);
  draw(op_end);
  const std::string document = memory_bytes();
  EXPECT_EQ(document.find("lost"), std::string::npos);
  EXPECT_NE(document.find("/Type /Outlines\n   /First 7 0 R\n   /Last 8 0 R\n   /Count 2\n"),
            std::string::npos);
  EXPECT_EQ(take_apart(document).problem, "");
}

TEST_F(PdfFailures, AnOutlineWithoutMemoryCountsForNoLevel) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  for (size_t n = 1; n <= 2; ++n) {
    const FailingMemory none(n, Failures::that_and_all_later);
    EXPECT_NE(outline("lost", 0), 0);
  }
  EXPECT_EQ(outline("below", 1), 2);
}

TEST_F(PdfFailures, MemoryOutputThatCannotGrowCountsWhatItLost) {
  const std::string large(600000, ' ');
  const auto whole = static_cast<int32_t>(document_of(false, [&] { send(large); }).size());
  ASSERT_EQ(begin_document(plain_memory), 0);
  const int32_t before = memory_length();
  {
    const FailingMemory none(1, Failures::that_and_all_later);
    send(large);
  }
  EXPECT_EQ(memory_length(), before + 600000);
  send("more");
  draw(op_end);
  EXPECT_EQ(memory_length(), whole + 4);
  std::string bytes;
  EXPECT_EQ(take_memory(1, &bytes), -1);
  EXPECT_EQ(take_memory(2000000, &bytes), -1);
}

// ---- the compressor

int fail_start(z_stream *) {
  return Z_VERSION_ERROR;
}
int fail_run(z_stream *, int) {
  return Z_STREAM_ERROR;
}
int never_end_run(z_stream *stream, int flush) {
  const int result = deflate(stream, flush);
  return result == Z_STREAM_END ? Z_OK : result;
}
int fail_end(z_stream *stream) {
  deflateEnd(stream);
  return Z_DATA_ERROR;
}

TEST_F(PdfFailures, WhatCannotBeCompressedGoesOutRaw) {
  const std::string whole = document_of(true, [] { draw_everything(); });
  for (int32_t stage = 0; stage < 4; ++stage) {
    deflate_gate = usual_gate_;
    if (stage == 0) deflate_gate.start = fail_start;
    if (stage == 1) deflate_gate.run = fail_run;
    if (stage == 2) deflate_gate.run = never_end_run;
    if (stage == 3) deflate_gate.end = fail_end;
    const std::string document = document_of(true, [] { draw_everything(); });
    deflate_gate = usual_gate_;
    expect_same_drawing(document, whole, 0);
    EXPECT_EQ(document.find("/FlateDecode"), std::string::npos) << stage;
    EXPECT_NE(document.find("3 0 obj\n<< /Length 67 >>\nstream\n0.709 w\n2 J\n2 j\n"
                            "0.039 0.078 0.118 RG\n0.00 0.00 m\n100.00 200.00 l\nS\n"
                            "endstream\nendobj\n"),
              std::string::npos)
        << stage;
    EXPECT_NE(document.find("   /Width 20 /Height 10 /BitsPerComponent 8\n   /Length 600 >>\n"
                            "stream\n" +
                            pixels + "endstream\nendobj\n"),
              std::string::npos)
        << stage;
    EXPECT_NE(document.find("   /Resources << /ProcSet [/PDF] >>\n   /Length 16 >>\nstream\n"
                            "0 0 m\n10 10 l\nS\nendstream\nendobj\n"),
              std::string::npos)
        << stage;
  }
}

// ---- the disk

TEST_F(PdfFailures, AFullDiskGivesAShortFileAndNoWord) {
  for (const int32_t mode : {plain_file, compressed_file}) {
    std::string whole;
    {
      MemoryFiles files;
      whole = draw_in_mode(mode, files).document;
    }
    const size_t date = whole.find("/CreationDate");
    ASSERT_NE(date, std::string::npos);
    for (size_t limit = 0; limit < whole.size(); limit += limit < 50 ? 1 : 97) {
      MemoryFiles files;
      FailingFiles disk;
      disk.limit_written_bytes(limit);
      const Outcome outcome = draw_in_mode(mode, files);
      EXPECT_EQ(outcome.status, 0);
      EXPECT_EQ(outcome.outlines, std::vector<int32_t>({0, 0, 0}));
      EXPECT_EQ(disk.open_files(), 0U);
      EXPECT_EQ(outcome.document.size(), limit);
      EXPECT_TRUE(
          whole.compare(0, std::min(limit, date), outcome.document, 0, std::min(limit, date)) == 0)
          << limit;
    }
  }
}

TEST_F(PdfFailures, AnyCallOfTheDiskMayFail) {
  for (const int32_t mode : {plain_file, compressed_file}) {
    bool failed = true;
    size_t n = 1;
    for (; failed; ++n) {
      MemoryFiles files;
      const FailingFiles disk(n);
      const int32_t status = begin_document(mode);
      EXPECT_EQ(status, n == 1 ? -1 : 0);
      if (status == 0) {
        EXPECT_EQ(draw_everything(), std::vector<int32_t>({0, 0, 0}));
        EXPECT_EQ(disk.open_files(), 0U) << n;
      }
      failed = disk.failed();
      EXPECT_EQ(disk.open_files(), 0U) << n;
    }
    EXPECT_GT(n,
              4U);  // opened, written at least once, closed, and one round in which all went well
  }
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// qqppdf against a text from paper and the literal model of documents.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "quorix/imageout.h"
#include "tests/imageout/page_calls.h"
#include "tests/pdf/literal_document.h"
#include "tests/pdf/literal_numbers.h"
#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

class OnePagePdf : public ::testing::Test {
 protected:
  void SetUp() override { forget_everything(); }
  void TearDown() override {
    forget_everything();
    qqpfree();
  }
};

std::string text_of(const Bytes &bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string unmasked_pdf(const PageCall &call) {
  MemoryFiles files;
  EXPECT_EQ(write_one_page_pdf(call, "picture"), 0);
  EXPECT_EQ(files.open_files(), 0U);
  return text_of(files.bytes("picture"));
}

std::string pdf(const PageCall &call) {
  return mask_date(unmasked_pdf(call));
}

// The same document as a sequence of drawing operations.
std::string literal_pdf(const PageCall &call, int32_t w, int32_t h, const Bytes &rgb) {
  const double k = 0.1417322835;
  const double p = call.page_set == 1 ? 2.0 * call.page_width : 3900.0;
  const double q = call.page_set == 1 ? 2.0 * call.page_height : 5600.0;
  const bool landscape = w > h;
  const double scale = landscape ? std::min(q / w, p / h) : std::min(p / w, q / h);
  literal::LiteralDocument document =
      literal::qqpdf1(literal::truncated(p * k + 0.5), literal::truncated(q * k + 0.5),
                      call.flags % 2 != 0, landscape);
  literal::qqpdf2(document, w, h, op_begin_image);
  literal::qqpdf7(document, text_of(rgb));
  literal::qqpdf2(document, 0, 0, op_end_image);
  literal::qqpdf2(document, landscape ? p * k : 0.0, 0, op_translate);
  if (landscape) literal::qqpdf2(document, 0, 0, op_rotate);
  literal::qqpdf2(document, w * scale * k, h * scale * k, op_place);
  literal::qqpdf2(document, 0, 0, op_end);
  return document.output;
}

DrawnPicture three_colours() {
  return {3, 1, {}, {}, {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i'}};
}

TEST_F(OnePagePdf, IsThisTextForThreePixels) {
  show_on_raster(three_colours(), true);
  // Landscape, so turned twice: the width of the picture is 5600 units, which are 793.7007876
  // points, its height a third of that, and the page is 3900 units wide, 552.75590565 points.
  const std::string expected =
      "%PDF-1.3\n"
      "3 0 obj\n<< /Length 4 0 R >>\nstream\n0.709 w\n2 J\n2 j\nendstream\nendobj\n"
      "4 0 obj\n16\nendobj\n"
      "5 0 obj\n<< /Type /XObject /Subtype /Image\n   /ColorSpace /DeviceRGB\n"
      "   /Width 3 /Height 1 /BitsPerComponent 8\n   /Length 9\n>>\nstream\n"
      "abcdefghiendstream\nendobj\n"
      "6 0 obj\n<< /Length 7 0 R >>\nstream\n"
      "q\n1 0 0 1 552.76 0.00 cm\n0 1 -1 0 0 0 cm\n793.70 0 0 264.57 0 0 cm\n/Image1 Do\nQ\n"
      "endstream\nendobj\n"
      "7 0 obj\n79\nendobj\n"
      "8 0 obj\n<<\n/Type /Page\n/MediaBox [0 0 553 794]\n/Parent 2 0 R\n/Rotate 90\n"
      "/Resources << /ProcSet [/PDF /ImageC]\n/XObject <<\n/Image1 5 0 R\n>>\n>>\n"
      "/Contents [\n3 0 R\n6 0 R\n]\n>>\nendobj\n"
      "2 0 obj\n<< /Type /Pages /Kids [\n8 0 R\n] /Count 1\n>>\nendobj\n"
      "1 0 obj\n<< /Type /Catalog /Pages 2 0 R\n>>\nendobj\n"
      "9 0 obj\n<< /CreationDate (D:##############)\n/Producer (QUORIX 10.5)\n>>\nendobj\n"
      "xref\n0 10\n0000000000 65535 f \n";
  const std::string document = pdf({101, 3, 1});
  EXPECT_EQ(document.substr(0, expected.size()), expected);
  EXPECT_EQ(take_apart(document).problem, "");
}

TEST_F(OnePagePdf, IsNotTurnedWhereThePictureIsAsHighAsWide) {
  show_on_raster({2, 2, {}, {}, Bytes(12, 'x')}, true);
  const std::string document = pdf({101, 2, 2});
  EXPECT_NE(document.find("q\n1 0 0 1 0.00 0.00 cm\n552.76 0 0 552.76 0 0 cm\n/Image1 Do\nQ\n"),
            std::string::npos);
  EXPECT_EQ(document.find("/Rotate"), std::string::npos);
}

TEST_F(OnePagePdf, IsTheModelsDocumentForPicturesOfAllForms) {
  const int32_t sizes[][2] = {{1, 1}, {1, 7}, {7, 1}, {13, 13}, {14, 13}, {400, 300}, {39, 56}};
  const PageCall pages[] = {{101, 0, 0},
                            {-101, 0, 0},
                            {101, 0, 0, 1, 2100, 2970, 0, 0, 0},
                            {101, 0, 0, 0, 0, 0, 1, 7, 8},
                            {101, 0, 0, 1, 333, 77, 1, 11, 1234}};
  for (const auto &[width, height] : sizes) {
    for (const bool rgba : {false, true}) {
      const DrawnPicture picture =
          rgba ? photo_picture(width, height, 3) : plot_picture(width, height, 3);
      show_on_raster(picture, rgba);
      for (PageCall call : pages) {
        call.width = -width;  // signs do not matter
        call.height = height;
        for (call.flags = 0; call.flags < 2; ++call.flags)
          EXPECT_EQ(difference(pdf(call), literal_pdf(call, width, height, picture.rgb)), "")
              << width << " " << height << " " << call.flags;
      }
    }
  }
}

TEST_F(OnePagePdf, TakesNoNoticeOfHigherFlags) {
  show_on_raster(three_colours(), true);
  for (const int32_t flags : {2, 4, 100, -2})
    EXPECT_EQ(pdf({101, 3, 1, 0, 0, 0, 0, 0, 0, flags}), pdf({101, 3, 1})) << flags;
  const std::string compressed = pdf({101, 3, 1, 0, 0, 0, 0, 0, 0, 1});
  EXPECT_NE(compressed, pdf({101, 3, 1}));
  for (const int32_t flags : {3, 5, 101, -1})
    EXPECT_EQ(pdf({101, 3, 1, 0, 0, 0, 0, 0, 0, flags}), compressed) << flags;
}

TEST_F(OnePagePdf, HoldsThePixelsOfALargeCompressedPictureInOneStream) {
  const DrawnPicture picture = photo_picture(500, 400, 2);
  show_on_raster(picture, true);
  const PdfParts parts = take_apart(pdf({101, 500, 400, 0, 0, 0, 0, 0, 0, 1}));
  ASSERT_EQ(parts.problem, "");
  EXPECT_TRUE(parts.objects[4].was_compressed);
  EXPECT_EQ(parts.objects[4].data, text_of(picture.rgb));
  EXPECT_EQ(parts.objects.size(), 8U);
}

TEST_F(OnePagePdf, WritesTheClipWhateverSizeTheCallHas) {
  const DrawnPicture picture = plot_picture(40, 30, 4);
  show_on_raster(picture, false);
  set_clip(3, 20, 5, 12);  // two rows below the picture
  EXPECT_EQ(pdf({101, 1000, 7}),
            literal_pdf({101, 1000, 7}, 5, 12, picture.rgb_area(3, 20, 5, 12)));
}

TEST_F(OnePagePdf, ReadsTheWindow) {
  const DrawnPicture picture = photo_picture(8, 5, 5);
  show_on_raster(plot_picture(8, 5, 6), true);
  const FakeWindow window(picture);
  EXPECT_EQ(pdf({100, 8, 5}), literal_pdf({100, 8, 5}, 8, 5, picture.rgb));
}

TEST_F(OnePagePdf, LeavesAnOpenDocumentAsItIs) {
  show_on_raster(three_colours(), true);
  const std::string alone = document_of(false, [] {
    draw(op_line, 1, 2);
    character('a', 3, 4);
  });
  const std::string picture = pdf({101, 3, 1});
  const std::string between = document_of(false, [&] {
    draw(op_line, 1, 2);
    EXPECT_EQ(pdf({101, 3, 1}), picture);
    character('a', 3, 4);
  });
  EXPECT_EQ(between, alone);
}

TEST_F(OnePagePdf, IsTheSameInARealFile) {
  const TemporaryFolder folder;
  const DrawnPicture picture = photo_picture(20, 10, 5);  // with all bytes, line feeds among them
  show_on_raster(picture, true);
  const std::string name = folder.file("picture.pdf");
  EXPECT_EQ(write_one_page_pdf({101, 20, 10}, name), 0);
  EXPECT_EQ(mask_date(text_of(read_whole_file(name))), pdf({101, 20, 10}));
}

// ---- what fails

TEST_F(OnePagePdf, CannotBeWrittenWithoutRecordDeviceOrFile) {
  MemoryFiles files;
  EXPECT_EQ(write_one_page_pdf({101, 3, 1}, "picture"), -1);
  EXPECT_FALSE(files.exists("picture"));
  show_on_raster(three_colours(), true);
  EXPECT_EQ(write_one_page_pdf({100, 3, 1}, "picture"), -9);
  EXPECT_FALSE(files.exists("picture"));
  const FailingMemory memory;
  const FailingFiles refuse(1, file_open);
  EXPECT_EQ(write_one_page_pdf({101, 3, 1}, "picture"), -1);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

TEST_F(OnePagePdf, WithoutMemoryIsRefusedOrNotCompressed) {
  show_on_raster(three_colours(), true);
  for (const int32_t flags : {0, 1}) {
    const PageCall call = {101, 3, 1, 0, 0, 0, 0, 0, 0, flags};
    const std::string whole = pdf(call);
    size_t refused = 0;
    bool failed = true;
    for (size_t n = 1; failed; ++n) {
      MemoryFiles files;
      const FailingMemory memory(n);
      const int32_t status = write_one_page_pdf(call, "picture");
      failed = memory.failed();
      EXPECT_EQ(memory.live_blocks(), 0U) << n;
      EXPECT_EQ(files.open_files(), 0U) << n;
      if (status != 0) {
        ++refused;
        EXPECT_EQ(status, -2) << n;
        EXPECT_TRUE(failed);
        continue;
      }
      const std::string document = mask_date(text_of(files.bytes("picture")));
      const PdfParts parts = take_apart(document);
      ASSERT_EQ(parts.problem, "") << n;
      ASSERT_EQ(parts.pages.size(), 1U);
      EXPECT_EQ(content_of_page(parts, parts.pages[0]),
                "0.709 w\n2 J\n2 j\nq\n1 0 0 1 552.76 0.00 cm\n0 1 -1 0 0 0 cm\n"
                "793.70 0 0 264.57 0 0 cm\n/Image1 Do\nQ\n");
      if (!failed) {
        EXPECT_EQ(document, whole);
      }
    }
    EXPECT_GE(refused, 2U) << flags;  // the tables and the picture at least
  }
}

TEST_F(OnePagePdf, OfSizesBeyondAllCountingIsMemoryThatIsNotThere) {
  show_on_raster(three_colours(), true);
  MemoryFiles files;
  EXPECT_EQ(write_one_page_pdf({101, INT32_MIN, INT32_MIN}, "picture"), -2);
  EXPECT_EQ(write_one_page_pdf({101, INT32_MAX, INT32_MAX}, "picture"), -2);
  EXPECT_EQ(files.open_files(), 0U);
}

TEST_F(OnePagePdf, OfNoSizeIsStillAWholeDocument) {
  show_on_raster(three_colours(), true);
  const int32_t sizes[][2] = {{0, 0}, {0, 5}, {5, 0}};
  for (const auto &[width, height] : sizes)
    for (const int32_t flags : {0, 1})
      EXPECT_EQ(take_apart(pdf({101, width, height, 0, 0, 0, 0, 0, 0, flags})).problem, "");
}

TEST_F(OnePagePdf, SurvivesPagesOfAnySize) {
  show_on_raster(three_colours(), true);
  for (const int32_t size : {0, -1, -1000, INT32_MAX, INT32_MIN})
    EXPECT_EQ(take_apart(pdf({101, 3, 1, 1, size, size, 1, size, size})).problem, "") << size;
}

TEST_F(OnePagePdf, OnAFullDiskIsShortWithoutAWord) {
  show_on_raster(three_colours(), true);
  const std::string whole = pdf({101, 3, 1});
  const size_t date = whole.find("/CreationDate");
  for (size_t limit = 0; limit <= whole.size(); ++limit) {
    MemoryFiles files;
    FailingFiles disk;
    disk.limit_written_bytes(limit);
    EXPECT_EQ(write_one_page_pdf({101, 3, 1}, "picture"), 0);
    EXPECT_EQ(disk.open_files(), 0U);
    const std::string document = text_of(files.bytes("picture"));
    EXPECT_EQ(document.size(), limit);
    EXPECT_EQ(document.substr(0, date), whole.substr(0, std::min(limit, date)));
  }
}

TEST_F(OnePagePdf, EndsWellWhicheverCallOfTheDiskFails) {
  show_on_raster(photo_picture(200, 100, 1), true);
  size_t n = 1;
  for (;; ++n) {
    MemoryFiles files;
    const FailingFiles gate(n);
    const int32_t status = write_one_page_pdf({101, 200, 100}, "picture");
    EXPECT_EQ(gate.open_files(), 0U);
    EXPECT_EQ(status, gate.failed() && n == 1 ? -1 : 0);
    if (!gate.failed()) break;
  }
  EXPECT_GT(n, 3U);  // opened, written, closed
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Whole documents, their pages and what stands between them: against texts written on paper.
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

using std::to_string;

class PdfDocument : public ::testing::Test {
 protected:
  void TearDown() override { qqpfree(); }
};

std::string text_of(const std::vector<uint8_t> &bytes) {
  return {bytes.begin(), bytes.end()};
}

std::string ten_digits(size_t number) {
  const std::string digits = to_string(number);
  return std::string(10 - digits.size(), '0') + digits;
}

// ---- whole documents

const char empty_page_document[] =
    "%PDF-1.3\n"
    "3 0 obj\n<< /Length 4 0 R >>\nstream\n"
    "0.709 w\n2 J\n2 j\n"
    "endstream\nendobj\n"
    "4 0 obj\n16\nendobj\n"
    "5 0 obj\n<<\n/Type /Page\n/MediaBox [0 0 100 200]\n/Parent 2 0 R\n"
    "/Resources << /ProcSet [/PDF]\n>>\n/Contents 3 0 R\n>>\nendobj\n"
    "2 0 obj\n<< /Type /Pages /Kids [\n5 0 R\n] /Count 1\n>>\nendobj\n"
    "1 0 obj\n<< /Type /Catalog /Pages 2 0 R\n>>\nendobj\n"
    "6 0 obj\n<< /CreationDate (D:##############)\n/Producer (QUORIX 10.5)\n>>\nendobj\n"
    "xref\n0 7\n"
    "0000000000 65535 f \n"
    "0000000274 00000 n \n"  // 215 + 59
    "0000000215 00000 n \n"  // 95 + 120
    "0000000009 00000 n \n"
    "0000000077 00000 n \n"  // 9 + 8 + 20 + 7 + 16 + 10 + 7
    "0000000095 00000 n \n"  // 77 + 8 + 3 + 7
    "0000000323 00000 n \n"  // 274 + 49
    "trailer\n<< /Size 7 /Root 1 0 R /Info 6 0 R\n>>\n"
    "startxref\n401\n%%EOF\n";  // 323 + 78

TEST_F(PdfDocument, OfOneEmptyPageIsThisText) {
  EXPECT_EQ(document_of(
                false, [] {}, 100, 200),
            empty_page_document);
}

TEST_F(PdfDocument, IsTheSameInAFileAndInMemory) {
  MemoryFiles files;
  EXPECT_EQ(begin_document(plain_file, 100, 200), 0);
  EXPECT_EQ(files.open_files(), 1U);
  draw(op_end);
  EXPECT_EQ(files.open_files(), 0U);
  EXPECT_EQ(mask_date(text_of(files.bytes("out"))), empty_page_document);
}

TEST_F(PdfDocument, HasNoCarriageReturnsInARealFile) {
  const TemporaryFolder folder;
  const std::string name = folder.file("document.pdf");
  EXPECT_EQ(begin_document(plain_file, 100, 200, 0, name), 0);
  draw(op_end);
  EXPECT_EQ(mask_date(text_of(read_whole_file(name))), empty_page_document);
}

TEST_F(PdfDocument, ReplacesAFileThatExists) {
  MemoryFiles files;
  files.put("out", std::vector<uint8_t>(5000, 7));
  EXPECT_EQ(begin_document(plain_file, 100, 200), 0);
  draw(op_end);
  EXPECT_EQ(mask_date(text_of(files.bytes("out"))), empty_page_document);
}

TEST_F(PdfDocument, CompressedHasTheLengthInTheStreamsOwnDictionary) {
  const std::string data = literal::compressed("0.709 w\n2 J\n2 j\n");
  const std::string length = to_string(data.size());
  const std::string before_page = "%PDF-1.3\n3 0 obj\n<< /Length " + length +
                                  "\n/Filter /FlateDecode\n>>\nstream\n" + data +
                                  "endstream\nendobj\n";
  const size_t page = before_page.size();
  EXPECT_EQ(page, 9 + 8 + 11 + length.size() + 1 + 21 + 3 + 7 + data.size() + 10 + 7);
  const std::string expected =
      before_page +
      "4 0 obj\n<<\n/Type /Page\n/MediaBox [0 0 100 200]\n/Parent 2 0 R\n"
      "/Resources << /ProcSet [/PDF]\n>>\n/Contents 3 0 R\n>>\nendobj\n"
      "2 0 obj\n<< /Type /Pages /Kids [\n4 0 R\n] /Count 1\n>>\nendobj\n"
      "1 0 obj\n<< /Type /Catalog /Pages 2 0 R\n>>\nendobj\n"
      "5 0 obj\n<< /CreationDate (D:##############)\n/Producer (QUORIX 10.5)\n>>\nendobj\n"
      "xref\n0 6\n0000000000 65535 f \n" +
      ten_digits(page + 120 + 59) + " 00000 n \n" + ten_digits(page + 120) + " 00000 n \n" +
      "0000000009 00000 n \n" + ten_digits(page) + " 00000 n \n" +
      ten_digits(page + 120 + 59 + 49) + " 00000 n \n" +
      "trailer\n<< /Size 6 /Root 1 0 R /Info 5 0 R\n>>\nstartxref\n" +
      to_string(page + 120 + 59 + 49 + 78) + "\n%%EOF\n";
  EXPECT_EQ(document_of(
                true, [] {}, 100, 200),
            expected);
}

TEST_F(PdfDocument, CompressesWhereTheModeIsOddAndGoesToMemoryWhereItIsAtLeast2) {
  for (const int32_t mode : {0, 1, 2, 3, 4, 5, 6, 7, 1000, 1001, INT32_MAX, -2, -3}) {
    MemoryFiles files;
    EXPECT_EQ(begin_document(mode), 0) << mode;
    draw(op_end);
    const bool in_memory = mode != 0 && mode != 1;
    EXPECT_EQ(files.exists("out"), !in_memory) << mode;
    const std::string document = in_memory ? memory_bytes() : text_of(files.bytes("out"));
    const bool compressed = document.find("/FlateDecode") != std::string::npos;
    EXPECT_EQ(compressed, mode % 2 != 0) << mode;
    EXPECT_EQ(take_apart(document).problem, "") << mode;
  }
}

std::string local_time() {
  const std::time_t now = std::time(nullptr);
  char digits[15] = "";
  std::strftime(digits, sizeof digits, "%Y%m%d%H%M%S", std::localtime(&now));
  return digits;
}

TEST_F(PdfDocument, TellsTheLocalTimeOfItsEnd) {
  EXPECT_EQ(begin_document(plain_memory), 0);
  const std::string before = local_time();
  draw(op_end);
  const std::string after = local_time();
  const std::string document = memory_bytes();
  const size_t at = document.find("<< /CreationDate (D:");
  ASSERT_NE(at, std::string::npos);
  const std::string date = document.substr(at + 20, 14);
  EXPECT_EQ(date.find_first_not_of("0123456789"), std::string::npos);
  // Where the clock is set back between the two, nothing can be said.
  if (before <= after) {
    EXPECT_LE(before, date);
    EXPECT_LE(date, after);
  }
}

// ---- pages

std::string object_text(const std::string &document, size_t number) {
  const PdfParts parts = take_apart(document);
  EXPECT_EQ(parts.problem, "");
  return number < parts.objects.size() ? parts.objects[number].text : "no such object";
}

TEST_F(PdfDocument, PutsItsPagesIntoTheTreeInOrder) {
  const std::string document = document_of(false, [] {
    draw(op_page);
    draw(op_page);
  });
  // A stream, its length and the page take three numbers.
  EXPECT_EQ(object_text(document, 2),
            "<< /Type /Pages /Kids [\n5 0 R\n8 0 R\n11 0 R\n] /Count 3\n>>\n");
  const PdfParts parts = take_apart(document);
  ASSERT_EQ(parts.pages, (std::vector<size_t>{5, 8, 11}));
  EXPECT_EQ(streams_of_page(parts, 8), std::vector<size_t>{6});
  EXPECT_EQ(content_of_page(parts, 5), "0.709 w\n2 J\n2 j\n");
  EXPECT_EQ(content_of_page(parts, 8), "");  // the state of lines is not set again
  EXPECT_EQ(parts.objects.size(), 13U);
}

TEST_F(PdfDocument, StrokesAndEndsTextBeforeAPageEnds) {
  const PdfParts parts = take_apart(document_of(false, [] {
    draw(op_move, 1, 2);
    draw(op_line, 3, 4);
    draw(op_page);
    character('a', 5, 6);
    draw(op_page);
  }));
  ASSERT_EQ(parts.pages.size(), 3U);
  EXPECT_EQ(content_of_page(parts, parts.pages[0]),
            "0.709 w\n2 J\n2 j\n1.00 2.00 m\n3.00 4.00 l\nS\n");
  EXPECT_EQ(content_of_page(parts, parts.pages[1]),
            "BT\n/F1 12 Tf\n1 0 0 1 5.00 6.00 Tm\n(a) Tj\nET\n");
}

TEST_F(PdfDocument, TurnsItsPagesWhereTheLowByteSaysSo) {
  for (const int32_t word : {1, 2, 255, 0x101, -1, INT32_MIN + 1}) {
    const std::string document = document_of(
        false, [] { draw(op_page); }, 10, 20, word);
    for (const size_t page : {size_t{5}, size_t{8}})
      EXPECT_EQ(object_text(document, page)
                    .find("<<\n/Type /Page\n/MediaBox [0 0 10 20]\n"
                          "/Parent 2 0 R\n/Rotate 90\n/Resources"),
                0U)
          << word;
  }
  for (const int32_t word : {0, 0x100, INT32_MIN}) {
    const std::string document = document_of(
        false, [] {}, 10, 20, word);
    EXPECT_EQ(document.find("/Rotate"), std::string::npos) << word;
  }
}

TEST_F(PdfDocument, TakesSizesOfZeroAndBelowAsTheyAre) {
  const std::string document = document_of(
      false, [] {}, 0, -7);
  EXPECT_NE(object_text(document, 5).find("/MediaBox [0 0 0 -7]\n"), std::string::npos);
}

const char image_line[] = "/XObject <<\n/Image1 5 0 R\n>>\n";

void draw_image() {
  draw(op_begin_image, 1, 1);
  send("rgb");
  draw(op_end_image);
  draw(op_place, 1, 1);
}

literal::FormCall small_form(const std::string &data = "0 0 m\n") {
  return {data, 0, 0, 10, 20, 0, 0, 10, 20, 0, 0};
}

TEST_F(PdfDocument, TellsWhatAPageUses) {
  // Stream 3 and its length, image 5, stream 6 and its length.
  EXPECT_EQ(object_text(document_of(false, draw_image), 8),
            std::string("<<\n/Type /Page\n/MediaBox [0 0 595 842]\n/Parent 2 0 R\n"
                        "/Resources << /ProcSet [/PDF /ImageC]\n") +
                image_line + ">>\n/Contents [\n3 0 R\n6 0 R\n]\n>>\n");
  // Text: stream 3 and its length, font 5, page 6.
  const std::string text = document_of(false, [] { character('a', 0, 0, 4); });
  EXPECT_EQ(object_text(text, 6),
            "<<\n/Type /Page\n/MediaBox [0 0 595 842]\n/Parent 2 0 R\n"
            "/Resources << /ProcSet [/PDF /Text]\n/Font <<\n/F5 5 0 R\n>>\n>>\n"
            "/Contents 3 0 R\n>>\n");
  // Both: image 5, stream 6 and its length, font 8, page 9.
  const std::string both = document_of(false, [] {
    draw_image();
    character('a', 0, 0, 4);
  });
  EXPECT_EQ(object_text(both, 9),
            std::string("<<\n/Type /Page\n/MediaBox [0 0 595 842]\n/Parent 2 0 R\n"
                        "/Resources << /ProcSet [/PDF /Text /ImageC]\n/Font <<\n/F5 8 0 R\n>>\n") +
                image_line + ">>\n/Contents [\n3 0 R\n6 0 R\n]\n>>\n");
}

TEST_F(PdfDocument, ListsImagesAndFormsOfAPageWithNumbersThatRunThroughTheDocument) {
  const std::string document = document_of(false, [] {
    draw_image();        // 5; streams 3 and 6
    form(small_form());  // 8; stream 9
    draw(op_page);       // page 11, stream 12
    form(small_form());  // 14; stream 15
    draw_image();        // 17; stream 18
    draw_image();        // 20; stream 21, page 23
  });
  EXPECT_NE(object_text(document, 11)
                .find("/ProcSet [/PDF /ImageC]\n/XObject <<\n/Image1 5 0 R\n/Form1 8 0 R\n>>\n>>\n"
                      "/Contents [\n3 0 R\n6 0 R\n9 0 R\n]\n"),
            std::string::npos);
  EXPECT_NE(object_text(document, 23)
                .find("/XObject <<\n/Form2 14 0 R\n/Image2 17 0 R\n/Image3 20 0 R\n>>\n>>\n"
                      "/Contents [\n12 0 R\n15 0 R\n18 0 R\n21 0 R\n]\n"),
            std::string::npos);
}

TEST_F(PdfDocument, ListsAFormWithoutCallingItAPicture) {
  const std::string document = document_of(false, [] { form(small_form()); });
  EXPECT_NE(object_text(document, 8).find("/ProcSet [/PDF]\n/XObject <<\n/Form1 5 0 R\n>>\n>>\n"),
            std::string::npos);
}

// ---- fonts

TEST_F(PdfDocument, WritesAFontOnceAndListsItOnAllLaterPages) {
  const std::string document = document_of(false, [] {
    draw(op_page);            // page 5
    character('a', 0, 0, 5);  // stream 6, font 8, page 9
    draw(op_page);
    draw(op_page);            // stream 10, page 12
    character('b', 0, 0, 5);  // stream 13
    character('c', 0, 0, 2);  // font 15, page 16
  });
  EXPECT_EQ(object_text(document, 5).find("Font"), std::string::npos);
  EXPECT_EQ(object_text(document, 8),
            "<< /Type /Font\n/Subtype /Type1\n/BaseFont /Helvetica-Bold\n"
            "/Encoding /WinAnsiEncoding\n>>\n");
  EXPECT_NE(object_text(document, 9).find("/Font <<\n/F6 8 0 R\n>>\n"), std::string::npos);
  EXPECT_NE(object_text(document, 12).find("/ProcSet [/PDF /Text]\n/Font <<\n/F6 8 0 R\n>>\n"),
            std::string::npos);
  EXPECT_EQ(object_text(document, 15),
            "<< /Type /Font\n/Subtype /Type1\n/BaseFont /Times-Italic\n"
            "/Encoding /WinAnsiEncoding\n>>\n");
  EXPECT_NE(object_text(document, 16).find("/Font <<\n/F6 8 0 R\n/F3 15 0 R\n>>\n"),
            std::string::npos);
}

TEST_F(PdfDocument, WritesTheFontsOfAPageInTheOrderOfTheTable) {
  const std::string document = document_of(false, [] {
    for (const int32_t font : {34, 0, 17, 9})
      character('a', 0, 0, font);
  });
  EXPECT_NE(object_text(document, 9)
                .find("/Font <<\n/F1 5 0 R\n/F10 6 0 R\n/F18 7 0 R\n"
                      "/F35 8 0 R\n>>\n"),
            std::string::npos);
}

TEST_F(PdfDocument, KnowsThe35Fonts) {
  const char *const names[] = {"Times-Roman",
                               "Times-Bold",
                               "Times-Italic",
                               "Times-BoldItalic",
                               "Helvetica",
                               "Helvetica-Bold",
                               "Helvetica-Oblique",
                               "Helvetica-BoldOblique",
                               "Helvetica-Narrow",
                               "Helvetica-Narrow-Bold",
                               "Helvetica-Narrow-Oblique",
                               "Helvetica-Narrow-BoldOblique",
                               "NewCenturySchlbk-Roman",
                               "NewCenturySchlbk-Italic",
                               "NewCenturySchlbk-Bold",
                               "NewCenturySchlbk-BoldItalic",
                               "ZapfChancery-MediumItalic",
                               "ZapfDingbats",
                               "Courier",
                               "Courier-Bold",
                               "Courier-Oblique",
                               "Courier-BoldOblique",
                               "AvantGarde-Book",
                               "AvantGarde-Demi",
                               "AvantGarde-BookOblique",
                               "AvantGarde-DemiOblique",
                               "Bookman-Light",
                               "Bookman-LightItalic",
                               "Bookman-Demi",
                               "Bookman-DemiItalic",
                               "Palatino-Roman",
                               "Palatino-Italic",
                               "Palatino-Bold",
                               "Palatino-BoldItalic",
                               "Symbol"};
  const std::string document = document_of(false, [] {
    for (int32_t font = 0; font < 35; ++font)
      character('a', 0, 0, font);
  });
  const PdfParts parts = take_apart(document);
  ASSERT_EQ(parts.problem, "");
  for (size_t font = 0; font < 35; ++font) {
    const bool own_encoding = font == 17 || font == 34;
    EXPECT_EQ(parts.objects.at(5 + font).text,
              std::string("<< /Type /Font\n/Subtype /Type1\n/BaseFont /") + names[font] + "\n" +
                  (own_encoding ? "" : "/Encoding /WinAnsiEncoding\n") + ">>\n");
    EXPECT_NE(parts.objects.at(40).text.find("/F" + to_string(font + 1) + " " +
                                             to_string(5 + font) + " 0 R\n"),
              std::string::npos);
  }
}

// ---- size

TEST_F(PdfDocument, HasRoomForManyObjects) {
  constexpr size_t pages = 1200;
  for (const bool compress : {false, true}) {
    const std::string document = document_of(compress, [] {
      for (size_t i = 1; i < pages; ++i) {
        draw_image();
        draw(op_page);
      }
    });
    const PdfParts parts = take_apart(document);
    ASSERT_EQ(parts.problem, "");
    ASSERT_EQ(parts.pages.size(), pages);
    // Two streams and an image, then the page; without compression each stream has its length.
    const size_t per_page = compress ? 4 : 6;
    for (size_t i = 0; i < pages - 1; ++i)
      ASSERT_EQ(parts.pages[i], 2 + per_page * (i + 1));
    EXPECT_NE(
        parts.objects[parts.pages[pages - 2]].text.find("/Image" + to_string(pages - 1) + " "),
        std::string::npos);
  }
}

}  // namespace
}  // namespace quorix::testing

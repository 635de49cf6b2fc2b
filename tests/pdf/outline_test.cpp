// SPDX-License-Identifier: MIT
//
// Bookmarks: their tree, their pages and their statuses.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"

namespace quorix::testing {
namespace {

class PdfOutlines : public ::testing::Test {
 protected:
  void TearDown() override { qqpfree(); }
};

// A page of its own for each entry, titled by its place. The texts of the outline objects, the root
// first: an uncompressed page takes three numbers from 3 on, so the root is 3 + 3 * pages.
std::vector<std::string> outline_objects(const std::vector<int32_t> &levels) {
  const std::string document = document_of(false, [&] {
    for (size_t i = 0; i < levels.size(); ++i) {
      if (i > 0) draw(op_page);
      EXPECT_EQ(outline("entry " + std::to_string(i), levels[i]), 0) << i;
    }
  });
  const PdfParts parts = take_apart(document);
  EXPECT_EQ(parts.problem, "");
  std::vector<std::string> texts;
  for (size_t i = 3 + 3 * levels.size(); i + 1 < parts.objects.size(); ++i)
    texts.push_back(parts.objects[i].text);
  return texts;
}

TEST_F(PdfOutlines, LinkLevels0110) {
  const std::vector<std::string> texts = outline_objects({0, 1, 1, 0});
  ASSERT_EQ(texts.size(), 5U);  // objects 15 to 19; the pages are 5, 8, 11 and 14
  EXPECT_EQ(texts[0], "<< /Type /Outlines\n   /First 16 0 R\n   /Last 19 0 R\n   /Count 4\n>>\n");
  EXPECT_EQ(texts[1],
            "<< /Title (entry 0)\n   /Parent 15 0 R\n   /Next 19 0 R\n   /First 17 0 R\n"
            "   /Last 18 0 R\n   /Count 2\n   /Dest [ 5 0 R /XYZ 0 842 0]\n>>\n");
  EXPECT_EQ(texts[2],
            "<< /Title (entry 1)\n   /Parent 16 0 R\n   /Next 18 0 R\n"
            "   /Dest [ 8 0 R /XYZ 0 842 0]\n>>\n");
  EXPECT_EQ(texts[3],
            "<< /Title (entry 2)\n   /Parent 16 0 R\n   /Prev 17 0 R\n"
            "   /Dest [ 11 0 R /XYZ 0 842 0]\n>>\n");
  EXPECT_EQ(texts[4],
            "<< /Title (entry 3)\n   /Parent 15 0 R\n   /Prev 16 0 R\n"
            "   /Dest [ 14 0 R /XYZ 0 842 0]\n>>\n");
}

TEST_F(PdfOutlines, CountAllDescendantsAndEndWithTheLastOfThem) {
  const std::vector<std::string> texts = outline_objects({0, 1, 2, 3, 4, 1, 2});
  ASSERT_EQ(texts.size(), 8U);  // root 24, entries 25 to 31
  const auto links = [&](size_t i) {
    const std::string &text = texts[i];
    return text.substr(text.find(")\n") + 2, text.find("   /Dest") - text.find(")\n") - 2);
  };
  EXPECT_EQ(texts[0], "<< /Type /Outlines\n   /First 25 0 R\n   /Last 31 0 R\n   /Count 7\n>>\n");
  EXPECT_EQ(links(1), "   /Parent 24 0 R\n   /First 26 0 R\n   /Last 31 0 R\n   /Count 6\n");
  EXPECT_EQ(links(2),
            "   /Parent 25 0 R\n   /Next 30 0 R\n   /First 27 0 R\n   /Last 29 0 R\n   /Count 3\n");
  EXPECT_EQ(links(3), "   /Parent 26 0 R\n   /First 28 0 R\n   /Last 29 0 R\n   /Count 2\n");
  EXPECT_EQ(links(4), "   /Parent 27 0 R\n   /First 29 0 R\n   /Last 29 0 R\n   /Count 1\n");
  EXPECT_EQ(links(5), "   /Parent 28 0 R\n");
  EXPECT_EQ(links(6),
            "   /Parent 25 0 R\n   /Prev 26 0 R\n   /First 31 0 R\n   /Last 31 0 R\n   /Count 1\n");
  EXPECT_EQ(links(7), "   /Parent 30 0 R\n");
}

TEST_F(PdfOutlines, MayLeaveOutALevelThatOccurredBefore) {
  const std::vector<std::string> texts = outline_objects({0, 1, 0, 2, 1});
  ASSERT_EQ(texts.size(), 6U);  // root 18, entries 19 to 23
  // The entry of level 2 hangs on the last lower one and has no neighbours.
  EXPECT_EQ(texts[4],
            "<< /Title (entry 3)\n   /Parent 21 0 R\n   /Dest [ 14 0 R /XYZ 0 842 0]\n>>\n");
  EXPECT_EQ(texts[5],
            "<< /Title (entry 4)\n   /Parent 21 0 R\n   /Dest [ 17 0 R /XYZ 0 842 0]\n>>\n");
  EXPECT_EQ(texts[3],
            "<< /Title (entry 2)\n   /Parent 18 0 R\n   /Prev 19 0 R\n   /First 22 0 R\n"
            "   /Last 23 0 R\n   /Count 2\n   /Dest [ 11 0 R /XYZ 0 842 0]\n>>\n");
}

TEST_F(PdfOutlines, AreNamedInTheCatalogue) {
  const std::string document = document_of(false, [] { outline("one", 0); });
  // Stream 3, length 4, page 5, root 6, entry 7, the document's information 8.
  EXPECT_EQ(
      document.substr(document.find("6 0 obj\n"),
                      document.find("xref\n") - document.find("6 0 obj\n")),
      "6 0 obj\n<< /Type /Outlines\n   /First 7 0 R\n   /Last 7 0 R\n   /Count 1\n>>\nendobj\n"
      "7 0 obj\n<< /Title (one)\n   /Parent 6 0 R\n   /Dest [ 5 0 R /XYZ 0 842 0]\n>>\n"
      "endobj\n"
      "1 0 obj\n<< /Type /Catalog /Pages 2 0 R\n   /Outlines 6 0 R\n"
      "   /PageMode /UseOutlines\n>>\nendobj\n"
      "8 0 obj\n<< /CreationDate (D:##############)\n/Producer (QUORIX 10.5)\n>>\nendobj\n");
  EXPECT_LT(document.find("2 0 obj\n<< /Type /Pages"), document.find("6 0 obj\n"));
}

TEST_F(PdfOutlines, LeadToThePageTheyWereMadeOn) {
  const std::string document = document_of(
      false,
      [] {
        outline("a", 0);
        outline("b", 0);
        draw(op_page);
        draw(op_page);
        outline("c", 0);
      },
      300, 77);
  EXPECT_NE(
      document.find("(a)\n   /Parent 12 0 R\n   /Next 14 0 R\n   /Dest [ 5 0 R /XYZ 0 77 0]\n"),
      std::string::npos);
  EXPECT_NE(document.find("   /Next 15 0 R\n   /Dest [ 5 0 R /XYZ 0 77 0]\n"), std::string::npos);
  EXPECT_NE(document.find("(c)\n   /Parent 12 0 R\n   /Prev 14 0 R\n"
                          "   /Dest [ 11 0 R /XYZ 0 77 0]\n"),
            std::string::npos);
}

TEST_F(PdfOutlines, KeepTheTitleAsItStandsAtTheCall) {
  const std::string document = document_of(false, [] {
    char title[] = "a (b) \\ \xe4";
    const int32_t level = 0;
    int32_t status = no_status;
    qqpdf9(title, &level, &status);
    EXPECT_EQ(status, 0);
    title[0] = 'X';
    EXPECT_EQ(outline("", 0), 0);
    EXPECT_EQ(outline(std::string(5000, 't'), 0), 0);
  });
  EXPECT_NE(document.find("<< /Title (a (b) \\ \xe4)\n"), std::string::npos);
  EXPECT_NE(document.find("<< /Title ()\n"), std::string::npos);
  EXPECT_NE(document.find("<< /Title (" + std::string(5000, 't') + ")\n"), std::string::npos);
  EXPECT_EQ(take_apart(document).problem, "");
}

TEST_F(PdfOutlines, WriteNothingIntoThePage) {
  EXPECT_EQ(content_of([] {
              draw(op_line, 1, 2);
              outline("a", 0);
              draw(op_line, 3, 4);
            }),
            "0.00 0.00 m\n1.00 2.00 l\n3.00 4.00 l\nS\n");
}

TEST_F(PdfOutlines, ReportLevelsOutOfRange) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  for (const int32_t level : {-1, 5, 6, INT32_MIN, INT32_MAX})
    EXPECT_EQ(outline("a", level), 1) << level;
  draw(op_end);
  EXPECT_EQ(memory_bytes().find("/Outlines"), std::string::npos);
}

TEST_F(PdfOutlines, ReportLevelsWhoseLowerOnesHaveNoEntry) {
  ASSERT_EQ(begin_document(plain_memory), 0);
  for (const int32_t level : {1, 2, 3, 4})
    EXPECT_EQ(outline("a", level), 2) << level;
  EXPECT_EQ(outline("a", 0), 0);
  for (const int32_t level : {2, 3, 4})
    EXPECT_EQ(outline("a", level), 2) << level;
  EXPECT_EQ(outline("a", 1), 0);
  EXPECT_EQ(outline("a", 3), 2);
  EXPECT_EQ(outline("a", 2), 0);
  EXPECT_EQ(outline("a", 4), 2);
  EXPECT_EQ(outline("a", 3), 0);
  EXPECT_EQ(outline("a", 4), 0);
  EXPECT_EQ(outline("a", 4), 0);
  draw(op_end);
  EXPECT_NE(memory_bytes().find("/Type /Outlines\n   /First 7 0 R\n   /Last 12 0 R\n   /Count 6\n"),
            std::string::npos);
}

TEST_F(PdfOutlines, StartEmptyInEachDocument) {
  document_of(false, [] { outline("a", 0); });
  const std::string document = document_of(false, [] { EXPECT_EQ(outline("b", 1), 2); });
  EXPECT_EQ(document.find("/Outlines"), std::string::npos);
}

}  // namespace
}  // namespace quorix::testing

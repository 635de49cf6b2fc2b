// SPDX-License-Identifier: MIT
//
// Images and forms inside documents.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/pdf_reader.h"

namespace quorix::testing {
namespace {

class PdfImages : public ::testing::Test {
 protected:
  void TearDown() override { qqpfree(); }
};
class PdfForms : public PdfImages {};

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double undefined = std::numeric_limits<double>::quiet_NaN();

const std::string six_pixels = "abcdefghijklmnopqr";

// What stands between two texts, the first of each.
std::string between(const std::string &document, const std::string &from, const std::string &to) {
  const size_t start = document.find(from);
  if (start == std::string::npos) return "no " + from;
  const size_t end = document.find(to, start + from.size());
  return document.substr(start + from.size(), end - start - from.size());
}

void draw_six_pixels() {
  draw(op_begin_image, 3, 2);
  send(six_pixels.substr(0, 7));
  send(six_pixels.substr(7));
  draw(op_end_image);
  draw(op_translate, 100, 200.5);
  draw(op_rotate);
  draw(op_place, 30, 20.25);
}

TEST_F(PdfImages, AreObjectsOfTheirOwnBetweenTwoStreams) {
  const std::string document = document_of(false, draw_six_pixels);
  EXPECT_EQ(
      document.substr(0, 400),
      std::string("%PDF-1.3\n"
                  "3 0 obj\n<< /Length 4 0 R >>\nstream\n0.709 w\n2 J\n2 j\nendstream\nendobj\n"
                  "4 0 obj\n16\nendobj\n"
                  "5 0 obj\n<< /Type /XObject /Subtype /Image\n   /ColorSpace /DeviceRGB\n"
                  "   /Width 3 /Height 2 /BitsPerComponent 8\n   /Length 18\n>>\nstream\n"
                  "abcdefghijklmnopqrendstream\nendobj\n"
                  "6 0 obj\n<< /Length 7 0 R >>\nstream\n"
                  "q\n1 0 0 1 100.00 200.50 cm\n0 1 -1 0 0 0 cm\n30.00 0 0 20.25 0 0 cm\n"
                  "/Image1 Do\nQ\nendstream\nendobj\n"
                  "7 0 obj\n77\nendobj\n"
                  "8 0 obj\n<<\n/Type /Page\n")
          .substr(0, 400));
  EXPECT_EQ(take_apart(document).problem, "");
}

TEST_F(PdfImages, AreCompressedWhereTheDocumentIs) {
  const std::string document = document_of(true, draw_six_pixels);
  const std::string data = literal::compressed(six_pixels);
  EXPECT_NE(
      document.find("4 0 obj\n<< /Type /XObject /Subtype /Image\n   /ColorSpace /DeviceRGB\n"
                    "   /Width 3 /Height 2 /BitsPerComponent 8\n   /Length " +
                    std::to_string(data.size()) + "\n   /Filter /FlateDecode\n>>\nstream\n" + data +
                    "endstream\nendobj\n"
                    "5 0 obj\n"),
      std::string::npos);
  const PdfParts parts = take_apart(document);
  ASSERT_EQ(parts.problem, "");
  EXPECT_EQ(parts.objects[4].data, six_pixels);
  EXPECT_EQ(parts.objects[5].data,
            "q\n1 0 0 1 100.00 200.50 cm\n0 1 -1 0 0 0 cm\n30.00 0 0 20.25 0 0 cm\n"
            "/Image1 Do\nQ\n");
}

TEST_F(PdfImages, GetTheWhiteMaskWhileItIsOn) {
  for (const bool compress : {false, true}) {
    const std::string document = document_of(compress, [] {
      for (const double mask : {1.0, 0.0, 0.5, 0.49, -1.5, -1.49, 7.0}) {
        draw(op_mask, mask);
        draw_six_pixels();
      }
    });
    const PdfParts parts = take_apart(document);
    ASSERT_EQ(parts.problem, "");
    std::string masks;
    for (const PdfObject &object : parts.objects) {
      if (object.text.find("/Subtype /Image") == std::string::npos) continue;
      const bool masked = object.text.find(
                              "   /ColorSpace /DeviceRGB\n"
                              "   /Mask [255 255 255 255 255 255]\n   /Width") != std::string::npos;
      masks += masked ? 'm' : '-';
    }
    EXPECT_EQ(masks, "m-m-m-m");
  }
}

TEST_F(PdfImages, KeepTheMaskOnTheNextPage) {
  const std::string document = document_of(false, [] {
    draw(op_mask, 1);
    draw(op_page);
    draw_six_pixels();
  });
  EXPECT_NE(document.find("/Mask"), std::string::npos);
}

TEST_F(PdfImages, EndPathAndTextBeforeThem) {
  EXPECT_EQ(content_of([] {
              draw(op_line, 1, 2);
              draw_six_pixels();
            }),
            "0.00 0.00 m\n1.00 2.00 l\nS\n");
  EXPECT_EQ(content_of([] {
              character('a', 1, 2);
              draw_six_pixels();
            }),
            "BT\n/F1 12 Tf\n1 0 0 1 1.00 2.00 Tm\n(a) Tj\nET\n");
}

TEST_F(PdfImages, LoseASurplusOfPixelsWhereTheyAreBuffered) {
  const std::string document = document_of(true, [] {
    draw(op_begin_image, 2, 1);
    send("abcd");
    send("efghij");  // only two of them have room
    send("k");
    draw(op_end_image);
  });
  const PdfParts parts = take_apart(document);
  ASSERT_EQ(parts.problem, "");
  EXPECT_EQ(parts.objects[4].data, "abcdef");
  EXPECT_EQ(parts.objects[5].data, "q\n");
}

TEST_F(PdfImages, MayHaveFewerPixelsThanTold) {
  const std::string document = document_of(true, [] {
    draw(op_begin_image, 100, 100);
    send("abc");
    draw(op_end_image);
  });
  EXPECT_EQ(take_apart(document).objects.at(4).data, "abc");
}

TEST_F(PdfImages, LargerThanAPageStreamAreStillOneStream) {
  std::string pixels;
  for (int32_t i = 0; i < 400 * 300 * 3; ++i)
    pixels += static_cast<char>(i * 7 + i / 1000);
  for (const bool compress : {false, true}) {
    const std::string document = document_of(compress, [&] {
      draw(op_begin_image, 400, 300);
      for (size_t at = 0; at < pixels.size(); at += 1200)
        send(pixels.substr(at, 1200));
      draw(op_end_image);
    });
    const PdfParts parts = take_apart(document);
    ASSERT_EQ(parts.problem, "");
    EXPECT_EQ(parts.objects[compress ? 4 : 5].data, pixels);
    EXPECT_EQ(parts.objects.size(), compress ? 8U : 10U);
  }
}

TEST_F(PdfImages, HaveTheWholePartsOfTheirSizes) {
  const std::string document = document_of(false, [] {
    draw(op_begin_image, 3.99, 2.5);
    send(six_pixels);
    draw(op_end_image);
  });
  EXPECT_NE(document.find("   /Width 3 /Height 2 /BitsPerComponent 8\n   /Length 18\n"),
            std::string::npos);
}

TEST_F(PdfImages, DropASurplusOfPixelsWhereTheyAreNotBufferedToo) {
  const std::string document = document_of(false, [] {
    draw(op_begin_image, 2, 1);
    send("abcd");
    send("efghij");
    send("k");
    draw(op_end_image);
  });
  EXPECT_NE(document.find("   /Length 6\n>>\nstream\nabcdefendstream\nendobj\n"),
            std::string::npos);
  EXPECT_EQ(take_apart(document).problem, "");
}

TEST_F(PdfImages, OfNoSizeAreNotBuffered) {
  for (const bool compress : {false, true}) {
    const std::string document = document_of(compress, [] {
      draw(op_begin_image, 0, 5);
      draw(op_end_image);
    });
    EXPECT_NE(document.find("   /Width 0 /Height 5 /BitsPerComponent 8\n   /Length 0\n>>\nstream\n"
                            "endstream\nendobj\n"),
              std::string::npos);
    EXPECT_EQ(take_apart(document).problem, "");
  }
}

TEST_F(PdfImages, OfAbsurdSizesDoNoHarm) {
  const double sizes[][2] = {{-3, -2},       {-3, 2},        {1e300, 1e300},  {65536, 65536},
                             {undefined, 5}, {46341, 46341}, {2147483647, 1}, {infinite, -infinite},
                             {1e9, 1e9}};
  for (const auto &[width, height] : sizes) {
    for (const bool compress : {false, true}) {
      const std::string document = document_of(compress, [width = width, height = height] {
        draw(op_begin_image, width, height);
        send(six_pixels);
        draw(op_end_image);
        draw(op_place, 1, 1);
      });
      EXPECT_EQ(document.substr(document.size() - 6), "%%EOF\n");
      EXPECT_NE(document.find("/Subtype /Image"), std::string::npos);
    }
  }
}

TEST_F(PdfImages, ArePlacedByTheNumberOfTheLast) {
  EXPECT_EQ(content_of([] { draw(op_place, 1, -2); }), "1.00 0 0 -2.00 0 0 cm\n/Image0 Do\nQ\n");
  const std::string document = document_of(false, [] {
    draw_six_pixels();
    draw(op_page);
    draw_six_pixels();
    draw(op_place, 7, 8);
  });
  EXPECT_NE(document.find("/Image2 Do\nQ\n7.00 0 0 8.00 0 0 cm\n/Image2 Do\nQ\n"),
            std::string::npos);
}

// ---- forms

literal::FormCall plain_form() {
  return {"0 0 m\n10 5 l\nS\n", 0, 0, 100, 50, 20, 30, 200, 200, 0, 0};
}

std::string placed(const literal::FormCall &call) {
  const std::string document = document_of(false, [&] { EXPECT_EQ(form(call), 0); });
  const PdfParts parts = take_apart(document);
  EXPECT_EQ(parts.problem, "");
  return parts.objects.size() > 6 ? parts.objects[6].data : "no stream";
}

TEST_F(PdfForms, AreObjectsOfTheirOwnBetweenTwoStreams) {
  const std::string document = document_of(false, [] { EXPECT_EQ(form(plain_form()), 0); });
  EXPECT_EQ(between(document, "4 0 obj\n16\nendobj\n", "8 0 obj\n"),
            "5 0 obj\n<< /Type /XObject /Subtype /Form\n   /FormType 1\n   /BBox [ 0 0 100 50]\n"
            "   /Matrix [1 0 0 1 0 0]\n   /Resources << /ProcSet [/PDF] >>\n   /Length 15\n>>\n"
            "stream\n0 0 m\n10 5 l\nS\nendstream\nendobj\n"
            "6 0 obj\n<< /Length 7 0 R >>\nstream\nq\n1 0 0 1 20.00 30.00 cm\n1 0 0 1 0 0 cm\n"
            "2.00 0 0 2.00 0 0 cm\n/Form1 Do\nQ\nendstream\nendobj\n7 0 obj\n73\nendobj\n");
}

TEST_F(PdfForms, AreCompressedAsTheCallSays) {
  literal::FormCall call = plain_form();
  const std::string data = literal::compressed(call.data);
  for (const int32_t word : {1, 2, -1}) {
    call.compress = word;
    const std::string document = document_of(false, [&] { form(call); });
    EXPECT_EQ(between(document, "/ProcSet [/PDF] >>\n", "6 0 obj\n"),
              "   /Length " + std::to_string(data.size()) +
                  "\n   /Filter /FlateDecode\n>>\nstream\n" + data + "endstream\nendobj\n");
    EXPECT_EQ(take_apart(document).objects.at(5).data, call.data);
  }
  call.compress = 0;
  const PdfParts parts = take_apart(document_of(true, [&] { form(call); }));
  ASSERT_EQ(parts.problem, "");
  EXPECT_FALSE(parts.objects[4].was_compressed);
  EXPECT_EQ(parts.objects[4].data, call.data);
  EXPECT_TRUE(parts.objects[5].was_compressed);
}

TEST_F(PdfForms, RoundTheirBoxToIntegers) {
  literal::FormCall call = plain_form();
  call.box_x = 0.5;       // 1
  call.box_y = -1.5;      // -1
  call.box_width = 9.75;  // 10.25 + 0.5
  call.box_height = 1;    // -0.5 + 0.5
  const std::string document = document_of(false, [&] { form(call); });
  EXPECT_NE(document.find("   /BBox [ 1 -1 10 0]\n"), std::string::npos);
}

TEST_F(PdfForms, AreShiftedByPlaceLessBox) {
  literal::FormCall call = plain_form();
  call.box_x = 5.25;
  call.box_y = 40;
  EXPECT_EQ(placed(call),
            "q\n1 0 0 1 14.75 -10.00 cm\n1 0 0 1 0 0 cm\n2.00 0 0 2.00 0 0 cm\n"
            "/Form1 Do\nQ\n");
}

TEST_F(PdfForms, FitWithTheSmallerScale) {
  literal::FormCall call = plain_form();  // 200 / 100 and 200 / 50
  EXPECT_NE(placed(call).find("\n2.00 0 0 2.00 0 0 cm\n"), std::string::npos);
  call.target_height = 25;
  EXPECT_NE(placed(call).find("\n0.50 0 0 0.50 0 0 cm\n"), std::string::npos);
  call.target_width = -50;
  EXPECT_NE(placed(call).find("\n-0.50 0 0 -0.50 0 0 cm\n"), std::string::npos);
}

TEST_F(PdfForms, ExchangeTheSidesWhereTheyAreTurned) {
  literal::FormCall call = plain_form();
  call.target_width = 100;
  call.target_height = 300;
  call.rotate = 1;  // 100 / 50 and 300 / 100, and up by the target's height
  EXPECT_EQ(placed(call),
            "q\n1 0 0 1 20.00 330.00 cm\n0 -1 1 0 0 0 cm\n2.00 0 0 2.00 0 0 cm\n"
            "/Form1 Do\nQ\n");
}

TEST_F(PdfForms, TurnOnlyForAOneButExchangeTheSidesForAnyOther) {
  literal::FormCall call = plain_form();
  call.target_width = 100;
  call.target_height = 300;
  for (const int32_t rotate : {2, -1, 90}) {
    call.rotate = rotate;
    EXPECT_EQ(placed(call),
              "q\n1 0 0 1 20.00 330.00 cm\n1 0 0 1 0 0 cm\n2.00 0 0 2.00 0 0 cm\n"
              "/Form1 Do\nQ\n");
  }
}

TEST_F(PdfForms, OfNoSizeHaveScaleZero) {
  literal::FormCall call = plain_form();
  call.box_width = 0;
  call.box_height = 0;
  EXPECT_NE(placed(call).find("\n0.00 0 0 0.00 0 0 cm\n"), std::string::npos);
  call.box_height = 50;  // infinite and 4: the smaller is 4
  EXPECT_NE(placed(call).find("\n4.00 0 0 4.00 0 0 cm\n"), std::string::npos);
  call.target_width = -200;  // minus infinite
  EXPECT_NE(placed(call).find("\n0.00 0 0 0.00 0 0 cm\n"), std::string::npos);
}

TEST_F(PdfForms, OfNonsenseSizesAreStillWholeDocuments) {
  for (const double odd : {0.0, -0.0, infinite, -infinite, undefined, 1e300, -1e-300}) {
    for (const int32_t rotate : {0, 1}) {
      for (int32_t place = 0; place < 8; ++place) {
        literal::FormCall call = plain_form();
        call.rotate = rotate;
        double *const numbers[8] = {&call.box_x,        &call.box_y,        &call.box_width,
                                    &call.box_height,   &call.place_x,      &call.place_y,
                                    &call.target_width, &call.target_height};
        *numbers[place] = odd;
        EXPECT_NE(placed(call).find("/Form1 Do\nQ\n"), std::string::npos) << odd << " " << place;
      }
    }
  }
}

TEST_F(PdfForms, MayBeEmpty) {
  for (const int32_t compress : {0, 1}) {
    literal::FormCall call = plain_form();
    call.data.clear();
    call.compress = compress;
    const PdfParts parts = take_apart(document_of(false, [&] { EXPECT_EQ(form(call), 0); }));
    ASSERT_EQ(parts.problem, "");
    EXPECT_EQ(parts.objects[5].data, "");
    EXPECT_EQ(parts.objects[5].was_compressed, compress == 1);
  }
}

TEST_F(PdfForms, OfNegativeLengthAreEmpty) {
  for (const int32_t compress : {0, 1}) {
    const std::string document = document_of(false, [&] {
      const literal::FormCall call = plain_form();
      const int32_t length = -5;
      int32_t status = no_status;
      qqpdf8(nullptr, &length, &call.box_x, &call.box_y, &call.box_width, &call.box_height,
             &call.place_x, &call.place_y, &call.target_width, &call.target_height, &compress,
             &call.rotate, &status);
      EXPECT_EQ(status, 0);
    });
    EXPECT_EQ(document.substr(document.size() - 6), "%%EOF\n");
    EXPECT_NE(document.find("/Form1 Do\nQ\n"), std::string::npos);
  }
}

TEST_F(PdfForms, EndPathAndTextBeforeThem) {
  EXPECT_EQ(content_of([] {
              draw(op_line, 1, 2);
              form(plain_form());
            }),
            "0.00 0.00 m\n1.00 2.00 l\nS\n");
  EXPECT_EQ(content_of([] {
              character('a', 1, 2);
              form(plain_form());
            }),
            "BT\n/F1 12 Tf\n1 0 0 1 1.00 2.00 Tm\n(a) Tj\nET\n");
}

TEST_F(PdfForms, StartTheNextPathAnew) {
  const PdfParts parts = take_apart(document_of(false, [] {
    draw(op_line, 1, 2);
    form(plain_form());
    draw(op_line, 3, 4);
  }));
  ASSERT_EQ(parts.problem, "");
  EXPECT_EQ(parts.objects[6].data.substr(parts.objects[6].data.find("Q\n")),
            "Q\n1.00 2.00 m\n3.00 4.00 l\nS\n");
}

TEST_F(PdfForms, LargerThanAPageStreamAreStillOneStream) {
  literal::FormCall call = plain_form();
  call.data.clear();
  while (call.data.size() < 700000)
    call.data += std::to_string(call.data.size()) + " 5 l\n";
  for (const bool compress : {false, true}) {
    call.compress = compress ? 1 : 0;
    const PdfParts parts = take_apart(document_of(compress, [&] { EXPECT_EQ(form(call), 0); }));
    ASSERT_EQ(parts.problem, "");
    EXPECT_EQ(parts.objects[compress ? 4 : 5].data, call.data);
  }
}

}  // namespace
}  // namespace quorix::testing

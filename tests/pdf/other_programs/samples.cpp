// SPDX-License-Identifier: MIT
//
// Writes documents of all forms and PostScript into a folder, for programs that have nothing to do
// with this library to read. Pictures have their pixels beside them, bare triples in NAME.rgb.
//
//   pdf_samples FOLDER
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/imageout/drawn_picture.h"
#include "tests/imageout/page_calls.h"
#include "tests/pdf/other_programs/drawn_pages.h"
#include "tests/pdf/pdf_calls.h"
#include "tests/pdf/random_document.h"

namespace {

using quorix::testing::Calls;
using quorix::testing::DrawnPicture;
using quorix::testing::PageCall;

bool write_drawn(const std::string &folder, const char *name, void (*drawing)()) {
  for (int32_t mode = 0; mode < 2; ++mode) {
    for (int32_t turned = 0; turned < 2; ++turned) {
      const std::string file = folder + "/" + name + (mode == 1 ? "_compressed" : "_plain") +
                               (turned == 1 ? "_turned.pdf" : ".pdf");
      if (quorix::testing::begin_document(mode, 200, 200, turned, file) != 0) return false;
      drawing();
      quorix::testing::draw(quorix::testing::op_end);
    }
  }
  return true;
}

bool write_random(const std::string &folder, uint32_t seed) {
  Calls calls = quorix::testing::random_calls(seed, quorix::testing::RandomKind::viewable);
  calls.mode %= 2;
  return quorix::testing::draw_into_file(calls,
                                         folder + "/random_" + std::to_string(seed) + ".pdf");
}

bool write_triples(const std::string &name, const DrawnPicture &picture) {
  std::FILE *const file = std::fopen(name.c_str(), "wb");
  if (file == nullptr) return false;
  const size_t written = std::fwrite(picture.rgb.data(), 1, picture.rgb.size(), file);
  return std::fclose(file) == 0 && written == picture.rgb.size();
}

// Pages that are exactly as large as the picture with `units` twentieths of a millimetre to the
// pixel, and no margins.
bool write_pictures(const std::string &folder, int32_t width, int32_t height, bool rgba) {
  const DrawnPicture picture = rgba ? quorix::testing::photo_picture(width, height, 1)
                                    : quorix::testing::plot_picture(width, height, 1);
  quorix::testing::show_on_raster(picture, rgba);
  const std::string base = folder + "/" + (rgba ? "photo_" : "plot_") + std::to_string(width) +
                           "x" + std::to_string(height);
  PageCall call = {101, width, height};
  call.page_set = 1;
  call.page_width = 2 * (width > height ? height : width);
  call.page_height = 2 * (width > height ? width : height);
  call.margin_set = 1;
  bool done = write_triples(base + ".rgb", picture);
  done = quorix::testing::write_postscript(call, base + ".ps") == 0 && done;
  done = quorix::testing::write_one_page_pdf(call, base + "_plain.pdf") == 0 && done;
  call.flags = 1;
  return quorix::testing::write_one_page_pdf(call, base + "_compressed.pdf") == 0 && done;
}

}  // namespace

int main(int count, char **arguments) {
  if (count != 2) return 2;
  const std::string folder = arguments[1];
  bool done = write_drawn(folder, "areas", quorix::testing::draw_areas);
  done = write_drawn(folder, "objects", quorix::testing::draw_objects) && done;
  done = write_drawn(folder, "words", quorix::testing::draw_words) && done;
  done = write_drawn(folder, "much", quorix::testing::draw_much) && done;
  for (uint32_t seed = 1; seed <= 60; ++seed)
    done = write_random(folder, seed) && done;
  constexpr int32_t sizes[][2] = {{127, 127}, {127, 254}, {254, 127}};
  for (const auto &[width, height] : sizes)
    for (const bool rgba : {false, true})
      done = write_pictures(folder, width, height, rgba) && done;
  // The calls are those of tests, with their own expectations.
  return done && ::testing::UnitTest::GetInstance()->Passed() ? 0 : 1;
}

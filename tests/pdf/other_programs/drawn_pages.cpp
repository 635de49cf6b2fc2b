// SPDX-License-Identifier: MIT
//
// Pages whose pixels can be foreseen.
#include "tests/pdf/other_programs/drawn_pages.h"

#include <string>

#include "tests/pdf/pdf_calls.h"

namespace quorix::testing {

namespace {

void fill_colour(int32_t red, int32_t green, int32_t blue) {
  colour(red, green, blue, 1);
}

void line_colour(int32_t red, int32_t green, int32_t blue) {
  colour(red, green, blue, 0);
}

void square(double x, double y, double size) {
  draw(op_move, x, y);
  draw(op_line, x + size, y);
  draw(op_line, x + size, y + size);
  draw(op_line, x, y + size);
  draw(op_line, x, y);
}

void clip(double x1, double y1, double x2, double y2) {
  draw(op_corner1, x1, y1);
  draw(op_corner2, x2, y2);
  draw(op_clip, 0);
}

// Six pixels: red, green, blue; white, black, yellow.
const std::string six_pixels("\xff\0\0\0\xff\0\0\0\xff\xff\xff\xff\0\0\0\xff\xff\0", 18);

void place_image(double x, double y, double width, double height, bool turned) {
  draw(op_begin_image, 3, 2);
  send(six_pixels);
  draw(op_end_image);
  draw(op_translate, x, y);
  if (turned) draw(op_rotate);
  draw(op_place, width, height);
}

void write_word(const std::string &word, double x, double y, int32_t font, int32_t rotation) {
  // Courier: each character is 0.6 of the size wide.
  constexpr double advance = 12 * 0.6;
  for (const char letter : word) {
    character(static_cast<unsigned char>(letter), x, y, font, 12, rotation);
    (rotation == 90 ? y : x) += advance;
  }
}

}  // namespace

void draw_areas() {
  fill_colour(255, 0, 0);
  rectangle(20, 20, 40, 40);
  fill_colour(0, 0, 255);
  rectangle(100, 60, -20, -40);

  // A square ring by the even-odd rule.
  fill_colour(0, 128, 0);
  square(120, 20, 60);
  send("140.00 40.00 m\n160.00 40.00 l\n160.00 60.00 l\n140.00 60.00 l\n");
  draw(op_fill);

  line_colour(255, 0, 255);
  draw(op_width, 10);
  draw(op_cap, 0);
  draw(op_move, 20, 100);
  draw(op_line, 80, 100);
  line_colour(0, 255, 255);
  draw(op_cap, 1);
  draw(op_width, 20);
  draw(op_move, 110, 100);
  draw(op_line, 110, 100);  // a dot

  line_colour(255, 128, 0);
  draw(op_width, 8);
  draw(op_join, 0);
  draw(op_miter, 10);
  draw(op_move, 140, 90);
  draw(op_line, 170, 90);
  draw(op_line, 170, 120);

  // Two clip rectangles, one after the other; the line's colour outlives the first.
  clip(20, 130, 40, 180);
  fill_colour(0, 0, 0);
  rectangle(0, 125, 200, 60);
  clip(80, 130, 100, 180);
  draw(op_width, 20);
  draw(op_cap, 0);
  draw(op_move, 0, 155);
  draw(op_line, 200, 155);
  draw(op_clip, 1);
  fill_colour(128, 128, 128);
  rectangle(150, 140, 0, 40);  // becomes 0.708 wide
}

void draw_objects() {
  fill_colour(0, 255, 255);
  rectangle(0, 0, 200, 200);
  place_image(10, 10, 60, 40, false);
  draw(op_mask, 1);
  place_image(80, 10, 60, 40, false);
  draw(op_mask, 0);
  place_image(190, 10, 60, 40, true);  // turned to the left: 40 wide and 60 high, from 150 to 190
  const std::string flag = "1 0 0 rg\n0 0 10 20 re\nf\n0 0 1 rg\n10 0 10 20 re\nf\n";
  form({flag, 0, 0, 20, 20, 10, 100, 60, 80, 0, 0});   // scale 3
  form({flag, 0, 0, 20, 20, 100, 100, 40, 40, 1, 1});  // scale 2, turned to the right
}

void draw_words() {
  outline("Chapter", 0);
  outline("Section one", 1);
  fill_colour(0, 0, 0);
  write_word("Quorix", 20, 150, 18, 0);
  write_word("upward", 20, 20, 18, 90);
  // A, O and U with two dots, then sharp s.
  write_word("\x7f\x80\x81\x85", 80, 150, 18, 0);
  write_word("(a\\b)", 80, 120, 18, 0);
  const double turned[7] = {0.707, 0.707, -0.707, 0.707, 100, 40, 1};
  qqpdf5('X', turned, 45, 5, -605);
  const double wide[7] = {1, 0, 0, 1, 20, 170, 2};
  qqpdf5(-'H', wide, 0, 5, 20);
  draw(op_page);
  outline("Section two", 1);
  outline("Detail", 2);
  outline("Second chapter", 0);
  fill_colour(0, 0, 0);
  for (int32_t font = 0; font < 35; ++font)
    character('A' + font % 26, 5 + 5 * font, 100, font, 12);
}

void draw_much() {
  fill_colour(255, 0, 0);
  rectangle(10, 10, 20, 20);
  draw(op_width, 0.1);
  for (int32_t i = 0; i < 40000; ++i) {
    draw(op_move, 50, 50 + i % 90);
    draw(op_line, 150, 50 + i % 90);
  }
  fill_colour(0, 0, 255);
  rectangle(170, 170, 20, 20);
}

}  // namespace quorix::testing

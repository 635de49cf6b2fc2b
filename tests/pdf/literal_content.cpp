// SPDX-License-Identifier: MIT
//
// What the drawing operations write into a content stream.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tests/pdf/literal_document.h"
#include "tests/pdf/literal_numbers.h"

namespace quorix::literal {

namespace {

constexpr float dot_radius = 0.354F;
constexpr float dot_size = 0.708F;

// Codes 127 to 187 in the WinAnsi encoding.
constexpr int32_t national_letters[61] = {
    0xC4, 0xD6, 0xDC, 0xE4, 0xF6, 0xFC, 0xDF, 0xC5, 0xD8, 0xC6, 0xE5, 0xF8, 0xE6, 0xD1, 0xF1, 0xC7,
    0xE7, 0xCB, 0xCF, 0xEB, 0xEF, 0xC1, 0xC9, 0xCD, 0xD3, 0xDA, 0xE1, 0xE9, 0xED, 0xF3, 0xFA, 0xC0,
    0xC8, 0xCC, 0xD2, 0xD9, 0xE0, 0xE8, 0xEC, 0xF2, 0xF9, 0xC2, 0xCA, 0xCE, 0xD4, 0xDB, 0xE2, 0xEA,
    0xEE, 0xF4, 0xFB, 0xC3, 0xE3, 0xD5, 0xF5, 0xDD, 0xFD, 0xFF, 0xA1, 0xBF, 0xA9};

std::string pair(double x, double y) {
  return real(x, 2) + " " + real(y, 2);
}

void end_text(LiteralDocument &document) {
  if (!document.in_text) return;
  write(document, "ET\n");
  document.in_text = false;
}

void stroke(LiteralDocument &document) {
  if (!document.path_open) return;
  write(document, "S\n");
  document.path_open = false;
  document.last_op = 3;
}

void draw_line(LiteralDocument &document, double x, double y) {
  float offset = 0;
  // A double that is no 32-bit float equals its own rounded form: move and line to one point match.
  if (static_cast<float>(x) == document.current_x && static_cast<float>(y) == document.current_y) {
    if (document.last_op == 2) return;
    offset = dot_radius;
  }
  const double d = offset;
  if (document.last_op == 3)
    write(document, pair(static_cast<double>(document.current_x) - d, document.current_y) + " m\n");
  write(document, pair(x + d, y) + " l\n");
  document.path_open = true;
  document.current_x = static_cast<float>(x);
  document.current_y = static_cast<float>(y);
  document.last_op = 2;
}

std::string component(int32_t value) {
  if (value == 0) return "0 ";
  if (value == 255) return "1 ";
  return real(value / 255.0, 3, 5) + " ";
}

std::string components(const int32_t *colour) {
  return component(colour[0]) + component(colour[1]) + component(colour[2]);
}

void switch_clip(LiteralDocument &document, int32_t off) {
  if (off != 0) {
    if (document.clip_active) write(document, "Q\n");
    document.clip_active = false;
    return;
  }
  if (document.clip_active) {
    write(document, "Q\n");
    write(document, components(document.stroke_colour) + "RG\n");
  }
  write(document, "q\n");
  write(document, pair(document.clip_x1, document.clip_y1) + " m\n");
  write(document, pair(document.clip_x2, document.clip_y1) + " l\n");
  write(document, pair(document.clip_x2, document.clip_y2) + " l\n");
  write(document, pair(document.clip_x1, document.clip_y2) + " l\n");
  write(document, "h W n\n");
  document.clip_active = true;
}

void new_page(LiteralDocument &document) {
  end_page(document);
  ++document.page_number;
  document.page_first = document.kinds.size();
  open_stream(document);
}

void place_image(LiteralDocument &document, double x, double y) {
  write(document, real(x, 2) + " 0 0 " + real(y, 2) + " 0 0 cm\n");
  write(document, "/Image" + integer(document.images) + " Do\n");
  write(document, "Q\n");
}

void set_state(LiteralDocument &document, double x, double y, int32_t op) {
  const int32_t rounded = truncated(x + 0.5);
  if (op == 6) write(document, real(x, 3) + " w\n");
  if (op == 7) write(document, integer(rounded) + " j\n");
  if (op == 8) write(document, integer(rounded) + " J\n");
  if (op == 9) write(document, real(x, 3) + " M\n");
  if (op == 12) write(document, "1 0 0 1 " + pair(x, y) + " cm\n");
  if (op == 13) write(document, "0 1 -1 0 0 0 cm\n");
  if (op == 15) document.mask_white = rounded != 0;
  if (op == 16) {
    document.clip_x1 = static_cast<float>(x);
    document.clip_y1 = static_cast<float>(y);
  }
  if (op == 17) {
    document.clip_x2 = static_cast<float>(x);
    document.clip_y2 = static_cast<float>(y);
  }
  if (op == 18) switch_clip(document, rounded);
}

std::string octal(int32_t code) {
  std::string digits;
  for (; code > 0; code /= 8)
    digits.insert(digits.begin(), static_cast<char>('0' + code % 8));
  return digits;
}

std::string shown(int64_t code) {
  if (code > 187) return "(\\" + octal(32) + ") Tj\n";
  const auto place = static_cast<int32_t>(code);
  if (place >= 127) return "(\\" + octal(national_letters[place - 127]) + ") Tj\n";
  if (place == 40 || place == 41 || place == 92) return "(\\" + octal(place) + ") Tj\n";
  return std::string("(") + static_cast<char>(place) + ") Tj\n";
}

std::string size_text(int32_t size) {
  return size < 0 ? real(-static_cast<double>(size) / 10.0, 1) : integer(size);
}

// Infinite and undefined scales read as zero.
double form_scale(const FormCall &call) {
  const double across = call.rotate != 0 ? call.box_height : call.box_width;
  const double up = call.rotate != 0 ? call.box_width : call.box_height;
  const double scale = std::min(call.target_width / across, call.target_height / up);
  return static_cast<float>(scale);
}

}  // namespace

void qqpdf2(LiteralDocument &document, double x, double y, int32_t op) {
  if (document.ended) return;
  end_text(document);
  if (op != 2 && op != 5) stroke(document);
  switch (op) {
    case 1:
      if (document.clip_active) write(document, "Q\n");
      end_document(document);
      break;
    case 2:
      draw_line(document, x, y);
      break;
    case 3:
      document.current_x = static_cast<float>(x);
      document.current_y = static_cast<float>(y);
      document.last_op = 3;
      break;
    case 4:
      new_page(document);
      break;
    case 5:
      write(document, "h\n");
      write(document, "f*\n");
      break;
    case 10:
      close_stream(document);
      open_image(document, truncated(x), truncated(y));
      break;
    case 11:
      close_image(document);
      open_stream(document);
      write(document, "q\n");
      break;
    case 14:
      place_image(document, x, y);
      break;
    default:
      set_state(document, x, y, op);
  }
}

void qqpdf3(LiteralDocument &document, int32_t red, int32_t green, int32_t blue, int32_t fill) {
  if (document.ended) return;
  stroke(document);
  end_text(document);
  const int32_t colour[3] = {red, green, blue};
  if (fill != 1) std::copy(colour, colour + 3, document.stroke_colour);
  write(document, components(colour) + (fill == 1 ? "rg\n" : "RG\n"));
}

void qqpdf4(LiteralDocument &document, double *x, double *y, double *width, double *height) {
  if (document.ended) return;
  if (std::fabs(*width) < 0.01) {
    *x -= 0.354;
    *width = static_cast<double>(dot_size);
  }
  if (std::fabs(*height) < 0.01) {
    *y -= 0.354;
    *height = static_cast<double>(dot_size);
  }
  write(document, pair(*x, *y) + " " + pair(*width, *height) + " re\n");
  write(document, "f\n");
}

void qqpdf5(LiteralDocument &document, int32_t code, const double *matrix, int32_t rotation,
            int32_t font, int32_t size) {
  if (document.ended || font < 0 || font > 34) return;
  stroke(document);
  if (document.font != font || document.font_size != size) end_text(document);
  document.font = font;
  document.font_size = size;
  document.page_has_text = true;
  if (document.font_state[font] == 0) document.font_state[font] = 1;
  if (!document.in_text) {
    write(document, "BT\n");
    write(document, "/F" + integer(font + 1) + " " + size_text(size) + " Tf\n");
    if (code < 0) write(document, integer(truncated(matrix[6] * 100.0)) + " Tz\n");
    document.in_text = true;
  }
  std::string turn = "1 0 0 1";
  if (rotation == 90) turn = "0 1 -1 0";
  if (rotation != 0 && rotation != 90)
    turn = pair(matrix[0], matrix[1]) + " " + pair(matrix[2], matrix[3]);
  write(document, turn + " " + pair(matrix[4], matrix[5]) + " Tm\n");
  write(document, shown(std::llabs(code)));
}

void qqpdf8(LiteralDocument &document, const FormCall &call) {
  if (document.ended) return;
  end_text(document);
  stroke(document);
  close_stream(document);
  new_object(document, 4);
  ++document.forms;
  write(document, "<< /Type /XObject /Subtype /Form\n");
  write(document, "   /FormType 1\n");
  write(document, "   /BBox [ " + integer(truncated(call.box_x + 0.5)) + " " +
                      integer(truncated(call.box_y + 0.5)) + " " +
                      integer(truncated(call.box_x + call.box_width + 0.5)) + " " +
                      integer(truncated(call.box_y + call.box_height + 0.5)) + "]\n");
  write(document, "   /Matrix [1 0 0 1 0 0]\n");
  write(document, "   /Resources << /ProcSet [/PDF] >>\n");
  const std::string data = call.compress != 0 ? compressed(call.data) : call.data;
  write(document, "   /Length " + integer(static_cast<int32_t>(data.size())) + "\n");
  if (call.compress != 0) write(document, "   /Filter /FlateDecode\n");
  write(document, ">>\n");
  write(document, "stream\n");
  write(document, data);
  write(document, "endstream\n");
  write(document, "endobj\n");
  open_stream(document);
  write(document, "q\n");
  const double lift = call.rotate != 0 ? call.target_height : 0.0;
  write(document,
        "1 0 0 1 " + pair(call.place_x - call.box_x, call.place_y - call.box_y + lift) + " cm\n");
  write(document, call.rotate == 1 ? "0 -1 1 0 0 0 cm\n" : "1 0 0 1 0 0 cm\n");
  const std::string scale = real(form_scale(call), 2);
  write(document, scale + " 0 0 " + scale + " 0 0 cm\n");
  write(document, "/Form" + integer(document.forms) + " Do\n");
  write(document, "Q\n");
}

}  // namespace quorix::literal

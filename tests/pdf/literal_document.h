// SPDX-License-Identifier: MIT
//
// A second PDF writer, made to be obviously right and for nothing else: strings that grow, tables
// that are searched from end to end, one statement per line of output. Operations have the names of
// those they stand for. The date reads as masked_date does; memory never runs out.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::literal {

// In place of the 14 digits of the time.
inline constexpr char masked_date[] = "##############";

// The arguments of qqpdf8.
struct FormCall {
  std::string data;
  double box_x, box_y, box_width, box_height;
  double place_x, place_y;
  double target_width, target_height;
  int32_t compress, rotate;
};

struct OutlineEntry {
  int32_t level, page_number;
  std::string title;
};

struct LiteralDocument {
  std::string output;
  bool ended = false;

  int32_t page_width, page_height;
  bool rotate_pages, compression_wanted;

  // By object number; 0 to 2 are reserved.
  std::vector<size_t> offsets = {0, 0, 0};
  std::vector<int32_t> kinds = {0, 0, 0};

  // The open stream.
  bool in_stream = false, compressing = false, image_open = false;
  std::string stream_buffer;
  size_t stream_capacity = 0, stream_start = 0;

  // The page.
  size_t page_first = 3;
  int32_t page_number = 1;
  bool page_has_text = false;

  // What drawing remembers.
  bool path_open = false, in_text = false, clip_active = false, mask_white = false;
  int32_t last_op = 3;
  float current_x = 0, current_y = 0;
  float clip_x1 = 0, clip_y1 = 0, clip_x2 = 0, clip_y2 = 0;
  int32_t stroke_colour[3] = {0, 0, 0};
  int32_t font = -1, font_size = 0;
  int32_t font_state[35] = {};
  int32_t images = 0, forms = 0;

  std::vector<OutlineEntry> outlines;
};

LiteralDocument qqpdf1(int32_t page_width, int32_t page_height, bool compress, bool rotate);
void qqpdf2(LiteralDocument &document, double x, double y, int32_t op);
void qqpdf3(LiteralDocument &document, int32_t red, int32_t green, int32_t blue, int32_t fill);
void qqpdf4(LiteralDocument &document, double *x, double *y, double *width, double *height);
void qqpdf5(LiteralDocument &document, int32_t code, const double *matrix, int32_t rotation,
            int32_t font, int32_t size);
void qqpdf7(LiteralDocument &document, const std::string &data);
void qqpdf8(LiteralDocument &document, const FormCall &call);
int32_t qqpdf9(LiteralDocument &document, const std::string &title, int32_t level);

// ---- shared by the files of the model ----

void write(LiteralDocument &document, const std::string &data);
void new_object(LiteralDocument &document, int32_t kind);
void open_stream(LiteralDocument &document);
void close_stream(LiteralDocument &document);
void open_image(LiteralDocument &document, int32_t width, int32_t height);
void close_image(LiteralDocument &document);
void end_page(LiteralDocument &document);
void end_document(LiteralDocument &document);
// One deflate over all of it, at zlib's default level.
std::string compressed(const std::string &data);

}  // namespace quorix::literal

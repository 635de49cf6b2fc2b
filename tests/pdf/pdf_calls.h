// SPDX-License-Identifier: MIT
//
// The operations of PDF documents with plain arguments, and documents as strings.
#pragma once

#include <cstdint>
#include <string>

#include "quorix/pdf.h"
#include "tests/pdf/literal_document.h"

namespace quorix::testing {

// `mode` of qqpdf1.
enum DocumentMode : int32_t {
  plain_file = 0,
  compressed_file = 1,
  plain_memory = 2,
  compressed_memory = 3
};

// Operations of qqpdf2.
enum DrawOp : int32_t {
  op_end = 1,
  op_line,
  op_move,
  op_page,
  op_fill,
  op_width,
  op_join,
  op_cap,
  op_miter,
  op_begin_image,
  op_end_image,
  op_translate,
  op_rotate,
  op_place,
  op_mask,
  op_corner1,
  op_corner2,
  op_clip,
};

inline constexpr int32_t no_status = 12345;  // a status that was not set

// Gives the status. The name is that of the file.
int32_t begin_document(int32_t mode, int32_t width = 595, int32_t height = 842, int32_t rotate = 0,
                       const std::string &name = "out");
void draw(int32_t op, double x = 0, double y = 0);
void colour(int32_t red, int32_t green, int32_t blue, int32_t fill);
void rectangle(double x, double y, double width, double height);
void character(int32_t code, double x, double y, int32_t font = 0, int32_t size = 12,
               int32_t rotation = 0);
void send(const std::string &bytes);
int32_t form(const literal::FormCall &call);
int32_t outline(const std::string &title, int32_t level);

// Length of the memory output, as qqpdf6 gives it.
int32_t memory_length();
// The status of qqpdf6 with room for `size` bytes; what came is in `bytes`, without the rest.
int32_t take_memory(int32_t size, std::string *bytes);
// All of the memory output; the test fails unless the statuses are right.
std::string memory_bytes();

// The 14 digits of each creation date masked; the test fails if there is no plausible date.
std::string mask_date(std::string document);

// Draws a document from its start to its end, in memory, and gives it with its date masked.
template <class Drawing>
std::string document_of(bool compress, Drawing drawing, int32_t width = 595, int32_t height = 842,
                        int32_t rotate = 0);

// For the template.
std::string finished_memory_document();

template <class Drawing>
std::string document_of(bool compress, Drawing drawing, int32_t width, int32_t height,
                        int32_t rotate) {
  if (begin_document(compress ? compressed_memory : plain_memory, width, height, rotate) != 0)
    return "not begun";
  drawing();
  draw(op_end);
  return finished_memory_document();
}

// Where two documents part, empty where they do not: for documents that are too long to be shown.
std::string difference(const std::string &got, const std::string &expected);

// What the first page of an uncompressed document holds after the lines that start it.
std::string first_content(const std::string &document);
template <class Drawing>
std::string content_of(Drawing drawing) {
  return first_content(document_of(false, drawing));
}

}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Calls of the PDF operations with less ado.
#include "tests/pdf/pdf_calls.h"

#include <gtest/gtest.h>

#include <cctype>
#include <vector>

namespace quorix::testing {

int32_t begin_document(int32_t mode, int32_t width, int32_t height, int32_t rotate,
                       const std::string &name) {
  int32_t word = rotate;
  EXPECT_EQ(qqpdf1(name.c_str(), width, height, mode, &word), 0);
  return word;
}

void draw(int32_t op, double x, double y) {
  EXPECT_EQ(qqpdf2(&x, &y, op), 0);
}

void colour(int32_t red, int32_t green, int32_t blue, int32_t fill) {
  EXPECT_EQ(qqpdf3(red, green, blue, fill), 0);
}

void rectangle(double x, double y, double width, double height) {
  EXPECT_EQ(qqpdf4(&x, &y, &width, &height), 0);
}

void character(int32_t code, double x, double y, int32_t font, int32_t size, int32_t rotation) {
  const double matrix[7] = {1, 0, 0, 1, x, y, 1};
  EXPECT_EQ(qqpdf5(code, matrix, rotation, font, size), 0);
}

void send(const std::string &bytes) {
  EXPECT_EQ(
      qqpdf7(reinterpret_cast<const uint8_t *>(bytes.data()), static_cast<int32_t>(bytes.size())),
      0);
}

int32_t form(const literal::FormCall &call) {
  const auto length = static_cast<int32_t>(call.data.size());
  int32_t status = no_status;
  EXPECT_EQ(qqpdf8(reinterpret_cast<const uint8_t *>(call.data.data()), &length, &call.box_x,
                   &call.box_y, &call.box_width, &call.box_height, &call.place_x, &call.place_y,
                   &call.target_width, &call.target_height, &call.compress, &call.rotate, &status),
            0);
  return status;
}

int32_t outline(const std::string &title, int32_t level) {
  int32_t status = no_status;
  EXPECT_EQ(qqpdf9(title.c_str(), &level, &status), 0);
  return status;
}

int32_t memory_length() {
  int32_t length = no_status;
  EXPECT_EQ(qqpdf6(nullptr, 0, &length), 0);
  return length;
}

int32_t take_memory(int32_t size, std::string *bytes) {
  std::vector<uint8_t> room(static_cast<size_t>(size > 0 ? size : 0) + 16, 0xA5);
  int32_t status = no_status;
  EXPECT_EQ(qqpdf6(room.data(), size, &status), 0);
  const size_t count = static_cast<size_t>(status > 0 ? status : 0);
  for (size_t i = count; i < room.size(); ++i)
    if (room[i] != 0xA5) ADD_FAILURE() << "byte " << i << " was written, status " << status;
  bytes->assign(room.begin(), room.begin() + static_cast<std::ptrdiff_t>(count));
  return status;
}

std::string memory_bytes() {
  const int32_t length = memory_length();
  EXPECT_GT(length, 0);
  std::string bytes;
  EXPECT_EQ(take_memory(length, &bytes), length);
  return bytes;
}

std::string mask_date(std::string document) {
  static const std::string key = "/CreationDate (D:";
  const size_t at = document.rfind(key);
  if (at == std::string::npos) {
    ADD_FAILURE() << "no date";
    return document;
  }
  for (size_t i = at + key.size(); i < at + key.size() + 14; ++i) {
    EXPECT_TRUE(std::isdigit(static_cast<unsigned char>(document.at(i)))) << i;
    document[i] = '#';
  }
  return document;
}

std::string finished_memory_document() {
  return mask_date(memory_bytes());
}

std::string difference(const std::string &got, const std::string &expected) {
  if (got == expected) return "";
  size_t at = 0;
  while (at < got.size() && at < expected.size() && got[at] == expected[at])
    ++at;
  const size_t from = at < 60 ? 0 : at - 60;
  return "at byte " + std::to_string(at) + "\n got " + got.substr(from, 160) + "\n expected " +
         expected.substr(from, 160);
}

std::string first_content(const std::string &document) {
  static const std::string start = "stream\n0.709 w\n2 J\n2 j\n";
  const size_t from = document.find(start);
  const size_t to = document.find("endstream\n");
  if (from == std::string::npos || to == std::string::npos) return "no first stream";
  return document.substr(from + start.size(), to - from - start.size());
}

}  // namespace quorix::testing

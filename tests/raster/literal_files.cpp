// SPDX-License-Identifier: MIT
// Literal raster: the raster's own file format, to and from a vector of bytes.

#include <algorithm>

#include "tests/raster/literal_raster.h"

namespace quorix::literal {

namespace {

constexpr size_t header_size = 80;

void append_text(std::vector<uint8_t> *file, const std::string &text) {
  for (const char character : text)
    file->push_back(static_cast<uint8_t>(character));
}

// Right-justified in 5 characters, of which a longer number keeps the leading ones.
std::string field_text(int32_t value) {
  std::string text = std::to_string(value);
  if (text.size() > 5) text = text.substr(0, 5);
  while (text.size() < 5)
    text = " " + text;
  return text;
}

void append_header(std::vector<uint8_t> *file, const std::vector<int32_t> &fields) {
  append_text(file, "!Bitmap QUORIX VIRT ");
  for (size_t i = 0; i < fields.size(); i++) {
    if (i > 0) append_text(file, " ");
    append_text(file, field_text(fields[i]));
  }
  append_text(file, "       ");
}

}  // namespace

int32_t write_file(LiteralRaster &raster, std::vector<uint8_t> *file, int32_t *status) {
  file->clear();
  *status = 1;
  if (!raster.exists) return 0;
  flush_polyline(raster);
  if (!raster.page_valid) return 0;
  *status = 0;
  const int32_t width = raster.width;
  const int32_t height = raster.height;
  if (raster.page_rgba) {
    append_header(file, {width, height, 24, width * 3, 24, 32, 0, 5, 0});
    for (int32_t y = 0; y < height; y++) {
      for (int32_t x = 0; x < width; x++) {
        const uint8_t *pixel = pixel_at(raster, x, y);
        file->push_back(pixel[0]);
        file->push_back(pixel[1]);
        file->push_back(pixel[2]);
      }
    }
  } else {
    append_header(file, {width, height, 8, width, 8, 32, 0, 1, 0});
    for (int32_t y = 0; y < height; y++) {
      for (int32_t x = 0; x < width; x++)
        file->push_back(pixel_at(raster, x, y)[0]);
    }
  }
  return 0;
}

namespace {

// The integer that stands as the token of that number, counted from 1, in a text of tokens
// separated by blanks and tabs.
int32_t int_token(const std::string &text, int number) {
  size_t at = 0;
  for (int token = 1;; token++) {
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t'))
      at++;
    if (token == number) break;
    while (at < text.size() && text[at] != ' ' && text[at] != '\t')
      at++;
    if (at == text.size()) return 0;
  }
  if (at == text.size()) return 0;
  bool negative = false;
  if (text[at] == '+' || text[at] == '-') {
    negative = text[at] == '-';
    at++;
  }
  uint32_t value = 0;
  for (; at < text.size(); at++) {
    const char character = text[at];
    if (character == ' ' || character == '\n' || character == '\t') break;
    if (character < '0' || character > '9') continue;
    value = value * 10 + static_cast<uint32_t>(character - '0');
  }
  if (negative) value = 0U - value;
  return static_cast<int32_t>(value);
}

struct Header {
  int32_t width;
  int32_t height;
  int32_t bytes_per_row;
  int32_t bits_stored;
  int32_t pixel_type;
  int32_t index_offset;
};

bool parse_header(const std::vector<uint8_t> &file, Header *header) {
  if (file.size() < header_size) return false;
  const std::string text(file.begin(), file.begin() + header_size);
  if (text.substr(0, 14) != "!Bitmap QUORIX") return false;
  std::string fields = text.substr(20);
  const size_t end = fields.find('\0');
  if (end != std::string::npos) fields = fields.substr(0, end);
  header->width = int_token(fields, 1);
  header->height = int_token(fields, 2);
  header->bytes_per_row = int_token(fields, 4);
  header->bits_stored = int_token(fields, 5);
  header->pixel_type = int_token(fields, 8);
  header->index_offset = int_token(fields, 9);
  if (header->bits_stored != 8 && header->bits_stored != 24 && header->bits_stored != 32) {
    return false;
  }
  return header->width >= 0 && header->height >= 0 && header->bytes_per_row > 0;
}

uint8_t convert_index(uint8_t byte, int32_t index_offset) {
  const int64_t v = int64_t{byte} - index_offset;
  if (v == 0) return 0;
  return low_byte(2 * v - 1);
}

// As much of a row as the file holds.
std::vector<uint8_t> file_row(const std::vector<uint8_t> &file, const Header &header, int32_t row) {
  const size_t stored = static_cast<size_t>(header.bytes_per_row);
  const size_t begin = header_size + static_cast<size_t>(row) * stored;
  std::vector<uint8_t> bytes;
  for (size_t i = begin; i < begin + stored && i < file.size(); i++)
    bytes.push_back(file[i]);
  if (header.bits_stored == 8 && header.pixel_type == 0) {
    for (uint8_t &byte : bytes)
      byte = convert_index(byte, header.index_offset);
  }
  return bytes;
}

std::vector<uint8_t> rgb_of_32_bits(const std::vector<uint8_t> &row, int32_t columns,
                                    int32_t pixel_type) {
  const size_t count = static_cast<size_t>(columns);
  std::vector<uint8_t> rgb(count * 3);
  for (size_t i = 0; i < count; i++) {
    if (pixel_type == 5 || pixel_type == 6) {
      rgb[3 * i] = row.at(4 * i);
      rgb[3 * i + 1] = row.at(4 * i + 1);
      rgb[3 * i + 2] = row.at(4 * i + 2);
    }
    if (pixel_type == 4 || pixel_type == 7) {
      rgb[3 * i] = row.at(4 * i + 2);
      rgb[3 * i + 1] = row.at(4 * i + 1);
      rgb[3 * i + 2] = row.at(4 * i);
    }
  }
  return rgb;
}

// A row of the raster's own depth, stored as it is: transparency does not count.
void store_row(LiteralRaster &raster, const Header &header, const std::vector<uint8_t> &row,
               int32_t y) {
  if (header.bits_stored == 8) {
    const int32_t count = std::min(header.bytes_per_row, static_cast<int32_t>(row.size()));
    for (int32_t x = 0; x < count; x++) {
      pixel_at(raster, x, y)[0] = row.at(static_cast<size_t>(x));
    }
    return;
  }
  const int32_t columns = std::min(header.width, raster.width);
  for (int32_t x = 0; x < columns; x++) {
    const size_t from = static_cast<size_t>(x) * 3;
    uint8_t *pixel = pixel_at(raster, x, y);
    pixel[0] = row.at(from);
    pixel[1] = row.at(from + 1);
    pixel[2] = row.at(from + 2);
    pixel[3] = raster.colour_alpha;
  }
}

void write_converted_row(LiteralRaster &raster, const Header &header,
                         const std::vector<uint8_t> &row, int32_t y) {
  const int32_t columns = std::min(header.width, raster.width);
  if (header.bits_stored == 32) {
    const std::vector<uint8_t> rgb = rgb_of_32_bits(row, columns, header.pixel_type);
    write_raster_row(raster, rgb.data(), 0, y, columns, true);
  } else {
    write_raster_row(raster, row.data(), 0, y, columns, header.bits_stored == 24);
  }
}

}  // namespace

int32_t read_file(LiteralRaster &raster, const std::vector<uint8_t> &file, int32_t *status) {
  *status = 1;
  if (!raster.exists) return 0;
  flush_polyline(raster);
  if (!raster.page_valid) return 0;
  *status = 0;
  Header header{};
  if (!parse_header(file, &header)) {
    *status = 3;
    return 0;
  }
  const bool own_depth = (header.bits_stored == 8 && !raster.page_rgba) ||
                         (header.bits_stored == 24 && raster.page_rgba);
  const bool stored_as_is = own_depth && raster.stride >= header.bytes_per_row;
  const bool exact_fit = header.bits_stored == 8 && !raster.page_rgba &&
                         header.bytes_per_row == raster.stride && header.height == raster.height;
  const int32_t rows = std::min(header.height, raster.height);
  const size_t columns = static_cast<size_t>(std::min(header.width, raster.width));
  const size_t bytes_per_pixel = static_cast<size_t>(header.bits_stored / 8);
  for (int32_t y = 0; y < rows; y++) {
    std::vector<uint8_t> row = file_row(file, header, y);
    if (row.empty()) return 0;
    // Where the file ends within a row, the rest counts as zeros, unless the file fits exactly and
    // goes straight into the raster.
    const size_t wanted = static_cast<size_t>(header.bytes_per_row);
    if (!exact_fit) row.resize(std::max(wanted, columns * bytes_per_pixel));
    if (stored_as_is) {
      store_row(raster, header, row, y);
    } else {
      write_converted_row(raster, header, row, y);
    }
  }
  return 0;
}

}  // namespace quorix::literal

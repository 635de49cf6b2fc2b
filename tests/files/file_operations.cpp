// SPDX-License-Identifier: MIT
#include "tests/files/file_operations.h"

#include <gtest/gtest.h>

#include <random>

#include "base/files.h"
#include "quorix/quorix.h"
#include "tests/formats/fits_file.h"
#include "tests/formats/made_font.h"

namespace quorix::testing {

namespace {

constexpr int32_t raster = 101, true_colours = -101;
constexpr int32_t little_endian = 1;
constexpr int32_t zero = 0, one = 1, colours = 256;

struct PageSize {
  int32_t width, height;
};

PageSize page_size = {};

std::vector<uint32_t> grey_palette() {
  std::vector<uint32_t> palette;
  for (uint32_t level = 0; level < 256; ++level)
    palette.push_back(level * 0x10101U);
  return palette;
}

const std::vector<uint32_t> palette = grey_palette();

// ---- writers

int32_t write_png_file(const std::string &file) {
  std::string name = file;
  int32_t status = 0;
  qqppng(name.data(), &true_colours, &little_endian, &page_size.width, &page_size.height,
         palette.data(), &colours, &status);
  return status;
}

int32_t write_gif_file(const std::string &file) {
  const uint8_t background = 0;
  const int32_t height = -page_size.height;
  int32_t status = 0;
  qqpgif(file.c_str(), &true_colours, &little_endian, &page_size.width, &height, palette.data(),
         nullptr, &background, &zero, &status);
  return status;
}

int32_t write_tiff_file(const std::string &file) {
  int32_t status = 0;
  qqptif(file.c_str(), &true_colours, &little_endian, &page_size.width, &page_size.height,
         palette.data(), &zero, &status);
  return status;
}

int32_t write_bmp_file(const std::string &file) {
  int32_t status = 0;
  qqpbmp(file.c_str(), &true_colours, &little_endian, &page_size.width, &page_size.height,
         palette.data(), &colours, &status);
  return status;
}

int32_t write_ppm_file(const std::string &file) {
  int32_t status = 0;
  qqpppm(file.c_str(), &raster, &page_size.width, &page_size.height, nullptr, &status);
  return status;
}

int32_t write_postscript_file(const std::string &file) {
  int32_t status = 0;
  qqpps(file.c_str(), &raster, &page_size.width, &page_size.height, &zero, &zero, &zero, &zero,
        &zero, &zero, &status);
  return status;
}

int32_t write_pdf_picture(const std::string &file) {
  int32_t status = 0;
  qqppdf(file.c_str(), &raster, &page_size.width, &page_size.height, &zero, &zero, &zero, &zero,
         &zero, &zero, &zero, &status);
  return status;
}

int32_t save_raster_file(const std::string &file) {
  int32_t status = 0;
  qqvfil(file.c_str(), 0, &status);
  return status;
}

// A window of the page's size, unless it is open already. It is never shown.
void open_window() {
  static PageSize opened = {};
  int32_t width = 0, height = 0, unused = 0, of_the_window = 1;
  qqwwsc(&width, &height, &unused, &of_the_window);
  if (width > 0 && opened.width == page_size.width && opened.height == page_size.height) return;
  opened = page_size;
  const int32_t computed_place = 2;
  const uint8_t colour_mode = 0;
  int32_t bits = 0, actual_width = 0, buffering = 3;  // hidden, and the height on return
  qqwini(72, &page_size.width, &page_size.height, &computed_place, &zero, &zero, &page_size.width,
         &page_size.height, &bits, &colour_mode, &actual_width, &buffering, &zero);
  EXPECT_GT(actual_width, 0);
}

int32_t save_window_file(const std::string &file) {
  int32_t status = 12345;
  open_window();
  qqwfil(file.c_str(), 0, &status);
  return status;
}

int32_t load_window_file(const std::string &file) {
  int32_t status = 12345;
  open_window();
  qqwfil(file.c_str(), 1, &status);
  return status;
}

// As large as the page, so that a disk which is too small for that is too small for this.
int32_t write_mesh(const std::string &file) {
  const double x[] = {0, 1, 1}, y[] = {0, 0, 1}, z[] = {2, 2, 2};
  const double r[] = {1, 0, 0}, g[] = {0, 1, 0}, b[] = {0, 0, 1};
  const int32_t corners = 3;
  int32_t status = 0;
  for (int32_t row = 0; row < page_size.height; ++row) {
    for (int32_t i = 0; i <= page_size.width / 20; ++i) {
      const double at[] = {x[0] + i, x[1] + i, x[2] + row};
      qqply1(at, y, z, r, g, b, &corners, &status);
      EXPECT_EQ(status, 0);
    }
  }
  qqply2(file.c_str(), "triangles", &zero, &status);
  return status;
}

int32_t write_document(const std::string &file) {
  int32_t status = 0;
  qqpdf1(file.c_str(), 595, 842, 0, &status);
  if (status != 0) return status;
  const double corner = 1.5;
  for (int32_t row = 0; row < page_size.height; ++row) {
    for (int32_t i = 0; i <= page_size.width / 10; ++i) {
      const double x = i, y = row;
      qqpdf2(&corner, &corner, 3);
      qqpdf2(&x, &y, 2);
    }
  }
  qqpdf2(&corner, &corner, 1);
  return status;
}

int32_t write_unit(const std::string &file) {
  const int32_t unit = 42;
  int32_t status = 0, ignored = 0;
  c_openfl(file.c_str(), &unit, &one, &status);
  if (status != 0) return status;
  const int32_t count = 3 * page_size.width;
  const std::vector<uint8_t> bytes(static_cast<size_t>(count), 'x');
  for (int32_t row = 0; row < page_size.height; ++row)
    c_writfl(&unit, bytes.data(), &count, &ignored);
  c_closfl(&unit, &ignored);
  EXPECT_EQ(ignored, 0);
  return status;
}

// ---- readers

void make_picture(int32_t (*write)(const std::string &file), const std::string &file) {
  show_noise(7, 5);
  EXPECT_EQ(write(file), 0);
}

template <int32_t (*Write)(const std::string &file)>
void make_by(const std::string &file) {
  make_picture(Write, file);
}

void make_of_bytes(const std::string &name, const std::vector<uint8_t> &bytes) {
  const OwnedFile file = open_file(name.c_str(), "wb");
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(write_file(file.get(), bytes.data(), bytes.size()), bytes.size());
}

void make_text(const std::string &file) {
  make_of_bytes(file, {'w', 'o', 'r', 'd', 's'});
}

void make_fits(const std::string &file) {
  FitsFile fits;
  fits.image(8, {2, 2}).end().data_blocks({1, 2, 3, 4});
  make_of_bytes(file, fits.bytes());
}

void make_font(const std::string &file) {
  make_of_bytes(file, font_with({}).bytes());
}

using ImageReader = int32_t (*)(const char *, const int32_t *, const void *, const int32_t *,
                                const int32_t *, const int32_t *, const int32_t *, int32_t *);

template <ImageReader Read>
int32_t read_held(const std::string &file) {
  int32_t status = 12345;
  Read(file.c_str(), &zero, nullptr, &zero, &zero, &zero, &zero, &status);
  const int32_t give_back = -1;
  qqpgrow(nullptr, &zero, &zero, &give_back);
  return status;
}

// Five values a pixel are not what a picture has, and that is another status than that of no file.
int32_t read_channels(const std::string &file) {
  constexpr int32_t unsupported = -11, refused = -3;
  int32_t status = 12345;
  qqpltif(file.c_str(), nullptr, &zero, &zero, &status);
  return status == unsupported || status == refused || status >= 0 ? 0 : status;
}

int32_t load_raster_file(const std::string &file) {
  int32_t status = 12345;
  qqvfil(file.c_str(), 1, &status);
  return status;
}

int32_t read_unit(const std::string &file) {
  const int32_t unit = 43;
  int32_t status = 12345, ignored = 0;
  c_openfl(file.c_str(), &unit, &zero, &status);
  if (status == 0) c_closfl(&unit, &ignored);
  return status;
}

int32_t read_fits(const std::string &file) {
  int32_t status = 12345, ignored = 0;
  qqfits1(file.c_str(), &status);
  qqfits2(&ignored);
  return status;
}

int32_t read_outlines(const std::string &file) {
  int32_t status = 12345;
  qqttf1(file.c_str(), 1, &status);
  qqttf3();
  return status;
}

}  // namespace

const std::vector<FileWriterCall> file_writers = {
    {"qqppng", "qqppng", -1, write_png_file},    {"qqpgif", "qqpgif", -1, write_gif_file},
    {"qqptif", "qqptif", -1, write_tiff_file},   {"qqpbmp", "qqpbmp", -1, write_bmp_file},
    {"qqpppm", "qqpppm", -1, write_ppm_file},    {"qqpps", "qqpps", -1, write_postscript_file},
    {"qqppdf", "qqppdf", -1, write_pdf_picture}, {"qqvfil", "qqvfil", 1, save_raster_file},
    {"qqwfil", "qqwfil", 1, save_window_file},   {"qqply2", "qqply2", 1, write_mesh},
    {"qqpdf2", "qqpdf1", -1, write_document},    {"c_writfl", "c_openfl", 1, write_unit},
};

const std::vector<FileReaderCall> file_readers = {
    {"qqpipng", -1, make_by<write_png_file>, read_held<qqpipng>},
    {"qqpigif", -1, make_by<write_gif_file>, read_held<qqpigif>},
    {"qqpitif", -1, make_by<write_tiff_file>, read_held<qqpitif>},
    {"qqpibmp", -1, make_by<write_bmp_file>, read_held<qqpibmp>},
    {"qqpltif", -1, make_by<write_tiff_file>, read_channels},
    {"qqvfil", 1, make_by<save_raster_file>, load_raster_file},
    {"qqwfil", 1, make_by<save_window_file>, load_window_file},
    {"c_openfl", 1, make_text, read_unit},
    {"qqfits1", -1, make_fits, read_fits},
    {"qqttf1", 1, make_font, read_outlines},
};

void show_noise(int32_t width, int32_t height) {
  page_size = {width, height};
  int32_t status = 0;
  qqvini(-width, height, &page_size.width, &page_size.height, 1, &status);
  ASSERT_EQ(status, 0);
  std::minstd_rand random(1);
  std::vector<uint8_t> row(3 * static_cast<size_t>(width));
  for (int32_t y = 0; y < height; ++y) {
    for (uint8_t &sample : row)
      sample = static_cast<uint8_t>(random() >> 8);
    qqvrow(row.data(), 0, y, -width);
  }
}

ToldFailure take_failure() {
  char operation[256] = "", reason[256] = "", file[256] = "";
  ToldFailure told = {};
  told.any = quorix_last_failure(operation, &told.step, &told.error, reason, file, 256) == 1;
  told.operation = operation;
  told.reason = reason;
  told.file = file;
  return told;
}

}  // namespace quorix::testing

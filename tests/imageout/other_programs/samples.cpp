// SPDX-License-Identifier: MIT
//
// Writes pictures of all forms into a folder, NAME.png, .ppm, .gif, .tif or .bmp, and beside each
// its pixels as bare triples in NAME.rgb, for programs that have nothing to do with this library to
// read.
//
//   imageout_samples FOLDER
#include <cstdio>
#include <string>

#include "quorix/imageout.h"
#include "tests/imageout/drawn_picture.h"

namespace {

using quorix::testing::DrawnPicture;

struct Form {
  const char *name;
  int32_t device;
  int32_t width_sign, height_sign;
};

// No form loses a colour: the pictures have at most 256.
constexpr Form forms[] = {{"true", -101, 1, 1},      {"true_trns", -101, -1, 1},
                          {"indexed", 101, 1, 1},    {"indexed_trns", 101, -1, 1},
                          {"quantised", 101, 1, -1}, {"quantised_trns", 101, -1, -1}};

bool write_triples(const std::string &name, const DrawnPicture &picture) {
  std::FILE *const file = std::fopen(name.c_str(), "wb");
  if (file == nullptr) return false;
  const size_t written = std::fwrite(picture.rgb.data(), 1, picture.rgb.size(), file);
  return std::fclose(file) == 0 && written == picture.rgb.size();
}

bool write_png(const std::string &base, const DrawnPicture &picture, const Form &form) {
  std::string name = base + ".png";
  const int32_t order = 1;
  const int32_t width = form.width_sign * picture.width;
  const int32_t height = form.height_sign * picture.height;
  const int32_t colours = 256;
  int32_t status = 1;
  qqppng(name.data(), &form.device, &order, &width, &height, picture.palette.data(), &colours,
         &status);
  return status == 0 && write_triples(base + ".rgb", picture);
}

bool write_ppm(const std::string &base, const DrawnPicture &picture) {
  const int32_t device = 101;
  int32_t status = 1;
  qqpppm((base + ".ppm").c_str(), &device, &picture.width, &picture.height, nullptr, &status);
  return status == 0 && write_triples(base + ".rgb", picture);
}

// Black and white by the rule that the form of a bilevel file has for this sign of the width.
DrawnPicture two_colours(const DrawnPicture &picture, int32_t width_sign) {
  DrawnPicture result = picture;
  for (size_t i = 0; i < result.rgb.size(); i += 3) {
    uint8_t *const rgb = &result.rgb[i];
    const int sum = rgb[0] + rgb[1] + rgb[2];
    const bool white = width_sign < 0 ? sum == 3 * 255 : sum != 0;
    rgb[0] = rgb[1] = rgb[2] = white ? 255 : 0;
  }
  return result;
}

bool write_gif(const std::string &base, const DrawnPicture &picture, int32_t sign) {
  const int32_t device = sign * 101;
  const int32_t order = 1;
  const int32_t height = sign * picture.height;
  const uint8_t background = 255;
  const int32_t transparent = sign < 0 ? 1 : 0;  // the colour keeps its samples
  int32_t status = 1;
  qqpgif((base + ".gif").c_str(), &device, &order, &picture.width, &height, picture.palette.data(),
         nullptr, &background, &transparent, &status);
  return status == 0 && write_triples(base + ".rgb", picture);
}

bool write_tiff(const std::string &base, const DrawnPicture &picture, const Form &form,
                int32_t bilevel) {
  const int32_t order = 1;
  const int32_t width = form.width_sign * picture.width;
  const int32_t height = form.height_sign * picture.height;
  int32_t resolution = 300;
  qqptif((base + ".tif").c_str(), &form.device, &order, &width, &height, picture.palette.data(),
         &bilevel, &resolution);
  if (resolution != 0) return false;
  if (bilevel == 0) return write_triples(base + ".rgb", picture);
  return write_triples(base + ".rgb", two_colours(picture, form.width_sign));
}

bool write_bmp(const std::string &base, const DrawnPicture &picture, const Form &form) {
  const int32_t order = 1;
  const int32_t height = form.height_sign * picture.height;
  const int32_t colours = 256;
  int32_t status = 1;
  qqpbmp((base + ".bmp").c_str(), &form.device, &order, &picture.width, &height,
         picture.palette.data(), &colours, &status);
  return status == 0 && write_triples(base + ".rgb", picture);
}

// The forms of the other formats, where the sign of the width chooses between black and white.
bool write_other_formats(const std::string &base, const DrawnPicture &picture) {
  bool done = write_gif(base + "gif_indexed", picture, 1);
  done = write_gif(base + "gif_quantised", picture, -1) && done;
  for (const Form &form : forms) {
    const std::string name = form.name;
    const int32_t bilevel = form.height_sign < 0 ? -1 : 0;
    if (bilevel != 0) {
      done = write_tiff(base + "tiff_bilevel_" + name, picture, form, bilevel) && done;
    }
    if (form.width_sign < 0) continue;
    done = write_tiff(base + "tiff_" + name, picture, form, 0) && done;
    done = write_bmp(base + "bmp_" + name, picture, form) && done;
  }
  return done;
}

bool write_all(const std::string &folder, int32_t width, int32_t height, bool rgba) {
  const DrawnPicture picture = quorix::testing::plot_picture(width, height, 1);
  quorix::testing::show_on_raster(picture, rgba);
  const std::string base = folder + "/" + (rgba ? "rgba_" : "palette_") + std::to_string(width) +
                           "x" + std::to_string(height) + "_";
  bool done = write_ppm(base + "ppm", picture);
  for (const Form &form : forms)
    done = write_png(base + form.name, picture, form) && done;
  done = write_other_formats(base, picture) && done;
  return done;
}

}  // namespace

int main(int count, char **arguments) {
  if (count != 2) return 2;
  constexpr int32_t sizes[][2] = {{1, 1}, {1, 7}, {7, 1}, {15, 15}, {16, 15}, {301, 301}};
  bool done = true;
  for (const auto &[width, height] : sizes)
    for (const bool rgba : {false, true})
      done = write_all(arguments[1], width, height, rgba) && done;
  return done ? 0 : 1;
}

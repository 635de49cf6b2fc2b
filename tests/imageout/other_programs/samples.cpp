// SPDX-License-Identifier: MIT
//
// Writes pictures of all forms into a folder, NAME.png or NAME.ppm, and beside each its pixels as
// bare triples in NAME.rgb, for programs that have nothing to do with this library to read.
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

bool write_all(const std::string &folder, int32_t width, int32_t height, bool rgba) {
  const DrawnPicture picture = quorix::testing::plot_picture(width, height, 1);
  quorix::testing::show_on_raster(picture, rgba);
  const std::string base = folder + "/" + (rgba ? "rgba_" : "palette_") + std::to_string(width) +
                           "x" + std::to_string(height) + "_";
  bool done = write_ppm(base + "ppm", picture);
  for (const Form &form : forms)
    done = write_png(base + form.name, picture, form) && done;
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

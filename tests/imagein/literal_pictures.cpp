// SPDX-License-Identifier: MIT
//
// Pictures as plain vectors; every formula pixel by pixel.
#include "tests/imagein/literal_pictures.h"

#include <cstdlib>

namespace quorix::literal {

namespace {

size_t area(int32_t width, int32_t height) {
  return static_cast<size_t>(width) * static_cast<size_t>(height);
}

// Where target number `index` of `target` stands between `source` values.
struct Step {
  int32_t first;
  double weight;  // of the value after `first`
};

Step step_of(int32_t index, int32_t source, int32_t target) {
  Step step = {0, 0.0};
  if (target != 1) {
    const double position = static_cast<double>(index) * (source - 1) / (target - 1);
    step.first = static_cast<int32_t>(position);
    step.weight = position - step.first;
  }
  if (step.first >= source - 1) {
    step.first = source - 2;
    step.weight = 1.0;
  }
  return step;
}

double value_at(const std::vector<uint8_t> &values, const Picture &picture, int32_t x, int32_t y,
                int32_t channels, int32_t channel) {
  if (x < 0) x = 0;  // before a single column, with weight 0
  if (y < 0) y = 0;
  const size_t pixel = area(picture.width, y) + static_cast<size_t>(x);
  return values[pixel * static_cast<size_t>(channels) + static_cast<size_t>(channel)];
}

uint8_t between(const std::vector<uint8_t> &values, const Picture &picture, Step column, Step row,
                int32_t channels, int32_t channel) {
  const auto at = [&](int32_t x, int32_t y) {
    return value_at(values, picture, x, y, channels, channel);
  };
  const double a = at(column.first, row.first);
  const double b = at(column.first + 1, row.first);
  const double c = at(column.first, row.first + 1);
  const double d = at(column.first + 1, row.first + 1);
  const double tx = column.weight;
  const double ty = row.weight;
  return static_cast<uint8_t>((1 - ty) * (1 - tx) * a + (1 - ty) * tx * b + (1 - tx) * ty * c +
                              ty * tx * d);
}

}  // namespace

Picture make_picture(int32_t width, int32_t height, bool has_alpha) {
  Picture picture;
  picture.width = width;
  picture.height = height;
  picture.rgb.assign(3 * area(width, height), 0);
  picture.has_alpha = has_alpha;
  if (has_alpha) picture.alpha.assign(area(width, height), 0);
  return picture;
}

void store_row(Picture &picture, const uint8_t *rgb, const uint8_t *alpha, int32_t x, int32_t y,
               int32_t count) {
  if (y < 0 || y >= picture.height || x < 0 || x >= picture.width) return;
  for (int32_t i = 0; i < count && x + i < picture.width; i++) {
    const size_t pixel = area(picture.width, y) + static_cast<size_t>(x + i);
    for (size_t channel = 0; channel < 3; channel++)
      picture.rgb[3 * pixel + channel] = rgb[3 * static_cast<size_t>(i) + channel];
    if (alpha != nullptr && picture.has_alpha) picture.alpha[pixel] = alpha[i];
  }
}

void show_row(LiteralRaster &page, uint8_t *rgb, const uint8_t *alpha, int32_t x, int32_t y,
              int32_t count, int32_t device_width, int32_t device_height) {
  if (y < 0 || y >= device_height || x >= device_width) return;
  if (x < 0) {
    count += x;
    rgb -= 3 * static_cast<int64_t>(x);
    if (alpha != nullptr) alpha -= x;
    x = 0;
  }
  if (count > device_width - x) count = device_width - x;
  if (count <= 0) return;
  if (alpha != nullptr) {
    std::vector<uint8_t> present(3 * static_cast<size_t>(count));
    qqvrdr(page, present.data(), x, y, -count, 1);
    for (size_t i = 0; i < present.size(); i++) {
      const double a = alpha[i / 3] / 255.0;
      rgb[i] = static_cast<uint8_t>(rgb[i] * a + (1 - a) * present[i] + 0.5);
    }
  }
  qqvrow(page, rgb, x, y, -count);
}

Picture crop(const Picture &picture, int32_t x, int32_t y, int32_t width, int32_t height) {
  Picture part = make_picture(width, height, picture.has_alpha && !picture.background_done);
  part.device_width = picture.device_width;
  part.device_height = picture.device_height;
  for (int32_t row = 0; row < height; row++) {
    const size_t start = area(picture.width, y + row) + static_cast<size_t>(x);
    store_row(part, picture.rgb.data() + 3 * start,
              part.has_alpha ? picture.alpha.data() + start : nullptr, 0, row, width);
  }
  return part;
}

Picture scale(const Picture &picture, int32_t width, int32_t height) {
  Picture scaled = make_picture(width, height, picture.has_alpha && !picture.background_done);
  scaled.device_width = picture.device_width;
  scaled.device_height = picture.device_height;
  for (int32_t j = 0; j < height; j++) {
    const Step row = step_of(j, picture.height, height);
    for (int32_t i = 0; i < width; i++) {
      const Step column = step_of(i, picture.width, width);
      const size_t pixel = area(width, j) + static_cast<size_t>(i);
      for (int32_t channel = 0; channel < 3; channel++)
        scaled.rgb[3 * pixel + static_cast<size_t>(channel)] =
            between(picture.rgb, picture, column, row, 3, channel);
      if (scaled.has_alpha)
        scaled.alpha[pixel] = between(picture.alpha, picture, column, row, 1, 0);
    }
  }
  return scaled;
}

void show_scaled(LiteralRaster &page, const Picture &picture, int32_t width, int32_t height,
                 int32_t x, int32_t y) {
  const bool same = width == picture.width && height == picture.height;
  Picture shown = same ? picture : scale(picture, width, height);
  // Rows keep the old length, so a narrower picture's run on into the next and past the last.
  const auto past = static_cast<size_t>(std::abs(picture.width - width));
  shown.rgb.resize(shown.rgb.size() + 3 * past, 0);
  shown.alpha.resize(shown.alpha.size() + past, 0);
  const bool blended = shown.has_alpha && !shown.background_done;
  for (int32_t row = 0; row < height; row++) {
    const size_t start = area(width, row);
    show_row(page, shown.rgb.data() + 3 * start, blended ? shown.alpha.data() + start : nullptr, x,
             y + row, picture.width, picture.device_width, picture.device_height);
  }
}

}  // namespace quorix::literal

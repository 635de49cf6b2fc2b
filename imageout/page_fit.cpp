// SPDX-License-Identifier: MIT
//
// Fits a picture to a page.
//
// Decision. Sizes of 0 give scales that are no numbers; they are written as 0.
#include "imageout/imageout.h"

namespace quorix {

namespace {

constexpr double default_width = 3900, default_height = 5600;  // internal units

double smaller(double a, double b) {
  return a < b ? a : b;
}

}  // namespace

PageFit fit_on_page(const PictureArea &area, const PageRequest &request) {
  const bool set = request.page_set == 1;
  const double page_width = set ? page_units(request.page_width) : default_width;
  const double page_height = set ? page_units(request.page_height) : default_height;
  const auto width = static_cast<double>(area.width), height = static_cast<double>(area.height);
  PageFit fit;
  fit.landscape = area.width > area.height;
  const double scale = fit.landscape ? smaller(page_height / width, page_width / height)
                                     : smaller(page_width / width, page_height / height);
  fit.page_width = page_width * points_per_unit;
  fit.page_height = page_height * points_per_unit;
  fit.drawn_width = width * scale * points_per_unit;
  fit.drawn_height = height * scale * points_per_unit;
  return fit;
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The drawing libraries that the raster is measured against, each behind the same few calls.
//
// A contender is a record of functions over a 1920x1080 page of 32-bit pixels; what a library does
// not offer is null. Every contender draws solid one-colour shapes without antialiasing unless the
// call says so.
#pragma once

#include <cstdint>
#include <vector>

struct Segment {
  int x0, y0, x1, y1;
};

struct Corner {
  double x, y;
};

enum class Join { miter, round };

struct Contender {
  const char *name;
  void (*open)();
  void (*line)(const Segment &segment);
  void (*smooth_line)(const Segment &segment);
  void (*wide_line)(const Corner *points, int count, int width, Join join);
  void (*polygon)(const Corner *points, int count);
  void (*rectangle)(int x, int y, int w, int h);
  void (*erase)();
};

inline constexpr int page_width = 1920;
inline constexpr int page_height = 1080;

const std::vector<Contender> &contenders();

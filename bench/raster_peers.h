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
  void (*colour)(uint8_t r, uint8_t g, uint8_t b) = nullptr;
  void (*line)(const Segment &segment) = nullptr;
  void (*stroke)(const Segment &segment) = nullptr;  // a line as a move and a draw
  void (*smooth_line)(const Segment &segment) = nullptr;
  void (*wide_line)(const Corner *points, int count, int width, Join join) = nullptr;
  void (*polygon)(const Corner *points, int count) = nullptr;
  void (*rectangle)(int x, int y, int w, int h) = nullptr;
  void (*erase)() = nullptr;
};

inline constexpr int page_width = 1920;
inline constexpr int page_height = 1080;

const std::vector<Contender> &contenders();

// The same work in loops without any library, bench/raster_plain.cpp. Its name makes it a peer.
Contender plain_contender();

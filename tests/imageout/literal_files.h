// SPDX-License-Identifier: MIT
//
// GIF, TIFF and BMP files put together step by step, byte by byte: what the writers are compared
// with, whole file by whole file.
#pragma once

#include <cstdint>

#include "tests/imageout/drawn_picture.h"

namespace quorix::testing {

// The pixels that a device gives for the rectangle to write.
struct KnownArea {
  int32_t width, height;
  Bytes indices;
  Bytes rgb;
};

KnownArea whole_area(const DrawnPicture &picture);

// Arguments of the three writers. The signs of width and height are what matters here; the size is
// that of the area.
struct WriterCall {
  int32_t device = 101;
  int32_t order = 1;
  int32_t width = 0;
  int32_t height = 0;
  const uint32_t *palette = nullptr;
  uint8_t background = 0;   // GIF
  int32_t transparent = 0;  // GIF
  int32_t form = 0;         // TIFF
  int32_t resolution = 0;   // TIFF
  int32_t colours = 256;    // BMP
};

Bytes literal_gif(const WriterCall &call, const KnownArea &area);
Bytes literal_tiff(const WriterCall &call, const KnownArea &area);
Bytes literal_bmp(const WriterCall &call, const KnownArea &area);

}  // namespace quorix::testing

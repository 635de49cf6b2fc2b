// SPDX-License-Identifier: MIT
//
// The image writers with plain arguments, and into memory.
#pragma once

#include <cstdint>
#include <string>

#include "tests/imageout/drawn_picture.h"
#include "tests/imageout/literal_files.h"
#include "tests/imageout/png_decoder.h"

namespace quorix::testing {

inline constexpr int32_t raster_number = 101;
inline constexpr int32_t window_number = 100;

// Arguments of qqppng, by default those of an indexed picture of the raster.
struct PngCall {
  int32_t device = raster_number;
  int32_t order = 1;
  int32_t width = 0;
  int32_t height = 0;
  const uint32_t *palette = nullptr;
  int32_t colours = 256;
};

// Each gives the status; `name` is a file.
int32_t write_png(const PngCall &call, const std::string &name);
int32_t write_ppm(const std::string &name, int32_t device, int32_t width, int32_t height);

int32_t write_gif(const WriterCall &call, const std::string &name);
int32_t write_tiff(const WriterCall &call, const std::string &name);
int32_t write_bmp(const WriterCall &call, const std::string &name);

// Memory mode: colours turned negative, `room` as the status on entry.
int32_t write_png_to_memory(const PngCall &call, Bytes *memory, int32_t room);

// What a call writes into a file; the test fails unless its status is 0.
using FileWriter = int32_t (*)(const WriterCall &call, const std::string &name);
Bytes file_bytes(FileWriter write, const WriterCall &call);
Bytes png_bytes(const PngCall &call);
Bytes ppm_bytes(int32_t device, int32_t width, int32_t height);

void set_clip(int32_t x, int32_t y, int32_t width, int32_t height);
void end_clip();

}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Each call starts with a status that no writer gives; bytes come from files in memory.
#include "tests/imageout/writer_calls.h"

#include <gtest/gtest.h>

#include "quorix/imageout.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {

namespace {

constexpr int32_t no_status = 12345;  // a status that was not set

int32_t call_png(const PngCall &call, char *target, int32_t colours, int32_t status) {
  EXPECT_EQ(qqppng(target, &call.device, &call.order, &call.width, &call.height, call.palette,
                   &colours, &status),
            0);
  return status;
}

}  // namespace

int32_t write_png(const PngCall &call, const std::string &name) {
  std::string target = name;
  return call_png(call, target.data(), call.colours, no_status);
}

int32_t write_ppm(const std::string &name, int32_t device, int32_t width, int32_t height) {
  int32_t status = no_status;
  EXPECT_EQ(qqpppm(name.c_str(), &device, &width, &height, nullptr, &status), 0);
  return status;
}

int32_t write_gif(const WriterCall &call, const std::string &name) {
  int32_t status = no_status;
  EXPECT_EQ(qqpgif(name.c_str(), &call.device, &call.order, &call.width, &call.height, call.palette,
                   nullptr, &call.background, &call.transparent, &status),
            0);
  return status;
}

int32_t write_tiff(const WriterCall &call, const std::string &name) {
  int32_t resolution = call.resolution;
  EXPECT_EQ(qqptif(name.c_str(), &call.device, &call.order, &call.width, &call.height, call.palette,
                   &call.form, &resolution),
            0);
  return resolution;
}

int32_t write_bmp(const WriterCall &call, const std::string &name) {
  int32_t status = no_status;
  EXPECT_EQ(qqpbmp(name.c_str(), &call.device, &call.order, &call.width, &call.height, call.palette,
                   &call.colours, &status),
            0);
  return status;
}

int32_t write_png_to_memory(const PngCall &call, Bytes *memory, int32_t room) {
  char *const target = memory == nullptr ? nullptr : reinterpret_cast<char *>(memory->data());
  return call_png(call, target, -call.colours, room);
}

Bytes file_bytes(FileWriter write, const WriterCall &call) {
  MemoryFiles files;
  EXPECT_EQ(write(call, "picture"), 0);
  EXPECT_EQ(files.open_files(), 0U);
  return files.bytes("picture");
}

Bytes png_bytes(const PngCall &call) {
  MemoryFiles files;
  EXPECT_EQ(write_png(call, "picture"), 0);
  EXPECT_EQ(files.open_files(), 0U);
  return files.bytes("picture");
}

Bytes ppm_bytes(int32_t device, int32_t width, int32_t height) {
  MemoryFiles files;
  EXPECT_EQ(write_ppm("picture", device, width, height), 0);
  EXPECT_EQ(files.open_files(), 0U);
  return files.bytes("picture");
}

void set_clip(int32_t x, int32_t y, int32_t width, int32_t height) {
  const int32_t enabled = 1;
  EXPECT_EQ(qqpclp(&x, &y, &width, &height, &enabled), 0);
}

void end_clip() {
  const int32_t zero = 0;
  EXPECT_EQ(qqpclp(&zero, &zero, &zero, &zero, &zero), 0);
}

}  // namespace quorix::testing

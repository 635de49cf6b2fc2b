// SPDX-License-Identifier: MIT
//
// The stream of qqppng byte by byte: chunks, words, palettes, memory mode.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "quorix/imageout.h"
#include "tests/imageout/writer_calls.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

constexpr size_t signature_bytes = 8;
constexpr size_t header_chunk_bytes = 12 + 13;

class PngStream : public ::testing::Test {
 protected:
  void SetUp() override {
    forget_everything();
    picture_ = plot_picture(23, 11, 1);
    show_on_raster(picture_, false);
  }
  void TearDown() override { forget_everything(); }

  PngCall true_colour() const { return {-raster_number, 1, 23, 11, words_.data(), 256}; }
  PngCall indexed() const { return {raster_number, 1, 23, 11, words_.data(), 256}; }
  PngCall quantised() const { return {raster_number, 1, 23, -11, words_.data(), 256}; }
  std::vector<PngCall> all_forms() const { return {true_colour(), indexed(), quantised()}; }

  DrawnPicture picture_;
  const PaletteWords words_ = make_palette(9);
};

PngCall with_transparency(PngCall call) {
  call.width = -call.width;
  return call;
}

PngCall with_colours(PngCall call, int32_t colours) {
  call.colours = colours;
  return call;
}

PngCall with_order(PngCall call, int32_t order) {
  call.order = order;
  return call;
}

std::string chunk_names(const PngCall &call) {
  std::string names;
  for (const PngChunk &chunk : decode_png(png_bytes(call)).chunks)
    names += chunk.type + " ";
  return names;
}

TEST_F(PngStream, HoldsTheChunksInTheirOrderAndNoOthers) {
  EXPECT_EQ(chunk_names(true_colour()), "IHDR IDAT IEND ");
  EXPECT_EQ(chunk_names(with_transparency(true_colour())), "IHDR tRNS IDAT IEND ");
  EXPECT_EQ(chunk_names(indexed()), "IHDR PLTE IDAT IEND ");
  EXPECT_EQ(chunk_names(with_transparency(indexed())), "IHDR PLTE tRNS IDAT IEND ");
  EXPECT_EQ(chunk_names(quantised()), "IHDR PLTE IDAT IEND ");
  EXPECT_EQ(chunk_names(with_transparency(quantised())), "IHDR PLTE tRNS IDAT IEND ");
}

TEST_F(PngStream, StartsEveryRowWithAZeroByte) {
  for (const PngCall &call : all_forms()) {
    const PngPicture decoded = decode_png(png_bytes(call));
    ASSERT_EQ(decoded.problem, "");
    const size_t row = decoded.filtered.size() / 11;
    EXPECT_EQ(row, call.device < 0 ? 70U : 24U);
    for (size_t y = 0; y < 11; ++y)
      EXPECT_EQ(decoded.filtered[y * row], 0);
  }
}

TEST_F(PngStream, MakesWhiteTransparentInTrueColourAndEntry0InAPalette) {
  EXPECT_EQ(decode_png(png_bytes(with_transparency(true_colour()))).transparency,
            (Bytes{0, 255, 0, 255, 0, 255}));
  EXPECT_EQ(decode_png(png_bytes(with_transparency(indexed()))).transparency, Bytes{0});
  EXPECT_EQ(decode_png(png_bytes(with_transparency(quantised()))).transparency, Bytes{0});
}

TEST_F(PngStream, HasAsManyPaletteEntriesAsTheCallAsksFor) {
  std::vector<uint32_t> many;
  for (uint32_t i = 0; i < 300; ++i)
    many.push_back(i << 16 | i << 8 | (300 - i));
  for (const int32_t colours : {0, 1, 2, 255, 256, 300}) {
    PngCall call = with_colours(indexed(), colours);
    call.palette = many.data();
    const Bytes palette = decode_png(png_bytes(call)).palette;
    ASSERT_EQ(palette.size(), 3U * static_cast<size_t>(colours));
    for (size_t i = 0; i < static_cast<size_t>(colours); ++i) {
      EXPECT_EQ(palette[3 * i], (many[i] >> 16) & 255);
      EXPECT_EQ(palette[3 * i + 1], (many[i] >> 8) & 255);
      EXPECT_EQ(palette[3 * i + 2], many[i] & 255);
    }
  }
}

TEST_F(PngStream, FillsAComputedPaletteUpWithZeroes) {
  DrawnPicture two_colours = plot_picture(6, 4, 1);
  two_colours.rgb.assign(72, 200);
  two_colours.rgb[0] = 10;
  show_on_raster(two_colours, true);
  for (const int32_t colours : {1, 2, 256, 300}) {
    const PngCall call = {raster_number, 1, 6, -4, nullptr, colours};
    Bytes expected(3 * static_cast<size_t>(colours), 0);
    for (size_t i = 0; i < std::min<size_t>(6, expected.size()); ++i)
      expected[i] = i == 0 ? 10 : 200;
    EXPECT_EQ(decode_png(png_bytes(call)).palette, expected) << colours;
  }
}

TEST_F(PngStream, HasNoPaletteInTrueColour) {
  PngCall call = true_colour();
  call.palette = nullptr;
  EXPECT_EQ(decode_png(png_bytes(call)).problem, "");
  EXPECT_EQ(png_bytes(call), png_bytes(with_colours(call, 7)));
}

// ---- sizes without pixels

TEST_F(PngStream, HoldsAnEmptyZlibStreamWhereThereAreNoPixels) {
  const Bytes nothing = {0x78, 0x9C, 0x03, 0x00, 0x00, 0x00, 0x00, 0x01};
  const int32_t sizes[][2] = {{0, 5}, {5, 0}, {-3, 4}, {4, -3}, {-3, -4}, {INT32_MIN, 2}};
  for (const auto &[width, height] : sizes) {
    set_clip(1, 1, width, height);
    for (const PngCall &call : all_forms()) {
      const PngPicture decoded = decode_png(png_bytes(call));
      EXPECT_EQ(decoded.width, static_cast<uint32_t>(width));
      EXPECT_EQ(decoded.height, static_cast<uint32_t>(height));
      ASSERT_GE(decoded.chunks.size(), 3U);
      EXPECT_EQ(decoded.chunks[decoded.chunks.size() - 2].type, "IDAT");
      EXPECT_EQ(decoded.chunks[decoded.chunks.size() - 2].data, nothing);
    }
  }
}

TEST_F(PngStream, HoldsAnEmptyZlibStreamForASizeOfZero) {
  PngCall call = true_colour();
  call.height = 0;
  EXPECT_EQ(decode_png(png_bytes(call)).filtered, Bytes());
  EXPECT_EQ(decode_png(png_bytes(call)).height, 0U);
  EXPECT_EQ(decode_png(png_bytes(call)).width, 23U);
}

// ---- the order of bytes

void turn_word(Bytes *stream, size_t at) {
  std::swap((*stream)[at], (*stream)[at + 3]);
  std::swap((*stream)[at + 1], (*stream)[at + 2]);
}

// The stream with all words the other way round, and the CRC of the bytes as they then stand.
Bytes turned(const Bytes &stream) {
  Bytes result = stream;
  for (size_t at = signature_bytes; at < stream.size();) {
    const size_t length = big_endian_word(&stream[at]);
    const std::string type(stream.begin() + static_cast<ptrdiff_t>(at + 4),
                           stream.begin() + static_cast<ptrdiff_t>(at + 8));
    turn_word(&result, at);
    if (type == "IHDR" || type == "IEND") turn_word(&result, at + 4);
    if (type == "IHDR") {
      turn_word(&result, at + 8);
      turn_word(&result, at + 12);
    }
    const uint32_t crc = literal_crc(&result[at + 4], 4 + length);
    for (size_t i = 0; i < 4; ++i)
      result[at + 8 + length + i] = static_cast<uint8_t>(crc >> 8 * i & 255);
    at += 12 + length;
  }
  return result;
}

TEST_F(PngStream, IsInTheOrderOfThisHostUnlessTheCallTurnsIt) {
  for (const PngCall &call : all_forms()) {
    const PngCall seen = with_transparency(call);
    const Bytes expected = turned(png_bytes(seen));
    for (const int32_t order : {0, 2, -1})
      EXPECT_EQ(png_bytes(with_order(seen, order)), expected);
  }
}

// ---- memory

TEST_F(PngStream, IsTheSameInMemoryAndTheDryRunGivesItsSize) {
  for (const PngCall &form : all_forms()) {
    for (const PngCall &call : {form, with_transparency(form)}) {
      const Bytes stream = png_bytes(call);
      const auto size = static_cast<int32_t>(stream.size());
      EXPECT_EQ(write_png_to_memory(call, nullptr, 0), size);
      Bytes memory(stream.size() + 100, 7);
      EXPECT_EQ(write_png_to_memory(call, &memory, size), size);
      EXPECT_TRUE(std::equal(stream.begin(), stream.end(), memory.begin()));
      EXPECT_EQ(std::count(memory.begin() + size, memory.end(), 7), 100);
      EXPECT_EQ(write_png_to_memory(call, &memory, size + 100), size);
      EXPECT_EQ(std::count(memory.begin() + size, memory.end(), 7), 100);
    }
  }
}

TEST_F(PngStream, GivesZeroWhereTheMemoryEndsAndWritesNothingBehindIt) {
  for (const PngCall &call : all_forms()) {
    const auto size = static_cast<int32_t>(png_bytes(with_transparency(call)).size());
    for (int32_t room = 1; room < size; ++room) {
      Bytes memory(static_cast<size_t>(size) + 50, 7);
      ASSERT_EQ(write_png_to_memory(with_transparency(call), &memory, room), 0) << room;
      ASSERT_EQ(std::count(memory.begin() + room, memory.end(), 7), size + 50 - room) << room;
    }
  }
}

TEST_F(PngStream, GivesZeroForANegativeRoom) {
  Bytes memory(5000, 7);
  for (const int32_t room : {-1, INT32_MIN})
    EXPECT_EQ(write_png_to_memory(indexed(), &memory, room), 0);
  EXPECT_EQ(memory, Bytes(5000, 7));
}

TEST_F(PngStream, StoresNothingInADryRun) {
  Bytes memory(5000, 7);
  EXPECT_GT(write_png_to_memory(indexed(), &memory, 0), 0);
  EXPECT_EQ(memory, Bytes(5000, 7));
}

TEST_F(PngStream, CountsTheEntriesOfAPaletteInMemoryByTheirAbsoluteValue) {
  const PngCall call = with_colours(indexed(), 17);
  const auto size = static_cast<int32_t>(png_bytes(call).size());
  EXPECT_EQ(write_png_to_memory(call, nullptr, 0), size);
}

// ---- files

TEST_F(PngStream, ReplacesAFileOnDisk) {
  const TemporaryFolder folder;
  const std::string name = folder.file("picture.png");
  write_whole_file(name, Bytes(100000, 1));
  EXPECT_EQ(write_png(indexed(), name), 0);
  EXPECT_EQ(read_whole_file(name), png_bytes(indexed()));
}

TEST_F(PngStream, SaysThatTheFileCannotBeOpened) {
  const TemporaryFolder folder;
  EXPECT_EQ(write_png(indexed(), folder.file("no/such/folder.png")), -1);
  EXPECT_EQ(write_png(indexed(), ""), -1);
  const PngCall call = indexed();
  int32_t status = 7;
  qqppng(nullptr, &call.device, &call.order, &call.width, &call.height, call.palette, &call.colours,
         &status);
  EXPECT_EQ(status, -1);
}

TEST_F(PngStream, StartsWithSignatureAndHeader) {
  const Bytes stream = png_bytes(indexed());
  // clang-format off
  const Bytes expected = {
      0x89, 'P', 'N', 'G', 13, 10, 26, 10,
      0, 0, 0, 13,  // bytes of the header
      'I', 'H', 'D', 'R',
      0, 0, 0, 23,  // width
      0, 0, 0, 11,  // height
      8, 3,         // bits, with a palette
      0, 0, 0,      // compression, filter, not interlaced
  };
  // clang-format on
  ASSERT_GE(stream.size(), signature_bytes + header_chunk_bytes);
  EXPECT_EQ(Bytes(stream.begin(), stream.begin() + static_cast<ptrdiff_t>(expected.size())),
            expected);
  // clang-format off
  const Bytes end = {
      0, 0, 0, 0,
      'I', 'E', 'N', 'D',
      0xAE, 0x42, 0x60, 0x82,
  };
  // clang-format on
  EXPECT_EQ(Bytes(stream.end() - 12, stream.end()), end);
}

}  // namespace
}  // namespace quorix::testing

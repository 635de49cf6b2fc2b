// SPDX-License-Identifier: MIT
//
// GIF files written by giflib, where the build has it.
#ifdef QUORIX_TEST_WITH_GIFLIB

#include <gif_lib.h>

#include "tests/imagein/gif_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {
namespace {

class GifFromGiflib : public ReaderTest {};

int take_bytes(GifFileType *gif, const GifByteType *bytes, int count) {
  auto *file = static_cast<Bytes *>(gif->UserData);
  file->insert(file->end(), bytes, bytes + count);
  return count;
}

ColorMapObject *colour_map(const Bytes &table) {
  if (table.empty()) return nullptr;
  ColorMapObject *map = GifMakeMapObject(static_cast<int>(table.size() / 3), nullptr);
  for (size_t i = 0; i < table.size() / 3; ++i)
    map->Colors[i] = {table[3 * i], table[3 * i + 1], table[3 * i + 2]};
  return map;
}

// The same parts as gif_of takes; giflib chooses the minimum code size.
Bytes gif_by_giflib(const GifFile &parts, const Bytes &indices, bool with_extensions) {
  Bytes file;
  int error = 0;
  GifFileType *gif = EGifOpen(&file, take_bytes, &error);
  ColorMapObject *global_map = colour_map(parts.global_table);
  ColorMapObject *local_map = colour_map(parts.local_table);
  EGifSetGifVersion(gif, true);
  EXPECT_EQ(EGifPutScreenDesc(gif, parts.screen_width, parts.screen_height, 8, 0, global_map),
            GIF_OK);
  if (with_extensions) {
    EXPECT_EQ(EGifPutComment(gif, "made for a test"), GIF_OK);
    const GraphicsControlBlock control = {DISPOSE_DO_NOT, false, 10, 1};
    GifByteType bytes[4];
    EXPECT_EQ(EGifGCBToExtension(&control, bytes), 4U);
    EXPECT_EQ(EGifPutExtension(gif, GRAPHICS_EXT_FUNC_CODE, 4, bytes), GIF_OK);
  }
  EXPECT_EQ(EGifPutImageDesc(gif, parts.left, parts.top, parts.width, parts.height,
                             parts.interlaced, local_map),
            GIF_OK);
  std::vector<int32_t> order = interlaced_rows(parts.height);
  for (int32_t i = 0; i < parts.height; ++i) {
    const int32_t y = parts.interlaced ? order[static_cast<size_t>(i)] : i;
    Bytes row(indices.begin() + y * std::ptrdiff_t{parts.width},
              indices.begin() + (y + 1) * std::ptrdiff_t{parts.width});
    EXPECT_EQ(EGifPutLine(gif, row.data(), parts.width), GIF_OK);
  }
  EXPECT_EQ(EGifCloseFile(gif, &error), GIF_OK);
  GifFreeMapObject(global_map);
  GifFreeMapObject(local_map);
  return file;
}

// Noise, and areas of one colour.
Bytes indices_of(int32_t width, int32_t height, uint32_t bits, uint32_t seed) {
  RandomNumbers random(seed);
  Bytes indices;
  uint32_t colour = 0;
  for (int32_t i = 0; i < width * height; ++i) {
    if (i % 200 < 100 || random.below(9) == 0) colour = random.below(1U << bits);
    put_u8(&indices, colour);
  }
  return indices;
}

void check_giflib(const GifFile &parts, uint32_t bits, bool with_extensions) {
  const Bytes indices = indices_of(parts.width, parts.height, bits, bits);
  check_reader(Format::gif, gif_by_giflib(parts, indices, with_extensions),
               expect_indices(parts, indices), std::to_string(bits) + " bits");
}

TEST_F(GifFromGiflib, IsReadInEveryForm) {
  for (uint32_t bits = 1; bits <= 8; ++bits) {
    GifFile parts;
    parts.screen_width = parts.width = 31;
    parts.screen_height = parts.height = 26;
    parts.global_table = random_bytes(size_t{3} << bits, bits);
    check_giflib(parts, bits, false);
    check_giflib(parts, bits, true);
    parts.interlaced = true;
    check_giflib(parts, bits, bits % 2 == 0);
    parts.local_table = random_bytes(size_t{3} << bits, bits + 10);
    check_giflib(parts, bits, true);
    parts.global_table.clear();
    check_giflib(parts, bits, false);
    parts.screen_width = 40;
    parts.screen_height = 33;
    parts.left = 7;
    parts.top = 5;
    check_giflib(parts, bits, true);
  }
}

TEST_F(GifFromGiflib, IsReadWithCodesOfEverySize) {
  GifFile parts;
  parts.screen_width = parts.width = 120;
  parts.screen_height = parts.height = 90;
  parts.global_table = random_bytes(768, 3);
  for (const bool interlaced : {false, true}) {
    parts.interlaced = interlaced;
    check_giflib(parts, 8, true);
  }
}

}  // namespace
}  // namespace quorix::testing

#endif

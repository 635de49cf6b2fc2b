// SPDX-License-Identifier: MIT
//
// Files cut at every byte and changed at random: each ends with a status that its reader has, and
// leaves nothing behind but a picture that was delivered.
#include <algorithm>

#include "base/memory.h"
#include "quorix/raster.h"
#include "tests/imagein/bmp_files.h"
#include "tests/imagein/expected_picture.h"
#include "tests/imagein/gif_files.h"
#include "tests/imagein/png_files.h"
#include "tests/imagein/random_picture.h"
#include "tests/imagein/seeds.h"
#include "tests/imagein/tiff_files.h"
#include "tests/imagein/twin_pages.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

// Sizes in damaged headers may be anything: a machine with little memory refuses large pictures.
constexpr size_t most_bytes = 1 << 22;
MemoryGate usual_gate;
void *allocate_little(size_t bytes) {
  return bytes > most_bytes ? nullptr : usual_gate.allocate(bytes);
}
void *allocate_little_zeroed(size_t bytes) {
  return bytes > most_bytes ? nullptr : usual_gate.allocate_zeroed(bytes);
}

class DamagedFiles : public ReaderTest {
 protected:
  void SetUp() override {
    ReaderTest::SetUp();
    usual_gate = memory_gate;
    memory_gate.allocate = allocate_little;
    memory_gate.allocate_zeroed = allocate_little_zeroed;
  }
  void TearDown() override {
    ReaderTest::TearDown();
    memory_gate = usual_gate;
  }
};

constexpr int32_t page_width = 8;
constexpr int32_t page_height = 6;

// Into memory, and onto the page with a border that must stay as it is. The file's name stands in
// the trace of the caller.
void check_damaged(Format format, const Bytes &file) {
  const FailingMemory memory;
  const Place inside = {1, 1, page_width - 1, page_height - 1};
  const int32_t stored = read_picture(format, file, store_number, inside);
  ASSERT_TRUE(is_known_status(format, stored)) << stored;
  ASSERT_EQ(memory.live_blocks() > 0, is_delivered(stored)) << stored;
  release_picture();
  const int32_t shown = read_picture(format, file, raster_number, inside);
  ASSERT_TRUE(is_known_status(format, shown)) << shown;
  ASSERT_EQ(memory.live_blocks(), 0U);
  // Memory is the one thing that may be short for the whole picture and not for its rows.
  if (stored != -2 && !(format == Format::gif && stored == -3)) {
    ASSERT_EQ(shown, stored);
  }
}

// The pixels of the border, all of which were 255.
void check_border() {
  Bytes row(3 * page_width);
  for (int32_t y = 0; y < page_height; ++y) {
    qqvrdr(row.data(), 0, y, -page_width, 1);
    const auto first = row.begin();
    const bool edge = y == 0 || y == page_height - 1;
    ASSERT_EQ(std::count(first, first + 3, 255), 3) << y;
    ASSERT_EQ(std::count(row.end() - 3, row.end(), 255), 3) << y;
    if (edge) {
      ASSERT_EQ(std::count(first, row.end(), 255), 3 * page_width) << y;
    }
  }
}

struct WhitePage {
  TwinPages pages{true, page_width, page_height};
  WhitePage() { qqvfll(0, 0, page_width - 1, page_height - 1, 0x01FFFFFF); }
};

void check_cuts(Format format) {
  const WhitePage page;
  for (const Seed &seed : seeds_of(format)) {
    for (size_t length = 0; length <= seed.file.size(); ++length) {
      SCOPED_TRACE(seed.name + ", cut to " + std::to_string(length));
      const auto end = seed.file.begin() + static_cast<std::ptrdiff_t>(length);
      check_damaged(format, Bytes(seed.file.begin(), end));
      if (::testing::Test::HasFailure()) return;
    }
  }
  check_border();
}

Bytes changed(const Bytes &file, uint32_t seed) {
  RandomNumbers random(seed);
  const uint8_t extremes[] = {0, 1, 0x7f, 0x80, 0xff};
  Bytes bytes = file;
  const uint32_t changes = 1 + random.below(4);
  for (uint32_t i = 0; i < changes && !bytes.empty(); ++i) {
    const size_t at = random.below(static_cast<uint32_t>(bytes.size()));
    const auto place = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    switch (random.below(6)) {
      case 0:
        bytes[at] = random.byte();
        break;
      case 1:
        bytes[at] ^= static_cast<uint8_t>(1U << random.below(8));
        break;
      case 2:
        bytes[at] = extremes[random.below(5)];
        break;
      case 3:
        bytes.erase(place);
        break;
      case 4:
        bytes.insert(place, random.byte());
        break;
      default:  // a whole number of four bytes
        for (size_t k = at; k < std::min(at + 4, bytes.size()); ++k)
          bytes[k] = extremes[(seed + k) % 5];
    }
  }
  return bytes;
}

void check_changes(Format format) {
  const WhitePage page;
  for (const Seed &seed : seeds_of(format)) {
    for (uint32_t number = 0; number < 1000; ++number) {
      SCOPED_TRACE(seed.name + ", change " + std::to_string(number));
      check_damaged(format, changed(seed.file, number));
      if (::testing::Test::HasFailure()) return;
    }
  }
  check_border();
}

TEST_F(DamagedFiles, OfBmpCutAnywhereEndWithAStatus) {
  check_cuts(Format::bmp);
}
TEST_F(DamagedFiles, OfGifCutAnywhereEndWithAStatus) {
  check_cuts(Format::gif);
}
TEST_F(DamagedFiles, OfPngCutAnywhereEndWithAStatus) {
  check_cuts(Format::png);
}
TEST_F(DamagedFiles, OfTiffCutAnywhereEndWithAStatus) {
  check_cuts(Format::tiff);
}
TEST_F(DamagedFiles, OfBmpChangedAnywhereEndWithAStatus) {
  check_changes(Format::bmp);
}
TEST_F(DamagedFiles, OfGifChangedAnywhereEndWithAStatus) {
  check_changes(Format::gif);
}
TEST_F(DamagedFiles, OfPngChangedAnywhereEndWithAStatus) {
  check_changes(Format::png);
}
TEST_F(DamagedFiles, OfTiffChangedAnywhereEndWithAStatus) {
  check_changes(Format::tiff);
}

TEST_F(DamagedFiles, OfGifCutAnywhereAreAFormatErrorAndShowTheirRows) {
  for (const Seed &seed : seeds_of(Format::gif)) {
    // Without the trailer the file is whole.
    for (size_t length = 0; length + 1 < seed.file.size(); ++length) {
      const auto end = seed.file.begin() + static_cast<std::ptrdiff_t>(length);
      const Bytes cut(seed.file.begin(), end);
      const ExpectedPicture expected = expect_gif(cut);
      ASSERT_EQ(expected.status, -3);
      check_reader(Format::gif, cut, expected, seed.name + " cut to " + std::to_string(length));
    }
  }
}

TEST_F(DamagedFiles, OfGifChangedAnywhereGiveWhatTheStepsGive) {
  for (const Seed &seed : seeds_of(Format::gif)) {
    for (uint32_t number = 0; number < 400; ++number) {
      const Bytes file = changed(seed.file, number + 5000);
      const ExpectedPicture expected = expect_gif(file);
      // A screen without pixels is no matter where nothing is held; a huge one is slow to look at.
      const int32_t pixels = expected.width * expected.height;
      if (pixels == 0 || pixels > 100000) continue;
      check_reader(Format::gif, file, expected, seed.name + ", change " + std::to_string(number));
    }
  }
}

// Counts far beyond the file.
std::vector<Seed> files_of_huge_counts(Format format) {
  constexpr uint32_t huge[] = {0x10000000U, 0x7fffffffU, 0x80000000U, 0xffffffffU};
  std::vector<Seed> files;
  for (const uint32_t count : huge) {
    if (format == Format::bmp) {
      BmpHeader header = {2, 2, 8};
      header.colours_used = count;
      files.push_back({"colours", bmp_file(header, bmp_colours(4, 1), {})});
    } else if (format == Format::png) {
      for (const char *type : {"PLTE", "tRNS", "IDAT", "bKGD", "none"}) {
        Bytes file = png_start(random_png(3, 8, 2, 2, 1));
        put_big(&file, count, 4);
        put_text(&file, type);
        files.push_back({type, file});
      }
    } else if (format == Format::tiff) {
      for (uint32_t tag : {tiff_bits, tiff_strip_offsets, tiff_strip_counts, tiff_colour_map,
                           tiff_tile_offsets, tiff_tile_counts, tiff_sample_format}) {
        Bytes file;
        put_text(&file, "II");
        put_little(&file, 42, 2);
        put_little(&file, 8, 4);
        put_little(&file, 3, 2);
        for (const uint32_t size_tag : {tiff_width, tiff_height}) {
          put_little(&file, size_tag, 2);
          put_little(&file, tiff_long, 2);
          put_little(&file, 1, 4);
          put_little(&file, 2, 4);
        }
        put_little(&file, tag, 2);
        put_little(&file, tiff_long, 2);
        put_little(&file, count, 4);
        put_little(&file, 8, 4);
        put_bytes(&file, Bytes(100, 1));
        files.push_back({"tag " + std::to_string(tag), file});
      }
    }
  }
  return files;
}

TEST_F(DamagedFiles, ThatTellOfHugeCountsAskForLittleMemory) {
  for (const Format format : {Format::bmp, Format::png, Format::tiff}) {
    for (const Seed &seed : files_of_huge_counts(format)) {
      const FailingMemory memory;
      const int32_t status = read_picture(format, seed.file, store_number);
      release_picture();
      EXPECT_TRUE(is_known_status(format, status)) << status;
      EXPECT_LT(memory.peak_bytes(), size_t{1} << 20) << name_of(format) << ", " << seed.name;
    }
  }
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Pictures shown where no pixel of them meets the device: nothing changes, whatever the numbers.
#include "tests/imagein/expected_picture.h"
#include "tests/imagein/seeds.h"
#include "tests/imagein/twin_pages.h"

namespace quorix::testing {
namespace {

class FarPlaces : public ReaderTest {};

constexpr int32_t size = 12;

void check_untouched(const Place &place) {
  for (const bool rgba : {false, true}) {
    const TwinPages pages(rgba, size, size);
    for (const Format format : all_formats) {
      for (const Seed &seed : seeds_of(format)) {
        EXPECT_TRUE(is_delivered(read_picture(format, seed.file, raster_number, place)));
        EXPECT_TRUE(nothing_is_held());
      }
    }
    EXPECT_TRUE(pages.alike()) << place.x << ", " << place.y << ", " << place.device_width << ", "
                               << place.device_height;
  }
}

TEST_F(FarPlaces, ShowNothing) {
  constexpr int32_t far[] = {INT32_MIN, INT32_MIN + 1, -1000000,      -7,
                             size,      1000000,       INT32_MAX - 1, INT32_MAX};
  for (const int32_t at : far) {
    check_untouched({at, 2, INT32_MAX, INT32_MAX});
    check_untouched({2, at, INT32_MAX, INT32_MAX});
    check_untouched({at, at, size, size});
  }
}

TEST_F(FarPlaces, AreAllPlacesOfADeviceWithoutASize) {
  for (const int32_t limit : {0, -1, INT32_MIN}) {
    check_untouched({-1, -1, limit, size});
    check_untouched({-1, -1, size, limit});
  }
}

TEST_F(FarPlaces, AreNoMatterForPicturesThatAreHeld) {
  for (const Format format : all_formats) {
    for (const Seed &seed : seeds_of(format)) {
      ASSERT_TRUE(is_delivered(read_picture(format, seed.file, store_number)));
      const Bytes row = picture_row(0, 1, 5);
      ASSERT_TRUE(is_delivered(
          read_picture(format, seed.file, store_number, {INT32_MIN, INT32_MAX, -1, INT32_MIN})));
      EXPECT_EQ(picture_row(0, 1, 5), row) << name_of(format) << ", " << seed.name;
      release_picture();
    }
  }
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Rows on their way into a held picture, and pictures of sizes that cannot be.
#include "imagein/imagein.h"
#include "tests/imagein/reader_calls.h"
#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

class RowSinks : public ReaderTest {};

TEST(Pictures, OfSizesThatCannotBeAskForNoMemory) {
  struct Case {
    int32_t width, height;
    size_t extra;
  };
  // Three bytes a pixel and a slack of 16: a third of all there is leaves no room for the slack.
  const Case cases[] = {{-1, 5, 0},          {5, -1, 0},       {INT32_MIN, INT32_MIN, 0},
                        {1, 1, SIZE_MAX},    {0, 0, SIZE_MAX}, {0, 0, SIZE_MAX / 3 + 1},
                        {0, 7, SIZE_MAX / 3}};
  for (const auto &[width, height, extra] : cases) {
    for (const bool alpha : {false, true}) {
      const FailingMemory memory;
      EXPECT_EQ(make_picture(width, height, alpha, extra), nullptr)
          << width << " by " << height << " and " << extra;
      EXPECT_EQ(memory.requests(), 0U);
    }
  }
}

TEST(Pictures, WithoutMemoryLeaveNothingBehind) {
  for (const bool alpha : {false, true}) {
    const size_t blocks = alpha ? 3 : 2;
    for (size_t n = 1; n <= blocks; ++n) {
      const FailingMemory memory(n);
      EXPECT_EQ(make_picture(4, 3, alpha), nullptr) << n;
      EXPECT_EQ(memory.live_blocks(), 0U);
    }
    const FailingMemory memory(blocks + 1);
    EXPECT_NE(make_picture(4, 3, alpha), nullptr);
    EXPECT_EQ(memory.live_blocks(), 0U);  // it went with its owner
  }
}

// A sink that holds a picture of 4 by 3 pixels.
RowSink open_held(bool alpha) {
  RowSink sink;
  EXPECT_EQ(open_sink(&sink, nullptr, {}), reader_done);
  EXPECT_TRUE(start_picture(&sink, {4, 3, alpha}));
  return sink;
}

// `count` pixels, from one with the components 1, 2 and 3 on.
Bytes counted(size_t count) {
  Bytes rgb;
  for (size_t i = 1; i <= 3 * count; ++i)
    rgb.push_back(static_cast<uint8_t>(i));
  return rgb;
}

TEST_F(RowSinks, CutRowsAtThePicturesRightEdge) {
  RowSink sink = open_held(false);
  Bytes rgb = counted(5);
  put_row(&sink, rgb.data(), nullptr, 2, 1, 5);
  EXPECT_EQ(picture_row(0, 0, 4), Bytes(12, 0));
  EXPECT_EQ(picture_row(0, 1, 4), (Bytes{0, 0, 0, 0, 0, 0, 1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(picture_row(0, 2, 4), Bytes(12, 0));
}

TEST_F(RowSinks, DropRowsThatLieOutsideThePictureWhateverTheNumbers) {
  RowSink sink = open_held(true);
  Bytes rgb = counted(3);
  const Bytes alpha(3, 9);
  const int64_t far = int64_t{1} << 40;
  const int64_t places[][3] = {
      {-3, 0, 3},        {4, 0, 3},         {0, -1, 3},        {0, 3, 3},
      {0, 0, 0},         {0, 0, -1},        {far, 0, 3},       {-far, 0, 3},
      {0, far, 3},       {0, -far, 3},      {INT64_MAX, 0, 3}, {INT64_MIN, 0, 3},
      {0, INT64_MAX, 3}, {0, INT64_MIN, 3}, {0, 0, INT64_MAX}, {0, 0, INT64_MIN}};
  for (const auto &[column, row, count] : places)
    put_row(&sink, rgb.data(), alpha.data(), column, row, count);
  for (int32_t y = 0; y < 3; ++y)
    EXPECT_EQ(picture_row(0, y, 4), Bytes(12, 0)) << y;
  EXPECT_EQ(Bytes(held_picture->alpha, held_picture->alpha + 12), Bytes(12, 0));
}

TEST_F(RowSinks, KeepAlphaOnlyOfRowsAndPicturesThatHaveIt) {
  RowSink plain = open_held(false);
  Bytes rgb = counted(4);
  const Bytes alpha = {10, 20, 30, 40};
  put_row(&plain, rgb.data(), alpha.data(), 0, 0, 4);
  EXPECT_EQ(held_picture->alpha, nullptr);
  EXPECT_EQ(picture_row(0, 0, 4), counted(4));  // and the colours are not blended
  RowSink blended = open_held(true);
  put_row(&blended, rgb.data(), alpha.data(), 0, 1, 4);
  put_row(&blended, rgb.data(), nullptr, 0, 2, 4);
  EXPECT_EQ(Bytes(held_picture->alpha, held_picture->alpha + 12),
            (Bytes{0, 0, 0, 0, 10, 20, 30, 40, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace quorix::testing

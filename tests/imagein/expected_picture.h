// SPDX-License-Identifier: MIT
//
// What a file must give, as the rows that its reader delivers, and the check of a reader against it
// in all that can be done with a file.
#pragma once

#include <string>
#include <vector>

#include "tests/imagein/literal_pictures.h"
#include "tests/imagein/reader_calls.h"

namespace quorix::testing {

struct DeliveredRow {
  int32_t x = 0;  // from the picture's left and top
  int32_t y = 0;
  Bytes rgb;
  Bytes alpha;  // empty: none
  // So many pixels at its left keep what showing the row before left there.
  size_t kept_pixels = 0;
};

struct ExpectedPicture {
  int32_t status = 0;
  int32_t width = 0;  // of the held picture
  int32_t height = 0;
  bool has_alpha = false;
  std::vector<DeliveredRow> rows;  // in their order
};

// Statuses with which a picture is delivered.
inline bool is_delivered(int32_t status) {
  return status == 0 || status == -5;
}

// A picture of rows from the top; alpha may be empty.
ExpectedPicture expect_rows(int32_t width, int32_t height, const Bytes &rgb,
                            const Bytes &alpha = {});
literal::Picture stored_picture(const ExpectedPicture &expected);

// The held picture is that one, in size and pixels. It is held afterwards too.
::testing::AssertionResult is_held(const literal::Picture &picture);
::testing::AssertionResult nothing_is_held();

// Reads the file into memory, looks at it, shows it; then shows it directly on pages of both
// modes, at places on and off the page and with limits of the device. Nothing may stay behind.
void check_reader(Format format, const Bytes &file, const ExpectedPicture &expected,
                  const std::string &what);

}  // namespace quorix::testing

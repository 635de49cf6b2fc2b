// SPDX-License-Identifier: MIT
//
// A page of the raster and one of the literal raster, opened alike, to be drawn on alike and
// compared.
#pragma once

#include <gtest/gtest.h>

#include "tests/raster/literal_raster.h"

namespace quorix::testing {

struct TwinPages {
  literal::LiteralRaster literal;

  // Opens both with a palette of 256 colours and a picture on them; pixels written from here on
  // have alpha 77 in RGBA mode.
  TwinPages(bool rgba, int32_t width, int32_t height);
  ~TwinPages();
  TwinPages(const TwinPages &) = delete;
  TwinPages &operator=(const TwinPages &) = delete;

  // Both have the same pixels.
  ::testing::AssertionResult alike() const;
};

}  // namespace quorix::testing

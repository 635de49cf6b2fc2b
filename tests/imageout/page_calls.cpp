// SPDX-License-Identifier: MIT
//
// Each call starts with a status that no writer gives.
#include "tests/imageout/page_calls.h"

#include <gtest/gtest.h>

#include "quorix/imageout.h"

namespace quorix::testing {

namespace {
constexpr int32_t no_status = 12345;  // a status that was not set
}

int32_t write_postscript(const PageCall &call, const std::string &name) {
  int32_t status = no_status;
  EXPECT_EQ(
      qqpps(name.c_str(), &call.device, &call.width, &call.height, &call.page_set, &call.page_width,
            &call.page_height, &call.margin_set, &call.margin_x, &call.margin_y, &status),
      0);
  return status;
}

int32_t write_one_page_pdf(const PageCall &call, const std::string &name) {
  int32_t status = no_status;
  EXPECT_EQ(qqppdf(name.c_str(), &call.device, &call.width, &call.height, &call.page_set,
                   &call.page_width, &call.page_height, &call.margin_set, &call.margin_x,
                   &call.margin_y, &call.flags, &status),
            0);
  return status;
}

}  // namespace quorix::testing

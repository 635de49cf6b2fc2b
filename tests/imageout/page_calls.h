// SPDX-License-Identifier: MIT
//
// qqpps and qqppdf with plain arguments.
#pragma once

#include <cstdint>
#include <string>

#include "tests/imageout/writer_calls.h"

namespace quorix::testing {

struct PageCall {
  int32_t device, width, height;
  int32_t page_set = 0, page_width = 0, page_height = 0;
  int32_t margin_set = 0, margin_x = 0, margin_y = 0;
  int32_t flags = 0;
};

// Each gives the status; `name` is a file.
int32_t write_postscript(const PageCall &call, const std::string &name);
int32_t write_one_page_pdf(const PageCall &call, const std::string &name);

}  // namespace quorix::testing

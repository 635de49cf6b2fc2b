// SPDX-License-Identifier: MIT
//
// A small file of each form that a reader knows, to be damaged.
#pragma once

#include <string>
#include <vector>

#include "tests/imagein/reader_calls.h"

namespace quorix::testing {

struct Seed {
  std::string name;
  Bytes file;
};

std::vector<Seed> seeds_of(Format format);

// Statuses that the reader of a format may give for any bytes.
bool is_known_status(Format format, int32_t status);

}  // namespace quorix::testing

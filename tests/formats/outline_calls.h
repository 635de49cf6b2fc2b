// SPDX-License-Identifier: MIT
//
// The operations on TrueType fonts with plain arguments.
#pragma once

#include <cstdint>
#include <string>

#include "tests/formats/literal_outline.h"

namespace quorix::testing {

// Whose numbers a status on entry declares the code to be.
enum class CodeOf : int32_t { library = 0, unicode = 1 };

int32_t open_font(const std::string &name, uint8_t swap_bytes = 1);  // the status

struct Counted {
  int32_t points, contours, status;
};
// The counting call; the test fails if it stores anything.
Counted count_outline(int32_t code, int32_t size, CodeOf code_of = CodeOf::unicode);

// The counting call and the real one in arrays of just that size; the test fails if the two do not
// agree, or what came back does not fit together.
Polygons outline(int32_t code, int32_t size, CodeOf code_of = CodeOf::unicode);

// The real call with this much room, in arrays of just that size.
Counted outline_with_room(int32_t code, int32_t size, int32_t room, int32_t contours,
                          CodeOf code_of = CodeOf::unicode);

// The test fails unless both are the same up to the last digits.
void expect_same(const Polygons &polygons, const Polygons &expected);

}  // namespace quorix::testing

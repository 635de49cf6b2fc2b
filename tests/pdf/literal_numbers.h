// SPDX-License-Identifier: MIT
//
// Numbers as they stand in PDF and PostScript, digit by digit with fmod and floor: slow, and what
// the texts of documents are compared with.
#pragma once

#include <cstdint>
#include <string>

namespace quorix::literal {

// `digits` after the point, rounded half up in its size; blanks in front up to `width`. A number
// that is not finite reads as zero, and with width 0 a zero has no sign.
std::string real(double value, int32_t digits, int32_t width = 0);

// The smallest integer has no digits and reads "-".
std::string integer(int32_t value);

// Truncation towards zero, held within 32 bits; not a number gives 0.
int32_t truncated(double value);

}  // namespace quorix::literal

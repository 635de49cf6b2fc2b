// SPDX-License-Identifier: MIT
//
// Numbers at the start of a text, as atoi and atof read them, but in every locale alike.
//
// White space is skipped, a sign may lead, and reading stops at the first character that does not
// fit; where nothing fits the number is 0.
#pragma once

#include <cstdint>

namespace quorix {

// What is out of range gives the nearest end of the range.
int32_t leading_int(const char *text);

// Decimal, with "e" or "E" before an exponent, or "inf" or "nan" in any case. Too large a number is
// infinite, too small a one 0.
double leading_real(const char *text);

}  // namespace quorix

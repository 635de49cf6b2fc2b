// SPDX-License-Identifier: MIT
//
// Where the smallest, the middle and the largest of three values stand.
#pragma once

#include <cstdint>

namespace quorix {

void sort3_int(const int32_t *values, int32_t *first, int32_t *second, int32_t *third);
void sort3_double(const double *values, int32_t *first, int32_t *second, int32_t *third);

}  // namespace quorix

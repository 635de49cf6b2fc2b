// SPDX-License-Identifier: MIT
//
// The index sort, step by step and without any thought of speed: quicksort of the ranges longer
// than twelve, the first element to the front, straight insertion.
#pragma once

#include <cstdint>

namespace quorix::literal {

// What qqssrt does. NaN keys stand neither before nor after any other.
void index_sort(const double *keys, int32_t *index, int32_t n);

}  // namespace quorix::literal

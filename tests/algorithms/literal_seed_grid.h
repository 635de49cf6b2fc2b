// SPDX-License-Identifier: MIT
//
// The seed grid, step by step, with the operations under their own names: a list of points for each
// cell, a queue of lines, and the walk over the block of cells around a candidate. Memory never
// runs out.
#pragma once

#include <cstdint>

namespace quorix::literal {

int32_t qqseed1(const double *xmin, const double *xmax, const double *ymin, const double *ymax,
                const double *zmin, const double *zmax, const double *cell_size,
                const int32_t *ndim, const int32_t *mode, int32_t *status);
int32_t qqseed2(double *x, double *y, double *z, int32_t *n1, int32_t *n2, int32_t *status);
int32_t qqseed3(const double *x, const double *y, const double *z, const double *factor,
                int32_t *rejected);
int32_t qqseed4(const double *x, const double *y, const double *z, const int32_t *n1,
                const int32_t *n2, const int32_t *flag, int32_t *status);

}  // namespace quorix::literal

// SPDX-License-Identifier: MIT
//
// The polygon store, step by step, with the operations under their own names. Growing only shows
// in what it costs, so there is none here; memory never runs out.
#pragma once

#include <cstdint>

namespace quorix::literal {

int32_t qqsini(int32_t mode, int32_t capacity, int32_t *io);
int32_t qqsput2(const double *x, const double *y, int32_t nv, const double *key, int32_t attribute1,
                int32_t attribute2, int32_t *status);
int32_t qqsput(const double *x, const double *y, const double *key, int32_t attribute1,
               int32_t *io);
int32_t qqsget2(double *x, double *y, int32_t position, int32_t *attribute1, int32_t *attribute2,
                int32_t *nv);
int32_t qqsget(double *x, double *y, int32_t position, int32_t *attribute1, int32_t *nv);

}  // namespace quorix::literal

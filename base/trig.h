// SPDX-License-Identifier: MIT
//
// Sine, cosine and arc tangent whose results have the same bits on every build.
//
// C libraries agree on these three only up to the last bit, and one bit can move a pixel that sits
// on a rounding edge. The geometry of lines calls the functions below instead. They use additions,
// multiplications and divisions of doubles alone, each correctly rounded by IEEE arithmetic, so
// nothing depends on a library, provided the compiler neither fuses nor reorders operations
// (-ffp-contract=off, no -ffast-math) and the rounding mode is the usual one.
//
// Accuracy: an error below 0.5001 units in the last place, so nearly every result is the double
// nearest to the exact value. No state, no tables built at run time.
#pragma once

namespace quorix {

// Sine and cosine of an angle in radians. Beyond 100,000 the angle is first reduced by whole turns
// of the double nearest to 2 pi, which costs accuracy but stays defined. NaN and the infinities
// give NaN; the sine of -0.0 is -0.0.
double portable_sin(double x);
double portable_cos(double x);

// Angle of the point (x, y), -pi to pi. Zeros and infinities follow the C library: the sign of y is
// the sign of the result, a zero y gives 0 for positive x (and +0.0) and pi for negative x (and
// -0.0), infinities act as points on an axis or a diagonal. A NaN gives NaN.
double portable_atan2(double y, double x);

}  // namespace quorix

// SPDX-License-Identifier: MIT
// The two things a drawing can be run on.

#pragma once

#include "tests/raster/literal_raster.h"
#include "tests/raster/random_drawings.h"

namespace quorix::drawings {

// The exported operations of the library.
const DrawingTarget &library_target();

// The literal raster, on a record of its own.
const DrawingTarget &literal_target();
const literal::LiteralRaster &literal_record();

}  // namespace quorix::drawings

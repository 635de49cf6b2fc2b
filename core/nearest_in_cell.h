// SPDX-License-Identifier: MIT
//
// The nearest palette entry by cells of colour space.
//
// Space is cut into cells of 8 by 8 by 8 colours. A cell keeps the few entries that can be nearest
// to any colour in it: all whose least distance to the cell does not exceed the smallest of the
// greatest distances. A search among these finds what a search of the whole table does.
#pragma once

#include <cstdint>

#include "core/output_context.h"

namespace quorix {

// As nearest_colour. Cells are filled when they are first asked for, until the palette changes.
int32_t nearest_in_cell(const OutputContext *context, uint8_t r, uint8_t g, uint8_t b);

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The pictures that writers and quantiser are measured on.
#pragma once

#include <cstdint>
#include <vector>

// Opens a raster and draws a plot on white: grid, antialiased and wide curves, markers, a field of
// cells in a colour scale. The same plot in every size; page_w as in qqvini.
void draw_plot(int32_t page_w, int32_t width, int32_t height);

// The same as RGB triples.
std::vector<uint8_t> plot_triples(int32_t width, int32_t height);

// Hills, a sky and grain as a photograph has them, as RGB triples. `contrast` 1 spreads them over
// all colours; a small one gives many colours that are near to each other.
std::vector<uint8_t> photo_triples(int32_t width, int32_t height, double contrast);

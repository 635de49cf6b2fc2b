// SPDX-License-Identifier: MIT
// What a drawing is made with: the calls so far, what is known of the page, and the choices that
// all kinds of calls share.

#pragma once

#include "tests/raster/random_drawings.h"

namespace quorix::drawings {

struct Sketch {
  Random random{0};
  std::vector<Call> calls;
  int32_t width = 16;
  int32_t height = 16;
  bool huge = false;  // coordinates up to the ends of the range; no antialiasing then
  int32_t recent_x = 0;
  int32_t recent_y = 0;
  int32_t transparent = -1;
};

void add(Sketch &sketch, Operation operation, std::array<int32_t, 6> args = {});
void set_option(Sketch &sketch, int32_t option, int32_t value);
int32_t any_number(Random &random);

// A coordinate on an axis of that extent: mostly on the page or just beside it.
int32_t coordinate(Sketch &sketch, int32_t extent);
// A point; now and then one with a coordinate of the point before, or the same point.
void new_point(Sketch &sketch, int32_t *x, int32_t *y);
// A colour argument; often the transparent one, where there is one.
int32_t colour(Sketch &sketch);

void open_page(Sketch &sketch);
void load_palette(Sketch &sketch);
void set_clip_rectangle(Sketch &sketch);
void set_pen(Sketch &sketch);
void set_any_option(Sketch &sketch);

}  // namespace quorix::drawings

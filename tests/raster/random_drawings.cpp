// SPDX-License-Identifier: MIT
// From a number to a sequence of calls. A sketch of the state (page size, what may be set) steers
// the choices, so that most of what is drawn meets the page and no drawing takes long.

#include "tests/raster/random_drawings.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "tests/raster/drawing_sketch.h"

namespace quorix::drawings {

namespace {

// --- Drawing ---

void draw_line(Sketch &sketch) {
  int32_t x1 = 0;
  int32_t y1 = 0;
  int32_t x2 = 0;
  int32_t y2 = 0;
  new_point(sketch, &x1, &y1);
  new_point(sketch, &x2, &y2);
  add(sketch, Operation::vlin, {x1, y1, x2, y2});
}

void move_or_draw(Sketch &sketch, int32_t code) {
  int32_t x = 0;
  int32_t y = 0;
  new_point(sketch, &x, &y);
  add(sketch, Operation::vdrw, {x, y, code});
}

void draw_polyline(Sketch &sketch) {
  Random &random = sketch.random;
  if (!one_in(random, 8)) move_or_draw(sketch, one_in(random, 8) ? any_number(random) : 3);
  const int32_t start_x = sketch.recent_x;
  const int32_t start_y = sketch.recent_y;
  int32_t count = between(random, 1, 6);
  if (one_in(random, 24)) count = between(random, 90, 230);
  for (int32_t i = 0; i < count; i++)
    move_or_draw(sketch, 2);
  if (one_in(random, 3)) add(sketch, Operation::vdrw, {start_x, start_y, 2});
}

void draw_dot(Sketch &sketch) {
  move_or_draw(sketch, 3);
  add(sketch, Operation::vdrw, {sketch.recent_x, sketch.recent_y, 2});
}

void fill_rectangle(Sketch &sketch) {
  int32_t x1 = 0;
  int32_t y1 = 0;
  int32_t x2 = 0;
  int32_t y2 = 0;
  new_point(sketch, &x1, &y1);
  new_point(sketch, &x2, &y2);
  if (x1 > x2 && !one_in(sketch.random, 6)) std::swap(x1, x2);
  if (y1 > y2 && !one_in(sketch.random, 6)) std::swap(y1, y2);
  add(sketch, Operation::vfll, {x1, y1, x2, y2, colour(sketch)});
}

double strange_number(Random &random) {
  static const double strange[] = {std::numeric_limits<double>::quiet_NaN(),
                                   std::numeric_limits<double>::infinity(),
                                   -std::numeric_limits<double>::infinity(),
                                   1e300,
                                   -1e300,
                                   4e9,
                                   -4e9,
                                   1e-300};
  return strange[below(random, 8)];
}

double corner_coordinate(Sketch &sketch, int32_t extent, int32_t style) {
  Random &random = sketch.random;
  const double whole = coordinate(sketch, extent);
  switch (style) {
    case 0:
      return whole;
    case 1:
      return whole + 0.25 * between(random, 0, 3);
    case 2:
      return whole + 0.001 * between(random, -10, 10);
    default:
      return whole + static_cast<double>(next_number(random) >> 11) * 0x1p-53;
  }
}

void draw_polygon(Sketch &sketch) {
  Random &random = sketch.random;
  Call call;
  call.operation = Operation::vpol;
  int32_t n = one_in(random, 4) ? between(random, 5, 20) : between(random, 3, 4);
  if (one_in(random, 20)) n = between(random, 0, 2);
  if (one_in(random, 40)) n = between(random, 60, 90);
  if (!sketch.huge && one_in(random, 40)) n = between(random, 100, 260);
  const int32_t style = below(random, 4);
  for (int32_t i = 0; i < n; i++) {
    call.xs.push_back(corner_coordinate(sketch, sketch.width, style));
    call.ys.push_back(corner_coordinate(sketch, sketch.height, style));
  }
  if (n >= 100 && one_in(random, 2)) {  // a comb, which crosses many rows at every edge
    for (size_t i = 0; i < call.ys.size(); i++)
      call.ys[i] = i % 2 == 0 ? 1.0 : sketch.height;
  }
  if (n > 0 && one_in(random, 8)) {
    const size_t at = static_cast<size_t>(below(random, n));
    (one_in(random, 2) ? call.xs : call.ys)[at] = strange_number(random);
  }
  call.args[0] = one_in(random, 100) ? -1 : n;
  sketch.calls.push_back(call);
}

void draw_symbol(Sketch &sketch) {
  Random &random = sketch.random;
  int32_t x = 0;
  int32_t y = 0;
  new_point(sketch, &x, &y);
  int32_t size = between(random, 2, 24);
  if (one_in(random, 8)) size = between(random, -6, 4);
  if (one_in(random, 32)) size = between(random, 25, 400);
  // Half of the range, so that no corner of a symbol leaves it.
  add(sketch, Operation::vsym, {between(random, -1, 24), x / 2 + x % 2, y / 2 + y % 2, size});
}

void draw_triangle(Sketch &sketch) {
  Random &random = sketch.random;
  int32_t x[3];
  int32_t y[3];
  const bool huge = sketch.huge;
  for (int i = 0; i < 3; i++) {
    new_point(sketch, &x[i], &y[i]);
    // Triangles are stepped row by row from their first one.
    sketch.huge = false;
    y[i] = one_in(random, 4) && i > 0 ? y[i - 1] : coordinate(sketch, sketch.height);
    sketch.huge = huge;
  }
  if (one_in(random, 16)) x[1] = x[2] = x[0];
  if (one_in(random, 16)) y[1] = y[2] = y[0];
  Call call;
  call.operation = Operation::vftr;
  call.args = {x[0], y[0], x[1], y[1], x[2], y[2]};
  call.words.push_back(static_cast<uint32_t>(colour(sketch)));
  sketch.calls.push_back(call);
}

// --- Pixels and files ---

void write_pixel(Sketch &sketch) {
  int32_t x = 0;
  int32_t y = 0;
  new_point(sketch, &x, &y);
  const Operation operation = one_in(sketch.random, 2) ? Operation::vpix : Operation::vwpx;
  add(sketch, operation, {x, y, colour(sketch)});
}

void random_bytes(Random &random, size_t count, std::vector<uint8_t> *bytes) {
  // Either all values, or few, which then often are the transparent ones.
  const uint64_t mask = one_in(random, 2) ? 255 : 3;
  for (size_t i = 0; i < count; i++) {
    bytes->push_back(static_cast<uint8_t>((next_number(random) >> 32) & mask));
  }
}

void write_row(Sketch &sketch) {
  Random &random = sketch.random;
  Call call;
  call.operation = Operation::vrow;
  int32_t x = 0;
  int32_t y = 0;
  new_point(sketch, &x, &y);
  int32_t n = between(random, 0, sketch.width + 8);
  if (one_in(random, 3)) {
    x = 0;
    n = sketch.width;
  }
  const bool rgb = one_in(random, 2);
  random_bytes(random, static_cast<size_t>(rgb ? 3 * n : n), &call.bytes);
  call.args = {x, y, rgb ? -n : n};
  sketch.calls.push_back(call);
}

void read_pixel(Sketch &sketch) {
  int32_t x = 0;
  int32_t y = 0;
  new_point(sketch, &x, &y);
  add(sketch, Operation::vrpx, {x, y});
}

void read_rectangle(Sketch &sketch) {
  Random &random = sketch.random;
  int32_t x = 0;
  int32_t y = 0;
  new_point(sketch, &x, &y);
  int32_t n = between(random, 0, 12);
  int32_t rows = between(random, 0, 8);
  if (one_in(random, 6)) {
    x = 0;
    y = 0;
    n = sketch.width;
    rows = sketch.height;
  }
  if (one_in(random, 2)) n = -n;
  if (one_in(random, 2)) rows = -rows;
  add(sketch, Operation::vrdr, {x, y, n, rows});
}

std::string header_of(const std::array<int32_t, 9> &fields) {
  std::string text = "!Bitmap QUORIX WIN  ";
  for (size_t i = 0; i < fields.size(); i++) {
    char field[16];
    std::snprintf(field, sizeof(field), i == 0 ? "%5d" : " %5d", static_cast<int>(fields[i]));
    text += field;
  }
  text.resize(80, ' ');
  return text;
}

void damage_file(Random &random, std::vector<uint8_t> *file) {
  switch (below(random, 4)) {
    case 0:  // an end at any byte of the pixels
      file->resize(80 +
                   static_cast<size_t>(below(random, static_cast<int32_t>(file->size()) - 79)));
      return;
    case 1:  // a digit becomes a letter or another digit
      (*file)[20 + static_cast<size_t>(below(random, 53))] = one_in(random, 2) ? 'x' : '7';
      return;
    case 2:  // a sign before the width
      (*file)[20] = one_in(random, 2) ? '-' : '+';
      return;
    default:
      (*file)[static_cast<size_t>(below(random, 14))] ^= 1;
      return;
  }
}

// A file of another device or an older one, larger or smaller than the page.
void read_foreign_file(Sketch &sketch) {
  Random &random = sketch.random;
  static const int32_t depths[] = {8, 8, 8, 24, 24, 32, 32, 16};
  const int32_t bits = depths[below(random, 8)];
  int32_t w = between(random, 1, sketch.width < 100 ? sketch.width + 8 : 100);
  int32_t h = between(random, 1, sketch.height < 100 ? sketch.height + 4 : 100);
  if (one_in(random, 2)) w = sketch.width;
  if (one_in(random, 2)) h = sketch.height;
  int32_t bytes_per_row = w * (bits / 8);
  if (one_in(random, 8)) bytes_per_row += between(random, -3, 6);
  if (bytes_per_row < 1) bytes_per_row = 1;
  const int32_t type = bits == 8 ? below(random, 2) : between(random, 3, 8);
  const int32_t offset = one_in(random, 2) ? 0 : between(random, -3, 130);
  const std::string header = header_of({w, h, bits, bytes_per_row, bits, 32, 0, type, offset});
  Call call;
  call.operation = Operation::read_file;
  call.bytes.assign(header.begin(), header.end());
  random_bytes(random, static_cast<size_t>(bytes_per_row) * static_cast<size_t>(h), &call.bytes);
  if (one_in(random, 4)) damage_file(random, &call.bytes);
  sketch.calls.push_back(call);
}

void use_file(Sketch &sketch) {
  switch (below(sketch.random, 3)) {
    case 0:
      add(sketch, Operation::write_file);
      return;
    case 1:
      add(sketch, Operation::write_file);
      if (one_in(sketch.random, 2)) open_page(sketch);
      add(sketch, Operation::read_own_file);
      return;
    default:
      read_foreign_file(sketch);
      return;
  }
}

void crop_page(Sketch &sketch) {
  Random &random = sketch.random;
  const int32_t x = between(random, 0, sketch.width / 3);
  const int32_t y = between(random, 0, sketch.height / 3);
  const int32_t w = between(random, sketch.width / 2, sketch.width) - x;
  const int32_t h = between(random, sketch.height / 2, sketch.height) - y;
  if (one_in(random, 4)) {
    add(sketch, Operation::vwin, {x, y, one_in(random, 2) ? any_number(random) : w, h - 2 * y});
    return;
  }
  add(sketch, Operation::vwin, {x, y, w, h});
  if (w > 0 && h > 0) {
    sketch.width = w;
    sketch.height = h;
  }
}

// --- The whole ---

void set_colour(Sketch &sketch) {
  add(sketch, Operation::vclr, {colour(sketch)});
}

void erase_page(Sketch &sketch) {
  add(sketch, Operation::vers);
}

void find_drawn_box(Sketch &sketch) {
  add(sketch, Operation::vcrp);
}

void close_page(Sketch &sketch) {
  add(sketch, one_in(sketch.random, 4) ? Operation::wfree : Operation::vfin);
  if (one_in(sketch.random, 2)) open_page(sketch);
}

struct Choice {
  int32_t weight;
  void (*add_calls)(Sketch &);
};

constexpr Choice choices[] = {
    {18, draw_line},    {22, draw_polyline},  {6, draw_dot},           {10, fill_rectangle},
    {16, draw_polygon}, {18, draw_symbol},    {14, draw_triangle},     {10, write_pixel},
    {8, write_row},     {4, read_pixel},      {5, read_rectangle},     {16, set_colour},
    {16, set_pen},      {14, set_any_option}, {6, set_clip_rectangle}, {4, load_palette},
    {2, erase_page},    {2, find_drawn_box},  {2, crop_page},          {1, open_page},
    {1, close_page},    {2, use_file}};

void add_any(Sketch &sketch) {
  int32_t total = 0;
  for (const Choice &choice : choices)
    total += choice.weight;
  int32_t left = below(sketch.random, total);
  for (const Choice &choice : choices) {
    left -= choice.weight;
    if (left < 0) {
      choice.add_calls(sketch);
      return;
    }
  }
}

// A few thick lines on a large page: joins and caps that nothing hides.
void add_thick_lines(Sketch &sketch) {
  Random &random = sketch.random;
  const int32_t count = between(random, 1, 3);
  for (int32_t i = 0; i < count; i++) {
    set_colour(sketch);
    set_option(sketch, 26, between(random, 4, 12));
    set_option(sketch, 27, between(random, 0, 2));
    set_option(sketch, 28, between(random, 0, 2));
    int32_t x = below(random, sketch.width);
    int32_t y = below(random, sketch.height);
    const int32_t start_x = x;
    const int32_t start_y = y;
    add(sketch, Operation::vdrw, {x, y, 3});
    const int32_t corners = between(random, 1, 3);
    for (int32_t k = 0; k < corners; k++) {
      if (!one_in(random, 4)) x = between(random, -4, sketch.width + 4);
      if (!one_in(random, 4)) y = between(random, -4, sketch.height + 4);
      add(sketch, Operation::vdrw, {x, y, 2});
    }
    if (one_in(random, 2)) add(sketch, Operation::vdrw, {start_x, start_y, 2});
  }
}

}  // namespace

std::vector<Call> make_drawing(uint64_t number) {
  Sketch sketch;
  sketch.random.state = number;
  sketch.huge = one_in(sketch.random, 12);
  // Now and then something comes before there is a page, or even a record.
  while (one_in(sketch.random, 16))
    add_any(sketch);
  const bool thick_lines = one_in(sketch.random, 5);
  if (thick_lines) {
    sketch.width = between(sketch.random, 30, 64);
    sketch.height = between(sketch.random, 30, 48);
    const int32_t page_w = one_in(sketch.random, 3) ? -1 : 1;
    add(sketch, Operation::vini, {page_w, 1, sketch.width, sketch.height, 1, 0});
  } else {
    open_page(sketch);
  }
  if (!one_in(sketch.random, 6)) load_palette(sketch);
  set_colour(sketch);
  if (one_in(sketch.random, 2)) set_option(sketch, 33, 0);
  if (!sketch.huge && one_in(sketch.random, 4)) set_option(sketch, 34, 2);
  if (one_in(sketch.random, 2)) set_pen(sketch);
  if (one_in(sketch.random, 4)) set_clip_rectangle(sketch);
  if (thick_lines) add_thick_lines(sketch);
  const int32_t count = between(sketch.random, thick_lines ? 0 : 2, thick_lines ? 2 : 12);
  for (int32_t i = 0; i < count; i++)
    add_any(sketch);
  add(sketch, Operation::vrpx, {0, 0});  // draws what is still gathered
  return sketch.calls;
}

}  // namespace quorix::drawings

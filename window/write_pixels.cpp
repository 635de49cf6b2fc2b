// SPDX-License-Identifier: MIT
//
// Pixels and rows into a window: into the copy that direct access holds, through OpenGL, or one by
// one through the canvas. The bitmap bounds every access, and positions in the caller's row advance
// over what is cut off or transparent.
#include "base/memory.h"
#include "quorix/windowpixels.h"
#include "raster/pixel_rows.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/opengl_drawing.h"
#include "window/window.h"

namespace quorix {

namespace {

// The part of the caller's row that lies on the bitmap.
struct RowToWrite {
  const uint8_t *from;
  bool rgb;  // triples, else indices
  int32_t x, y;
  int64_t count;
};

// ---- The copy in memory

void write_true_colour(const OutputContext *context, const RowToWrite &row) {
  const WindowSet *set = context->window.window_set;
  uint8_t *const to = direct_pixel(set, row.x, row.y);
  const int64_t step = bytes_per_pixel(set);
  const auto store = [&](int64_t i, uint8_t r, uint8_t g, uint8_t b) {
    uint8_t *const pixel = to + i * step;
    pixel[0] = b;
    pixel[1] = g;
    pixel[2] = r;
  };
  if (row.rgb) return write_triples(context, row.from, row.count, store);
  write_indices(context, row.from, row.count, [&](int64_t i, uint8_t index) {
    const PaletteEntry &entry = set->palette_entries[index];
    store(i, entry.r, entry.g, entry.b);
  });
}

void write_palette_bytes(const OutputContext *context, const RowToWrite &row) {
  uint8_t *const to = direct_pixel(context->window.window_set, row.x, row.y);
  if (row.rgb) {
    NearestIndex nearest(context);
    return write_triples(context, row.from, row.count,
                         [&](int64_t i, uint8_t r, uint8_t g, uint8_t b) {
                           to[i] = index_to_pixel(context, nearest(r, g, b));
                         });
  }
  write_indices(context, row.from, row.count,
                [&](int64_t i, uint8_t index) { to[i] = index_to_pixel(context, index); });
}

// ---- The canvas

void write_on_canvas(const OutputContext *context, const RowToWrite &row) {
  Canvas *canvas = context->window.window_set->draw_canvas;
  const auto put = [&](int64_t i, uint32_t colour) {
    ask(canvas->calls->set_pixel, canvas, static_cast<int32_t>(row.x + i), row.y, colour);
  };
  if (row.rgb) {
    return write_triples(context, row.from, row.count,
                         [&](int64_t i, uint8_t r, uint8_t g, uint8_t b) {
                           put(i, display_colour_of_rgb(context, r, g, b));
                         });
  }
  write_indices(context, row.from, row.count,
                [&](int64_t i, uint8_t index) { put(i, display_colour_of_index(context, index)); });
}

// ---- OpenGL

// Stretches between transparent pixels go out one by one.
class GlStretches {
 public:
  GlStretches(const OutputContext *context, const GlCalls *gl, const RowToWrite &row,
              uint8_t *pixels)
      : context_(context), gl_(gl), row_(row), pixels_(pixels) {}

  void store(int64_t i, uint8_t r, uint8_t g, uint8_t b) {
    if (i != end_) send();
    if (first_ == end_) first_ = i;
    end_ = i + 1;
    uint8_t *const pixel = pixels_ + i * 4;
    pixel[0] = r;
    pixel[1] = g;
    pixel[2] = b;
    pixel[3] = 255;
  }

  void send() {
    if (first_ < end_) {
      gl_->raster_position(static_cast<int32_t>(row_.x + first_), turned_row(context_, row_.y));
      gl_->draw_pixels(static_cast<int32_t>(end_ - first_), 1, gl_rgba, gl_unsigned_byte,
                       pixels_ + first_ * 4);
    }
    first_ = end_;
  }

 private:
  const OutputContext *context_;
  const GlCalls *gl_;
  const RowToWrite &row_;
  uint8_t *pixels_;
  int64_t first_ = 0;  // of the stretch
  int64_t end_ = 0;
};

void write_by_gl(const OutputContext *context, const RowToWrite &row) {
  const GlCalls *gl = drawing_gl(context);
  const auto pixels = allocate_array<uint8_t>(static_cast<size_t>(row.count) * 4);
  if (gl == nullptr || !pixels) return;
  GlStretches stretches(context, gl, row, pixels.get());
  if (row.rgb) {
    write_triples(context, row.from, row.count,
                  [&](int64_t i, uint8_t r, uint8_t g, uint8_t b) { stretches.store(i, r, g, b); });
  } else {
    const Colours &c = context->colours;
    write_indices(context, row.from, row.count, [&](int64_t i, uint8_t index) {
      stretches.store(i, c.palette_r[index], c.palette_g[index], c.palette_b[index]);
    });
  }
  stretches.send();
}

void write_row(const OutputContext *context, PixelWay way, const RowToWrite &row) {
  switch (way) {
    case PixelWay::gl:
      return write_by_gl(context, row);
    case PixelWay::canvas:
      return write_on_canvas(context, row);
    default:
      break;
  }
  if (bytes_per_pixel(context->window.window_set) == 1) {
    write_palette_bytes(context, row);
  } else {
    write_true_colour(context, row);
  }
}

}  // namespace

void write_window_row(OutputContext *context, const uint8_t *row, int32_t x, int32_t y, int32_t n) {
  flush_window(context);
  const PixelArea area = pixel_area(context);
  if (area.way == PixelWay::none) return;
  const bool rgb = n < 0;
  const RowPart part = row_part(x, y, magnitude(n), area.width, area.height);
  if (part.count == 0) return;
  write_row(context, area.way,
            {row + part.skipped * (rgb ? rgb_bytes : 1), rgb,
             static_cast<int32_t>(x + part.skipped), y, part.count});
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwrow(const uint8_t *row, int32_t x, int32_t y, int32_t n) {
  if (current_window_set() != nullptr) write_window_row(output_context, row, x, y, n);
  return 0;
}

// A row of one pixel.
extern "C" int32_t qqwwpx(int32_t x, int32_t y, int32_t colour) {
  if (current_window_set() == nullptr) return 0;
  if (is_packed_colour(colour)) {
    uint8_t triple[3] = {};
    colour_to_rgb(output_context, colour, &triple[0], &triple[1], &triple[2]);
    write_window_row(output_context, triple, x, y, -1);
  } else {
    const auto index = static_cast<uint8_t>(colour & 255);
    write_window_row(output_context, &index, x, y, 1);
  }
  return 0;
}

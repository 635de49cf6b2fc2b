/* SPDX-License-Identifier: MIT
 *
 * Pages, pens and axes of the example programs. The font is in stroke_font.c.
 */
#include "axes.h"

#include <math.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { RASTER = 101, TICK_LENGTH = 10, TICK_SIZE = 20, LABEL_SIZE = 22, TITLE_SIZE = 30 };

void fail(const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  vfprintf(stderr, format, arguments);
  va_end(arguments);
  fputc('\n', stderr);
  exit(1);
}

int is_finite(double value) {
  return value - value == 0;
}

void check_written(const char *file, int status) {
  char reason[256] = "";
  if (status != 0) fail("%s cannot be written (status %d)", file, status);
  if (quorix_last_failure(NULL, NULL, NULL, reason, NULL, sizeof reason) != 0)
    fail("%s is not whole: %s", file, reason);
}

/* ---- The page or a window ---- */

static int on_window;

void open_window(int device, int width, int height) {
  int32_t page_w = width, page_h = height, placement = 2, x = 0, y = 0, w = width, h = height;
  int32_t bits = 0, actual_w = 0, actual_h = 0, white = 2;
  uint8_t colour_mode = 0;
  qqwini(device, &page_w, &page_h, &placement, &x, &y, &w, &h, &bits, &colour_mode, &actual_w,
         &actual_h, &white);
  if (actual_w != width || (actual_h & 0xFFFF) != height)
    fail("no window of %d by %d pixels", width, height);
  on_window = 1;
}

void save_window(const char *file, int width, int height) {
  int32_t device = -72, order = 1, w = width, h = height, colours = 256, status = 0;
  qqwimg(0, &status);
  if (status != 0) fail("no memory for the pixels of the window");
  qqppng((char *)file, &device, &order, &w, &h, NULL, &colours, &status);
  check_written(file, status);
  qqwimg(1, &status);
}

void plot_colour(int colour) {
  if (on_window)
    qqwclr(colour);
  else
    qqvclr(colour);
}

void plot_pen(int x, int y, int code) {
  if (on_window)
    qqwdrw(x, y, code);
  else
    qqvdrw(x, y, code);
}

void plot_line(int x1, int y1, int x2, int y2) {
  plot_pen(x1, y1, 3);
  plot_pen(x2, y2, 2);
}

void plot_box(int x1, int y1, int x2, int y2, int colour) {
  if (on_window)
    qqwfll(x1, y1, x2 - x1 + 1, y2 - y1 + 1, colour);
  else
    qqvfll(x1, y1, x2, y2, colour);
}

static void open_raster(int page_width, int width, int height, int white) {
  int32_t w = width, h = height, status = white;
  qqvini(page_width, height, &w, &h, 1, &status);
  if (status != 0) fail("no memory for a page of %d by %d pixels", width, height);
  int32_t on = 0;
  qqwwid(33, &on, 1);
}

void open_page(int width, int height) {
  open_raster(-width, width, height, 1);
}

void open_palette_page(int width, int height, const uint32_t *palette) {
  open_raster(width, width, height, 0);
  qqvvlt(1, palette);
}

void save_png(const char *file, int width, int height) {
  int32_t device = -RASTER, order = 1, w = width, h = height, colours = 256, status = 0;
  qqppng((char *)file, &device, &order, &w, &h, NULL, &colours, &status);
  check_written(file, status);
}

void save_picture(const char *file, int width, int height) {
  int32_t device = -RASTER, w = width, h = height, given = 1, no = 0, compress = 1, status = 0;
  int32_t page_width = 2100, page_height = 2970, margin = 0; /* A4, in tenths of a millimetre */
  const char *type = strrchr(file, '.');
  if (type != NULL && strcmp(type, ".ps") == 0) {
    qqpps(file, &device, &w, &h, &given, &page_width, &page_height, &given, &margin, &margin,
          &status);
  } else if (type != NULL && strcmp(type, ".pdf") == 0) {
    qqppdf(file, &device, &w, &h, &given, &page_width, &page_height, &no, &margin, &margin,
           &compress, &status);
  } else {
    save_png(file, width, height);
  }
  check_written(file, status);
}

void save_palette_png(const char *file, int width, int height, const uint32_t *palette) {
  int32_t device = RASTER, order = 1, w = width, h = height, colours = 256, status = 0;
  qqppng((char *)file, &device, &order, &w, &h, palette, &colours, &status);
  check_written(file, status);
}

void blend_colours(uint32_t *palette, int count, const uint32_t *stops, int stop_count) {
  int last = count > 1 ? count - 1 : 1;
  for (int i = 0; i < count; i++) {
    int at = i * (stop_count - 1), left = at / last, part = at % last;
    int right = left + 1 < stop_count ? left + 1 : left;
    palette[i] = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
      int from = (int)(stops[left] >> shift & 255), to = (int)(stops[right] >> shift & 255);
      palette[i] |= (uint32_t)((from * (last - part) + to * part + last / 2) / last) << shift;
    }
  }
}

void equal_earth(double longitude, double latitude, double *x, double *y) {
  const double degree = 3.14159265358979323846 / 180, m = 0.866025403784438647;
  const double a = 1.340264, b = -0.081106, c = 0.000893, d = 0.003796;
  double t = asin(m * sin(latitude * degree)), tt = t * t, t6 = tt * tt * tt;
  *x = longitude * degree * cos(t) / (m * (a + 3 * b * tt + t6 * (7 * c + 9 * d * tt)));
  *y = t * (a + b * tt + t6 * (c + d * tt));
}

void set_pen(int width, int cap, int join) {
  int32_t values[3] = {width, cap, join};
  for (int i = 0; i < 3; i++)
    qqwwid(26 + i, &values[i], 1);
}

void set_clip(int left, int top, int right, int bottom) {
  int32_t values[4] = {left, top, right, bottom};
  for (int i = 0; i < 4; i++)
    qqwwid(11 + i, &values[i], 1);
}

void fill_polygon(const double *xs, const double *ys, int corners) {
  int32_t n = corners, status;
  qqvpol(xs, ys, &n, &status);
  if (status != 0) fail("a polygon of %d corners is too jagged", corners);
}

/* A row crosses each side of a piece once at most, and so no more than PIECE + 2 of them. */
void fill_under(const double *xs, const double *ys, int count, double base) {
  enum { PIECE = 90 };
  double px[PIECE + 2], py[PIECE + 2];
  for (int first = 0; first + 1 < count; first += PIECE - 1) {
    int points = count - first < PIECE ? count - first : PIECE;
    for (int i = 0; i < points; i++) {
      px[i] = xs[first + i];
      py[i] = ys[first + i];
    }
    px[points] = px[points - 1]; /* back along the base line */
    px[points + 1] = px[0];
    py[points] = py[points + 1] = base;
    fill_polygon(px, py, points + 2);
  }
}

double axes_x(const Axes *axes, double value) {
  double part = (value - axes->x_first) / (axes->x_last - axes->x_first);
  return axes->left + part * (axes->right - axes->left);
}

double axes_y(const Axes *axes, double value) {
  double part = (value - axes->y_first) / (axes->y_last - axes->y_first);
  return axes->bottom - part * (axes->bottom - axes->top);
}

int column_of(const Axes *axes, double value) {
  return (int)floor(axes_x(axes, value) + 0.5);
}
int row_of(const Axes *axes, double value) {
  return (int)floor(axes_y(axes, value) + 0.5);
}

double nice_step(double span, int parts) {
  double power = 1;
  while (power * parts < span)
    power *= 10;
  while (power * parts >= span * 10)
    power /= 10;
  /* power is the power of ten that is just enough; 1/5 and 1/2 of it may be, too. */
  if (power / 5 * parts >= span) return power / 5;
  return power / 2 * parts >= span ? power / 2 : power;
}

void format_tick(char *text, size_t room, double value, double step) {
  int decimals = 0;
  for (double unit = step; decimals < 9 && fabs(unit - floor(unit + 0.5)) > 1e-6 * unit; unit *= 10)
    decimals++;
  if (fabs(value) < step / 2) value = 0; /* no "-0" */
  if (fabs(value) >= 1e12 || step < 1e-8)
    snprintf(text, room, "%g", value);
  else
    snprintf(text, room, "%.*f", decimals, value);
}

/* One axis: its grid lines first, then ticks and numbers. */
static void draw_ticks(const Axes *axes, int vertical, int grid) {
  double first = vertical ? axes->y_first : axes->x_first;
  double last = vertical ? axes->y_last : axes->x_last;
  double low = first < last ? first : last, high = first < last ? last : first;
  int length = vertical ? axes->bottom - axes->top : axes->right - axes->left;
  double step = vertical ? axes->y_step : axes->x_step;
  if (step <= 0) step = nice_step(high - low, length / (vertical ? 90 : 150) + 1);
  char text[32];
  for (double n = ceil(low / step - 1e-9); n * step <= high + step * 1e-9; n++) {
    int at = vertical ? row_of(axes, n * step) : column_of(axes, n * step);
    format_tick(text, sizeof text, n * step, step);
    if (grid && vertical)
      plot_line(axes->left, at, axes->right, at);
    else if (grid)
      plot_line(at, axes->top, at, axes->bottom);
    else if (vertical)
      draw_text(axes->left - TICK_LENGTH - 12, at + TICK_SIZE / 2, TICK_SIZE, RIGHT, text);
    else
      draw_text(at, axes->bottom + TICK_LENGTH + 14 + TICK_SIZE, TICK_SIZE, CENTRE, text);
    if (grid) continue;
    set_pen(2, BUTT_CAP, MITER_JOIN);
    if (vertical)
      plot_line(axes->left - TICK_LENGTH, at, axes->left, at);
    else
      plot_line(at, axes->bottom, at, axes->bottom + TICK_LENGTH);
  }
}

static void draw_frame(const Axes *axes) {
  set_pen(2, BUTT_CAP, MITER_JOIN);
  plot_pen(axes->left, axes->top, 3);
  plot_pen(axes->right, axes->top, 2);
  plot_pen(axes->right, axes->bottom, 2);
  plot_pen(axes->left, axes->bottom, 2);
  plot_pen(axes->left, axes->top, 2);
}

void draw_axes(const Axes *axes, const char *title, const char *x_title, const char *y_title) {
  int middle = (axes->left + axes->right) / 2;
  set_pen(1, BUTT_CAP, MITER_JOIN);
  plot_colour(PALE);
  draw_ticks(axes, 0, 1);
  draw_ticks(axes, 1, 1);
  plot_colour(GREY);
  draw_frame(axes);
  draw_ticks(axes, 0, 0);
  draw_ticks(axes, 1, 0);
  plot_colour(INK);
  if (title) draw_text(axes->left, axes->top - 28, TITLE_SIZE, LEFT, title);
  if (x_title) draw_text(middle, axes->bottom + 88, LABEL_SIZE, CENTRE, x_title);
  if (y_title)
    draw_text_upward(axes->left - 104, (axes->top + axes->bottom) / 2, LABEL_SIZE, CENTRE, y_title);
}

void draw_colour_bar(int left, int top, int bottom, int first, int count, double low, double high,
                     const char *title) {
  Axes axes = {left, top, left + 40, bottom, 0, 1, low, high, 0, 0};
  double step = nice_step(high - low, (bottom - top) / 90 + 1);
  char text[32];
  for (int y = top; y <= bottom; y++)
    plot_box(left, y, left + 40, y, first + (bottom - y) * count / (bottom - top + 1));
  plot_colour(GREY);
  draw_frame(&axes);
  for (double n = ceil(low / step); n * step <= high; n++) {
    int y = row_of(&axes, n * step);
    format_tick(text, sizeof text, n * step, step);
    draw_text(left + 60, y + TICK_SIZE / 2, TICK_SIZE, LEFT, text);
    set_pen(2, BUTT_CAP, MITER_JOIN);
    plot_line(left + 40, y, left + 50, y);
  }
  plot_colour(INK);
  draw_text(left, top - 28, LABEL_SIZE, LEFT, title);
}

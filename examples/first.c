/* SPDX-License-Identifier: MIT
 * The first picture: ripples round a point (computed), one filled curve behind the other. */
#include <math.h>
#include <quorix/quorix.h>

int main(void) {
  int32_t w = 1600, h = 900, status = 0, pen_width = 4, points = 802;
  qqvini(-w, h, &w, &h, 1, &status); /* a page of true colours */
  qqvfll(0, 0, w - 1, h - 1, 0x01301A10);
  qqwwid(26, &pen_width, 1);
  for (int row = 0; row < 46; row++) {
    double depth = row / 45.0, half = 460 + 290 * depth, xs[802] = {800 + half, 800 - half};
    double ys[802] = {1000, 1000};
    for (int i = 2; i < points; i++) {
      double x = (i - 2) / 399.5 - 1, y = 2 * depth - 1, r = 18 * sqrt(x * x + y * y);
      xs[i] = 800 + half * x;
      ys[i] = 200 + 600 * depth - 340 * cos(r) / (1 + r * r / 28);
    }
    int32_t red = (int32_t)(95 + 160 * depth), green = (int32_t)(70 + 140 * depth * depth);
    qqvclr(0x01301A10 + (int32_t)(34 - 34 * depth) * 0x10001);
    qqvpol(xs, ys, &points, &status);
    if (status != 0) return status;
    qqvclr(0x01000000 | (int32_t)(190 - 120 * depth) << 16 | green << 8 | red);
    for (int i = 2; i < points; i += 4)
      qqvdrw((int32_t)xs[i], (int32_t)ys[i], i == 2 ? 3 : 2);
  }
  int32_t device = -101, order = 1, colours = 256;
  qqppng("first.png", &device, &order, &w, &h, 0, &colours, &status);
  return status;
}

/* SPDX-License-Identifier: MIT
 * A user's program: draws a red line on a white page of 6 by 3 pixels and writes it as PNG. */
#include <quorix/quorix.h>

int main(int argc, char **argv) {
  int32_t w = 6, h = 3, white = 1, status = 1;
  int32_t device = -101, order = 1, colours = 0, line_y = 1;
  if (argc != 2) return 2;

  qqvini(-1, 1, &w, &h, 1, &white);
  if (white != 0) return 3;
  qqvclr(0x010000FF);
  qqvlin(1, line_y, 4, line_y);
  qqppng(argv[1], &device, &order, &w, &h, 0, &colours, &status);
  qqvfin();
  qqwfree();
  return status == 0 ? 0 : 4;
}

/* SPDX-License-Identifier: MIT
 * A user's program: prints the width of the letter A in each bitmap font, in tenths of a pixel. */
#include <quorix/quorix.h>
#include <stdio.h>

int main(void) {
  static const int32_t sizes[3][4] = {{10, 12, 14, 18}, {8, 10, 12, 14}, {10, 12, 14, 18}};
  int32_t w = 6, h = 3, status = 1, widths[233];
  qqvini(-1, 1, &w, &h, 1, &status);
  if (status != 0) return 1;
  for (int32_t family = 1; family <= 3; family++) {
    for (int i = 0; i < 4; i++) {
      qqbdf1(&family, &sizes[family - 1][i], widths, &status);
      printf("%d ", status == 0 ? (int)widths['A' - 32] : -1);
    }
  }
  qqwfree();
  return 0;
}

/* SPDX-License-Identifier: MIT
 * Prints the install directory. */
#include <quorix/quorix.h>
#include <stdio.h>

int main(void) {
  char directory[256] = "";
  const int32_t length = qqgenv("QUORIX", directory);
  printf("%d %s\n", (int)length, directory);
  return 0;
}

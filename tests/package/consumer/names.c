/* SPDX-License-Identifier: MIT
 * A user's program: prints the version of header and library, and the words of all statuses from
 * -30 to 30 of the operations that are its arguments, as lines "operation status words". */
#include <quorix/quorix.h>
#include <stdio.h>

int main(int argc, char **argv) {
  printf("%d.%d.%d %d %d\n", QUORIX_VERSION_MAJOR, QUORIX_VERSION_MINOR, QUORIX_VERSION_PATCH,
         QUORIX_VERSION, (int)quorix_version());
  for (int i = 1; i < argc; i++) {
    for (int32_t status = -30; status <= 30; status++) {
      printf("%s %d %s\n", argv[i], (int)status, quorix_status_text(argv[i], status));
    }
  }
  printf("%s\n", quorix_status_text(0, 0));
  return 0;
}

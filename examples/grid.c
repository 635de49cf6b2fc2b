/* SPDX-License-Identifier: MIT */
#include "grid.h"

#include <stdio.h>
#include <stdlib.h>

#include "axes.h"

void read_grid(const char *file, double *values, int rows, int columns) {
  char line[4096];
  int row = 0;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (row < rows && fgets(line, sizeof line, stream) != NULL) {
    if (line[0] == '#') continue;
    char *at = line;
    for (int column = 0; column < columns; column++) {
      char *end;
      values[row * columns + column] = strtod(at, &end);
      if (end == at) fail("%s: row %d of the grid is too short", file, row + 1);
      at = end + (*end == ',');
    }
    row++;
  }
  fclose(stream);
  if (row < rows) fail("%s: %d rows instead of %d", file, row, rows);
}

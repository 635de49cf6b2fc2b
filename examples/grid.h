/* SPDX-License-Identifier: MIT
 *
 * Grids of numbers in text: rows of numbers with commas between them, lines with # before or among
 * them being comments.
 */
#ifndef EXAMPLES_GRID_H
#define EXAMPLES_GRID_H

/* Reads rows * columns numbers, row by row. Says what is wrong with the file and ends the program
 * where they are not all there. */
void read_grid(const char *file, double *values, int rows, int columns);

#endif

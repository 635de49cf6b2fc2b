/* SPDX-License-Identifier: MIT
 *
 * Text of the example programs in real fonts: the library's bitmap fonts, or the outlines of a
 * TrueType font. It is UTF-8, with the letters that the library's character codes know.
 */
#ifndef EXAMPLES_LETTERING_H
#define EXAMPLES_LETTERING_H

#include "axes.h"

enum { COMPLX = 1, SIMPLX = 2, HELVE = 3 };

/* From now on text is written in a bitmap font of a family whose capitals are `size` pixels tall.
 */
void use_bitmap_font(int family, int size);

/* Opens a TrueType font; from now on text is written in its outlines. */
void use_outlines(const char *file);
void set_outline_size(int size);

/* Writes a line in a colour at an angle in degrees, counter-clockwise. (x, y) is the left end,
 * middle or right end of its base line. Outlines want a white page: that is what the inside of an
 * "o" is filled with. */
void write_text(double x, double y, int angle, int align, int32_t colour, const char *text);

double written_width(const char *text);

#endif

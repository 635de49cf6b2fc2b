/* SPDX-License-Identifier: MIT
 *
 * Plot windows: opening, drawing, closing; and the options of the drawing record.
 *
 * qqwini sets the window device up and opens its main window, qqwopn opens more, qqwsel chooses
 * the one that is drawn on. The drawing operations do what those of the raster do (raster.h), with
 * the same coordinates and colour arguments; interaction.h shows what was drawn and waits for the
 * user, windowpixels.h reads and writes pixels, windowtext.h has the system's fonts. The image
 * writers and readers, depth rendering and bitmap fonts work on the current window where they are
 * given a device number of at most 100.
 *
 * Windows are numbered from 1 to 8. Where there is no screen they live in memory: everything can be
 * drawn and saved, and nothing waits.
 *
 * What a window shows of a drawing depends on the system in small ways: lines of width 1,
 * rectangles and pixels are the same everywhere, wide pens, curves and text are the system's own.
 *
 * Before a window is open, and after it was closed, drawing does nothing. All operations return 0.
 */
#ifndef QUORIX_WINDOW_H
#define QUORIX_WINDOW_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Life cycle -------------------------------------------------------------------------- */

/* Sets the window device up and opens the window of `device`, which becomes the main and the
 * current one. A window that was open under that number is closed first.
 *
 * device         72 to 79: windows 1 to 8; 80: window 1 in full size; 81: window 1, drawn through
 *                OpenGL where it can be had, after a message through a bitmap where not. With any
 *                other number nothing happens and all results are 0
 * page_width,    the ratio of the window's sides; their units do not matter
 * page_height
 * placement      0: size and place are computed. The longer side of the page takes two thirds of
 *                the screen (device 80: all of it). 1: x, y, width, height are used. Any other
 *                number: width and height are used, the place is computed
 * x, y           upper left corner of the window's frame on the screen
 * width, height  size in pixels of what is drawn on; cut to what fits on the screen, at least 1
 * bits           becomes the screen's number of bits per pixel
 * colour_mode    how 256 palette indices share the entries of a small display: 0 every second one,
 *                1 each its own, 2 the first 128. Of no effect on screens of more than 8 bits
 * actual_width   becomes the width in pixels of what is drawn on
 * buffering      input, its first byte: 0 or 2 a bitmap behind the window; 3 the same, and the
 *                window is never shown; any other value draws on the window itself.
 *                output: the height in pixels of what is drawn on
 * options        decimal digits. Units: 2 for a white background, else black. Tens: the place, 0
 *                by the device (72 lower right, 73 upper right, 74 upper left, 75 lower left, 76
 *                centre, 77 to 79 down a diagonal), 1 lower right, 2 upper right, 3 upper left,
 *                4 lower left, 5 centre. Hundreds: not 0 for windows without frame and title
 *
 * Failures are shown to the user, under the caption "quoini": "Window cannot be created:" (drawing
 * does nothing then), "Cannot create Bitmap", and for device 81 what OpenGL lacks. */
QUORIX_API int32_t qqwini(int32_t device, const int32_t *page_width, const int32_t *page_height,
                          const int32_t *placement, const int32_t *x, const int32_t *y,
                          const int32_t *width, const int32_t *height, int32_t *bits,
                          const uint8_t *colour_mode, int32_t *actual_width, int32_t *buffering,
                          const int32_t *options);

/* Opens one more window, which becomes the current one. Arguments as of qqwini, whose options hold
 * for it too. Before qqwini, and after all windows were closed, nothing happens and both results
 * are 0. */
QUORIX_API int32_t qqwopn(int32_t device, const int32_t *page_width, const int32_t *page_height,
                          const int32_t *placement, const int32_t *x, const int32_t *y,
                          const int32_t *width, const int32_t *height, int32_t *actual_width,
                          int32_t *actual_height);

/* Makes window `number` the current one. Lines that are gathered are drawn before, in the window
 * that they belong to. A window that is not open is not selected. */
QUORIX_API int32_t qqwsel(int32_t number);

/* Hides window `number` (hide not 0), or shows it again. */
QUORIX_API int32_t qqwhid(int32_t number, int32_t hide);

/* Whether window `number` is open and its plot not ended: state becomes 1 or 0. Number 0 always
 * gives 1. */
QUORIX_API int32_t qqwsta(int32_t number, int32_t *state);

/* Closes window `number` and makes the main window the current one. */
QUORIX_API int32_t qqwcls(int32_t number);

/* Gives the current window a title, which stays in place of the library's own until the window is
 * closed. An empty one gives way to the library's next title. */
QUORIX_API int32_t qqwtit(const char *title);

/* Gives the windows an icon from an .ico file.
 *
 * status  0 done; 1 the file cannot be read as an icon, there is no window, or the system has no
 *         icons */
QUORIX_API int32_t qqwico(const char *filename, int32_t *status);

/* Closes all windows, and releases the drawing record and all that it owns, the raster too. */
QUORIX_API int32_t qqwfree(void);

/* ---- Colours ----------------------------------------------------------------------------- */

/* Sets the current colour: a palette index, or 0x01BBGGRR. Lines gathered before are drawn in the
 * old one. Setting the colour that is current costs next to nothing. */
QUORIX_API int32_t qqwclr(int32_t colour);

/* Loads the palette.
 *
 * kind   0: 9 colours, 7: 16 colours, any other: 256
 * table  256 words 0xRRGGBB, whatever the kind; red is in the high byte here */
QUORIX_API int32_t qqwvlt(uint8_t kind, const int32_t *table);

/* ---- Drawing ----------------------------------------------------------------------------- */

/* Clears the page. Colour 0 is current afterwards, except where OpenGL draws. */
QUORIX_API int32_t qqwers(void);

/* Fills the rectangle of w by h pixels whose upper left corner is (x, y). The colour becomes the
 * current one; with w or h below 1 nothing happens at all. (qqvfll of the raster takes corners
 * instead, and leaves the colour.) */
QUORIX_API int32_t qqwfll(int32_t x, int32_t y, int32_t w, int32_t h, int32_t colour);

/* Sets one pixel. The colour becomes the current one. */
QUORIX_API int32_t qqwpix(int32_t x, int32_t y, int32_t colour);

/* Moves the pen.
 *
 * pen  2 draws a line to (x, y); 999 draws what is gathered and leaves the pen where it is;
 *      any other number (3 by custom) goes to (x, y) without drawing
 *
 * Up to 100 points are gathered and drawn as one polyline when the pen goes up or the colour
 * changes. A draw to where the pen is makes a dot. Windows with OpenGL draw lines by qqgllin. */
QUORIX_API int32_t qqwdrw(int32_t x, int32_t y, int32_t pen);

/* Fills a polygon in the current colour, in several calls: flag 1 announces x corners, any flag but
 * 1 and 9 adds the corner (x, y), flag 9 fills. Corners beyond those announced are dropped. */
QUORIX_API int32_t qqwpol(int32_t x, int32_t y, int32_t flag);

/* Fills a polygon in the current colour.
 *
 * x, y    n corners each, in pixels; rounded to whole ones
 * status  0 done; 1 no memory, no window device, or with OpenGL a row of more than 99 crossings,
 *         drawn with its first 99 */
QUORIX_API int32_t qqwpol2(const double *x, const double *y, const int32_t *n, int32_t *status);

/* Draws a marker of the given size (its full width in pixels, at least 2) centred on (x, y), with
 * the current colour and pen. Numbers as of qqvsym; OpenGL draws none of the round ones (15, 21,
 * 22, 23). */
QUORIX_API int32_t qqwsym(int32_t symbol, int32_t x, int32_t y, int32_t size);

/* Fills a triangle with the corners (x[i], y[i]), i from 0 to 2. One without width or height is a
 * line. The colour becomes the current one. */
QUORIX_API int32_t qqwftr(const int32_t *x, const int32_t *y, int32_t colour);

/* ---- Options ----------------------------------------------------------------------------- */

/* Sets or reads one option of the drawing record, which it creates if there is none yet.
 *
 * option  see the table
 * value   address of an int32_t; for options 1 and 2 a handle, or the address of one of 4 bytes.
 *         Where it is null an option that needs a value is not set
 * set     0 reads: value becomes the handle of the current window (option 0), of its bitmap (option
 *         2, 0 where the system has none), or -1 (all others); any other number sets
 *
 *  0       top-level windows from now on (the value is not used)
 *  1       the window opened next is the caller's, with this handle
 *  2       a bitmap of the caller's, which is kept and not used
 *  3       the low byte: 1 exchanges pure black and white of shaded triangles on a white page;
 *          0 (at first) does not
 *  5       the low byte: not 0 for a bitmap that may be larger than the caller's window, which
 *          scrolls over it
 * 11 12    left and upper edge of the clip rectangle, inclusive; at first the page's
 * 13 14    right and lower edge of the clip rectangle, inclusive; at first the page's. Set all
 *          four, 11 first: that one draws the raster's lines still gathered under the old
 *          rectangle. Most lines and all rectangles of a raster pass over it until option 33 is
 *          set to 0
 * 17 18    tolerance of depth-tested lines: 1e-5, or 0.001 (at first; the value is not used)
 * 19       alpha of all pixels drawn from now on into an RGBA raster, 0 to 255 (at first)
 * 20       cursor while the user is asked for something: 1 cross (at first), 2 arrow, 3 up arrow,
 *          0 cursors are never changed
 * 21       1: translucent layers replace the background where it is untouched; 0 (at first): they
 *          blend
 * 25       level of the character code mapping; at first 0
 * 26       pen width in pixels; at first 1
 * 27       line caps: 0 butt, 1 round, 2 square (at first). On a window caps and joins come with
 *          the next change of colour or width
 * 28       line joins: 0 miter, 1 round, 2 bevel (at first)
 * 30       cursor of the window when nothing is asked: 1 cross, 2 arrow (at first), 3 up arrow
 * 32       transparent colour, an index or a packed colour, that pixel and row writes skip; -1 (at
 *          first) none
 * 33       clipping: 0 on, 1 off (at first). A raster clips those lines and rectangles that
 *          raster.h names; a window is held to the rectangle of the moment by both values
 * 34       1: plain lines (at first); 2: lines of width 1 are antialiased in an RGBA raster or by
 *          OpenGL. Lines of other widths stay plain
 * 99       options 3, 17 to 19, 21, 26 to 28 and 32 become what they were at first, and the
 *          callbacks of system.h are cleared (the value is not used). The others stay as they are:
 *          set them back one by one
 *
 * What goes wrong without a word: a value that is no int32_t, such as a double, is read as one all
 * the same; a read (set 0) does not give what was set but overwrites `value`, with -1 mostly, so a
 * program that restores an option later has to remember it.
 *
 * Any other option is ignored. */
QUORIX_API int32_t qqwwid(int32_t option, void *value, int32_t set);

/* Asks about the screen or the current window.
 *
 * mode     1: a and b become width and height of the window's client area, c becomes 0. 2: a and b
 *          become the place of the window's upper left corner on the screen, c becomes 0. Any other
 *          number: a and b become width and height of the screen, c its bits per pixel
 *
 * Modes 1 and 2 take the events that wait first, and give 0 where no window is open. */
QUORIX_API int32_t qqwwsc(int32_t *a, int32_t *b, int32_t *c, int32_t *mode);

#ifdef __cplusplus
}
#endif

#endif

/* SPDX-License-Identifier: MIT
 *
 * Plot windows and their users: showing, waiting, asking for points.
 *
 * A program draws, then one of these operations shows the picture and, where it waits, runs a loop
 * until the user goes on. MB2 is the right mouse button, acted on when it is released over the
 * current window. Without a screen, or where no window is open, every wait ends at once.
 *
 * Positions are pixels of the page, (0, 0) at the upper left. All operations return 0.
 */
#ifndef QUORIX_INTERACTION_H
#define QUORIX_INTERACTION_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Ends a plot: draws what is gathered, shows all windows, and goes on as `mode` says.
 *
 * mode  its units digit
 *         0  waits for MB2, then closes all windows
 *         1  waits for MB2, the windows stay
 *         2  does not wait, the windows stay
 *         3  does not wait, closes all windows
 *         4  waits mode / 10 milliseconds, then closes all windows
 *         5  waits until the user closes the main window
 *       and, but for units 4, its tens: 1 accepts RETURN and 2 ESC in place of MB2. Negative
 *       numbers count as 0. Other units wait until the main window is closed.
 *
 * The title of the window tells the user what to do, unless qqwtit gave it another. In a window
 * of the caller's (qqwwid 1) it never waits, and the picture goes on being repainted. A translucent
 * layer that is still open is given up. Closing a window during the wait is safe: closing the main
 * one ends the wait and closes all. */
QUORIX_API int32_t qqwfin(int32_t mode);

/* Shows the page and waits for MB2 before the next one; the title says so meanwhile. Returns at
 * once for windows that are not visible. */
QUORIX_API int32_t qqwnnp(void);

/* Acts as if MB2 were released in the current window, so that a callback can end a wait. */
QUORIX_API int32_t qqwmb2(void);

/* Shows what has been drawn so far, in all windows, and takes the events that wait. To be called
 * for each picture of an animation, and now and then in a long computation. */
QUORIX_API int32_t qqwsbf(void);

/* Collects the places of left clicks until MB2.
 *
 * x, y      arrays of at least `capacity` positions, filled
 * capacity  how many positions they take; 0 or less takes none
 * count     becomes the number of positions
 * overflow  becomes 1 if the user gave more than there was room for, else 0 */
QUORIX_API int32_t qqwcu1(int32_t *x, int32_t *y, int32_t capacity, int32_t *count,
                          int32_t *overflow);

/* Collects the path of the pointer while the left button is held; arguments as of qqwcu1. Pressing
 * again before letting go starts the path anew. */
QUORIX_API int32_t qqwcu2(int32_t *x, int32_t *y, int32_t capacity, int32_t *count,
                          int32_t *overflow);

/* Waits for one left click.
 *
 * x, y  become its position; they stay as they were if the wait ended without a click */
QUORIX_API int32_t qqwcu3(int32_t *x, int32_t *y);

/* Moves the pointer, and waits for any key or button.
 *
 * x, y  where to move the pointer, limited to the clip rectangle; become its position
 * mode  0  moves, then waits
 *       1  moves, and returns
 *       2  waits where the pointer is
 *       3  tells position and last key without waiting, and forgets the key
 *       4  tells the last key without waiting, buttons as 0, and forgets it; x, y stay
 *       Negative numbers count as 0. It becomes the key: 1 to 4 for the arrows left, up, right,
 *       down, 5 the left button, 6 MB2, 27 ESC, others the character; 0 after mode 1; -1 if the
 *       wait ended without one. */
QUORIX_API int32_t qqwcu4(int32_t *x, int32_t *y, int32_t *mode);

/* Asks for a rectangle, drawn as a rubber band from where the left button goes down to where it is
 * released.
 *
 * x1, y1  become the first corner
 * x2, y2  become the opposite corner, within the page; all 0 if the wait ended without one. They
 *         stay as they were where no window is open. */
QUORIX_API int32_t qqwcu5(int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2);

/* As qqwcu5, for a line. */
QUORIX_API int32_t qqwcu6(int32_t *x1, int32_t *y1, int32_t *x2, int32_t *y2);

/* Asks for a polygon, line by line with the left button, ended by MB2; arguments as of qqwcu1. */
QUORIX_API int32_t qqwcu7(int32_t *x, int32_t *y, int32_t capacity, int32_t *count,
                          int32_t *overflow);

#ifdef __cplusplus
}
#endif

#endif

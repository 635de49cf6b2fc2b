/* SPDX-License-Identifier: MIT
 *
 * Files by unit number, the environment, the clock, messages and callbacks.
 *
 * All operations return 0, except qqgenv.
 */
#ifndef QUORIX_SYSTEM_H
#define QUORIX_SYSTEM_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Binary files by unit number ----
 *
 * A table of 100 files, units 0 to 99, for the whole process. Numbers are passed by reference.
 */

/* Opens a file under a unit.
 *
 *   name    of the file (see quorix.h)
 *   unit    0 to 99
 *   mode    1: write, the file is emptied or created; 2: append; anything else, usually 0: read.
 *           Kept: the low 8 bits of mode + 1 stand for the open file afterwards. 1 may be read,
 *           all others written, so a file opened with mode 3 can be neither.
 *   status  0 done; 1 the file cannot be opened, the unit is no unit, or the low 8 bits of mode + 1
 *           are 0; 2 the unit is in use, and its file is left alone
 */
QUORIX_API int32_t c_openfl(const char *name, const int32_t *unit, const int32_t *mode,
                            int32_t *status);

/* Closes the file of a unit. status: 0 done; 1 no file is open under the unit. Bytes that were
 * gathered are written now, and quorix_last_failure (status.h) tells whether they could be. */
QUORIX_API int32_t c_closfl(const int32_t *unit, int32_t *status);

/* Reads up to `count` bytes. result: the number of bytes read, less than `count` at the end of the
 * file; -1 the unit is not open for reading, or `count` is negative. */
QUORIX_API int32_t c_readfl(const int32_t *unit, uint8_t *buffer, const int32_t *count,
                            int32_t *result);

/* Writes `count` bytes. result: the number of bytes accepted, less than `count` on a disk that is
 * full; -1 the unit is not open for writing, or `count` is negative. Bytes are gathered before
 * they go to the disk, so c_closfl may be what fails: see there. */
QUORIX_API int32_t c_writfl(const int32_t *unit, const uint8_t *buffer, const int32_t *count,
                            int32_t *result);

/* Moves by `offset` bytes from the current position. result: 0 done; -1 the unit is not open,
 * or the move is refused, as it is before the start of the file. Moves may lead beyond 2 GiB. */
QUORIX_API int32_t c_skipfl(const int32_t *unit, const int32_t *offset, int32_t *result);

/* Moves to `position`, counted from the start of the file. result: as for c_skipfl. */
QUORIX_API int32_t c_posifl(const int32_t *unit, const int32_t *position, int32_t *result);

/* result: the position in bytes from the start of the file; -1 the unit is not open, or the
 * position does not fit in 32 bits. */
QUORIX_API int32_t c_tellfl(const int32_t *unit, int32_t *result);

/* ---- The system ---- */

/* Looks up an environment variable, or the directory that holds the library's own files.
 *
 *   name    "QUORIX": the install directory. This is the environment variable QUORIX if there is
 *           one. Else, on Windows, the value "Path" (at most 132 bytes) of the registry key
 *           HKEY_LOCAL_MACHINE\SOFTWARE\Quorix, and on other systems share/quorix in the tree that
 *           the library is installed in, if it exists. Else "c:\quorix".
 *           "QUOENV": the environment variable QUORIX and nothing else.
 *           Any other name: the environment variable of that name.
 *   buffer  256 bytes; takes the value, cut to 255 characters, or stays as it was where nothing is
 *           found
 *
 * Returns the number of characters copied, 0 where nothing is found.
 */
QUORIX_API int32_t qqgenv(const char *name, char *buffer);

/* Removes a file (for its name see quorix.h). A file that is missing or cannot be read is left
 * alone without a word, and so is a directory. */
QUORIX_API int32_t qqrmfl(const char *name);

/* Runs a command through the system's command processor and waits for its end. Its result is
 * ignored, so a command that fails or does not exist looks like one that worked: have it leave a
 * file, and look for that. */
QUORIX_API int32_t qqsyst(const char *command);

/* The local time now: day 1 to 31, month 1 to 12, year with its century, hour 0 to 23, minute,
 * second. */
QUORIX_API int32_t qqtime(int32_t *day, int32_t *month, int32_t *year, int32_t *hour,
                          int32_t *minute, int32_t *second);

/* Shows a message: on Windows in a box with `caption`, and returns when the user has closed it; on
 * other systems as a line "caption: text" on the error stream. A program that nobody watches stops
 * at the box. */
QUORIX_API int32_t qqwmsg(const char *text, const char *caption);

/* Hands the messages that wait for this thread's windows to them, and returns when there are no
 * more. Does nothing where there are no windows. */
QUORIX_API int32_t qqwque(void);

/* ---- Callbacks ----
 *
 * The library keeps three functions for the plotting layer, which has them called through here.
 * None is set at start, and qqwwid with option 99 clears all three, as does the making of the
 * drawing record. Functions use the platform's C calling convention; what they return is ignored.
 */

/* Sets the projection callback, void (*)(void *, void *), where `flag` is 1. Any other flag leaves
 * it as it was, unlike that of qqswincb: to remove it, set null with flag 1. */
QUORIX_API int32_t qqwsetcb(void *function, const int32_t *flag);

/* Calls the projection callback with `a` and `b`, if there is one. */
QUORIX_API int32_t qqwprjcb(void *a, void *b);

/* Sets the pie callback, a function of ten pointers; null clears it. */
QUORIX_API int32_t qqspiecb(void *function);

/* Calls the pie callback with the ten arguments, if there is one. */
QUORIX_API int32_t qqwpiecb(void *a1, void *a2, void *a3, void *a4, void *a5, void *a6, void *a7,
                            void *a8, void *a9, void *a10);

/* Sets the window callback, void (*)(int32_t *window, int32_t *x, int32_t *y, int32_t *width,
 * int32_t *height), where `flag` is 1. Any other flag clears it. */
QUORIX_API int32_t qqswincb(void *function, const int32_t *flag);

/* Where the size of a plot window has changed since the last call, calls the window callback with
 * the window's number (from 1 on), its position and its size. The function may change the position
 * and size that the library has stored. Does nothing without a change or a callback. */
QUORIX_API int32_t qqwwincb(void);

#ifdef __cplusplus
}
#endif

#endif

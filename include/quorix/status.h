/* SPDX-License-Identifier: MIT
 *
 * What went wrong: the words for a status, and the file call that failed last.
 */
#ifndef QUORIX_STATUS_H
#define QUORIX_STATUS_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Statuses ---------------------------------------------------------------------------- */

/* Says in words what a status of an operation means, as the operation's description does:
 * quorix_status_text("qqpppm", -2) is "no memory". A status that is a number of bytes or of other
 * things has the words "done, and a number". The name of one of several operations whose statuses
 * differ matters, since the same number means different things.
 *
 * Returns a text that lasts for ever; "unknown status" for a number that the operation does not
 * give, and "unknown operation" for a name that no operation with a status has, or null. */
QUORIX_API const char *quorix_status_text(const char *operation, int32_t status);

/* ---- Files that could not be written ----------------------------------------------------- */

/* Statuses of writers tell of a file that cannot be opened, and of nothing that happens to it
 * afterwards. Whether all of a file reached the disk is asked here. */

/* The step of writing a file that failed. */
enum {
  QUORIX_STEP_OPEN = 1,  /* it could not be opened or created */
  QUORIX_STEP_WRITE = 2, /* bytes were not accepted */
  QUORIX_STEP_FLUSH = 3, /* what was gathered could not be handed to the system */
  QUORIX_STEP_CLOSE = 4  /* the same, when the file was closed */
};

/* Tells what failed last when a file was written, and forgets it.
 *
 *   operation  receives the name of the operation, as in "qqppng"
 *   step       receives one of the numbers above
 *   error      receives the system's number for the error (errno), 0 if it gave none. A full disk
 *              is ENOSPC
 *   reason     receives the system's words for that number, empty for 0
 *   file       receives the name that the operation was given; of a long one the last 255 bytes
 *   size       room of each of the three texts, terminator included; what does not fit is cut. 256
 *              is enough
 *
 * Returns 1, or 0 if nothing has failed since the last call; then nothing is received. Each of the
 * five addresses may be null.
 *
 * All operations that write files are covered: those of imageout.h, qqvfil, qqwfil, qqply2, the
 * documents of pdf.h, and c_openfl, c_writfl and c_closfl with files opened to be written. Of one
 * operation's failures the first is kept, and one operation's displaces another's. A document may
 * fail in any operation of pdf.h; its first failure is told again when it ends, whatever was told
 * before. So one call after a picture was written, or after a document was ended, answers whether
 * the file is whole. Readers are not covered: their statuses tell.
 */
QUORIX_API int32_t quorix_last_failure(char *operation, int32_t *step, int32_t *error, char *reason,
                                       char *file, int32_t size);

#ifdef __cplusplus
}
#endif

#endif

/* SPDX-License-Identifier: MIT
 *
 * Which version this is: of the header that a program was compiled with, and of the library that it
 * runs with. The build reads its own version from here.
 */
#ifndef QUORIX_VERSION_H
#define QUORIX_VERSION_H

#include "export.h"

#define QUORIX_VERSION_MAJOR 10
#define QUORIX_VERSION_MINOR 5
#define QUORIX_VERSION_PATCH 0

/* One number that grows from version to version: 100500 for 10.5.0. */
#define QUORIX_VERSION \
  (QUORIX_VERSION_MAJOR * 10000 + QUORIX_VERSION_MINOR * 100 + QUORIX_VERSION_PATCH)

#ifdef __cplusplus
extern "C" {
#endif

/* Returns QUORIX_VERSION as it was when the library was built. A library of the same major version
 * serves a program if this is not below the program's own QUORIX_VERSION. */
QUORIX_API int32_t quorix_version(void);

#ifdef __cplusplus
}
#endif

#endif

/* SPDX-License-Identifier: MIT
 *
 * Image readers: a file into a device, or into memory to be cropped and scaled.
 */
#ifndef QUORIX_IMAGEIN_H
#define QUORIX_IMAGEIN_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif

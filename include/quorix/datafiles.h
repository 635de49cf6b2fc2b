/* SPDX-License-Identifier: MIT
 *
 * Data files: FITS in, PLY meshes out.
 */
#ifndef QUORIX_DATAFILES_H
#define QUORIX_DATAFILES_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif

/* SPDX-License-Identifier: MIT
 *
 * Vector PDF documents, built page by page.
 */
#ifndef QUORIX_PDF_H
#define QUORIX_PDF_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif

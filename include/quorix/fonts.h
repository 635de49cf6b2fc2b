/* SPDX-License-Identifier: MIT
 *
 * Fonts: BDF bitmap fonts and the outlines of TrueType fonts.
 */
#ifndef QUORIX_FONTS_H
#define QUORIX_FONTS_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif

/* SPDX-License-Identifier: MIT
 *
 * Files by unit number, the environment, the clock, messages and callbacks.
 */
#ifndef QUORIX_SYSTEM_H
#define QUORIX_SYSTEM_H

#include "export.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif

/* SPDX-License-Identifier: MIT
 *
 * How an operation leaves the library and enters a program. Programs that link the static library
 * on Windows define QUORIX_STATIC; the CMake and pkg-config files do so for them.
 */
#ifndef QUORIX_EXPORT_H
#define QUORIX_EXPORT_H

#include <stdint.h>

#if defined(QUORIX_BUILD) && defined(_WIN32)
#define QUORIX_API __declspec(dllexport)
#elif defined(QUORIX_BUILD)
#define QUORIX_API __attribute__((visibility("default")))
#elif defined(_WIN32) && !defined(QUORIX_STATIC)
#define QUORIX_API __declspec(dllimport)
#else
#define QUORIX_API
#endif

#endif

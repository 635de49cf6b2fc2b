/* SPDX-License-Identifier: MIT
 *
 * Everything that Quorix exports. Include this, or the header of one family alone.
 *
 * All operations are plain C calls on process-wide state: one drawing record, one clip rectangle
 * for image files, and so on. They are made from one thread. An operation returns 0 unless its
 * description says otherwise; results travel through its arguments.
 *
 * Names of files are byte strings that end in a zero. On Windows a name that is valid UTF-8 and not
 * plain ASCII means those characters; any other is in the system's code page. Elsewhere the bytes
 * are the name. Whether a file that was written is whole, quorix_last_failure tells (status.h).
 */
#ifndef QUORIX_QUORIX_H
#define QUORIX_QUORIX_H

#include "algorithms.h"
#include "datafiles.h"
#include "depth.h"
#include "fonts.h"
#include "imagein.h"
#include "imageout.h"
#include "interaction.h"
#include "names.h"
#include "pdf.h"
#include "raster.h"
#include "status.h"
#include "system.h"
#include "version.h"
#include "window.h"
#include "windowpixels.h"
#include "windowtext.h"

#endif

/* SPDX-License-Identifier: MIT
 *
 * Names for the numbers that the operations take and give. Operations take plain int32_t, so names
 * and numbers mix as one likes; what each means stands with the operations.
 */
#ifndef QUORIX_NAMES_H
#define QUORIX_NAMES_H

/* ---- What operations take ---------------------------------------------------------------- */

/* Devices. Any number above 100 is the raster, and its negative the raster in true colours. */
enum {
  QUORIX_DEVICE_HELD = 0, /* readers: into memory */
  QUORIX_DEVICE_RASTER = 101,
  QUORIX_DEVICE_RASTER_TRUE_COLOUR = -101 /* writers */
};

/* `order` of the image writers. */
enum {
  QUORIX_ORDER_TURNED = 0,   /* on hosts that store the high byte first */
  QUORIX_ORDER_LOW_FIRST = 1 /* on all others, such as every x86 */
};

/* `code` of qqvdrw. */
enum { QUORIX_PEN_DRAW = 2, QUORIX_PEN_MOVE = 3 };

/* Values of the options QUORIX_OPTION_CAPS and QUORIX_OPTION_JOINS; also x of QUORIX_PDF_CAP and
 * QUORIX_PDF_JOIN. */
enum { QUORIX_CAP_BUTT = 0, QUORIX_CAP_ROUND = 1, QUORIX_CAP_SQUARE = 2 };
enum { QUORIX_JOIN_MITER = 0, QUORIX_JOIN_ROUND = 1, QUORIX_JOIN_BEVEL = 2 };

/* Options of qqwwid. */
enum {
  QUORIX_OPTION_TOP_LEVEL = 0,
  QUORIX_OPTION_CALLERS_WINDOW = 1,
  QUORIX_OPTION_CALLERS_BITMAP = 2,
  QUORIX_OPTION_SWAP_BLACK_WHITE = 3,
  QUORIX_OPTION_SCROLLING = 5,
  QUORIX_OPTION_CLIP_LEFT = 11,
  QUORIX_OPTION_CLIP_TOP = 12,
  QUORIX_OPTION_CLIP_RIGHT = 13,
  QUORIX_OPTION_CLIP_BOTTOM = 14,
  QUORIX_OPTION_DEPTH_FINE = 17,
  QUORIX_OPTION_DEPTH_COARSE = 18,
  QUORIX_OPTION_ALPHA = 19,
  QUORIX_OPTION_ASKING_CURSOR = 20,
  QUORIX_OPTION_LAYER_REPLACES = 21,
  QUORIX_OPTION_TEXT_MAP = 25,
  QUORIX_OPTION_PEN_WIDTH = 26,
  QUORIX_OPTION_CAPS = 27,
  QUORIX_OPTION_JOINS = 28,
  QUORIX_OPTION_CURSOR = 30,
  QUORIX_OPTION_TRANSPARENT = 32,
  QUORIX_OPTION_CLIPPING = 33,
  QUORIX_OPTION_SMOOTH_LINES = 34,
  QUORIX_OPTION_DEFAULTS = 99
};

/* Values of the options QUORIX_OPTION_CLIPPING and QUORIX_OPTION_SMOOTH_LINES. */
enum { QUORIX_CLIPPING_ON = 0, QUORIX_CLIPPING_OFF = 1 };
enum { QUORIX_LINES_PLAIN = 1, QUORIX_LINES_SMOOTH = 2 };

/* `symbol` of qqvsym. */
enum {
  QUORIX_SYMBOL_SQUARE = 0,
  QUORIX_SYMBOL_OCTAGON = 1,
  QUORIX_SYMBOL_TRIANGLE_UP = 2,
  QUORIX_SYMBOL_PLUS = 3,
  QUORIX_SYMBOL_CROSS = 4,
  QUORIX_SYMBOL_DIAMOND = 5,
  QUORIX_SYMBOL_TRIANGLE_DOWN = 6,
  QUORIX_SYMBOL_SQUARE_CROSS = 7,
  QUORIX_SYMBOL_PLUS_CROSS = 8,
  QUORIX_SYMBOL_DIAMOND_PLUS = 9,
  QUORIX_SYMBOL_OCTAGON_PLUS = 10,
  QUORIX_SYMBOL_TWO_TRIANGLES = 11,
  QUORIX_SYMBOL_SQUARE_PLUS = 12,
  QUORIX_SYMBOL_OCTAGON_CROSS = 13,
  QUORIX_SYMBOL_SQUARE_TRIANGLE = 14,
  QUORIX_SYMBOL_CIRCLE = 15,
  QUORIX_SYMBOL_FILLED_SQUARE = 16,
  QUORIX_SYMBOL_FILLED_OCTAGON = 17,
  QUORIX_SYMBOL_FILLED_TRIANGLE_UP = 18,
  QUORIX_SYMBOL_FILLED_DIAMOND = 19,
  QUORIX_SYMBOL_FILLED_TRIANGLE_DOWN = 20,
  QUORIX_SYMBOL_DISC = 21,
  QUORIX_SYMBOL_UPPER_HALF_CIRCLE = 22,
  QUORIX_SYMBOL_UPPER_HALF_DISC = 23
};

/* `op` of qqzbuf and of qqwabl. */
enum {
  QUORIX_DEPTH_ON = 0,
  QUORIX_DEPTH_OFF = 1,
  QUORIX_DEPTH_CLEAR = 2,
  QUORIX_DEPTH_ERASE_PICTURE = 3
};
enum {
  QUORIX_LAYER_OPEN = 1,
  QUORIX_LAYER_CLOSE = 2,
  QUORIX_BLENDING_ON = 3,
  QUORIX_BLENDING_OFF = 4
};

/* `op` of qqpdf2. */
enum {
  QUORIX_PDF_END = 1,
  QUORIX_PDF_LINE = 2,
  QUORIX_PDF_MOVE = 3,
  QUORIX_PDF_PAGE = 4,
  QUORIX_PDF_FILL = 5,
  QUORIX_PDF_WIDTH = 6,
  QUORIX_PDF_JOIN = 7,
  QUORIX_PDF_CAP = 8,
  QUORIX_PDF_MITER_LIMIT = 9,
  QUORIX_PDF_BEGIN_IMAGE = 10,
  QUORIX_PDF_END_IMAGE = 11,
  QUORIX_PDF_TRANSLATE = 12,
  QUORIX_PDF_ROTATE = 13,
  QUORIX_PDF_PLACE_IMAGE = 14,
  QUORIX_PDF_WHITE_TRANSPARENT = 15,
  QUORIX_PDF_CLIP_CORNER = 16,
  QUORIX_PDF_CLIP_OPPOSITE = 17,
  QUORIX_PDF_CLIP = 18
};

/* `family` of qqbdf1 and qqbdf1n. */
enum { QUORIX_FONT_COMPLX = 1, QUORIX_FONT_SIMPLX = 2, QUORIX_FONT_HELVE = 3 };

/* `mode` of c_openfl, of qqvfil and of qqsini. */
enum { QUORIX_FILE_READ = 0, QUORIX_FILE_WRITE = 1, QUORIX_FILE_APPEND = 2 };
enum { QUORIX_RASTER_FILE_SAVE = 0, QUORIX_RASTER_FILE_LOAD = 1 };
enum {
  QUORIX_STORE_OPEN = 0,
  QUORIX_STORE_CLOSE = 1,
  QUORIX_STORE_SORT = 2,
  QUORIX_STORE_COUNT = 3
};

/* ---- What operations give ---------------------------------------------------------------- */

/* The status of every operation that did what it was asked to. */
enum { QUORIX_DONE = 0 };

/* raster.h, depth.h, window.h, windowpixels.h and windowtext.h */
enum {
  QUORIX_RASTER_NOT_OPENED = 1, /* qqvini */
  QUORIX_CROP_NO_MEMORY = -2,   /* qqvwin */
  QUORIX_CROP_OUTSIDE = -3,
  QUORIX_POLYGON_CUT = 1,         /* qqvpol and qqwpol2 */
  QUORIX_RASTER_FILE_MISSING = 1, /* qqvfil and qqwfil */
  QUORIX_RASTER_FILE_NO_MEMORY = 2,
  QUORIX_RASTER_FILE_BAD = 3,
  QUORIX_RASTER_FILE_DEPTH = 4, /* qqwfil */
  QUORIX_DEPTH_NO_MEMORY = 1,   /* qqzbuf */
  QUORIX_DEPTH_NOT_DONE = 2,
  QUORIX_LAYER_FAILED = 1,     /* qqwabl */
  QUORIX_WINDOW_NO_ICON = 1,   /* qqwico */
  QUORIX_WINDOW_NO_PIXELS = 1, /* qqwimg */
  QUORIX_WINDOW_NO_FONT = 1    /* qqwfnt */
};

/* imageout.h and imagein.h */
enum {
  QUORIX_IMAGE_NO_FILE = -1,
  QUORIX_IMAGE_NO_MEMORY = -2,
  QUORIX_IMAGE_NO_DEVICE = -9,
  QUORIX_IMAGE_BAD_FILE = -3,     /* readers; of qqpiwin and qqpiscl: no such part, no picture */
  QUORIX_IMAGE_BAD_DATA = -4,     /* qqpipng */
  QUORIX_IMAGE_BAD_INDEX = -5,    /* qqpipng and qqpitif, which are done all the same */
  QUORIX_IMAGE_BAD_END = -6,      /* qqpipng */
  QUORIX_IMAGE_UNSUPPORTED = -11, /* qqpitif and qqpltif */
  QUORIX_IMAGE_DAMAGED = -12,     /* qqpitif; of qqpltif: the array is too small */
  QUORIX_PNG_NOT_STARTED = -3,    /* qqppng */
  QUORIX_PNG_NOT_FINISHED = -4,
  QUORIX_PNG_NOT_ENDED = -5
};

/* pdf.h */
enum {
  QUORIX_PDF_NO_FILE = -1, /* qqpdf1 */
  QUORIX_PDF_NO_MEMORY = -2,
  QUORIX_PDF_LOST = -1, /* qqpdf6 */
  QUORIX_PDF_NOTHING = -2,
  QUORIX_PDF_NO_ROOM = -3,
  QUORIX_BOOKMARK_NO_LEVEL = 1, /* qqpdf9 */
  QUORIX_BOOKMARK_NO_PARENT = 2,
  QUORIX_BOOKMARK_NO_TABLE = 3,
  QUORIX_BOOKMARK_NO_TITLE = 4
};

/* fonts.h */
enum {
  QUORIX_FONT_MISSING = 1, /* qqbdf1 and qqbdf1n */
  QUORIX_FONT_NO_MEMORY = 2,
  QUORIX_OUTLINE_NO_FILE = 1, /* qqttf1 */
  QUORIX_OUTLINE_NO_MEMORY = 2,
  QUORIX_OUTLINE_SHORT = 3,
  QUORIX_OUTLINE_NO_MAP = 4,
  QUORIX_OUTLINE_MAP_FORMAT = 5,
  QUORIX_OUTLINE_MAP_SHORT = 8,
  QUORIX_OUTLINE_NO_CMAP = 11,
  QUORIX_OUTLINE_NO_LOCA = 12,
  QUORIX_OUTLINE_NO_HEAD = 13,
  QUORIX_OUTLINE_NO_MAXP = 14,
  QUORIX_OUTLINE_NO_GLYF = 15,
  QUORIX_OUTLINE_BAD_HEAD = 23,
  QUORIX_OUTLINE_BAD_MAXP = 24,
  QUORIX_OUTLINE_NO_FONT = 1, /* qqttf2 */
  QUORIX_OUTLINE_NO_ROOM = 6,
  QUORIX_OUTLINE_NESTED = 7,
  QUORIX_OUTLINE_BAD_GLYPH = 8
};

/* datafiles.h */
enum {
  QUORIX_FITS_NO_FILE = -1,   /* qqfits1 and qqfits2 */
  QUORIX_FITS_NO_MEMORY = -2, /* qqfits1 and qqfits6 */
  QUORIX_FITS_NO_BITPIX = -3,
  QUORIX_FITS_NO_NAXIS = -4,
  QUORIX_FITS_NO_AXIS = -5,
  QUORIX_FITS_NO_UNIT = -1, /* qqfits6 */
  QUORIX_FITS_UNIT_WITHOUT_FILE = -6,
  QUORIX_FITS_NO_KEYWORD = -1, /* qqfits3 and qqfits5 */
  QUORIX_FITS_WRONG_KIND = -2,
  QUORIX_FITS_NOT_OPEN = -3, /* qqfits3, qqfits4 and qqfits5 */
  QUORIX_FITS_TEXT_CUT = -4, /* qqfits5 */
  QUORIX_FITS_NO_ROOM = -1,  /* qqfits4 */
  QUORIX_FITS_FILE_SHORT = -2,
  QUORIX_MESH_FAILED = 1 /* qqply1 and qqply2 */
};

/* algorithms.h */
enum {
  QUORIX_TRIANGLES_NO_ROOM = 1, /* qqdlau */
  QUORIX_TRIANGLES_NO_MEMORY = 2,
  QUORIX_TRIANGLES_CROWDED = 3,
  QUORIX_TRIANGLES_IN_LINE = 4,
  QUORIX_TRIANGLES_TOO_MANY = 5,
  QUORIX_STORE_FAILED = 1, /* qqsini, qqsput and qqsput2 */
  QUORIX_SEEDS_FAILED = 1  /* qqseed1, qqseed2 and qqseed4 */
};

/* system.h */
enum {
  QUORIX_FILE_NOT_OPENED = 1, /* c_openfl */
  QUORIX_FILE_UNIT_IN_USE = 2,
  QUORIX_FILE_NOT_OPEN = 1, /* c_closfl */
  QUORIX_FILE_FAILED = -1   /* c_readfl, c_writfl, c_skipfl, c_posifl and c_tellfl */
};

#endif

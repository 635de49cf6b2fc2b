// SPDX-License-Identifier: MIT
//
// quorix_status_text and its table. The words are those of the headers, and a test of the installed
// package holds the two against each other.
#include <cstddef>
#include <cstring>

#include "quorix/names.h"
#include "quorix/status.h"

namespace quorix {

namespace {

// Of the operations of a header, those that give statuses. Where the statuses are also numbers of
// something, every one that has no row of its own and is not negative is such a number.
struct StatusSource {
  const char *operations;  // between blanks
  bool counts;
};

constexpr StatusSource sources[] = {
    {" qqvini qqvwin qqvpol qqvfil ", false},
    {" qqzbuf qqwabl ", false},
    {" qqwico qqwpol2 qqwimg qqwfil qqwfnt ", false},
    {" qqpppm qqpgif qqptif qqpbmp qqpps qqppdf ", false},
    {" qqppng qqpltif ", true},
    {" qqpiwin qqpiscl qqpibmp qqpigif qqpipng qqpitif ", false},
    {" qqpdf1 qqpdf8 qqpdf9 ", false},
    {" qqpdf6 ", true},
    {" qqbdf1 qqbdf1n qqttf1 qqttf2 ", false},
    {" qqfits1 qqfits2 qqfits3 qqfits5 qqfits6 qqply1 qqply2 ", false},
    {" qqfits4 ", true},
    {" qqdlau qqsput qqsput2 qqseed1 qqseed2 qqseed4 ", false},
    {" qqsini ", true},
    {" c_openfl c_closfl c_skipfl c_posifl ", false},
    {" c_readfl c_writfl c_tellfl ", true},
};

struct StatusRow {
  const char *operations;  // between blanks
  int32_t status;
  const char *text;
};

#define ALL_WRITERS " qqpppm qqppng qqpgif qqptif qqpbmp qqpps qqppdf "
#define SHOWING_READERS " qqpibmp qqpigif qqpipng qqpitif "

constexpr StatusRow rows[] = {
    // raster.h
    {" qqvini ", QUORIX_RASTER_NOT_OPENED,
     "no memory, or a size below 1 (there is no raster then)"},
    {" qqvwin ", QUORIX_CROP_NO_MEMORY, "no memory"},
    {" qqvwin ", QUORIX_CROP_OUTSIDE, "the rectangle is empty or not within the raster"},
    {" qqvpol ", QUORIX_POLYGON_CUT,
     "some row had more than 99 crossings and was drawn with its first 99, or there is no drawing "
     "record yet"},
    {" qqvfil ", QUORIX_RASTER_FILE_MISSING, "the file cannot be opened, or there is no raster"},
    {" qqvfil ", QUORIX_RASTER_FILE_NO_MEMORY, "no memory"},
    {" qqvfil ", QUORIX_RASTER_FILE_BAD, "not such a file, or one of an unsupported depth"},

    // depth.h
    {" qqzbuf ", QUORIX_DEPTH_NO_MEMORY, "no memory, no page, or no drawing record yet"},
    {" qqzbuf ", QUORIX_DEPTH_NOT_DONE,
     "op 0 while depth buffering is on, or any of the others while it is off: nothing was done"},
    {" qqwabl ", QUORIX_LAYER_FAILED,
     "no memory, or op 1 on a palette raster, without a page or without a drawing record, or op 2 "
     "could not reach the window's pixels"},

    // window.h, windowpixels.h and windowtext.h
    {" qqwico ", QUORIX_WINDOW_NO_ICON,
     "the file cannot be read as an icon, there is no window, or the system has no icons"},
    {" qqwpol2 ", QUORIX_POLYGON_CUT,
     "no memory, no window device, or with OpenGL a row of more than 99 crossings, drawn with its "
     "first 99"},
    {" qqwfnt ", QUORIX_WINDOW_NO_FONT,
     "there is no such font, no window, or the system has no fonts"},
    {" qqwimg ", QUORIX_WINDOW_NO_PIXELS, "no window, no bitmap or no memory"},
    {" qqwfil ", QUORIX_RASTER_FILE_MISSING, "the file cannot be opened, or there is no window"},
    {" qqwfil ", QUORIX_RASTER_FILE_NO_MEMORY, "no memory"},
    {" qqwfil ", QUORIX_RASTER_FILE_BAD, "not such a file"},
    {" qqwfil ", QUORIX_RASTER_FILE_DEPTH, "a depth that this window cannot load"},

    // imageout.h
    {ALL_WRITERS, QUORIX_IMAGE_NO_FILE,
     "the file cannot be opened, or there is no drawing record yet (qqvini makes it), and no file "
     "was touched"},
    {ALL_WRITERS, QUORIX_IMAGE_NO_MEMORY, "no memory"},
    {ALL_WRITERS, QUORIX_IMAGE_NO_DEVICE,
     "there is no such device in this library, and no file was touched"},
    {" qqppng ", QUORIX_PNG_NOT_STARTED, "the compressor could not be started"},
    {" qqppng ", QUORIX_PNG_NOT_FINISHED, "the compressor failed in its work"},
    {" qqppng ", QUORIX_PNG_NOT_ENDED, "the compressor failed at its end"},

    // imagein.h
    {SHOWING_READERS "qqpiscl ", QUORIX_IMAGE_NO_FILE,
     "the file cannot be opened, or a device is named and there is no drawing record yet (qqvini "
     "makes it)"},
    {SHOWING_READERS, QUORIX_IMAGE_NO_MEMORY, "no memory"},
    {SHOWING_READERS "qqpiscl ", QUORIX_IMAGE_NO_DEVICE, "there is no such device in this library"},
    {" qqpiwin ", QUORIX_IMAGE_NO_MEMORY, "no memory, and the picture stays"},
    {" qqpiwin ", QUORIX_IMAGE_BAD_FILE, "the rectangle reaches outside, or no picture is held"},
    {" qqpiscl ", QUORIX_IMAGE_NO_MEMORY, "no memory, or a size of 0 or below"},
    {" qqpiscl ", QUORIX_IMAGE_BAD_FILE, "no picture is held"},
    {" qqpibmp ", QUORIX_IMAGE_BAD_FILE,
     "the width is not positive, the header is not whole, depth and compression do not go "
     "together, "
     "or run lengths end without their end code"},
    {" qqpigif ", QUORIX_IMAGE_BAD_FILE,
     "no image or an empty one, no colour table, a code that cannot be, or an end of the file "
     "before "
     "the end code or the image's last sub-block"},
    {" qqpipng ", QUORIX_IMAGE_BAD_FILE, "no PNG file, or the decompressor cannot be started"},
    {" qqpipng ", QUORIX_IMAGE_BAD_DATA, "the compressed data are damaged"},
    {" qqpipng ", QUORIX_IMAGE_BAD_INDEX,
     "done, but some pixel's index is outside the palette, and counts as index 0"},
    {" qqpipng ", QUORIX_IMAGE_BAD_END, "the decompressor failed at its end"},
    {" qqpitif ", QUORIX_IMAGE_BAD_FILE,
     "the directory does not lie within the file, strips or tiles have no sizes, or have far more "
     "bytes than the file"},
    {" qqpitif ", QUORIX_IMAGE_BAD_INDEX,
     "done, but some index of 2 or 4 bits is outside the palette and counts as index 0 (in tiles "
     "the "
     "status stays 0)"},
    {" qqpitif ", QUORIX_IMAGE_UNSUPPORTED,
     "the file asks for something that this reader does not support"},
    {" qqpitif ", QUORIX_IMAGE_DAMAGED, "the compressed data are damaged"},
    {" qqpltif ", QUORIX_IMAGE_NO_FILE, "the file cannot be opened"},
    {" qqpltif ", QUORIX_IMAGE_NO_MEMORY, "no memory"},
    {" qqpltif ", QUORIX_IMAGE_BAD_FILE, "no TIFF file, or a damaged one"},
    {" qqpltif ", QUORIX_IMAGE_UNSUPPORTED, "something that this reader does not support"},
    {" qqpltif ", QUORIX_IMAGE_DAMAGED, "the array is too small"},

    // pdf.h
    {" qqpdf1 ", QUORIX_PDF_NO_FILE, "the file cannot be opened"},
    {" qqpdf1 ", QUORIX_PDF_NO_MEMORY, "no memory"},
    {" qqpdf6 ", QUORIX_PDF_LOST, "some bytes were lost"},
    {" qqpdf6 ", QUORIX_PDF_NOTHING, "there are no bytes, or they were handed over before"},
    {" qqpdf6 ", QUORIX_PDF_NO_ROOM, "the bytes do not fit"},
    {" qqpdf9 ", QUORIX_BOOKMARK_NO_LEVEL, "no such level, or no document"},
    {" qqpdf9 ", QUORIX_BOOKMARK_NO_PARENT, "some lower level has no bookmark yet"},
    {" qqpdf9 ", QUORIX_BOOKMARK_NO_TABLE, "no memory for the table of bookmarks"},
    {" qqpdf9 ", QUORIX_BOOKMARK_NO_TITLE, "no memory for the title"},

    // fonts.h
    {" qqbdf1 qqbdf1n ", QUORIX_FONT_MISSING, "no such family, or nothing was drawn yet"},
    {" qqbdf1 qqbdf1n ", QUORIX_FONT_NO_MEMORY, "no memory"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_FILE, "the file cannot be opened"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_MEMORY, "no memory"},
    {" qqttf1 ", QUORIX_OUTLINE_SHORT, "a table is not all there"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_MAP, "no character map for platform 3, encoding 1"},
    {" qqttf1 ", QUORIX_OUTLINE_MAP_FORMAT, "the character map has another format than 4"},
    {" qqttf1 ", QUORIX_OUTLINE_MAP_SHORT, "the character map is shorter than its segments"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_CMAP, "the table cmap is missing"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_LOCA, "the table loca is missing"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_HEAD, "the table head is missing"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_MAXP, "the table maxp is missing"},
    {" qqttf1 ", QUORIX_OUTLINE_NO_GLYF, "the table glyf is missing"},
    {" qqttf1 ", QUORIX_OUTLINE_BAD_HEAD, "the table head has a wrong length"},
    {" qqttf1 ", QUORIX_OUTLINE_BAD_MAXP, "the table maxp has a wrong length"},
    {" qqttf2 ", QUORIX_OUTLINE_NO_FONT, "no font is open"},
    {" qqttf2 ", QUORIX_OUTLINE_NO_ROOM, "max_points is too small"},
    {" qqttf2 ", QUORIX_OUTLINE_NESTED, "a component of the glyph is no simple glyph"},
    {" qqttf2 ", QUORIX_OUTLINE_BAD_GLYPH,
     "the glyph or a component does not exist or is damaged, or its components have more than 2^24 "
     "points (of several components, the last one's status)"},

    // datafiles.h
    {" qqfits1 ", QUORIX_FITS_NO_FILE,
     "the file cannot be opened, and what was open before stays open"},
    {" qqfits1 ", QUORIX_FITS_NO_MEMORY, "no memory, and what was open before stays open"},
    {" qqfits1 ", QUORIX_FITS_NO_BITPIX, "the header has no BITPIX"},
    {" qqfits1 ", QUORIX_FITS_NO_NAXIS, "the header has no NAXIS, or one outside 0 to 999"},
    {" qqfits1 qqfits6 ", QUORIX_FITS_NO_AXIS, "one of its NAXISn is missing"},
    {" qqfits2 ", QUORIX_FITS_NO_FILE, "no file is open"},
    {" qqfits3 qqfits5 ", QUORIX_FITS_NO_KEYWORD, "no such keyword"},
    {" qqfits3 ", QUORIX_FITS_WRONG_KIND, "the value has the wrong kind"},
    {" qqfits5 ", QUORIX_FITS_WRONG_KIND, "the value is no text"},
    {" qqfits3 qqfits4 qqfits5 ", QUORIX_FITS_NOT_OPEN, "no file is open"},
    {" qqfits5 ", QUORIX_FITS_TEXT_CUT, "the text has size - 1 characters, or more and was cut"},
    {" qqfits4 ", QUORIX_FITS_NO_ROOM,
     "the room is too small, an axis is negative, or the number does not fit in 32 bits"},
    {" qqfits4 ", QUORIX_FITS_FILE_SHORT, "the file ends before, and the buffer is undefined"},
    {" qqfits6 ", 0, "primary, or of no known type"},
    {" qqfits6 ", 1, "image"},
    {" qqfits6 ", 2, "ASCII table"},
    {" qqfits6 ", 3, "binary table"},
    {" qqfits6 ", QUORIX_FITS_NO_UNIT,
     "the unit cannot be reached, for instance because of a negative axis before it"},
    {" qqfits6 ", QUORIX_FITS_NO_MEMORY, "no memory"},
    {" qqfits6 ", QUORIX_FITS_NO_BITPIX, "no BITPIX in that unit, or no such unit"},
    {" qqfits6 ", QUORIX_FITS_NO_NAXIS, "no NAXIS, or one outside 0 to 999"},
    {" qqfits6 ", QUORIX_FITS_UNIT_WITHOUT_FILE, "no file is open"},
    {" qqply1 ", QUORIX_MESH_FAILED, "n is negative or there is no memory"},
    {" qqply2 ", QUORIX_MESH_FAILED,
     "the file cannot be created, or the mesh was lost, and nothing is written"},

    // algorithms.h
    {" qqdlau ", QUORIX_TRIANGLES_NO_ROOM, "nmax too small"},
    {" qqdlau ", QUORIX_TRIANGLES_NO_MEMORY, "no memory"},
    {" qqdlau ", QUORIX_TRIANGLES_CROWDED,
     "a point lies in the circles of too many triangles (k of them with 3 k >= n, or 3 k >= 100 if "
     "n is less)"},
    {" qqdlau ", QUORIX_TRIANGLES_IN_LINE, "three points of a triangle lie (nearly) on a line"},
    {" qqdlau ", QUORIX_TRIANGLES_TOO_MANY, "more than nmax triangles"},
    {" qqsini ", 0, "done"},
    {" qqsini ", QUORIX_STORE_FAILED, "no memory, and an open store stays as it was"},
    {" qqsput qqsput2 ", QUORIX_STORE_FAILED,
     "no memory, no store, or nv negative, and the polygon is not stored"},
    {" qqseed1 ", QUORIX_SEEDS_FAILED,
     "with mode 0 no memory, a cell size that is not a positive number, or a domain of negative or "
     "infinite extent, with mode 1 no memory to file some points"},
    {" qqseed2 ", QUORIX_SEEDS_FAILED,
     "there is no further line, or no grid (all else is left alone)"},
    {" qqseed4 ", QUORIX_SEEDS_FAILED, "no memory, or no grid, and the line is not added"},

    // system.h
    {" c_openfl ", QUORIX_FILE_NOT_OPENED,
     "the file cannot be opened, the unit is no unit, or the low 8 bits of mode + 1 are 0"},
    {" c_openfl ", QUORIX_FILE_UNIT_IN_USE, "the unit is in use, and its file is left alone"},
    {" c_closfl ", QUORIX_FILE_NOT_OPEN, "no file is open under the unit"},
    {" c_readfl ", QUORIX_FILE_FAILED, "the unit is not open for reading, or count is negative"},
    {" c_writfl ", QUORIX_FILE_FAILED, "the unit is not open for writing, or count is negative"},
    {" c_skipfl c_posifl ", QUORIX_FILE_FAILED,
     "the unit is not open, or the move is refused, as it is before the start of the file"},
    {" c_tellfl ", QUORIX_FILE_FAILED,
     "the unit is not open, or the position does not fit in 32 bits"},
};

// Whether a name stands in a list between blanks.
bool names(const char *list, const char *operation) {
  const size_t length = std::strlen(operation);
  if (length == 0 || std::strchr(operation, ' ') != nullptr) return false;
  for (const char *at = std::strstr(list, operation); at != nullptr;
       at = std::strstr(at + 1, operation)) {
    if (at[-1] == ' ' && at[length] == ' ') return true;
  }
  return false;
}

const StatusSource *find_source_of(const char *operation) {
  for (const StatusSource &source : sources) {
    if (names(source.operations, operation)) return &source;
  }
  return nullptr;
}

}  // namespace

}  // namespace quorix

extern "C" const char *quorix_status_text(const char *operation, int32_t status) {
  if (operation == nullptr) return "unknown operation";
  const quorix::StatusSource *const source = quorix::find_source_of(operation);
  if (source == nullptr) return "unknown operation";
  for (const quorix::StatusRow &row : quorix::rows) {
    if (row.status == status && quorix::names(row.operations, operation)) return row.text;
  }
  if (source->counts && status >= 0) return "done, and a number";
  return status == QUORIX_DONE ? "done" : "unknown status";
}

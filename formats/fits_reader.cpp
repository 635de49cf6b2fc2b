// SPDX-License-Identifier: MIT
//
// qqfits1 to qqfits6: one FITS file at a time, its keywords, and its data as they stand in the
// file.
//
// A second opening closes the first file once the new header was read. Negative axes are refused,
// and data of more bytes than 32 bits hold; integers of keywords saturate.
#include <cstring>

#include "base/files.h"
#include "base/leading_numbers.h"
#include "formats/fits.h"
#include "quorix/datafiles.h"

namespace quorix {

namespace {

enum OpenStatus : int32_t {
  fits_done = 0,
  fits_not_opened = -1,  // for qqfits6: it cannot seek; for qqfits2: nothing is open
  fits_no_memory = -2,
  fits_no_bitpix = -3,
  fits_no_naxis = -4,
  fits_no_axis = -5,
  fits_unit_without_file = -6,
};

enum KeywordStatus : int32_t {
  keyword_missing = -1,
  keyword_wrong_kind = -2,
  keyword_without_file = -3,
  keyword_too_long = -4,
};

enum DataStatus : int32_t { data_no_room = -1, data_short = -2, data_without_file = -3 };

enum WantedType : int32_t { wanted_integer = 1, wanted_kind = 3 };

constexpr int64_t block_bytes = 2880;

struct FitsFile {
  std::FILE *file;  // owned; null while no file is open
  int32_t bitpix;
  int32_t naxis;
  int32_t *naxes;  // owned
  int64_t data_offset;
};

FitsFile current_fits = {};

bool is_open() {
  return current_fits.file != nullptr;
}

bool seek_to(int64_t position) {
  return file_gate.seek(current_fits.file, position, SEEK_SET) == 0;
}

void close_fits() {
  if (current_fits.file != nullptr) close_file(current_fits.file);
  release_bytes(current_fits.naxes);
  current_fits = {};
}

// ---- headers

int32_t check_axes(int32_t naxis, const int32_t *naxes) {
  for (int32_t i = 0; i < naxis; ++i) {
    if (naxes[i] == fits_unknown) return fits_no_axis;
  }
  return fits_done;
}

// A header that lacks something leaves the file open all the same.
int32_t open_fits(const char *filename) {
  OwnedFile file = open_file(filename, "rb");
  if (file == nullptr) return fits_not_opened;
  FitsHeader header;
  if (!read_fits_header(file.get(), &header)) return fits_no_memory;
  close_fits();
  current_fits = {file.release(), header.bitpix, header.naxis, header.naxes.release(),
                  header.bytes};
  if (current_fits.bitpix == fits_unknown) return fits_no_bitpix;
  if (current_fits.naxis == fits_unknown) return fits_no_naxis;
  return check_axes(current_fits.naxis, current_fits.naxes);
}

// Stores what a selected unit's header has, as far as it goes. Gives the unit's type, or what it
// lacks.
int32_t take_unit(FitsHeader *header) {
  // Kept: the size of the unit's own header, without the unit's place in the file.
  current_fits.data_offset = header->bytes;
  if (header->bitpix == fits_unknown) return fits_no_bitpix;
  current_fits.bitpix = header->bitpix;
  if (header->naxis == fits_unknown) return fits_no_naxis;
  current_fits.naxis = header->naxis;
  release_bytes(current_fits.naxes);
  current_fits.naxes = header->naxes.release();
  const int32_t status = check_axes(current_fits.naxis, current_fits.naxes);
  return status == fits_done ? header->type : status;
}

// Moves a position behind a unit; false if that is no position.
bool pass_unit(const FitsHeader &header, int64_t *position) {
  int64_t data = 0;
  if (header.naxis > 0) data = fits_data_bytes(header.bitpix, header.naxis, header.naxes.get());
  if (data < 0) return false;
  const int64_t padding = (block_bytes - data % block_bytes) % block_bytes;
  return !__builtin_add_overflow(data, padding, &data) &&
         !__builtin_add_overflow(data, header.bytes, &data) &&
         !__builtin_add_overflow(*position, data, position);
}

int32_t select_unit(int32_t number) {
  if (!is_open()) return fits_unit_without_file;
  int64_t position = 0;
  for (int32_t unit = 1;; ++unit) {
    if (!seek_to(position)) return fits_not_opened;
    FitsHeader header;
    if (!read_fits_header(current_fits.file, &header)) return fits_no_memory;
    // At the file's end all further units are the same: empty, and at the same place.
    if (unit >= number || header.bytes == 0) return take_unit(&header);
    if (!pass_unit(header, &position)) return fits_not_opened;
  }
}

// ---- keywords

// Looks through the first header, whatever unit is selected.
bool find_card(const char *keyword, FitsCard *card) {
  char padded[keyword_bytes + 1];
  std::memset(padded, ' ', keyword_bytes);
  padded[keyword_bytes] = '\0';
  if (keyword == nullptr || !seek_to(0)) return false;
  for (int32_t i = 0; i < keyword_bytes && keyword[i] != '\0'; ++i)
    padded[i] = keyword[i];
  while (read_card(current_fits.file, card)) {
    if (card_starts(*card, padded)) return true;
    if (card_starts(*card, "END")) return false;
  }
  return false;
}

int32_t get_number(const char *keyword, int32_t type, int32_t *ivalue, double *dvalue) {
  if (!is_open()) return keyword_without_file;
  FitsCard card;
  if (!find_card(keyword, &card)) return keyword_missing;
  const char *const value = card_value(card);
  const FitsKind kind = fits_value_kind(value);
  if (type == wanted_kind) {
    *ivalue = kind;
  } else if (type != wanted_integer) {
    if (kind != kind_integer && kind != kind_real) return keyword_wrong_kind;
    *dvalue = leading_real(value);
  } else if (kind == kind_integer) {
    *ivalue = leading_int(value);
  } else {
    if (kind != kind_true && kind != kind_false) return keyword_wrong_kind;
    *ivalue = kind == kind_true ? 1 : 0;
  }
  return fits_done;
}

// Copies what stands between the quotes, doubled quotes as both of their characters. A text that
// fills the buffer counts as too long, even if nothing of it is lost: kept.
int32_t copy_text(const char *value, char *buffer, int32_t size) {
  const char *from = std::strchr(value, '\'') + 1;
  const int32_t room = size - 1;
  int32_t length = 0;
  while (length < room && (*from != '\'' || from[1] == '\'')) {
    const int32_t characters = *from == '\'' ? 2 : 1;
    for (int32_t i = 0; i < characters && length < room; ++i)
      buffer[length++] = *from++;
  }
  buffer[length] = '\0';
  if (length == room) return keyword_too_long;
  return fits_done;
}

int32_t get_text(const char *keyword, char *buffer, int32_t size) {
  if (!is_open()) return keyword_without_file;
  FitsCard card;
  if (!find_card(keyword, &card)) return keyword_missing;
  const char *const value = card_value(card);
  const FitsKind kind = fits_value_kind(value);
  if (kind != kind_text && kind != kind_empty_text) return keyword_wrong_kind;
  if (size < 1) return keyword_too_long;
  if (kind == kind_text) return copy_text(value, buffer, size);
  buffer[0] = '\0';
  return fits_done;
}

// ---- data

// Straight into the caller's buffer, in one piece.
int32_t read_data(uint8_t *buffer, int32_t size) {
  if (!is_open()) return data_without_file;
  const int64_t bytes =
      fits_data_bytes(current_fits.bitpix, current_fits.naxis, current_fits.naxes);
  if (bytes < 0 || bytes > INT32_MAX) return data_no_room;
  const auto result = static_cast<int32_t>(bytes);
  if (size == 0) return result;
  if (size < result) return data_no_room;
  if (!seek_to(current_fits.data_offset)) return data_short;
  const auto count = static_cast<size_t>(bytes);
  return count == 0 || read_file(current_fits.file, buffer, count) == count ? result : data_short;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqfits1(const char *filename, int32_t *status) {
  *status = quorix::open_fits(filename);
  return 0;
}

extern "C" int32_t qqfits2(int32_t *status) {
  *status = quorix::is_open() ? quorix::fits_done : quorix::fits_not_opened;
  quorix::close_fits();
  return 0;
}

extern "C" int32_t qqfits3(const char *keyword, int32_t *ivalue, double *dvalue,
                           const int32_t *type, int32_t *status) {
  *ivalue = -1;
  *status = quorix::get_number(keyword, *type, ivalue, dvalue);
  return 0;
}

extern "C" int32_t qqfits4(uint8_t *buffer, const int32_t *size, int32_t *result) {
  *result = quorix::read_data(buffer, *size);
  return 0;
}

extern "C" int32_t qqfits5(const char *keyword, char *buffer, const int32_t *size,
                           int32_t *status) {
  *status = quorix::get_text(keyword, buffer, *size);
  return 0;
}

extern "C" int32_t qqfits6(const int32_t *number, int32_t *result) {
  *result = quorix::select_unit(*number);
  return 0;
}

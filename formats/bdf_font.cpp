// SPDX-License-Identifier: MIT
//
// qqbdf1 and qqbdf1n: the choice of a bitmap font, and its file.
//
// The drawing record owns the loaded fonts; they go with it, and a new record reads their files
// again. A font that came from no file, but from inside the library, counts as not loaded: it
// serves, and each selection looks for a file once more.
#include <algorithm>

#include "base/char_codes.h"
#include "base/numbers.h"
#include "base/text.h"
#include "core/output_context.h"
#include "formats/bdf.h"
#include "platform/paths.h"
#include "platform/system.h"
#include "quorix/fonts.h"

namespace quorix {

namespace {

constexpr size_t path_limit = 256;
constexpr int32_t first_width_code = 32;
constexpr int32_t width_count = last_national_code + 1 - first_width_code;
constexpr int32_t no_font = -1;

struct FontFile {
  const char *name;  // its number is the height of the capitals
  int32_t family;
  int32_t size_limit;  // serves sizes below
};

constexpr FontFile font_files[bdf_font_count] = {
    {"complx10", 1, 11}, {"complx12", 1, 13}, {"complx14", 1, 17}, {"complx18", 1, INT32_MAX},
    {"simplx8", 2, 9},   {"simplx10", 2, 11}, {"simplx12", 2, 13}, {"simplx14", 2, INT32_MAX},
    {"helve10", 3, 11},  {"helve12", 3, 13},  {"helve14", 3, 17},  {"helve18", 3, INT32_MAX},
};

int32_t font_number(int32_t family, int32_t size) {
  for (int32_t i = 0; i < bdf_font_count; ++i) {
    const FontFile &file = font_files[i];
    if (file.family == family && (size < file.size_limit || file.size_limit == INT32_MAX)) return i;
  }
  return no_font;
}

// Kept: the environment has the last word over the caller's directory.
void make_path(char *path, const char *directory, bool use_directory, const char *name) {
  path[0] = '\0';
  if (use_directory && directory != nullptr) copy_bytes(path, directory, path_limit);
  environment_text(use_directory ? "QUOENV" : "QUORIX", path);
  const char separator[] = {path_separator, '\0'};
  append_bytes(path, separator, path_limit);
  append_bytes(path, "fonts", path_limit);
  append_bytes(path, separator, path_limit);
  append_bytes(path, name, path_limit);
  append_bytes(path, ".bdf", path_limit);
}

void release_bdf_fonts(OutputContext *context) {
  for (int32_t i = 0; i < bdf_font_count; ++i) {
    release_bdf_font(context->fonts.bdf_fonts[i]);
    context->fonts.bdf_fonts[i] = nullptr;
    context->fonts.bdf_loaded[i] = 0;
  }
  context->fonts.bdf_current = nullptr;
}

BdfStatus read_font_file(const char *name, const char *directory, bool use_directory,
                         BdfFont **font) {
  char path[path_limit + 1];
  make_path(path, directory, use_directory, name);
  const BdfStatus status = read_bdf_font(path, font);
  return status == bdf_no_file ? read_bdf_font_beside(name, font) : status;
}

void keep_font(OutputContext *context, int32_t number, BdfFont *font) {
  BdfFont *&kept = context->fonts.bdf_fonts[number];
  if (kept != font) release_bdf_font(kept);
  kept = font;
  release_with_context(context, release_bdf_fonts);
}

// A font that cannot be loaded takes the place of the current one all the same: none is current.
int32_t load_font(OutputContext *context, int32_t number, const char *directory,
                  bool use_directory) {
  const char *const name = font_files[number].name;
  context->fonts.bdf_current = nullptr;
  BdfFont *font = nullptr;
  BdfStatus status = read_font_file(name, directory, use_directory, &font);
  const bool without_file = status == bdf_no_file;
  if (without_file) {
    font = context->fonts.bdf_fonts[number];
    status = font != nullptr ? bdf_done : read_built_in_font(name, &font);
  }
  if (status != bdf_done) return status;
  keep_font(context, number, font);
  context->fonts.bdf_loaded[number] = without_file ? 0 : 1;
  context->fonts.bdf_current = font;
  return bdf_done;
}

int32_t tenfold(int32_t value) {
  return to_int32(10.0 * value);
}

void report_widths(const BdfFont &font, int32_t *widths) {
  for (int32_t code = first_width_code; code <= last_national_code; ++code) {
    const BdfGlyph *const glyph = find_bdf_glyph(font, map_char_code(code, false, charset_unicode));
    widths[code - first_width_code] = glyph == nullptr ? 0 : tenfold(glyph->dwidth[0]);
  }
}

int32_t select_font(OutputContext *context, const char *directory, bool use_directory,
                    int32_t family, int32_t size) {
  const int32_t number = font_number(family, size);
  if (number == no_font) return bdf_no_file;
  if (context->fonts.bdf_loaded[number] != 1) {
    return load_font(context, number, directory, use_directory);
  }
  context->fonts.bdf_current = context->fonts.bdf_fonts[number];
  return bdf_done;
}

// Makes a font current and gives the widths of its characters.
int32_t choose_font(OutputContext *context, const char *directory, bool use_directory,
                    int32_t family, int32_t size, int32_t *widths) {
  if (context == nullptr) {
    std::fill_n(widths, width_count, 0);
    return bdf_no_file;
  }
  const int32_t status = select_font(context, directory, use_directory, family, size);
  if (status == bdf_done) report_widths(*context->fonts.bdf_current, widths);
  return status;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t qqbdf1n(const char *directory, const int32_t *use_directory,
                           const int32_t *family, const int32_t *size, int32_t *widths,
                           int32_t *status) {
  *status = quorix::choose_font(quorix::output_context, directory, *use_directory != 0, *family,
                                *size, widths);
  return 0;
}

extern "C" int32_t qqbdf1(const int32_t *family, const int32_t *size, int32_t *widths,
                          int32_t *status) {
  *status = quorix::choose_font(quorix::output_context, nullptr, false, *family, *size, widths);
  return 0;
}

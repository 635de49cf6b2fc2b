// SPDX-License-Identifier: MIT
//
// Where a bitmap font comes from when the install directory has none: a static program, a copied
// library, a build tree or an unpacked archive has its fonts beside it, or only inside.
#include <climits>
#include <cstring>

#include "base/inflate.h"
#include "base/memory.h"
#include "base/text.h"
#include "formats/bdf.h"
#include "formats/built_in_fonts.h"
#include "platform/system.h"

namespace quorix {

namespace {

// From the folder of the library or the program. Windows takes this separator too.
constexpr const char *ways[] = {"/fonts/", "/share/quorix/fonts/", "/../share/quorix/fonts/"};

constexpr size_t path_size = 4096;

BdfStatus read_from(bool (*folder)(char *, size_t), const char *name, BdfFont **font) {
  char path[path_size];
  if (!folder(path, path_size)) return bdf_no_file;
  const size_t start = std::strlen(path);
  for (const char *way : ways) {
    path[start] = '\0';
    append_bytes(path, way, path_size - 1);
    append_bytes(path, name, path_size - 1);
    append_bytes(path, ".bdf", path_size - 1);
    const BdfStatus status = read_bdf_font(path, font);
    if (status != bdf_no_file) return status;
  }
  return bdf_no_file;
}

}  // namespace

BdfStatus read_bdf_font_beside(const char *name, BdfFont **font) {
  *font = nullptr;
  const BdfStatus status = read_from(folder_of_library, name, font);
  return status != bdf_no_file ? status : read_from(folder_of_program, name, font);
}

BdfStatus read_built_in_font(const char *name, BdfFont **font) {
  *font = nullptr;
  const BuiltInFont *built_in = built_in_fonts;
  while (built_in->name != nullptr && std::strcmp(built_in->name, name) != 0)
    ++built_in;
  if (built_in->name == nullptr) return bdf_no_file;
  const OwnedArray<uint8_t> text = allocate_array<uint8_t>(built_in->size);
  if (text == nullptr ||
      !inflate_block(built_in->bytes, built_in->count, text.get(), built_in->size)) {
    return bdf_no_memory;
  }
  return read_bdf_text(text.get(), built_in->size, font);
}

}  // namespace quorix

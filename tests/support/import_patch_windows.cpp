// SPDX-License-Identifier: MIT
#include "tests/support/import_patch_windows.h"

#include <cstring>

namespace quorix::testing {

ImportPatch::ImportPatch(const char *module, const char *function, void *replacement) {
  auto *base = reinterpret_cast<char *>(GetModuleHandleA(module));
  if (base == nullptr) return;
  auto *dos = reinterpret_cast<IMAGE_DOS_HEADER *>(base);
  auto *nt = reinterpret_cast<IMAGE_NT_HEADERS *>(base + dos->e_lfanew);
  const auto &directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  auto *import = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR *>(base + directory.VirtualAddress);
  for (; import->Name != 0; ++import) {
    auto *names = reinterpret_cast<IMAGE_THUNK_DATA *>(base + import->OriginalFirstThunk);
    auto *slots = reinterpret_cast<void **>(base + import->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++slots) {
      if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
      auto *entry = reinterpret_cast<IMAGE_IMPORT_BY_NAME *>(base + names->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<char *>(entry->Name), function) != 0) continue;
      slot_ = slots;
      original_ = *slots;
      write(replacement);
      return;
    }
  }
}

ImportPatch::~ImportPatch() {
  if (slot_ != nullptr) write(original_);
}

// An import table is read-only while a program runs.
void ImportPatch::write(void *value) {
  DWORD old = 0;
  VirtualProtect(slot_, sizeof(*slot_), PAGE_READWRITE, &old);
  *slot_ = value;
  VirtualProtect(slot_, sizeof(*slot_), old, &old);
}

}  // namespace quorix::testing

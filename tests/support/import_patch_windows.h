// SPDX-License-Identifier: MIT
//
// Puts a function of the test in the place of one that a module imported, for as long as the patch
// lives. The code under test stays plain Win32, and a test can make any platform call fail, give
// another answer, or be counted:
//
//   static HWND WINAPI no_window(DWORD, ...) { return nullptr; }
//   ImportPatch patch("quorix.dll", "CreateWindowExA", no_window);
//
// It changes the module's import table: calls from that module only, and none that it makes
// through GetProcAddress.
#pragma once

#include <windows.h>

namespace quorix::testing {

class ImportPatch {
 public:
  // `module` is a loaded DLL's file name, or nullptr for the program itself.
  template <class Function>
  ImportPatch(const char *module, const char *function, Function *replacement)
      : ImportPatch(module, function, reinterpret_cast<void *>(replacement)) {}
  ImportPatch(const char *module, const char *function, void *replacement);
  ~ImportPatch();
  ImportPatch(const ImportPatch &) = delete;
  ImportPatch &operator=(const ImportPatch &) = delete;

  bool found() const { return slot_ != nullptr; }
  template <class Function>
  Function *original() const {
    return reinterpret_cast<Function *>(original_);
  }

 private:
  void write(void *value);
  void **slot_ = nullptr;
  void *original_ = nullptr;
};

}  // namespace quorix::testing

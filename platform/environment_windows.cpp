// SPDX-License-Identifier: MIT
//
// The environment of the process, and the install directory in the registry.
#include <windows.h>

#include <cstring>
#include <cwchar>

#include "base/memory.h"
#include "base/text.h"
#include "platform/system.h"

namespace quorix {

namespace {

constexpr char registry_key[] = "SOFTWARE\\Quorix";
constexpr char registry_value[] = "Path";
constexpr DWORD registry_bytes = 132;  // more than that is not readable
constexpr DWORD path_units = 1024;     // files that lie deeper are not looked for

// The folder of a module's file; of the program's for null.
bool folder_of_module(HMODULE module, char *buffer, size_t size) {
  wchar_t path[path_units];
  const DWORD length = GetModuleFileNameW(module, path, path_units);
  if (length == 0 || length >= path_units) return false;
  wchar_t *const separator = std::wcsrchr(path, L'\\');
  if (separator == nullptr) return false;
  *separator = L'\0';
  char name[4 * path_units];
  if (WideCharToMultiByte(CP_UTF8, WC_ERR_INVALID_CHARS, path, -1, name, sizeof name, nullptr,
                          nullptr) == 0) {
    return false;
  }
  if (std::strlen(name) >= size) return false;
  copy_bytes(buffer, name, size - 1);
  return true;
}

}  // namespace

// Asked of the system, not of this library's C runtime: a caller with another one may have changed
// the environment after this one made its copy.
bool environment_value(const char *name, char *buffer, size_t size) {
  SetLastError(ERROR_SUCCESS);
  const DWORD room = GetEnvironmentVariableA(name, nullptr, 0);
  if (room == 0) {
    // An empty value counts too, though Windows hardly keeps any.
    if (GetLastError() != ERROR_SUCCESS) return false;
    buffer[0] = '\0';
    return true;
  }
  const OwnedArray<char> value = allocate_array<char>(room);
  if (value == nullptr) return false;
  const DWORD length = GetEnvironmentVariableA(name, value.get(), room);
  if (length >= room) return false;
  value[length] = '\0';
  copy_bytes(buffer, value.get(), size - 1);
  return true;
}

// A value may lack its terminator, so it gets one.
bool find_install_directory(char *buffer, size_t size) {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, registry_key, 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
    return false;
  }
  char path[registry_bytes + 1] = {};
  DWORD bytes = registry_bytes;
  const LSTATUS status = RegQueryValueExA(key, registry_value, nullptr, nullptr,
                                          reinterpret_cast<BYTE *>(path), &bytes);
  RegCloseKey(key);
  if (status != ERROR_SUCCESS) return false;
  path[bytes < registry_bytes ? bytes : registry_bytes] = '\0';
  copy_bytes(buffer, path, size - 1);
  return true;
}

bool folder_of_library(char *buffer, size_t size) {
  static const char in_this_library = 0;
  HMODULE module = nullptr;
  constexpr DWORD only_look =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  return GetModuleHandleExW(only_look, reinterpret_cast<const wchar_t *>(&in_this_library),
                            &module) != 0 &&
         folder_of_module(module, buffer, size);
}

bool folder_of_program(char *buffer, size_t size) {
  return folder_of_module(nullptr, buffer, size);
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The environment of the process, and the install directory in the registry.
#include <windows.h>

#include <cstring>

#include "base/memory.h"
#include "base/text.h"
#include "platform/system.h"

namespace quorix {

namespace {

constexpr char registry_key[] = "SOFTWARE\\Quorix";
constexpr char registry_value[] = "Path";
constexpr DWORD registry_bytes = 132;  // more than that is not readable

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

}  // namespace quorix

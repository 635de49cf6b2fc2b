// SPDX-License-Identifier: MIT
//
// The environment, and the installation's data directory found from where the library lies. The
// build sets the ways: QUORIX_DATA_FROM_LIBRARY from the folder of the installed library,
// QUORIX_DATA_FROM_PROGRAM from that of installed programs.
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdlib>
#include <cstring>

#include "base/text.h"
#include "platform/system.h"

namespace quorix {

namespace {

constexpr char program_file[] = "/proc/self/exe";

// The file that holds this very code; null where its name is no path, as a program's may be.
const char *library_file() {
  static const char in_this_library = 0;
  Dl_info library = {};
  if (dladdr(&in_this_library, &library) == 0 || library.dli_fname == nullptr) return nullptr;
  return std::strchr(library.dli_fname, '/') == nullptr ? nullptr : library.dli_fname;
}

// Cuts the name of a file off its whole path, the slash too but for the root's.
bool folder_of(const char *file, char *buffer, size_t size) {
  char path[PATH_MAX];
  if (file == nullptr || realpath(file, path) == nullptr) return false;
  char *const slash = std::strrchr(path, '/');
  if (slash == nullptr || static_cast<size_t>(slash - path) >= size) return false;
  *slash = '\0';
  copy_bytes(buffer, path, size - 1);
  return true;
}

bool is_directory(const char *path) {
  struct stat status = {};
  return stat(path, &status) == 0 && S_ISDIR(status.st_mode);
}

// The directory at `way` from the folder of `file`, if there is one. A cut path would be another
// directory's, so one that is too long counts as none.
bool find_directory_near(const char *file, const char *way, char *buffer, size_t size) {
  char path[PATH_MAX];
  if (!folder_of(file, path, sizeof path)) return false;
  append_bytes(path, "/", sizeof path - 1);
  append_bytes(path, way, sizeof path - 1);
  char directory[PATH_MAX];
  if (realpath(path, directory) == nullptr || !is_directory(directory)) return false;
  if (std::strlen(directory) >= size) return false;
  copy_bytes(buffer, directory, size - 1);
  return true;
}

}  // namespace

bool environment_value(const char *name, char *buffer, size_t size) {
  const char *const value = std::getenv(name);
  if (value == nullptr) return false;
  copy_bytes(buffer, value, size - 1);
  return true;
}

// A shared library is known by the file it was loaded from. The static one is part of a program,
// for which that name may be no path at all, so the program's own file follows.
bool find_install_directory(char *buffer, size_t size) {
  return find_directory_near(library_file(), QUORIX_DATA_FROM_LIBRARY, buffer, size) ||
         find_directory_near(program_file, QUORIX_DATA_FROM_PROGRAM, buffer, size);
}

bool folder_of_library(char *buffer, size_t size) {
  return folder_of(library_file(), buffer, size) || folder_of(program_file, buffer, size);
}

bool folder_of_program(char *buffer, size_t size) {
  return folder_of(program_file, buffer, size);
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// qqgenv: the environment, and the directory that holds the library's own files: what the variable
// says, else what the system knows of the installation, else a fixed one.
#include <cstring>

#include "base/text.h"
#include "platform/system.h"
#include "quorix/system.h"

namespace quorix {

namespace {

constexpr char install_variable[] = "QUORIX";
constexpr char variable_alone[] = "QUOENV";  // asks for install_variable without a fallback
constexpr char default_directory[] = "c:\\quorix";
constexpr size_t buffer_size = 256;

// Kept: the name for the lookup without a fallback is not the name of the variable it reads.
bool look_up(const char *name, char *value) {
  const bool alone = std::strcmp(name, variable_alone) == 0;
  if (environment_value(alone ? install_variable : name, value, buffer_size)) return true;
  if (std::strcmp(name, install_variable) != 0) return false;
  if (!find_install_directory(value, buffer_size)) {
    copy_bytes(value, default_directory, buffer_size - 1);
  }
  return true;
}

}  // namespace

int32_t environment_text(const char *name, char *buffer) {
  char value[buffer_size];
  if (name == nullptr || !look_up(name, value)) return 0;
  return static_cast<int32_t>(copy_bytes(buffer, value, buffer_size - 1));
}

}  // namespace quorix

extern "C" int32_t qqgenv(const char *name, char *buffer) {
  return quorix::environment_text(name, buffer);
}

// SPDX-License-Identifier: MIT
#include "tests/support/environment_variable.h"

#include <cstdlib>

namespace quorix::testing {

namespace {

void put(const std::string &name, const char *value) {
#ifdef _WIN32
  // The C library passes it on to the system, so that both know it.
  _putenv_s(name.c_str(), value == nullptr ? "" : value);
#else
  if (value == nullptr) {
    unsetenv(name.c_str());
  } else {
    setenv(name.c_str(), value, 1);
  }
#endif
}

}  // namespace

EnvironmentVariable::EnvironmentVariable(const std::string &name, const char *value) : name_(name) {
  const char *before = std::getenv(name.c_str());
  was_set_ = before != nullptr;
  if (was_set_) before_ = before;
  put(name_, value);
}

EnvironmentVariable::~EnvironmentVariable() {
  put(name_, was_set_ ? before_.c_str() : nullptr);
}

}  // namespace quorix::testing

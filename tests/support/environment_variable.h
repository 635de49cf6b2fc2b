// SPDX-License-Identifier: MIT
//
// Sets or removes a variable of the environment until the end of the scope, on both systems.
#pragma once

#include <string>

namespace quorix::testing {

class EnvironmentVariable {
 public:
  // A null value removes it. Windows knows no empty values: there "" removes it too.
  EnvironmentVariable(const std::string &name, const char *value);
  ~EnvironmentVariable();
  EnvironmentVariable(const EnvironmentVariable &) = delete;
  EnvironmentVariable &operator=(const EnvironmentVariable &) = delete;

 private:
  std::string name_;
  std::string before_;
  bool was_set_;
};

}  // namespace quorix::testing

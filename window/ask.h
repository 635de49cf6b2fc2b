// SPDX-License-Identifier: MIT
//
// Calling functions of a system or canvas that may be missing.
#pragma once

#include <utility>

namespace quorix {

// What the function gives; where it is null nothing happens and the result is 0, null or false.
template <class Result, class... Parameters, class... Arguments>
Result ask(Result (*function)(Parameters...), Arguments &&...arguments) {
  if (function == nullptr) return Result();
  return function(std::forward<Arguments>(arguments)...);
}

}  // namespace quorix

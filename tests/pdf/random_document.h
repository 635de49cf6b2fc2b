// SPDX-License-Identifier: MIT
//
// Documents drawn at random: a list of calls that is made once and then given to the library and to
// the literal model.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/pdf/pdf_calls.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {

enum class RandomKind {
  orderly,       // what a plotting program does, a few dozen calls
  long_drawing,  // thousands of them
  large_writes,  // the caller's own bytes, up to several buffers at once
  viewable,      // orderly, and what a viewer can show: no bytes but comments, no clip over pages
  disorderly,    // images without an end, pixels too many, ends without a beginning
};

// One call of the interface; the numbers mean what its operation takes.
struct Call {
  enum class Operation { draw, colour, rectangle, character, bytes, form, outline };
  Operation operation;
  int32_t integers[4];
  double numbers[7];
  std::string text;  // bytes and titles
  literal::FormCall form_call;
};

struct Calls {
  int32_t mode, width, height, rotate;
  std::vector<Call> list;  // without the end
};

Calls random_calls(uint32_t seed, RandomKind kind);

// What came of them: the document with its date masked, and the numbers that calls gave back, which
// are statuses and changed rectangles.
struct Drawn {
  std::string document;
  std::vector<double> answers;
};

Drawn draw_with_model(const Calls &calls);
Drawn draw_with_library(const Calls &calls, const MemoryFiles &files);

// Draws it with the library into a file with this name; false if the document could not be begun.
bool draw_into_file(const Calls &calls, const std::string &name);

}  // namespace quorix::testing

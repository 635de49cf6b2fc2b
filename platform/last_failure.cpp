// SPDX-License-Identifier: MIT
//
// quorix_last_failure: what base/file_failures.h has noted, in words.
#include <cstring>

#include "base/file_failures.h"
#include "base/text.h"
#include "quorix/status.h"

namespace quorix {

namespace {

static_assert(static_cast<int32_t>(FileStep::open) == QUORIX_STEP_OPEN);
static_assert(static_cast<int32_t>(FileStep::write) == QUORIX_STEP_WRITE);
static_assert(static_cast<int32_t>(FileStep::flush) == QUORIX_STEP_FLUSH);
static_assert(static_cast<int32_t>(FileStep::close) == QUORIX_STEP_CLOSE);

void hand_out(char *to, const char *text, int32_t size) {
  if (to != nullptr && size > 0) copy_bytes(to, text, static_cast<size_t>(size) - 1);
}

}  // namespace

}  // namespace quorix

extern "C" int32_t quorix_last_failure(char *operation, int32_t *step, int32_t *error, char *reason,
                                       char *file, int32_t size) {
  quorix::FileFailure &failure = quorix::last_file_failure;
  if (failure.step == quorix::FileStep::none) return 0;
  quorix::hand_out(operation, failure.operation, size);
  quorix::hand_out(reason, failure.error == 0 ? "" : std::strerror(failure.error), size);
  quorix::hand_out(file, failure.name, size);
  if (step != nullptr) *step = static_cast<int32_t>(failure.step);
  if (error != nullptr) *error = failure.error;
  failure = {};
  return 1;
}

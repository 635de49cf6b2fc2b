// SPDX-License-Identifier: MIT
//
// The record of the last failure, and the pieces of work under way, the innermost first.
#include "base/file_failures.h"

#include <cstring>

namespace quorix {

FileFailure last_file_failure = {};

namespace {

FileWork *current_work = nullptr;

bool continues_character(char byte) {
  return (static_cast<uint8_t>(byte) & 0xC0U) == 0x80;
}

}  // namespace

FileWork::FileWork(const char *its_operation, const char *its_name)
    : operation(its_operation),
      name(its_name == nullptr ? "" : its_name),
      failed(false),
      outer(current_work) {
  current_work = this;
}

FileWork::~FileWork() {
  current_work = outer;
}

void note_file_failure(FileStep step, int32_t error) {
  if (current_work == nullptr || current_work->failed) return;
  current_work->failed = true;
  last_file_failure.step = step;
  last_file_failure.error = error;
  last_file_failure.operation = current_work->operation;
  copy_failure_name(last_file_failure.name, current_work->name);
}

void copy_failure_name(char *to, const char *name) {
  const size_t length = std::strlen(name);
  if (length >= failure_name_size) {
    name += length - (failure_name_size - 1);
    while (continues_character(*name))
      ++name;
  }
  std::memcpy(to, name, std::strlen(name) + 1);
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// The processor is asked once, at the first question.
#include "base/processor.h"

namespace quorix {

namespace {

Processor asked() {
#if QUORIX_X86_64
  return {__builtin_cpu_supports("ssse3") != 0, __builtin_cpu_supports("avx") != 0,
          __builtin_cpu_supports("avx2") != 0};
#else
  return {false, false, false};
#endif
}

}  // namespace

const Processor &processor() {
  static const Processor answers = asked();
  return answers;
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// What the processor offers beyond plain C++: which wide forms of a loop are compiled, and which of
// those this very machine can run.
//
// A file named _sse2, _ssse3, _avx, _avx2 or _neon has a wide form of a loop and nothing else; it
// is empty where its processor is not compiled for. Beside each stands a plain form, which runs
// everywhere and which tests compare it with, to the bit. Whoever chooses asks
//
//   if constexpr (compiled_for_x86_64) { ... processor().avx2 ... }
//
// With QUORIX_PLAIN_LOOPS defined no wide form is compiled at all.
#pragma once

#if !defined(__BYTE_ORDER__) || __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "Quorix needs a little-endian processor: it stores pixels as words whose low byte is red."
#endif

#if defined(QUORIX_PLAIN_LOOPS)
#define QUORIX_X86_64 0
#define QUORIX_ARM64 0
#elif defined(__x86_64__)
#define QUORIX_X86_64 1
#define QUORIX_ARM64 0
#elif defined(__aarch64__)
#define QUORIX_X86_64 0
#define QUORIX_ARM64 1
#else
#define QUORIX_X86_64 0
#define QUORIX_ARM64 0
#endif

namespace quorix {

// SSE2 is always there.
inline constexpr bool compiled_for_x86_64 = QUORIX_X86_64 != 0;

// NEON is always there.
inline constexpr bool compiled_for_arm64 = QUORIX_ARM64 != 0;

// All false where x86-64 is not compiled for.
struct Processor {
  bool ssse3, avx, avx2;
};

// Asked of the machine once.
const Processor &processor();

}  // namespace quorix

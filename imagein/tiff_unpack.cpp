// SPDX-License-Identifier: MIT
#include "imagein/tiff_unpack.h"

#include <cstring>

namespace quorix {

namespace {

constexpr uint32_t clear_code = 256;
constexpr uint32_t end_code = 257;
constexpr uint32_t first_code = 258;
constexpr uint32_t shortest_code = 9;  // bits
constexpr uint32_t longest_code = 12;
constexpr uint32_t no_code = UINT32_MAX;  // in place of an old code, after a clear code

constexpr int8_t no_run = -128;
constexpr size_t longest_run = 128;

// Codes come most significant bit first; `bits` has them at its upper end.
struct LzwReader {
  const uint8_t *at, *end;
  uint64_t bits;
  uint32_t bit_count;
  uint32_t code_size;
  uint32_t next;   // the next new code, lzw_codes where there is no room for more
  uint32_t limit;  // the value of `next` at which codes become one bit longer
  uint32_t old;
  LzwString *strings;
};

uint64_t load_big_endian(const uint8_t *bytes) {
  uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return __builtin_bswap64(word);
}

void fill_bits(LzwReader *lzw) {
  if (lzw->end - lzw->at >= 8) {
    lzw->bits |= load_big_endian(lzw->at) >> lzw->bit_count;
    const uint32_t bytes = (63 - lzw->bit_count) / 8;
    lzw->at += bytes;
    lzw->bit_count += 8 * bytes;
    lzw->bits &= ~(~uint64_t{0} >> lzw->bit_count);
    return;
  }
  while (lzw->at != lzw->end && lzw->bit_count <= 56) {
    lzw->bits |= uint64_t{*lzw->at++} << (56 - lzw->bit_count);
    lzw->bit_count += 8;
  }
}

// The next code; the end code where there are no bits for one.
uint32_t next_code(LzwReader *lzw) {
  if (lzw->bit_count < lzw->code_size) fill_bits(lzw);
  if (lzw->bit_count < lzw->code_size) return end_code;
  const auto code = static_cast<uint32_t>(lzw->bits >> (64 - lzw->code_size));
  lzw->bits <<= lzw->code_size;
  lzw->bit_count -= lzw->code_size;
  return code;
}

void forget_codes(LzwReader *lzw) {
  lzw->code_size = shortest_code;
  lzw->next = first_code;
  lzw->limit = 1U << shortest_code;
  lzw->old = no_code;
}

// Codes grow one code before they have to.
void add_code(LzwReader *lzw, uint8_t byte) {
  lzw->strings[lzw->next] = longer_string(lzw->strings[lzw->old], lzw->old, byte);
  lzw->next += 1;
  if (lzw->next == lzw->limit - 1 && lzw->code_size < longest_code) {
    lzw->code_size += 1;
    lzw->limit *= 2;
  }
}

// The string of a code that stands for bytes, or null if there is no such code.
const LzwString *take_code(LzwReader *lzw, uint32_t code) {
  const bool prefixed = lzw->old != no_code;
  const bool known = prefixed ? code <= lzw->next && code < lzw_codes : code < clear_code;
  if (!known) return nullptr;
  if (prefixed && lzw->next < lzw_codes) {
    add_code(lzw, lzw->strings[code == lzw->next ? lzw->old : code].first);
  }
  lzw->old = code;
  return &lzw->strings[code];
}

void start_lzw(LzwReader *lzw, const uint8_t *bytes, size_t count, LzwString *strings) {
  *lzw = {};
  lzw->at = bytes;
  lzw->end = bytes + count;
  lzw->strings = strings;
  for (uint32_t i = 0; i < clear_code; ++i)
    strings[i] = single_byte_string(static_cast<uint8_t>(i));
  forget_codes(lzw);
}

}  // namespace

Unpacked unpack_packbits(const uint8_t *bytes, size_t count, uint8_t *target, size_t size) {
  const uint8_t *const end = bytes + count;
  uint8_t *const target_end = target + size;
  while (target != target_end) {
    if (bytes == end) return Unpacked::corrupt;
    const auto head = static_cast<int8_t>(*bytes++);
    if (head == no_run) continue;
    const bool literal = head >= 0;
    const auto run = static_cast<size_t>(literal ? head + 1 : 1 - head);
    const size_t needed = literal ? run : 1;
    if (needed > static_cast<size_t>(end - bytes)) return Unpacked::corrupt;
    if (run > static_cast<size_t>(target_end - target)) return Unpacked::corrupt;
    if (literal) {
      std::memcpy(target, bytes, run);
    } else {
      std::memset(target, *bytes, run);
    }
    bytes += needed;
    target += run;
  }
  return Unpacked::whole;
}

// The string that reaches the target's end may reach beyond it; any after it is too much as well.
Unpacked unpack_lzw(const uint8_t *bytes, size_t count, LzwString *strings, uint8_t *target,
                    size_t size) {
  LzwReader lzw;
  start_lzw(&lzw, bytes, count, strings);
  uint8_t *const target_end = target + size;
  bool overfull = false;
  for (;;) {
    const uint32_t code = next_code(&lzw);
    if (code == end_code) break;
    if (code == clear_code) {
      forget_codes(&lzw);
      continue;
    }
    const LzwString *const string = take_code(&lzw, code);
    if (string == nullptr) return Unpacked::corrupt;
    overfull = overfull || string->length > target_end - target;
    if (!overfull) {
      target = put_string(strings, string, target);
    } else if (target != target_end) {
      put_string(strings, string, target);
      target = target_end;
    }
  }
  if (target != target_end) return Unpacked::corrupt;
  return overfull ? Unpacked::overfull : Unpacked::whole;
}

bool packbits_can_fill(size_t count, uint64_t size) {
  return size / longest_run <= count;
}

bool lzw_can_fill(size_t count, uint64_t size) {
  return size / lzw_codes <= count;
}

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// PackBits and LZW, from memory into memory. Runs and strings are copied in wide pieces wherever
// the room behind them allows it, and exactly at the end of the target.
//
// Decisions. LZW data may begin without a clear code, and several may follow each other; behind
// them stands a single byte or the end. LZW data that hold more than the target are noticed,
// PackBits data are not read that far.
#include "imagein/tiff_unpack.h"

#include <algorithm>
#include <cstring>

namespace quorix {

namespace {

constexpr uint32_t clear_code = 256;
constexpr uint32_t end_code = 257;
constexpr uint32_t first_code = 258;
constexpr uint32_t shortest_code = 9;  // bits
constexpr uint32_t longest_code = 12;

constexpr int8_t no_run = -128;
constexpr size_t longest_run = 128;

// Codes come most significant bit first; `bits` has them at its upper end.
struct LzwReader {
  const uint8_t *at, *end;
  uint64_t bits;
  uint32_t bit_count;
  uint32_t code_size;
  uint32_t next;   // the next new code, tiff_codes where there is no room for more
  uint32_t limit;  // the value of `next` at which codes become one bit longer
};

constexpr size_t head_bytes = 8;  // of a string, that are kept with its code
constexpr int length_bits = 16;   // of a string's place
constexpr uint64_t longest_string = (1U << length_bits) - 1;
constexpr size_t piece = 16;  // the bytes behind them that are copied at once

uint64_t load_big_endian(const uint8_t *bytes) {
  uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return __builtin_bswap64(word);
}

[[gnu::always_inline]] inline void fill_bits(LzwReader *lzw) {
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
[[gnu::always_inline]] inline uint32_t next_code(LzwReader *lzw) {
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
}

// Makes all codes new, and reads on to the next that is not a clear code.
uint32_t code_after_clear(LzwReader *lzw) {
  forget_codes(lzw);
  uint32_t code = clear_code;
  while (code == clear_code)
    code = next_code(lzw);
  return code;
}

// Codes grow one code before they have to.
[[gnu::always_inline]] inline void add_code(LzwReader *lzw, TiffString *strings, uint64_t head,
                                            uint64_t place) {
  strings[lzw->next].head = head;
  strings[lzw->next].place = place;
  lzw->next += 1;
  if (lzw->next == lzw->limit - 1 && lzw->code_size < longest_code) {
    lzw->code_size += 1;
    lzw->limit *= 2;
  }
}

// Writes a string to where the output stands, a piece at a time. A long one is copied from where it
// was written; all of it is there, except for the last byte of a new code's, which is written
// before it is read.
void put_string(uint64_t head, const uint8_t *from, uint8_t *to, size_t length) {
  std::memcpy(to, &head, head_bytes);
  for (size_t i = head_bytes; i < length; i += piece) {
    uint8_t bytes[piece];  // the two may overlap
    std::memcpy(bytes, from + i, piece);
    std::memcpy(to + i, bytes, piece);
  }
}

// The same near the end of the target.
void put_last_string(uint64_t head, const uint8_t *from, uint8_t *to, size_t length) {
  for (size_t i = 0; i < length; ++i)
    to[i] = i < head_bytes ? static_cast<uint8_t>(head >> (8 * i) & 255) : from[i];
}

// Runs are copied in whole pieces where what is behind them allows it: they are short.
void copy_run(uint8_t *to, const uint8_t *from, size_t run, bool inside) {
  if (!inside) {
    std::memcpy(to, from, run);
    return;
  }
  for (size_t i = 0; i < run; i += piece)
    std::memcpy(to + i, from + i, piece);
}

void repeat_run(uint8_t *to, uint8_t byte, size_t run, bool inside) {
  if (!inside) {
    std::memset(to, byte, run);
    return;
  }
  for (size_t i = 0; i < run; i += piece)
    std::memset(to + i, byte, piece);
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
    const auto left = static_cast<size_t>(end - bytes);
    const auto room = static_cast<size_t>(target_end - target);
    if ((literal ? run : 1) > left || run > room) return Unpacked::corrupt;
    const bool inside = left >= longest_run && room >= longest_run;
    if (literal) {
      copy_run(target, bytes, run, inside);
    } else {
      repeat_run(target, *bytes, run, inside);
    }
    bytes += literal ? run : 1;
    target += run;
  }
  return Unpacked::whole;
}

Unpacked unpack_lzw(const uint8_t *bytes, size_t count, TiffString *strings, uint8_t *target,
                    size_t size) {
  LzwReader lzw = {};
  lzw.at = bytes;
  lzw.end = bytes + count;
  for (uint32_t i = 0; i < clear_code; ++i)
    strings[i] = {i, 1};
  uint8_t *const end = target + size;
  const uint8_t *cleared = target;  // where it stood at the last clear code
  uint64_t head = 0;                // of the string that was written last
  size_t length = 0;                // of that
  // The start is like a clear code.
  for (uint32_t code = clear_code; code != end_code; code = next_code(&lzw)) {
    if (code == clear_code) {
      code = code_after_clear(&lzw);
      if (code == end_code) break;
      if (code > clear_code) return Unpacked::corrupt;
      cleared = target;
    } else {
      if (code > lzw.next) return Unpacked::corrupt;
      const uint64_t byte = (code == lzw.next ? head : strings[code].head) & 255;
      const auto position = static_cast<uint64_t>(target - cleared) - length;
      const uint64_t longer = length < head_bytes ? head | byte << (8 * length) : head;
      if (lzw.next < tiff_codes)
        add_code(&lzw, strings, longer, position << length_bits | (length + 1));
    }
    head = strings[code].head;
    length = strings[code].place & longest_string;
    const uint8_t *const from = cleared + (strings[code].place >> length_bits);
    const auto room = static_cast<size_t>(end - target);
    if (length + piece <= room) {
      put_string(head, from, target, length);
    } else {
      put_last_string(head, from, target, std::min(length, room));
      if (length > room) return Unpacked::overfull;
    }
    target += length;
  }
  return target == end ? Unpacked::whole : Unpacked::corrupt;
}

bool packbits_can_fill(size_t count, uint64_t size) {
  return size / longest_run <= count;
}

bool lzw_can_fill(size_t count, uint64_t size) {
  return size / tiff_codes <= count;
}

}  // namespace quorix

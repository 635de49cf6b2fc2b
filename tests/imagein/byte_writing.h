// SPDX-License-Identifier: MIT
//
// Numbers appended to bytes, and samples packed into rows as image files have them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quorix::testing {

using Bytes = std::vector<uint8_t>;

inline void put_u8(Bytes *to, uint64_t value) {
  to->push_back(static_cast<uint8_t>(value & 255));
}
inline void put_little(Bytes *to, uint64_t value, int bytes) {
  for (int i = 0; i < bytes; ++i)
    put_u8(to, value >> (8 * i));
}
inline void put_big(Bytes *to, uint64_t value, int bytes) {
  for (int i = bytes - 1; i >= 0; --i)
    put_u8(to, value >> (8 * i));
}
inline void put_bytes(Bytes *to, const Bytes &bytes) {
  for (const uint8_t byte : bytes)
    to->push_back(byte);
}
inline void put_text(Bytes *to, const std::string &text) {
  for (const char letter : text)
    put_u8(to, static_cast<uint8_t>(letter));
}

// Samples of up to 8 bits, highest bit first, filled up with zeros to a whole byte.
inline Bytes pack_bits(const std::vector<uint32_t> &samples, uint32_t bits) {
  Bytes packed((samples.size() * bits + 7) / 8, 0);
  for (size_t i = 0; i < samples.size(); ++i) {
    const size_t bit = i * bits;
    packed[bit / 8] = static_cast<uint8_t>(packed[bit / 8] | samples[i] << (8 - bits - bit % 8));
  }
  return packed;
}

// The samples of a row out of a picture's.
inline std::vector<uint32_t> row_of(const std::vector<uint32_t> &samples, size_t y, size_t count) {
  const auto start = samples.begin() + static_cast<std::ptrdiff_t>(y * count);
  return {start, start + static_cast<std::ptrdiff_t>(count)};
}

}  // namespace quorix::testing

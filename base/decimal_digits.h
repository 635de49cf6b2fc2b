// SPDX-License-Identifier: MIT
//
// The digits of whole numbers, written from the last one back, two at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quorix {

struct DigitPairs {
  char text[200];
};

constexpr DigitPairs make_digit_pairs() {
  DigitPairs pairs = {};
  for (size_t i = 0; i < 100; ++i) {
    pairs.text[2 * i] = static_cast<char>('0' + i / 10);
    pairs.text[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}

inline constexpr DigitPairs digit_pairs = make_digit_pairs();

template <class Number>
int32_t count_digits(Number number) {
  int32_t count = 1;
  for (; number >= 10000; number /= 10000)
    count += 4;
  if (number >= 1000) return count + 3;
  if (number >= 100) return count + 2;
  return number >= 10 ? count + 1 : count;
}

inline void write_pair(char *place, uint64_t pair) {
  std::memcpy(place, digit_pairs.text + 2 * pair, 2);
}

// Writes all digits of a number so that they end before `end`; of zero there is one.
template <class Number>
void write_number_before(char *end, Number number) {
  for (; number >= 100; number /= 100) {
    end -= 2;
    write_pair(end, number % 100);
  }
  if (number >= 10) {
    write_pair(end - 2, number);
  } else {
    end[-1] = static_cast<char>('0' + number);
  }
}

// Writes the last `count` digits of a number so that they end before `end`, zeros where it has
// fewer; returns what is left of the number.
inline uint64_t write_digits_before(char *end, uint64_t number, int32_t count) {
  for (; count >= 2; count -= 2) {
    end -= 2;
    write_pair(end, number % 100);
    number /= 100;
  }
  if (count == 1) {
    *--end = static_cast<char>('0' + number % 10);
    number /= 10;
  }
  return number;
}

}  // namespace quorix

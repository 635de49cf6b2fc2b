// SPDX-License-Identifier: MIT
//
// format_real and format_int, which run for every number of a PostScript or PDF stream.
//
// A page coordinate, which is a number below a thousand with two or three digits after the point,
// is put together from tables without a branch that depends on its digits. Beyond that both have a
// short way for what nearly all calls are: a number that fits into 51 bits and a text that fits
// into the buffer. The length is known before the first digit then, and the digits are written from
// the last one back, two at a time, to where they belong. The long way builds the text from the
// left and cuts it, and takes the digits of larger numbers off one by one in doubles, whose
// rounding is part of the result.
#include <cmath>
#include <cstring>

#include "base/decimal_digits.h"
#include "base/powers_of_ten.h"
#include "base/text.h"

namespace quorix {

namespace {

constexpr int32_t most_real_digits = 100;
constexpr int32_t most_int_digits = 10;
constexpr size_t most_int_text = 12;  // sign, digits and terminator
constexpr size_t number_buffer_size = 41;

// Below it, taking digits off in doubles and in integers are the same: half a unit added to the
// number is exact, and a tenth of the sum is never rounded up to the next whole number.
constexpr double exact_digits_below = 0x1p51;

// A number below a thousand, without leading zeros.
struct SmallNumber {
  char digits[3];
  uint8_t length;
};

constexpr uint32_t small_numbers = 1000;
constexpr size_t small_text = 12;  // room for what such a number needs, and for whole words

struct SmallNumbers {
  SmallNumber of[small_numbers];
};

constexpr SmallNumbers make_small_numbers() {
  SmallNumbers numbers = {};
  for (uint32_t i = 0; i < small_numbers; ++i) {
    SmallNumber number = {{}, 0};
    if (i >= 100) number.digits[number.length++] = static_cast<char>('0' + i / 100);
    if (i >= 10) number.digits[number.length++] = static_cast<char>('0' + i / 10 % 10);
    number.digits[number.length++] = static_cast<char>('0' + i % 10);
    numbers.of[i] = number;
  }
  return numbers;
}

constexpr SmallNumbers small_numbers_text = make_small_numbers();

// Text of number / 10^decimals, which is below a thousand, in at least small_text cells.
template <uint32_t decimals>
size_t write_small_real(uint32_t number, bool negative, char *buffer) {
  static_assert(decimals == 2 || decimals == 3);
  constexpr uint32_t unit = decimals == 2 ? 100 : 1000;
  const uint32_t whole = number / unit, fraction = number % unit;
  char *to = buffer;
  *to = '-';  // the first digit replaces it if there is no sign
  to += negative && number != 0 ? 1 : 0;
  const SmallNumber &text = small_numbers_text.of[whole];
  std::memcpy(to, &text, sizeof text);  // always a word; what is too much is written over
  to += text.length;
  *to++ = '.';
  if (decimals == 3) *to++ = static_cast<char>('0' + fraction / 100);
  std::memcpy(to, digit_pairs.text + 2 * (fraction % 100), 2);
  to += 2;
  *to = '\0';
  return static_cast<size_t>(to - buffer);
}

// The text so far, of at most `room` characters; whatever is put beyond that is dropped.
struct BoundedText {
  char *text;
  size_t room;
  size_t length;
};

void put_char(BoundedText *out, char c) {
  if (out->length < out->room) out->text[out->length++] = c;
}

void put_fill(BoundedText *out, char c, int64_t count) {
  if (count <= 0) return;
  const size_t space = out->room - out->length;
  const size_t fitting = static_cast<uint64_t>(count) < space ? static_cast<size_t>(count) : space;
  std::memset(out->text + out->length, c, fitting);
  out->length += fitting;
}

// Digits of a whole number, least significant first; those beyond the store are lost.
struct DigitStore {
  char digits[most_real_digits];
  int32_t count;
};

void keep_digit(DigitStore *store, char digit) {
  if (store->count < most_real_digits) store->digits[store->count++] = digit;
}

void take_digits(DigitStore *store, double number) {
  store->count = 0;
  while (number > 0.5) {
    const double digit = std::fmod(number, 10.0) + 0.5;  // below 10, whatever the number
    keep_digit(store, static_cast<char>('0' + static_cast<int>(digit)));
    number = std::floor((number + 0.5) / 10.0);
  }
  if (store->count == 0) keep_digit(store, '0');
}

bool is_negative_zero(const BoundedText &out) {
  if (out.length == 0 || out.text[0] != '-') return false;
  for (size_t i = 1; i < out.length; ++i) {
    if (out.text[i] != '0' && out.text[i] != '.') return false;
  }
  return true;
}

size_t format_real_cut(double number, bool negative, int32_t ndigits, BoundedText out,
                       int32_t width) {
  DigitStore store;
  take_digits(&store, std::isfinite(number) ? number : 0.0);
  const int32_t sign_length = negative ? 1 : 0;
  const int64_t whole_length =
      store.count > ndigits ? int64_t{store.count} + (ndigits >= 0 ? 1 : 0) : int64_t{ndigits} + 2;
  put_fill(&out, ' ', width - (whole_length + sign_length));
  if (negative) put_char(&out, '-');
  if (store.count <= ndigits) {
    put_char(&out, '0');
    put_char(&out, '.');
    put_fill(&out, '0', int64_t{ndigits} - store.count);
  }
  for (int32_t left = store.count; left > 0; --left) {
    if (left == ndigits && left < store.count) put_char(&out, '.');
    put_char(&out, store.digits[left - 1]);
  }
  if (ndigits == 0) put_char(&out, '.');
  if (width == 0 && is_negative_zero(out)) {
    --out.length;
    std::memmove(out.text, out.text + 1, out.length);
  }
  out.text[out.length] = '\0';
  return out.length;
}

size_t format_int_cut(uint32_t magnitude, int32_t sign, int32_t count, BoundedText out,
                      int32_t width, int32_t zero_fill) {
  char digits[most_int_digits];
  write_digits_before(digits + most_int_digits, magnitude, count);
  const int64_t room = static_cast<int64_t>(out.room);
  const int64_t wanted = width > room ? room : int64_t{width};
  put_fill(&out, zero_fill == 1 ? '0' : ' ', wanted - count - sign);
  if (sign != 0) put_char(&out, '-');
  for (int32_t i = 0; i < count; ++i)
    put_char(&out, digits[most_int_digits - count + i]);
  out.text[out.length] = '\0';
  return out.length;
}

// A real number that is known to fit: its length comes first.
struct RealLayout {
  int32_t whole_digits;
  int32_t fraction_digits;
  int32_t point;  // 0 or 1
  int32_t sign;   // 0 or 1
  int64_t total;  // length of the text, with leading blanks
};

RealLayout lay_out_real(uint64_t number, bool negative, int32_t ndigits, int32_t width) {
  RealLayout layout;
  const int32_t digits = count_digits(number);
  layout.fraction_digits = ndigits > 0 ? ndigits : 0;
  layout.whole_digits = digits > layout.fraction_digits ? digits - layout.fraction_digits : 1;
  layout.point = ndigits >= 0 ? 1 : 0;
  layout.sign = negative ? 1 : 0;
  const int64_t length =
      int64_t{layout.sign} + layout.whole_digits + layout.point + layout.fraction_digits;
  layout.total = width > length ? width : length;
  return layout;
}

// Only after the text was found to fit: one that fits without its sign alone is a cut text.
void drop_sign(RealLayout *layout) {
  layout->total -= layout->sign;
  layout->sign = 0;
}

size_t write_real(uint64_t number, const RealLayout &layout, char *buffer) {
  char *end = buffer + layout.total;
  *end = '\0';
  number = write_digits_before(end, number, layout.fraction_digits);
  end -= layout.fraction_digits;
  if (layout.point != 0) *--end = '.';
  write_number_before(end, number);
  end -= layout.whole_digits;
  if (layout.sign != 0) *--end = '-';
  if (end != buffer) std::memset(buffer, ' ', static_cast<size_t>(end - buffer));
  return static_cast<size_t>(layout.total);
}

}  // namespace

size_t format_real(double value, int32_t ndigits, char *buffer, size_t size, int32_t width) {
  if (size == 0) return 0;
  const bool negative = value < 0;
  const double magnitude = std::fabs(value);
  if (width == 0 && size >= small_text) {
    const double hundredths = magnitude * 100 + 0.5, thousandths = magnitude * 1000 + 0.5;
    if (ndigits == 2 && hundredths < small_numbers * 100.0)
      return write_small_real<2>(static_cast<uint32_t>(hundredths), negative, buffer);
    if (ndigits == 3 && thousandths < small_numbers * 1000.0)
      return write_small_real<3>(static_cast<uint32_t>(thousandths), negative, buffer);
  }
  const double raised = (ndigits > 0 ? magnitude * power_of_ten(ndigits) : magnitude) + 0.5;
  if (raised < exact_digits_below) {
    const uint64_t number = static_cast<uint64_t>(static_cast<int64_t>(raised));
    RealLayout layout = lay_out_real(number, negative, ndigits, width);
    if (static_cast<uint64_t>(layout.total) < size) {
      if (number == 0 && width == 0) drop_sign(&layout);
      return write_real(number, layout, buffer);
    }
  }
  return format_real_cut(std::floor(raised), negative, ndigits, {buffer, size - 1, 0}, width);
}

size_t format_int(int32_t value, char *buffer, size_t size, int32_t width, int32_t zero_fill) {
  if (size == 0) return 0;
  const int32_t sign = value < 0 ? 1 : 0;
  const uint32_t magnitude =
      sign != 0 ? 0 - static_cast<uint32_t>(value) : static_cast<uint32_t>(value);
  // Negated in 32 bits the smallest integer stays negative, and a loop over digits ends at once.
  const int32_t count = value == INT32_MIN ? 0 : count_digits(magnitude);
  if (width <= sign + count && size >= most_int_text && count != 0) {
    buffer[0] = '-';  // the first digit replaces it if there is no sign
    char *end = buffer + sign + count;
    write_number_before(end, magnitude);
    *end = '\0';
    return static_cast<size_t>(end - buffer);
  }
  return format_int_cut(magnitude, sign, count, {buffer, size - 1, 0}, width, zero_fill);
}

size_t append_real(char *destination, double value, int32_t ndigits, size_t limit) {
  char number[number_buffer_size];
  format_real(value, ndigits, number, sizeof number, 0);
  if (destination[0] != '\0') append_bytes(destination, " ", limit);
  return append_bytes(destination, number, limit);
}

size_t append_int(char *destination, int32_t value, size_t limit) {
  char number[number_buffer_size];
  format_int(value, number, sizeof number, 0, 0);
  if (destination[0] != '\0') append_bytes(destination, " ", limit);
  return append_bytes(destination, number, limit);
}

}  // namespace quorix

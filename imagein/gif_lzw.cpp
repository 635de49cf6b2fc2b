// SPDX-License-Identifier: MIT
//
// From the bits of sub-blocks to codes, and from codes to strings of pixels.
//
// Decisions. Codes may begin without a clear code. What follows one or more clear codes is a pixel;
// anything else there is damage, the end code too. A full table goes on without new codes.
#include "imagein/gif_lzw.h"

#include <bit>
#include <cstring>

namespace quorix {

namespace {

constexpr uint32_t after_clear = UINT32_MAX;   // in place of an old code
constexpr uint32_t at_start = UINT32_MAX - 1;  // the same, and the end code may follow

uint64_t load_word(const uint8_t *bytes) {
  uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Steps into the next sub-block. False if it is empty, or the file ends here.
bool next_block(GifDecoder *gif) {
  if (gif->at == gif->file_end) return false;
  const size_t length = *gif->at++;
  const auto left = static_cast<size_t>(gif->file_end - gif->at);
  gif->block_end = gif->at + (length < left ? length : left);
  return gif->at != gif->block_end;
}

// At least one code's bits, for which a next sub-block is opened only where this one has too few:
// what follows the end code must be found untouched. Sub-blocks may be shorter than a code.
bool fill_bits(GifDecoder *gif) {
  while (gif->bit_count < gif->code_size) {
    if (gif->at == gif->block_end && !next_block(gif)) return false;
    const auto left = static_cast<size_t>(gif->block_end - gif->at);
    if (left >= sizeof(uint64_t)) {
      gif->bits |= load_word(gif->at) << gif->bit_count;
      const uint32_t bytes = (63 - gif->bit_count) / 8;
      gif->at += bytes;
      gif->bit_count += 8 * bytes;
      gif->bits &= (uint64_t{1} << gif->bit_count) - 1;
    } else {
      gif->bits |= uint64_t{*gif->at++} << gif->bit_count;
      gif->bit_count += 8;
    }
  }
  return true;
}

void forget_codes(GifDecoder *gif) {
  gif->next = gif->clear + 2;
  gif->code_size = static_cast<uint32_t>(std::bit_width(gif->clear));
  gif->limit = 2 * gif->clear;
  gif->old = after_clear;
}

// The next code: the string of the one before, and the first pixel of this one behind it.
void add_code(GifDecoder *gif, uint8_t pixel) {
  gif->strings[gif->next] = longer_string(gif->strings[gif->old], gif->old, pixel);
  gif->next += 1;
  if (gif->next == gif->limit && gif->code_size < gif_longest_code) {
    gif->code_size += 1;
    gif->limit *= 2;
  }
}

// The string of a code that stands for pixels; null if it does not.
const LzwString *take_code(GifDecoder *gif, uint32_t code) {
  const bool prefixed = gif->old < gif_codes;
  const bool known = prefixed ? code <= gif->next : code < gif->clear;
  if (!known) return nullptr;
  if (prefixed && gif->next < gif_codes) {
    add_code(gif, gif->strings[code == gif->next ? gif->old : code].first);
  }
  gif->old = code;
  return &gif->strings[code];
}

// The string of the next code; null behind the last. Clear codes are none themselves. Some encoders
// write two of them where one would do; but the first other code behind them must be a pixel, so an
// end code there is damage.
const LzwString *next_string(GifDecoder *gif) {
  for (;;) {
    if (!fill_bits(gif)) break;
    const auto code = static_cast<uint32_t>(gif->bits & ((1U << gif->code_size) - 1));
    gif->bits >>= gif->code_size;
    gif->bit_count -= gif->code_size;
    if (code == gif->clear) {
      forget_codes(gif);
    } else if (code == gif->clear + 1 && gif->old != after_clear) {
      gif->state = GifState::ended;
      gif->at = gif->block_end;
      return nullptr;
    } else {
      const LzwString *const string = take_code(gif, code);
      if (string == nullptr) break;
      return string;
    }
  }
  gif->state = GifState::damaged;
  return nullptr;
}

}  // namespace

// Before any clear code all is as after one: a first pixel adds no code. But it need not be a
// pixel.
void start_gif(GifDecoder *gif, LzwString *strings, const uint8_t *bytes, const uint8_t *end) {
  *gif = {};
  gif->state = GifState::damaged;
  gif->file_end = end;
  gif->at = gif->block_end = bytes;
  if (bytes == end) return;
  const uint32_t pixel_bits = *gif->at++;
  gif->block_end = gif->at;
  if (pixel_bits < 2 || pixel_bits > 11) return;
  gif->state = GifState::more;
  gif->strings = strings;
  gif->clear = 1U << pixel_bits;
  for (uint32_t i = 0; i < gif->clear; ++i)
    strings[i] = single_byte_string(static_cast<uint8_t>(i & 255));
  forget_codes(gif);
  gif->old = at_start;
}

size_t decode_gif(GifDecoder *gif, uint8_t *pixels, size_t wanted) {
  GifDecoder now = *gif;  // in registers
  uint8_t *to = pixels;
  while (to < pixels + wanted && now.state == GifState::more) {
    const LzwString *const string = next_string(&now);
    if (string != nullptr) to = put_string(now.strings, string, to);
  }
  *gif = now;
  return static_cast<size_t>(to - pixels);
}

void skip_gif(GifDecoder *gif) {
  while (gif->state == GifState::more)
    next_string(gif);
}

}  // namespace quorix

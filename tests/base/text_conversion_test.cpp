// SPDX-License-Identifier: MIT
//
// Byte strings to 16-bit text and back.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "base/memory.h"
#include "base/text.h"
#include "base/text_conversion.h"
#include "base/utf8.h"
#include "tests/support/failing_memory.h"

namespace quorix {
namespace {

using testing::FailingMemory;
using testing::Failures;

// The code pages as iconv of the GNU C library has them, each byte of the page converted to UTF-8:
// `iconv -f CP1251` from 128 on and `iconv -f ISO-8859-7` from 160 on. It refuses the bytes that
// the pages leave open: 0x98 stands for itself here, 0xAE, 0xD2 and 0xFF are blanks.
constexpr char16_t cyrillic_page[] =
    u"ЂЃ‚ѓ„…†‡€‰Љ‹ЊЌЋЏ"
    u"ђ‘’“”•–—\x98™љ›њќћџ"
    u"\u00A0ЎўЈ¤Ґ¦§Ё©Є«¬\u00AD®Ї"
    u"°±Ііґµ¶·ё№є»јЅѕї"
    u"АБВГДЕЖЗИЙКЛМНОП"
    u"РСТУФХЦЧШЩЪЫЬЭЮЯ"
    u"абвгдежзийклмноп"
    u"рстуфхцчшщъыьэюя";
constexpr char16_t greek_page[] =
    u"\u00A0‘’£€₯¦§¨©\u037A«¬\u00AD ―"
    u"°±²³\u0384΅Ά·ΈΉΊ»Ό½ΎΏ"
    u"ΐΑΒΓΔΕΖΗΘΙΚΛΜΝΞΟ"
    u"ΠΡ ΣΤΥΦΧΨΩΪΫάέήί"
    u"ΰαβγδεζηθικλμνξο"
    u"πρςστυφχψωϊϋόύώ ";

using Wide = std::vector<uint16_t>;

Wide wide(const std::u16string &text) {
  return {text.begin(), text.end()};
}

// The units of a conversion that must succeed. The input stands in a block of its own size.
Wide decoded(const std::string &text, int32_t charset) {
  const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
  OwnedArray<uint16_t> units;
  EXPECT_EQ(decode_text(block.data(), charset, &units), TextStatus::done);
  if (units == nullptr) {
    ADD_FAILURE() << "refused: " << ::testing::PrintToString(text);
    return {};
  }
  return {units.get(), units.get() + length_wide(units.get())};
}

std::string encoded(const Wide &text, int32_t charset) {
  Wide block = text;
  block.push_back(0);
  block.shrink_to_fit();
  OwnedArray<char> bytes;
  EXPECT_EQ(encode_text(block.data(), charset, &bytes), TextStatus::done);
  if (bytes == nullptr) {
    ADD_FAILURE() << "refused";
    return {};
  }
  return bytes.get();
}

// Something that a conversion which fails has to take away.
OwnedArray<uint16_t> some_units() {
  return allocate_array<uint16_t>(3);
}

void expect_refusal(const std::string &text, int32_t charset, TextStatus status) {
  const FailingMemory memory;
  OwnedArray<uint16_t> units = some_units();
  EXPECT_EQ(decode_text(text.c_str(), charset, &units), status) << ::testing::PrintToString(text);
  EXPECT_EQ(units, nullptr);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

// ---- single-byte charsets ----

TEST(DecodeText, TakesEachByteForAUnitUnderCharset0) {
  for (uint32_t byte = 1; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(decoded(text, 0), Wide{static_cast<uint16_t>(byte)});
  }
}

TEST(EncodeText, KeepsTheLowByteUnderCharset0) {
  EXPECT_EQ(encoded(wide(u"a\u00E9"), 0), "a\xE9");
  EXPECT_EQ(encoded(wide(u"\u0416"), 0), "\x16");
  EXPECT_EQ(encoded({0xFFFF, 0x1241}, 0), "\xFF\x41");
  EXPECT_EQ(encoded(wide(u"a\u0400z"), 0), "a");  // a low byte of zero ends the string
}

// What `page` says of a byte, and that the byte comes back.
void check_page(int32_t charset, const char16_t *page, uint32_t first) {
  for (uint32_t byte = 1; byte < 256; ++byte) {
    const uint16_t unit = static_cast<uint16_t>(byte < first ? byte : page[byte - first]);
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(decoded(text, charset), Wide{unit}) << "byte " << byte;
    const bool open = byte >= first && unit == u' ';
    EXPECT_EQ(encoded({unit}, charset), open ? " " : text) << "byte " << byte;
  }
}

TEST(TextConversion, BringsEveryByteOfCodePage1251ThereAndBackUnderCharset2) {
  ASSERT_EQ(std::size(cyrillic_page), 129U);
  check_page(2, cyrillic_page, 128);
}

TEST(TextConversion, BringsEveryByteOfIso8859Part7ThereAndBackUnderCharset3) {
  ASSERT_EQ(std::size(greek_page), 97U);
  check_page(3, greek_page, 160);
}

TEST(DecodeText, HasTheEuroAndDrachmaSignsUnderCharset3) {
  EXPECT_EQ(decoded("\xA4\xA5\xAA", 3), wide(u"\u20AC\u20AF\u037A"));
}

TEST(EncodeText, PutsABlankForWhatTheCodePageLacks) {
  const std::u16string cyrillic(cyrillic_page);
  const std::u16string greek(greek_page);
  for (uint32_t unit = 1; unit < 0x10000; ++unit) {
    const Wide text = {static_cast<uint16_t>(unit)};
    if (unit >= 128 && cyrillic.find(static_cast<char16_t>(unit)) == std::u16string::npos) {
      ASSERT_EQ(encoded(text, 2), " ") << unit;
    }
    if (unit >= 160 && greek.find(static_cast<char16_t>(unit)) == std::u16string::npos) {
      ASSERT_EQ(encoded(text, 3), " ") << unit;
    }
  }
}

TEST(EncodeText, GivesOneLetterItsByteInEachCharset) {
  EXPECT_EQ(encoded(wide(u"\u0416"), 0), "\x16");
  EXPECT_EQ(encoded(wide(u"\u0416"), 1), "\xD0\x96");
  EXPECT_EQ(encoded(wide(u"\u0416"), 2), "\xC6");
  EXPECT_EQ(encoded(wide(u"\u0416"), 3), " ");
}

// ---- UTF-8 ----

TEST(TextConversion, TakesEveryOtherCharsetForUtf8) {
  for (const int32_t charset : {1, 4, 5, 100, -1, INT32_MAX, INT32_MIN}) {
    EXPECT_EQ(decoded("\xC3\xA9", charset), wide(u"\u00E9")) << charset;
    EXPECT_EQ(encoded(wide(u"\u00E9"), charset), "\xC3\xA9") << charset;
  }
}

TEST(TextConversion, BringsEveryUnitThroughUtf8AndBack) {
  for (uint32_t unit = 1; unit < 0x10000; ++unit) {
    std::string form;  // as bits: 0xxxxxxx, 110xxxxx 10xxxxxx, 1110xxxx 10xxxxxx 10xxxxxx
    if (unit < 128) {
      form = {static_cast<char>(unit)};
    } else if (unit < 2048) {
      form = {static_cast<char>(192 + unit / 64), static_cast<char>(128 + unit % 64)};
    } else {
      form = {static_cast<char>(224 + unit / 4096), static_cast<char>(128 + unit / 64 % 64),
              static_cast<char>(128 + unit % 64)};
    }
    const Wide text = {static_cast<uint16_t>(unit)};
    ASSERT_EQ(encoded(text, 1), form) << unit;
    ASSERT_EQ(decoded(form, 1), text) << unit;
  }
}

TEST(DecodeText, KeepsTheLow16BitsOfACodePointBeyond) {
  EXPECT_EQ(decoded("\xF0\x9F\x98\x80", 1), Wide{0xF600});  // U+1F600
  EXPECT_EQ(decoded("\xF7\xBF\xBF\xBF", 1), Wide{0xFFFF});
}

TEST(DecodeText, AcceptsOverlongForms) {
  EXPECT_EQ(decoded("\xC1\x81", 1), wide(u"A"));
  EXPECT_EQ(decoded("\xE0\x81\x81", 1), wide(u"A"));
  EXPECT_EQ(decoded("\xF0\x80\x81\x81", 1), wide(u"A"));
  EXPECT_EQ(decoded("z\xC0\x80y", 1), wide(u"z"));  // the overlong zero ends the string
}

TEST(DecodeText, RefusesABrokenForm) {
  for (const char *text : {
           "\xC3\x28", "a\xC3\x28z",            // no continuation
           "\xC3", "\xE2\x82", "\xF0\x9F\x98",  // ends too early
           "\x80", "\xBF", "ab\x9Fz",           // starts with a continuation
           "\xC3\xC3\xA9", "\xE2\x28\xAC", "\xE2\x82\xC0", "\xF0\x9F\x98\x7F",
           "\xF8\x80\x80\x80\x80", "\xFC", "\xFE", "\xFF",  // no form starts like that
       }) {
    expect_refusal(text, 1, TextStatus::bad_utf8);
  }
}

TEST(TextConversion, HandlesEmptyStrings) {
  for (const int32_t charset : {0, 1, 2, 3}) {
    EXPECT_EQ(decoded("", charset), Wide{});
    EXPECT_EQ(encoded({}, charset), "");
  }
}

// ---- memory ----

TEST(DecodeText, AsksForTwoBytesAByteAndTwoMore) {
  for (const int32_t charset : {0, 1, 2, 3}) {
    FailingMemory memory;
    OwnedArray<uint16_t> units;
    EXPECT_EQ(decode_text("12345", charset, &units), TextStatus::done);
    EXPECT_EQ(memory.requests(), 1U);
    EXPECT_EQ(memory.live_bytes(), 12U);
  }
}

TEST(EncodeText, AsksForOneByteAUnitUnderCharset0AndThreeOtherwise) {
  const uint16_t text[] = {'1', '2', '3', '4', '5', 0};
  for (const int32_t charset : {0, 1, 2, 3}) {
    FailingMemory memory;
    OwnedArray<char> bytes;
    EXPECT_EQ(encode_text(text, charset, &bytes), TextStatus::done);
    EXPECT_EQ(memory.requests(), 1U);
    EXPECT_EQ(memory.live_bytes(), charset == 0 ? 6U : 16U);
  }
}

TEST(TextConversion, AnswersThatThereIsNotEnoughMemory) {
  const uint16_t text[] = {'a', 0};
  for (const int32_t charset : {0, 1, 2, 3}) {
    OwnedArray<uint16_t> units = some_units();
    OwnedArray<char> bytes = allocate_array<char>(3);
    const FailingMemory memory(1, Failures::that_and_all_later);
    EXPECT_EQ(decode_text("a", charset, &units), TextStatus::no_memory);
    EXPECT_EQ(encode_text(text, charset, &bytes), TextStatus::no_memory);
    EXPECT_EQ(units, nullptr);
    EXPECT_EQ(bytes, nullptr);
  }
}

TEST(TextConversion, HasWordsForEveryFailure) {
  EXPECT_STREQ(text_status_words(TextStatus::done), "");
  EXPECT_STREQ(text_status_words(TextStatus::no_memory), "Not enough memory");
  EXPECT_STREQ(text_status_words(TextStatus::bad_utf8), "Syntax error in UTF string");
  EXPECT_STREQ(text_status_words(TextStatus::array_full), "Not enough space in array");
  EXPECT_STREQ(text_status_words(TextStatus::string_full), "Not enough space in string");
  EXPECT_STREQ(text_status_words(TextStatus::number_too_big), "Number too big for UTF8 conversion");
}

// ---- random bytes ----

bool is_continuation(const std::string &text, size_t i) {
  return i < text.size() && static_cast<uint8_t>(text[i]) / 64 == 2;
}

// UTF-8 by the table of first bytes; false on a syntax error.
bool model_decode(const std::string &text, Wide *units) {
  size_t i = 0;
  while (i < text.size()) {
    const uint32_t first = static_cast<uint8_t>(text[i]);
    size_t more = 0;
    uint32_t value = first;
    if (first >= 128 && first <= 191) return false;
    if (first >= 248) return false;
    if (first >= 192) more = 1, value = first - 192;
    if (first >= 224) more = 2, value = first - 224;
    if (first >= 240) more = 3, value = first - 240;
    for (size_t k = 1; k <= more; ++k) {
      if (!is_continuation(text, i + k)) return false;
      value = value * 64 + (static_cast<uint8_t>(text[i + k]) - 128U);
    }
    units->push_back(static_cast<uint16_t>(value % 65536));
    i += more + 1;
  }
  return true;
}

TEST(DecodeText, AgreesWithTheModelOnRandomBytes) {
  std::mt19937_64 random(41);
  const std::string likely = "az\x7F\x80\xBF\xC0\xC3\xDF\xE0\xE2\xEF\xF0\xF4\xF7\xF8\xFF\x82\x9F";
  size_t accepted = 0;
  for (int i = 0; i < 200000; ++i) {
    std::string text(random() % 12, '\0');
    for (char &c : text) {
      const uint64_t word = random();
      c = i % 2 == 0 ? likely[word % likely.size()] : static_cast<char>(1 + word % 255);
    }
    Wide expected;
    const bool valid = model_decode(text, &expected);
    expected.resize(static_cast<size_t>(std::find(expected.begin(), expected.end(), uint16_t{0}) -
                                        expected.begin()));
    const std::vector<char> block(text.c_str(), text.c_str() + text.size() + 1);
    OwnedArray<uint16_t> units;
    const TextStatus status = decode_text(block.data(), 1, &units);
    ASSERT_EQ(status, valid ? TextStatus::done : TextStatus::bad_utf8)
        << ::testing::PrintToString(text);
    if (!valid) continue;
    ++accepted;
    ASSERT_EQ(Wide(units.get(), units.get() + length_wide(units.get())), expected);
  }
  EXPECT_GT(accepted, 10000U);
}

TEST(TextConversion, SurvivesRandomBytesUnderEveryCharset) {
  std::mt19937_64 random(42);
  for (int i = 0; i < 50000; ++i) {
    std::string text(random() % 60, '\0');
    for (char &c : text)
      c = static_cast<char>(1 + random() % 255);
    for (const int32_t charset : {0, 2, 3}) {
      const Wide units = decoded(text, charset);
      ASSERT_EQ(units.size(), text.size());
      ASSERT_EQ(encoded(units, charset).size(), text.size());
    }
  }
}

// ---- the room of the UTF-8 functions, which the two operations never exhaust ----

TEST(DecodeUtf8, ReportsWhenTheArrayIsFull) {
  uint16_t units[3] = {7, 7, 7};
  size_t count = 9;
  EXPECT_EQ(decode_utf8("abc", units, 2, &count), TextStatus::array_full);
  EXPECT_EQ(count, 2U);
  EXPECT_EQ(units[2], 7);
  EXPECT_EQ(decode_utf8("ab", units, 2, &count), TextStatus::done);
  EXPECT_EQ(count, 2U);
  EXPECT_EQ(decode_utf8("a", units, 0, &count), TextStatus::array_full);
}

TEST(EncodeUtf8, ReportsWhenTheStringIsFull) {
  char bytes[4] = {'#', '#', '#', '#'};
  for (size_t room = 0; room < 3; ++room) {
    size_t position = 0;
    EXPECT_EQ(encode_utf8(0x20AC, bytes, room, &position), TextStatus::string_full);
    EXPECT_EQ(position, room);
  }
  size_t position = 0;
  EXPECT_EQ(encode_utf8(0x20AC, bytes, 3, &position), TextStatus::done);
  EXPECT_EQ(position, 3U);
  EXPECT_EQ(bytes[3], '#');
}

TEST(EncodeUtf8, ReportsANumberOfMoreThan16Bits) {
  char bytes[8] = {};
  size_t position = 0;
  EXPECT_EQ(encode_utf8(0x10000, bytes, sizeof bytes, &position), TextStatus::number_too_big);
  EXPECT_EQ(position, 0U);
  EXPECT_EQ(encode_utf8(0xFFFF, bytes, sizeof bytes, &position), TextStatus::done);
  EXPECT_STREQ(bytes, "\xEF\xBF\xBF");
}

}  // namespace
}  // namespace quorix

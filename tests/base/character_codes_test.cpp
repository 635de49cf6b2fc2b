// SPDX-License-Identifier: MIT
//
// Each code against the tables written out.
#include <gtest/gtest.h>

#include <climits>
#include <initializer_list>

#include "base/char_codes.h"
#include "tests/support/character_tables.h"

namespace quorix::testing {
namespace {

constexpr int32_t below_letters[] = {INT_MIN, -1000, -1, 0, 1, 31, 32, 65, 125, 126};
constexpr int32_t beyond_letters[] = {265, 266, 300, 1000, 65536, INT_MAX};

TEST(CharacterCodes, PassAsciiAndBelowUnchanged) {
  for (const int32_t code : below_letters) {
    for (const int32_t charset : {0, 1, 2, 3, 11, -1}) {
      EXPECT_EQ(map_char_code(code, false, charset), code);
      EXPECT_EQ(map_char_for_font(charset, code), code);
    }
  }
  for (int32_t code = 0; code < first_letter; ++code) {
    EXPECT_EQ(map_char_code(code, false, 2), code);
    EXPECT_EQ(map_char_for_font(11, code), code);
  }
}

TEST(CharacterCodes, PassUnchangedWhereTheyAreRaw) {
  for (const int32_t charset : {0, 1, 2, 11}) {
    for (int32_t code = 0; code < 400; ++code)
      EXPECT_EQ(map_char_code(code, true, charset), code);
    for (const int32_t code : beyond_letters)
      EXPECT_EQ(map_char_code(code, true, charset), code);
  }
}

TEST(CharacterCodes, BecomeLatin1WithTheCopyrightSignAndNoOtherBeyond) {
  for (int32_t code = first_letter; code < 300; ++code) {
    const int32_t expected = code < first_unicode_letter ? latin1_letters[code - first_letter]
                             : code == last_letter       ? 0xA9
                                                         : 32;
    EXPECT_EQ(map_char_code(code, false, 1), expected) << code;
  }
}

TEST(CharacterCodes, BecomeUnicodeUnderEveryOtherCharset) {
  for (const int32_t charset : {2, 0, 3, 11, -1, INT_MAX})
    for (int32_t code = first_letter; code < 400; ++code)
      EXPECT_EQ(map_char_code(code, false, charset), literal_unicode(code)) << code;
}

TEST(CharacterCodes, AreBlanksBeyondTheLastUnderEveryCharset) {
  for (const int32_t charset : {0, 1, 2, 3, 11, 12, -1}) {
    for (const int32_t code : beyond_letters) {
      EXPECT_EQ(map_char_code(code, false, charset), 32);
      EXPECT_EQ(map_char_for_font(charset, code), 32);
    }
  }
}

TEST(CharacterCodes, BecomeTheLatin1LettersOfAWindowFont) {
  for (const int32_t charset : {0, 1}) {
    for (int32_t code = first_letter; code < 300; ++code) {
      const int32_t expected =
          code < first_unicode_letter ? latin1_letters[code - first_letter] : 32;
      EXPECT_EQ(map_char_for_font(charset, code), expected) << code;
    }
  }
}

TEST(CharacterCodes, BecomeTheBytesOfAFontOfTheSecondSet) {
  for (int32_t code = first_letter; code < 300; ++code)
    EXPECT_EQ(map_char_for_font(2, code), code <= 240 ? set2_font_letters[code - first_letter] : 32)
        << code;
}

TEST(CharacterCodes, BecomeTheBytesOfAFontOfTheThirdSet) {
  for (int32_t code = first_letter; code < 300; ++code)
    EXPECT_EQ(map_char_for_font(3, code), code <= 262 ? set3_font_letters[code - first_letter] : 32)
        << code;
}

TEST(CharacterCodes, BecomeTheUnicodeLettersOfAWindowFont) {
  for (int32_t code = first_letter; code < 300; ++code)
    EXPECT_EQ(map_char_for_font(11, code), literal_unicode(code)) << code;
}

TEST(CharacterCodes, AreBlanksInAWindowFontOfAnUnknownSet) {
  for (const int32_t charset : {-1, 4, 10, 12, INT_MAX, INT_MIN})
    for (int32_t code = first_letter; code <= last_letter; ++code)
      EXPECT_EQ(map_char_for_font(charset, code), 32);
}

TEST(CharacterCodes, HaveLatin1ValuesOnlyInTheFirstTable) {
  for (int32_t code = first_letter; code < 300; ++code)
    EXPECT_EQ(latin1_of_code(code),
              code < first_unicode_letter ? latin1_letters[code - first_letter] : 32);
}

}  // namespace
}  // namespace quorix::testing

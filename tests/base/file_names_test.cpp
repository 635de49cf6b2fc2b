// SPDX-License-Identifier: MIT
//
// Which names are opened by their characters, and what characters those are.
#include "base/file_names.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/failing_memory.h"

namespace quorix::testing {
namespace {

std::wstring wide(const std::string &name) {
  const OwnedArray<wchar_t> units = wide_name(name.c_str());
  return units == nullptr ? L"none" : std::wstring(units.get());
}

TEST(WideNames, AreThoseBeyondAsciiInValidUtf8) {
  for (const char *name :
       {"\xC3\xA4", "a\xC3\xA4z", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF",
        "\xEE\x80\x80", "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(is_wide_name(name)) << name;
  }
  for (const char *name : {"", "plain.png", "c:\\a b\\~\x7F"}) {
    EXPECT_FALSE(is_wide_name(name)) << name;
  }
}

TEST(WideNames, HaveNoOverlongFormsNoSurrogatesAndNothingBeyondTheLastCharacter) {
  for (const char *name :
       {"\x80", "\xBF", "\xC0\x80", "\xC1\xBF", "\xE0\x80\x80", "\xE0\x9F\xBF", "\xED\xA0\x80",
        "\xED\xBF\xBF", "\xF0\x80\x80\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
        "\xF5\x80\x80\x80", "\xF8\x88\x80\x80\x80", "\xFE", "\xFF"}) {
    EXPECT_FALSE(is_wide_name(name)) << static_cast<int>(static_cast<uint8_t>(name[0]));
    EXPECT_FALSE(is_wide_name((std::string("\xC3\xA4") + name).c_str())) << "behind a valid one";
  }
}

TEST(WideNames, AreNotCutInTheMiddleOfACharacter) {
  for (const char *name : {"\xC3", "\xE6\xB8", "\xE6", "\xF0\x9F\x93", "\xF0\x9F", "\xF0", "\xC3z",
                           "\xE6\xB8z", "\xF0\x9F\x93z", "\xC3\xC3\xA4"}) {
    EXPECT_FALSE(is_wide_name(name)) << name;
  }
}

TEST(WideNames, AreUnitsOfUtf16) {
  EXPECT_EQ(wide("a\xC3\xA4z"), std::wstring(L"a\u00E4z"));
  EXPECT_EQ(wide("\xC2\x80\xDF\xBF"), std::wstring(L"\u0080\u07FF"));
  EXPECT_EQ(wide("\xE0\xA0\x80\xEF\xBF\xBF"), std::wstring({wchar_t{0x0800}, wchar_t{0xFFFF}}));
  EXPECT_EQ(wide("\xF0\x90\x80\x80"), std::wstring({wchar_t{0xD800}, wchar_t{0xDC00}}));
  EXPECT_EQ(wide("\xF0\x9F\x93\x88!"), std::wstring({wchar_t{0xD83D}, wchar_t{0xDCC8}, L'!'}));
  EXPECT_EQ(wide("\xF4\x8F\xBF\xBF"), std::wstring({wchar_t{0xDBFF}, wchar_t{0xDFFF}}));
}

TEST(WideNames, AreNoneWithoutMemory) {
  const FailingMemory memory(1);
  EXPECT_EQ(wide_name("\xC3\xA4"), nullptr);
  EXPECT_TRUE(memory.failed());
  EXPECT_EQ(memory.live_blocks(), 0U);
}

}  // namespace
}  // namespace quorix::testing

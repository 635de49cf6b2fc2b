// SPDX-License-Identifier: MIT
// The options of qqwwid that windows know, questions about the screen, and text.

#include "quorix/quorix.h"
#include "tests/window/recording_system.h"

namespace quorix::testing {
namespace {

using WindowOption = RecordedWindow;

int32_t read_option_of(int32_t number) {
  int32_t value = 77;
  qqwwid(number, &value, 0);
  return value;
}

TEST_F(WindowOption, OnlyThoseOfWindowsBringTheirRecord) {
  for (const int32_t number : {3, 11, 12, 13, 14, 17, 18, 19, 21, 25, 32, 34, 99, 4}) {
    option(number, 1);
    EXPECT_EQ(current_window_set(), nullptr) << number;
  }
  for (const int32_t number : {0, 2, 5, 20, 26, 27, 28, 29, 30, 33}) {
    qqwfree();
    option(number, 1);
    EXPECT_NE(current_window_set(), nullptr) << number;
  }
  qqwfree();
  EXPECT_EQ(read_option_of(5), -1);
  EXPECT_NE(current_window_set(), nullptr);
}

TEST_F(WindowOption, ZeroAndTwoTellHandlesOfFourBytes) {
  EXPECT_EQ(read_option_of(0), 0);
  EXPECT_EQ(read_option_of(2), 0);
  open_recorded({});
  int32_t values[2] = {0, 55};
  qqwwid(0, values, 0);
  EXPECT_EQ(values[0], 1);
  EXPECT_EQ(values[1], 55);
  EXPECT_EQ(read_option_of(2), 4321);
  EXPECT_EQ(read_option_of(26), -1);
}

TEST_F(WindowOption, AHostIsAHandleOrTheAddressOfOne) {
  recording.hosts = {0x200000};
  qqwwid(1, reinterpret_cast<void *>(intptr_t{0x200000}), 1);
  EXPECT_EQ(current_window_set()->host_window, 0x200000);
  EXPECT_TRUE(current_window_set()->external);
  option(1, 500);
  EXPECT_EQ(current_window_set()->host_window, 500);
  qqwwid(1, reinterpret_cast<void *>(intptr_t{7}), 1);  // gone, but no address
  EXPECT_EQ(current_window_set()->host_window, 7);
  qqwwid(2, reinterpret_cast<void *>(intptr_t{0x123456}), 1);
  EXPECT_EQ(current_window_set()->host_bitmap, 0x123456);
  EXPECT_TRUE(current_window_set()->host_bitmap_set);
  option(0, 0);
  EXPECT_FALSE(current_window_set()->external);
  EXPECT_FALSE(current_window_set()->host_bitmap_set);
}

TEST_F(WindowOption, WithoutAValueNothingIsSet) {
  open_recorded({});
  forget();
  for (const int32_t number : {1, 2, 5, 11, 20, 26, 27, 28, 30, 32, 33, 34})
    EXPECT_EQ(qqwwid(number, nullptr, 1), 0) << number;
  EXPECT_EQ(qqwwid(0, nullptr, 0), 0);
  EXPECT_EQ(taken(), Calls{});
  EXPECT_FALSE(current_window_set()->external);
  EXPECT_EQ(output_context->pen.line_width, 1);
}

TEST_F(WindowOption, TheClipRectangleIsTheWindowsToo) {
  open_recorded({});
  for (const int32_t number : {11, 12, 13, 14})
    option(number, number * 2);
  const WindowSlot &slot = current_window(current_window_set());
  EXPECT_EQ(slot.clip_x1, 22);
  EXPECT_EQ(slot.clip_y1, 24);
  EXPECT_EQ(slot.clip_x2, 26);
  EXPECT_EQ(slot.clip_y2, 28);
}

TEST_F(WindowOption, AWidthMakesANewPenAtOnceAndCapsWithTheNext) {
  open_recorded({});
  qqwdrw(1, 1, 3);
  qqwdrw(2, 2, 2);
  forget();
  option(26, 5);
  EXPECT_EQ(taken(), (Calls{"polyline 1,1 2,2", "pixel 2,2 ffffff", "pen 11100 5 ffffff"}));
  option(27, 1);
  option(28, 0);
  EXPECT_EQ(taken(), Calls{});
  option(26, 6);
  EXPECT_EQ(taken(), Calls{"pen 12000 6 ffffff"});
  option(26, 1);
  EXPECT_EQ(taken(), Calls{"pen 0 1 ffffff"});
}

TEST_F(WindowOption, TheStyleOfAPenComesFromCapAndJoin) {
  open_recorded({});
  const uint32_t caps[4] = {0x200, 0, 0x100, 0x100};
  const uint32_t joins[4] = {0x2000, 0, 0x1000, 0x2000};
  for (int32_t cap = 0; cap < 4; ++cap) {
    for (int32_t join = 0; join < 4; ++join) {
      option(27, cap);
      option(28, join);
      EXPECT_EQ(current_window_set()->pen_style, 0x10000 + caps[cap] + joins[join]);
    }
  }
  option(27, 2);
  option(28, 2);
  EXPECT_EQ(current_window_set()->pen_style, 69888U);
}

TEST_F(WindowOption, CursorsAreTakenAndThoseOfWindowsSet) {
  open_recorded({});
  forget();
  for (const int32_t kind : {1, 2, 3, 4, 0, -1}) {
    option(30, kind);
    EXPECT_EQ(current_window_set()->end_cursor, kind);
  }
  EXPECT_EQ(taken(), (Calls{"class cursor(1, 1)", "class cursor(1, 2)", "class cursor(1, 3)"}));
  option(20, 0);
  EXPECT_EQ(current_window_set()->active_cursor, 0);
}

TEST_F(WindowOption, ClippingHoldsTheCanvasToTheRectangleByBothValues) {
  open_recorded({});
  option(11, 5);
  forget();
  option(33, 0);
  EXPECT_EQ(output_context->page.clip_on, 1);
  option(33, 1);
  EXPECT_EQ(output_context->page.clip_on, 0);
  EXPECT_EQ(taken(), (Calls{"clip 5 0 200 150", "clip 5 0 200 150"}));
}

TEST_F(WindowOption, ClippingOfARasterTouchesNoPlatformObject) {
  option(33, 0);
  EXPECT_EQ(output_context->page.clip_on, 1);
  option(33, 1);
  EXPECT_EQ(output_context->page.clip_on, 0);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(WindowOption, OpenGlHasItsOwnClipWidthAndSmoothing) {
  open_recorded({.device = 81});
  option(12, 10);
  option(14, 19);
  forget();
  option(33, 0);
  option(26, 3);
  option(34, 2);
  option(34, 1);
  EXPECT_EQ(taken(), (Calls{"glScissor(0, 130, 200, 10)", "glLineWidth(3)", "gl smooth(true)",
                            "gl smooth(false)"}));
}

TEST_F(WindowOption, TheTransparentColourTakesTheLow8BitsOfAnIndex) {
  open_recorded({});
  int32_t table[256] = {};
  table[5] = 0x112233;
  qqwvlt(1, table);
  option(32, 0x105);
  EXPECT_EQ(output_context->colours.transparent_r, 0x11);
  EXPECT_EQ(output_context->colours.transparent_b, 0x33);
}

TEST_F(WindowOption, DefaultsBringThePenStyleBack) {
  open_recorded({});
  option(27, 0);
  option(99, 0);
  EXPECT_EQ(current_window_set()->pen_style, 69888U);
}

// ---- Questions

struct Answer {
  int32_t a, b, c;
};

Answer asked(int32_t mode) {
  Answer answer = {-1, -1, -1};
  qqwwsc(&answer.a, &answer.b, &answer.c, &mode);
  return answer;
}

void expect_answer(const Answer &answer, int32_t a, int32_t b, int32_t c) {
  EXPECT_EQ(answer.a, a);
  EXPECT_EQ(answer.b, b);
  EXPECT_EQ(answer.c, c);
}

TEST_F(WindowOption, TheScreenIsAskedBeforeAWindowIsOpen) {
  expect_answer(asked(0), 1800, 1200, 32);
  expect_answer(asked(1), 0, 0, 0);
  expect_answer(asked(2), 0, 0, 0);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(WindowOption, SizeAndPlaceTakeTheEventsThatWaitFirst) {
  open_recorded({});
  forget();
  expect_answer(asked(1), 200, 150, 0);
  expect_answer(asked(2), 31, 42, 0);
  EXPECT_EQ(taken(), (Calls{"pump()", "pump()"}));
  recording.screen = {10, 10, 8};  // the screen that windows were opened on counts
  expect_answer(asked(7), 1800, 1200, 32);
  EXPECT_EQ(taken(), Calls{});
}

// ---- Text; the font's leading is 4, and a character is as wide as its code

class WindowText : public RecordedWindow {
 protected:
  int32_t widths[233] = {};
  int32_t font(const char *name, int32_t size = 12, int32_t angle = 0, int32_t charset = 0) {
    int32_t io = charset;
    qqwfnt(name, size, angle, widths, &io);
    return io;
  }
};

TEST_F(WindowText, FamilyNamesShedTheirStyleWords) {
  open_recorded({});
  struct Case {
    const char *name, *call;
  };
  const Case cases[] = {{"Arial Bold", "font Arial 12 0 700"},
                        {"Arial Unicode MS", "font Arial Unicode MS 12 0 0"},
                        {"Courier New Bold Italic", "font Courier 12 0 700 italic"},
                        {"Times New Roman Italic", "font Times 12 0 0 italic"},
                        {"Helvetica", "font Helvetica 12 0 0"}};
  for (const Case &c : cases) {
    forget();
    EXPECT_EQ(font(c.name), 0);
    EXPECT_EQ(taken(), Calls{c.call});
  }
}

TEST_F(WindowText, ANameOfMoreThan31CharactersIsCut) {
  open_recorded({});
  const std::string name(40, 'x');
  forget();
  EXPECT_EQ(font(name.c_str()), 0);
  EXPECT_EQ(taken(), Calls{"font " + name.substr(0, 31) + " 12 0 0"});
}

TEST_F(WindowText, WidthsAreTenthsOfAPixelOfEveryCode) {
  open_recorded({});
  ASSERT_EQ(font("Helvetica"), 0);
  EXPECT_EQ(widths[0], 320);
  EXPECT_EQ(widths['A' - 32], 650);
  EXPECT_EQ(current_window_set()->font_lead, 4);
}

TEST_F(WindowText, AFontThatCannotBeHadLeavesTheOldOne) {
  open_recorded({});
  ASSERT_EQ(font("Helvetica"), 0);
  recording.fonts_fail = true;
  EXPECT_EQ(font("Nothing"), 1);
  EXPECT_STREQ(current_window_set()->font.face, "Helvetica");
  EXPECT_TRUE(current_window_set()->font_selected);
}

TEST_F(WindowText, StartsHigherByTheLeadingAlongTheTurnedAxis) {
  open_recorded({});
  struct Case {
    int32_t angle;
    const char *call;
  };
  // sin(90 * 3.1415927 / 180) is a hair below 1, so 4 times it is 3 when cut; at 30 degrees the
  // sine is a hair above a half, and the cosine 0.866.
  const Case cases[] = {{0, "text 100,46 65"}, {90, "text 97,50 65"}, {30, "text 98,47 65"}};
  for (const Case &c : cases) {
    font("Helvetica", 12, c.angle);
    forget();
    qqwcha(65, 100, 50, 0);
    qqwcha2(65, 100, 50, 0, 0);
    EXPECT_EQ(taken(), (Calls{c.call, c.call})) << c.angle;
  }
}

TEST_F(WindowText, CharactersBeyondAByteAreWide) {
  open_recorded({});
  font("Helvetica");
  forget();
  qqwcha2(300, 10, 10, 1, 0);
  EXPECT_EQ(taken(), Calls{"text 10,6 300 wide"});
  int32_t width = 0;
  qqwcln(300, 1, &width);
  EXPECT_EQ(width, 13000);
  qqwcln(65, 0, &width);
  EXPECT_EQ(width, 650);
}

TEST_F(WindowText, OpenGlTurnsItsCharactersItself) {
  open_recorded({.device = 81});
  forget();
  ASSERT_EQ(font("Times", 20, 90), 0);
  EXPECT_EQ(taken(), Calls{"gl font 1 Times 20 0 0"});
  qqwcha2(65, 10, 20, 0, 0);
  qqwcha(65, 10, 20, 0);
  EXPECT_EQ(taken(), Calls{"gl text(10, 129, 20, 90, 65)"});
  qqwfree();
  EXPECT_EQ(taken()[0], "gl release font()");
}

TEST_F(WindowText, WithoutAFontNothingIsDrawnAndWidthsAreZero) {
  EXPECT_EQ(font("Helvetica"), 1);
  open_recorded({});
  forget();
  qqwcha(65, 1, 1, 0);
  qqwcha2(65, 1, 1, 0, 0);
  int32_t width = 9;
  qqwcln(65, 0, &width);
  EXPECT_EQ(width, 0);
  EXPECT_EQ(taken(), Calls{});
  EXPECT_EQ(qqwfnt(nullptr, 12, 0, widths, &width), 0);
  EXPECT_EQ(width, 1);
}

class MemoryText : public WindowTest {};

TEST_F(MemoryText, WindowsInMemoryHaveNoFonts) {
  open_device();
  int32_t widths[233] = {};
  int32_t io = 0;
  qqwfnt("Arial", 12, 0, widths, &io);
  EXPECT_EQ(io, 1);
  qqwcha2(65, 10, 10, 0, 0);
  int32_t width = 3;
  qqwcln(65, 0, &width);
  EXPECT_EQ(width, 0);
}

}  // namespace
}  // namespace quorix::testing

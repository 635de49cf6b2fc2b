// SPDX-License-Identifier: MIT
// Opening, selecting, hiding and closing windows, call by call.

#include <algorithm>

#include "quorix/quorix.h"
#include "tests/support/failing_memory.h"
#include "tests/window/recording_system.h"

namespace quorix::testing {
namespace {

using LifeCycle = RecordedWindow;

TEST_F(LifeCycle, OpensAWindowWithABitmapBehindIt) {
  const OpenedDevice opened = open_recorded({});
  EXPECT_EQ(opened.bits, 32);
  EXPECT_EQ(opened.width, 200);
  EXPECT_EQ(opened.height, 150);
  EXPECT_EQ(taken(),
            (Calls{"register class(false)",
                   "open('QUORIX 1 / Working', true, 1592, 1020, 208, 180, true)",
                   "canvas(1, true, 200, 150, false)", "pen 0 1 ffffff", "text colour ffffff",
                   "fill 0 0 200 150 0", "raise(1)", "enable close(1, false)"}));
  const Page &page = output_context->page;
  EXPECT_EQ(page.clip_x2, 199);
  EXPECT_EQ(page.clip_y2, 149);
  EXPECT_EQ(output_context->window.window_active, 1);
}

TEST_F(LifeCycle, ReadsItsOptionsDigitByDigit) {
  open_recorded({.device = 72, .buffering = 3, .options = 132});
  EXPECT_EQ(taken(),
            (Calls{"register class(true)", "open(' ', false, 0, 0, 200, 150, false)",
                   "canvas(1, true, 200, 150, false)", "pen 0 1 ffffff", "text colour ffffff",
                   "fill 0 0 200 150 ffffff", "raise(1)", "enable close(1, false)"}));
}

TEST_F(LifeCycle, TheFirstByteOfBufferingChoosesTheBitmap) {
  struct Case {
    int32_t buffering;
    bool visible, buffered;
  };
  const Case cases[] = {{0, true, true},  {2, true, true},  {3, false, true},
                        {1, true, false}, {4, true, false}, {0x0103, false, true}};
  for (const Case &c : cases) {
    open_recorded({.buffering = c.buffering});
    EXPECT_EQ(current_window_set()->visible, c.visible) << c.buffering;
    EXPECT_EQ(current_window_set()->double_buffered, c.buffered) << c.buffering;
    qqwfree();
  }
}

TEST_F(LifeCycle, ReopeningClosesTheOldWindowFirst) {
  open_recorded({});
  forget();
  open_recorded({});
  const Calls calls = taken();
  ASSERT_GE(calls.size(), 3U);
  EXPECT_EQ(calls[0], "close canvas");
  EXPECT_EQ(calls[1], "close(1)");
  EXPECT_EQ(calls[2], "open('QUORIX 1 / Working', true, 1592, 1020, 208, 180, true)");
}

TEST_F(LifeCycle, AFurtherWindowTakesWorkingFromTheTitleBefore) {
  open_recorded({});
  forget();
  open_window(73);
  const Calls calls = taken();
  ASSERT_GE(calls.size(), 2U);
  EXPECT_EQ(calls[0], "title(1, 'QUORIX 1')");
  EXPECT_EQ(calls[1], "open('QUORIX 2 / Working', true, 1592, 0, 208, 180, true)");
  EXPECT_EQ(calls.back(), "raise(2)");  // only the main window's close entry is disabled
}

TEST_F(LifeCycle, AWindowThatCannotBeMadeLeavesNothingToDrawOn) {
  recording.windows_fail = true;
  open_recorded({});
  EXPECT_EQ(taken().back(), "message('Window cannot be created: 1407', 'quoini')");
  EXPECT_EQ(current_window_set()->window, no_window);
  EXPECT_FALSE(any_window_open(current_window_set()));
  qqwfll(0, 0, 5, 5, 1);
  qqwdrw(1, 1, 3);
  qqwdrw(9, 9, 2);
  qqwsym(16, 5, 5, 4);
  qqwers();
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(LifeCycle, ABitmapThatCannotBeMadePostsAQuit) {
  recording.canvases_fail = true;
  open_recorded({});
  const Calls calls = taken();
  EXPECT_EQ(calls[3], "message('Cannot create Bitmap', 'quoini')");
  EXPECT_EQ(calls[4], "quit()");
}

TEST_F(LifeCycle, WithoutMemoryForThePaletteColoursStayAsTheyAre) {
  for (const int32_t bits : {4, 8}) {
    recording.screen.bits = bits;
    recording.palettes_fail = true;
    open_recorded({});
    const Calls calls = taken();
    EXPECT_NE(std::find(calls.begin(), calls.end(),
                        "message('Not enough memory to create color table', 'quoini')"),
              calls.end());
    EXPECT_EQ(current_window_set()->palette_mode, 0);
    forget();
    qqwclr(5);
    qqwclr(0x10000FF);
    EXPECT_EQ(taken(), Calls{}) << "no other pen";
    qqwfree();
    forget();
  }
}

TEST_F(LifeCycle, EachStepOfOpenGlThatFailsHasItsWordsAndLeavesABitmap) {
  struct Case {
    GlStep step;
    const char *words;
  };
  const Case cases[] = {{GlStep::no_pixel_format, "Pixel format for OPENGL not available:"},
                        {GlStep::pixel_format_refused, "Can't set pixel format for OPENGL:"},
                        {GlStep::no_context, "Can't create an OPENGL rendering context:"},
                        {GlStep::not_current, "Can't activate the OPENGL rendering context:"}};
  for (const Case &c : cases) {
    recording.gl_step = c.step;
    open_recorded({.device = 81});
    const Calls calls = taken();
    EXPECT_EQ(calls[1].substr(0, 26), "open('QUORIX GL 1 / Workin");
    EXPECT_EQ(calls[3], "message('" + std::string(c.words) + " 1407', 'quoini')");
    EXPECT_EQ(calls[4].substr(0, 7), "canvas(");
    EXPECT_EQ(output_context->window.opengl_on, 0);
    qqwfree();
    forget();
  }
}

TEST_F(LifeCycle, WithoutOpenGlThereIsABitmap) {
  recording.has_gl = false;
  open_recorded({.device = 81});
  EXPECT_EQ(taken()[2], "message('Pixel format for OPENGL not available: 0', 'quoini')");
  EXPECT_NE(current_window_set()->draw_canvas, nullptr);
}

TEST_F(LifeCycle, OpenGlDrawsWithoutABitmap) {
  open_recorded({.device = 81});
  EXPECT_EQ(taken()[2], "gl open(1, true, 32, 200, 150, false)");
  EXPECT_EQ(current_window_set()->draw_canvas, nullptr);
  EXPECT_EQ(output_context->window.opengl_on, 1);
  qqwfree();
  EXPECT_EQ(taken(), (Calls{"gl current(0)", "gl close(1)", "close(1)", "unregister class()"}));
}

TEST_F(LifeCycle, ScreensChooseThePaletteMode) {
  struct Case {
    int32_t bits, mode, size;
  };
  const Case cases[] = {{1, 0, 256}, {4, 2, 16}, {8, 1, 129}, {16, 3, 256}, {24, 3, 256}};
  for (const Case &c : cases) {
    recording.screen.bits = c.bits;
    open_recorded({});
    EXPECT_EQ(current_window_set()->palette_mode, c.mode) << c.bits;
    EXPECT_EQ(current_window_set()->palette_size, c.size) << c.bits;
    qqwfree();
  }
}

TEST_F(LifeCycle, SelectingMovesEverythingOfTheWindow) {
  open_recorded({});
  open_window(73);
  forget();
  qqwsel(1);
  EXPECT_EQ(taken(), (Calls{"title(2, 'QUORIX 2')", "title(1, 'QUORIX 1 / Working')",
                            "pen 0 1 ffffff", "text colour ffffff"}));
  EXPECT_EQ(current_window_set()->window, 1);
  EXPECT_EQ(current_window_set()->previous_slot, 1);
}

TEST_F(LifeCycle, SelectingTheCurrentOrAMissingWindowDoesNothing) {
  open_recorded({});
  forget();
  for (const int32_t number : {1, 2, 8, 0, 9, -1, INT32_MAX, INT32_MIN})
    qqwsel(number);
  EXPECT_EQ(taken(), Calls{});
  EXPECT_EQ(current_window_set()->current_slot, 0);
}

TEST_F(LifeCycle, GatheredLinesAreDrawnInTheWindowTheyBelongTo) {
  open_recorded({});
  open_window(73);
  qqwdrw(1, 2, 3);
  qqwdrw(4, 5, 2);
  forget();
  qqwsel(1);
  EXPECT_EQ(taken()[0], "polyline 1,2 4,5");
}

TEST_F(LifeCycle, HidesAndShowsOnce) {
  open_recorded({});
  forget();
  qqwhid(1, 0);
  qqwhid(1, 5);
  qqwhid(1, 1);
  qqwhid(1, 0);
  qqwhid(2, 1);
  EXPECT_EQ(taken(), (Calls{"show(1, false)", "show(1, true)"}));
}

TEST_F(LifeCycle, TellsTheStateOfWindows) {
  int32_t state = -1;
  qqwsta(0, &state);
  EXPECT_EQ(state, 1);
  qqwsta(1, &state);
  EXPECT_EQ(state, 0);
  open_recorded({});
  for (const int32_t number : {-1, 2, 9}) {
    qqwsta(number, &state);
    EXPECT_EQ(state, 0) << number;
  }
  qqwsta(1, &state);
  EXPECT_EQ(state, 1);
  current_window_set()->slots[0].finished = true;
  qqwsta(1, &state);
  EXPECT_EQ(state, 0);
}

TEST_F(LifeCycle, ClosingAWindowGoesBackToTheMainOne) {
  open_recorded({});
  open_window(73);
  forget();
  qqwcls(2);
  EXPECT_EQ(taken(), (Calls{"close canvas", "close(2)", "title(1, 'QUORIX 1 / Working')",
                            "pen 0 1 ffffff", "text colour ffffff"}));
  qqwcls(2);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(LifeCycle, TheCurrentWindowIsTornDownLast) {
  open_recorded({});
  open_window(73);
  open_window(74);
  qqwsel(2);
  forget();
  qqwfree();
  EXPECT_EQ(taken(), (Calls{"close canvas", "close(1)", "close canvas", "close(3)", "close canvas",
                            "close(2)", "unregister class()"}));
  EXPECT_EQ(output_context, nullptr);
}

TEST_F(LifeCycle, ATitleOfTheCallersStays) {
  open_recorded({});
  qqwtit("mine");
  forget();
  open_window(73);
  EXPECT_EQ(taken()[0].substr(0, 5), "open(");
  qqwsel(1);
  EXPECT_EQ(taken(), (Calls{"title(2, 'QUORIX 2')", "pen 0 1 ffffff", "text colour ffffff"}));
}

TEST_F(LifeCycle, AnIconThatCannotBeReadIsStatus1) {
  int32_t status = -1;
  qqwico("a.ico", &status);
  EXPECT_EQ(status, 1);
  open_recorded({});
  qqwico("a.ico", &status);
  EXPECT_EQ(status, 0);
  recording.icons_fail = true;
  qqwico("a.ico", &status);
  EXPECT_EQ(status, 1);
  qqwico(nullptr, &status);
  EXPECT_EQ(status, 1);
}

TEST_F(LifeCycle, OtherDevicesAreRefused) {
  for (const int32_t device : {71, 82, 0, -72, INT32_MAX, INT32_MIN}) {
    const OpenedDevice opened = open_recorded({.device = device});
    EXPECT_EQ(opened.bits, 0);
    EXPECT_EQ(opened.width, 0);
    EXPECT_EQ(opened.height, 0);
    EXPECT_EQ(output_context, nullptr);
  }
  open_window(73);  // nothing was set up
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(LifeCycle, AHostWindowIsDrawnInAndNeverClosed) {
  recording.hosts = {500};
  recording.client_width = 90;
  recording.client_height = 60;
  option(1, 500);
  const OpenedDevice opened = open_recorded({});
  EXPECT_EQ(opened.width, 90);
  EXPECT_EQ(opened.height, 60);
  EXPECT_EQ(taken(), (Calls{"register class(false)", "canvas(500, true, 90, 60, true)",
                            "pen 0 1 ffffff", "text colour ffffff", "enable close(500, false)"}));
  qqwfree();
  EXPECT_EQ(taken(), (Calls{"close canvas", "unregister class()"}));
}

TEST_F(LifeCycle, AScrolledHostWindowHasTheLargerBitmap) {
  recording.hosts = {500};
  recording.client_width = 90;
  recording.client_height = 600;
  option(1, 500);
  option(5, 1);
  const OpenedDevice opened = open_recorded({});
  EXPECT_EQ(opened.width, 200);
  EXPECT_EQ(opened.height, 150);
  EXPECT_EQ(taken()[1], "canvas(500, true, 200, 600, true)");
}

TEST_F(LifeCycle, AHostWindowThatIsGoneIsNotOpened) {
  option(1, 500);
  open_recorded({});
  EXPECT_EQ(taken(), Calls{"register class(false)"});
  EXPECT_FALSE(any_window_open(current_window_set()));
}

TEST_F(LifeCycle, EveryRequestForMemoryMayBeRefused) {
  for (size_t n = 1;; ++n) {
    qqwfree();
    open_recorded({});
    FailingMemory memory(n);
    open_window(73);
    qqwtit("a title");
    qqwpol(3, 0, 1);
    for (int32_t i = 0; i < 3; ++i)
      qqwpol(i, i * i, 2);
    qqwpol(0, 0, 9);
    int32_t status = 0;
    qqwimg(0, &status);
    qqwfll(0, 0, 3, 3, 1);
    qqwimg(1, &status);
    qqwfree();
    if (!memory.failed()) break;
  }
}

}  // namespace
}  // namespace quorix::testing

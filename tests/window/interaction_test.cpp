// SPDX-License-Identifier: MIT
// Asking the user for points, lines and keys.

#include "quorix/quorix.h"
#include "tests/window/memory_page.h"
#include "window/window.h"

namespace quorix::testing {
namespace {

using Interaction = WindowTest;

struct Points {
  int32_t x[8] = {-1, -1, -1, -1, -1, -1, -1, -1};
  int32_t y[8] = {-1, -1, -1, -1, -1, -1, -1, -1};
  int32_t count = -1;
  int32_t overflow = -1;

  std::vector<std::pair<int32_t, int32_t>> taken() const {
    std::vector<std::pair<int32_t, int32_t>> result;
    for (int32_t i = 0; i < count; ++i)
      result.emplace_back(x[i], y[i]);
    return result;
  }
};

using Places = std::vector<std::pair<int32_t, int32_t>>;

void press(int32_t x, int32_t y) {
  window_left_pressed(current_window_id(), x, y);
}
void release(int32_t x, int32_t y) {
  window_left_released(current_window_id(), x, y);
}
void move(int32_t x, int32_t y) {
  window_pointer_moved(current_window_id(), x, y);
}
void right() {
  window_right_released(current_window_id());
}

// ---- Points

TEST_F(Interaction, CollectsClicksUntilTheRightButton) {
  open_device();
  Points p;
  user_does({[] { press(10, 20); }, [] { release(10, 20); }, [] { move(50, 50); },
             [] { press(30, 40); }, right});
  EXPECT_EQ(qqwcu1(p.x, p.y, 8, &p.count, &p.overflow), 0);
  EXPECT_EQ(p.taken(), (Places{{10, 20}, {30, 40}}));
  EXPECT_EQ(p.overflow, 0);
  EXPECT_EQ(steps_left(), 0U);
}

TEST_F(Interaction, TellsOfClicksBeyondTheCapacityAndStoresNone) {
  open_device();
  Points p;
  user_does({[] { press(1, 2); }, [] { press(3, 4); }, [] { press(5, 6); }, right});
  qqwcu1(p.x, p.y, 2, &p.count, &p.overflow);
  EXPECT_EQ(p.taken(), (Places{{1, 2}, {3, 4}}));
  EXPECT_EQ(p.overflow, 1);
  EXPECT_EQ(p.x[2], -1);
}

TEST_F(Interaction, WithoutCapacityEveryPointIsTooMany) {
  for (const int32_t capacity : {0, -3}) {
    open_device();
    Points p;
    user_does({[] { press(1, 2); }, right});
    qqwcu1(p.x, p.y, capacity, &p.count, &p.overflow);
    EXPECT_EQ(p.count, 0);
    EXPECT_EQ(p.overflow, 1);
    user_does({[] { press(1, 2); }, [] { release(1, 2); }});
    qqwcu2(p.x, p.y, capacity, &p.count, &p.overflow);
    EXPECT_EQ(p.count, 0);
    EXPECT_EQ(p.overflow, 1);
    user_does({[] { press(1, 2); }, [] { move(4, 4); }, [] { release(4, 4); }, right});
    qqwcu7(p.x, p.y, capacity, &p.count, &p.overflow);
    EXPECT_EQ(p.count, 0);
    EXPECT_EQ(p.overflow, 1);
    EXPECT_EQ(p.x[0], -1);
  }
}

TEST_F(Interaction, FollowsThePathWhileTheButtonIsHeld) {
  open_device();
  Points p;
  user_does({[] { press(1, 1); }, [] { move(2, 2); }, [] { move(3, 4); }, [] { release(9, 9); }});
  qqwcu2(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(p.taken(), (Places{{1, 1}, {2, 2}, {3, 4}}));
  EXPECT_EQ(p.overflow, 0);
}

TEST_F(Interaction, ASecondPressStartsThePathAnew) {
  open_device();
  Points p;
  user_does({[] { press(1, 1); }, [] { move(2, 2); }, [] { press(7, 7); }, [] { move(8, 8); },
             [] { release(8, 8); }});
  qqwcu2(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(p.taken(), (Places{{7, 7}, {8, 8}}));
}

TEST_F(Interaction, TakesOneClick) {
  open_device();
  int32_t x = -5;
  int32_t y = -6;
  user_does({[] { move(3, 3); }, [] { press(70, 80); }});
  qqwcu3(&x, &y);
  EXPECT_EQ(x, 70);
  EXPECT_EQ(y, 80);
}

TEST_F(Interaction, ClosingTheWindowEndsTheWaitWithWhatWasCollected) {
  open_device();
  Points p;
  user_does({[] { press(10, 20); }, [] { window_close_requested(current_window_id()); }});
  qqwcu1(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(p.taken(), (Places{{10, 20}}));
  EXPECT_EQ(memory_window_count(), 0);
  qqwdrw(1, 1, 3);  // drawing is safe, and a window can be had again
  open_device();
  EXPECT_EQ(memory_window_count(), 1);
}

TEST_F(Interaction, SurvivesACallbackThatReleasesEverything) {
  open_device();
  Points p;
  user_does({[] { press(1, 1); }, [] { qqwfree(); }});
  qqwcu1(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(output_context, nullptr);
  EXPECT_EQ(p.count, 0);
}

TEST_F(Interaction, OtherWindowsAreNobodysAffair) {
  open_device();
  open_window(73);
  Points p;
  user_does({[] { window_left_pressed(window_number(1), 5, 5); },
             [] { window_right_released(window_number(1)); }, [] { press(8, 9); }, right});
  qqwcu1(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(p.taken(), (Places{{8, 9}}));
  EXPECT_EQ(steps_left(), 0U);
}

TEST_F(Interaction, WithoutAWindowEverythingReturnsAtOnce) {
  Points p;
  int32_t x = 3;
  int32_t mode = 2;
  qqwcu1(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(p.count, 0);
  EXPECT_EQ(p.overflow, 0);
  qqwcu3(&x, &x);
  qqwcu5(&x, &x, &x, &x);
  EXPECT_EQ(x, 3);
  qqwcu4(&x, &x, &mode);
  EXPECT_EQ(mode, 0);
  EXPECT_EQ(qqwnnp(), 0);
  EXPECT_EQ(qqwmb2(), 0);
  EXPECT_EQ(qqwsbf(), 0);
  EXPECT_EQ(qqwfin(0), 0);
}

// ---- Rubber bands

TEST_F(Interaction, ARubberRectangleEndsWhereTheButtonIsReleased) {
  open_device();
  int32_t b[4] = {};
  user_does({[] { press(10, 20); }, [] { move(30, 30); }, [] { release(60, 90); }});
  qqwcu5(&b[0], &b[1], &b[2], &b[3]);
  EXPECT_EQ((std::vector<int32_t>(b, b + 4)), (std::vector<int32_t>{10, 20, 60, 90}));
}

TEST_F(Interaction, ARubberBandStaysOnThePage) {
  open_device();  // 200 x 150
  int32_t b[4] = {};
  user_does({[] { press(10, 20); }, [] { move(199, 149); }, [] { move(200, 100); },
             [] { release(-1, 150); }});
  qqwcu6(&b[0], &b[1], &b[2], &b[3]);
  EXPECT_EQ((std::vector<int32_t>(b, b + 4)), (std::vector<int32_t>{10, 20, 199, 100}));
}

TEST_F(Interaction, ARubberPolygonCollectsItsCorners) {
  open_device();
  Points p;
  user_does({[] { press(10, 10); }, [] { move(20, 10); }, [] { release(20, 10); },
             [] { press(20, 10); }, [] { move(20, 30); }, [] { release(20, 30); }, right});
  qqwcu7(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(p.taken(), (Places{{10, 10}, {20, 10}, {20, 30}}));
}

TEST_F(Interaction, AReleaseWithoutAPressIsNoBand) {
  open_device();
  int32_t b[4] = {};
  user_does({[] { release(5, 5); }, [] { press(1, 2); }, [] { release(3, 4); }});
  qqwcu6(&b[0], &b[1], &b[2], &b[3]);
  EXPECT_EQ((std::vector<int32_t>(b, b + 4)), (std::vector<int32_t>{1, 2, 3, 4}));
}

// ---- Keys

struct AskedKey {
  int32_t x = 7, y = 8, mode;
};

AskedKey ask(int32_t mode) {
  AskedKey a = {7, 8, mode};
  qqwcu4(&a.x, &a.y, &a.mode);
  return a;
}

TEST_F(Interaction, WaitsForAnyKeyOrButton) {
  open_device();
  struct {
    std::function<void()> event;
    int32_t key;
  } const cases[] = {
      {[] { window_key_pressed(current_window_id(), Key::left); }, 1},
      {[] { window_key_pressed(current_window_id(), Key::up); }, 2},
      {[] { window_key_pressed(current_window_id(), Key::right); }, 3},
      {[] { window_key_pressed(current_window_id(), Key::down); }, 4},
      {[] { press(1, 1); }, 5},
      {right, 6},
      {[] { window_key_pressed(current_window_id(), Key::escape); }, 27},
      {[] { window_character(current_window_id(), 'q'); }, 'q'},
  };
  for (const auto &c : cases) {
    user_does({[] { window_key_pressed(current_window_id(), Key::other); }, c.event});
    EXPECT_EQ(ask(2).mode, c.key);
    EXPECT_EQ(steps_left(), 0U);
  }
}

TEST_F(Interaction, MovesThePointerWithinTheClipRectangleAndReportsIt) {
  open_device();
  AskedKey a = {1000, -5, 1};
  qqwcu4(&a.x, &a.y, &a.mode);
  EXPECT_EQ(a.mode, 0);
  a = ask(3);
  EXPECT_EQ(a.x, 199);
  EXPECT_EQ(a.y, 0);
  user_does({[] { window_character(current_window_id(), 'z'); }});
  a = {50, 60, 0};
  qqwcu4(&a.x, &a.y, &a.mode);
  EXPECT_EQ(a.mode, 'z');
  EXPECT_EQ(a.x, 50);
  EXPECT_EQ(a.y, 60);
}

TEST_F(Interaction, TellsTheLastKeyOnceAndButtonsOnlyWithThePlace) {
  open_device();
  window_character(current_window_id(), 'a');
  EXPECT_EQ(ask(4).mode, 'a');
  EXPECT_EQ(ask(4).mode, 0);
  press(3, 3);
  EXPECT_EQ(ask(4).mode, 0);
  press(3, 3);
  EXPECT_EQ(ask(3).mode, 5);
  EXPECT_EQ(ask(3).mode, 0);
  right();
  EXPECT_EQ(ask(4).mode, 0);
}

TEST_F(Interaction, NegativeKeyModesCountAsZero) {
  open_device();
  user_does({right});
  AskedKey a = {20, 30, -4};
  qqwcu4(&a.x, &a.y, &a.mode);
  EXPECT_EQ(a.mode, 6);
  EXPECT_EQ(a.x, 20);
}

// ---- Close entries and cursors

TEST_F(Interaction, TheCloseEntryIsDisabledWhileSomethingIsAskedInAFurtherWindow) {
  open_device();
  open_window(74);
  Points p;
  MemoryWindowState state = {};
  bool enabled = true;
  user_does({[&] {
               memory_window_state(current_window_id(), &state);
               enabled = state.close_enabled;
             },
             right});
  qqwcu1(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_FALSE(enabled);
  memory_window_state(current_window_id(), &state);
  EXPECT_TRUE(state.close_enabled);
}

TEST_F(Interaction, CursorsShowWhatGoesOnUnlessSwitchedOff) {
  open_device();
  Points p;
  int32_t cursor = 0;
  user_does({[] { move(5, 5); }, [&] { cursor = memory_cursor(); }, right});
  qqwcu1(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(cursor, cursor_cross);
  EXPECT_EQ(memory_cursor(), cursor_arrow);
  int32_t none = 0;
  qqwwid(20, &none, 1);
  user_does({[] { move(5, 5); }, [&] { cursor = memory_cursor(); }, right});
  qqwcu1(p.x, p.y, 8, &p.count, &p.overflow);
  EXPECT_EQ(cursor, cursor_arrow);
}

}  // namespace
}  // namespace quorix::testing

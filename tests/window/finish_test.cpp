// SPDX-License-Identifier: MIT
// The end of a plot: titles, waits, and what remains.

#include "platform/callbacks.h"
#include "quorix/quorix.h"
#include "tests/window/memory_page.h"
#include "window/window.h"

namespace quorix::testing {
namespace {

class EndOfPlot : public WindowTest {
 protected:
  // The title that the user sees during the wait; empty where there is no wait.
  std::string title_while_waiting(int32_t mode) {
    open_device();
    std::string title;
    user_does({[&] { title = title_of(current_window_id()); }});
    qqwfin(mode);
    return title;
  }
};

TEST_F(EndOfPlot, TheTitleSaysHowToGoOn) {
  const struct {
    int32_t mode;
    const char *title;
  } cases[] = {
      {0, "QUORIX 1 / Click MB2 to continue ..."},
      {1, "QUORIX 1 / Click MB2 to continue ..."},
      {5, "QUORIX 1"},
      {10, "QUORIX 1 / Click MB2 or RETURN to continue ..."},
      {11, "QUORIX 1 / Click MB2 or RETURN to continue ..."},
      {15, "QUORIX 1 / Press RETURN to continue ..."},
      {20, "QUORIX 1 / Click MB2 or ESC to continue ..."},
      {25, "QUORIX 1 / Press ESC to continue ..."},
      {-7, "QUORIX 1 / Click MB2 to continue ..."},
      {8, "QUORIX 1 / Click MB2 to continue ..."},
  };
  for (const auto &c : cases)
    EXPECT_EQ(title_while_waiting(c.mode), c.title) << c.mode;
}

TEST_F(EndOfPlot, AtOnceTheWindowStandsWithAPlainTitle) {
  EXPECT_EQ(title_while_waiting(2), "");
  EXPECT_EQ(title_of(window_number(1)), "QUORIX 1");
  int32_t state = -1;
  qqwsta(1, &state);
  EXPECT_EQ(state, 0) << "finished";
}

TEST_F(EndOfPlot, TearingDownDoesNotWait) {
  for (const int32_t mode : {3, 13}) {
    EXPECT_EQ(title_while_waiting(mode), "") << mode;
    EXPECT_EQ(memory_window_count(), 0);
  }
}

TEST_F(EndOfPlot, ADelayIsTitledInWholeSecondsAndEnds) {
  open_device();
  // The title is written before the window goes, so it is read from a window that a caller's
  // system would show; here the wait is over at once.
  qqwfin(5004);
  EXPECT_EQ(memory_window_count(), 0);
  EXPECT_EQ(current_window_set()->continue_mode, continue_idle);
}

TEST_F(EndOfPlot, TheRightButtonClosesAllOrLeavesThemStanding) {
  open_device();
  open_window(74);
  user_does({[] { window_right_released(current_window_id()); }});
  qqwfin(1);
  EXPECT_EQ(memory_window_count(), 2);
  user_does({[] { window_right_released(current_window_id()); }});
  qqwfin(0);
  EXPECT_EQ(memory_window_count(), 0);
}

TEST_F(EndOfPlot, TheRightButtonOverAnotherWindowDoesNothing) {
  open_device();
  open_window(74);
  int32_t count = 0;
  user_does({[] { window_right_released(window_number(3)); },
             [&] { count = memory_window_count(); },
             [] { window_right_released(window_number(1)); }});
  qqwfin(0);
  EXPECT_EQ(count, 2);
  EXPECT_EQ(steps_left(), 0U);
}

TEST_F(EndOfPlot, OnlyTheKeyThatWasAskedForGoesOn) {
  const struct {
    int32_t mode;
    Key wrong, right;
  } cases[] = {{10, Key::escape, Key::enter}, {20, Key::enter, Key::escape}};
  for (const auto &c : cases) {
    open_device();
    int32_t count = 0;
    user_does({[&] { EXPECT_FALSE(window_key_pressed(current_window_id(), c.wrong)); },
               [&] { count = memory_window_count(); },
               [&] { EXPECT_TRUE(window_key_pressed(current_window_id(), c.right)); }});
    qqwfin(c.mode);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(memory_window_count(), 0);
    EXPECT_EQ(steps_left(), 0U);
  }
}

TEST_F(EndOfPlot, WithUnitsFiveOnlyClosingEndsTheWait) {
  open_device();
  int32_t count = 0;
  user_does({[] { window_right_released(current_window_id()); },
             [] { window_key_pressed(current_window_id(), Key::enter); },
             [&] { count = memory_window_count(); },
             [] { window_close_requested(current_window_id()); }});
  qqwfin(15);
  EXPECT_EQ(count, 1);
  EXPECT_EQ(current_window_set()->last_key, key_right_button);
  EXPECT_EQ(memory_window_count(), 0);
  EXPECT_EQ(steps_left(), 0U);
}

// Windows may be closed in any order; the wait ends with the main one, which closes the rest.
TEST_F(EndOfPlot, WindowsMayBeClosedInAnyOrder) {
  std::vector<int32_t> order = {1, 2, 3, 4};
  do {
    open_device();
    for (const int32_t device : {73, 74, 75})
      open_window(device);
    std::vector<std::function<void()>> closing;
    size_t steps = 0;
    bool main_open = true;
    for (const int32_t number : order) {
      if (main_open) {
        closing.push_back([number] { window_close_requested(window_number(number)); });
        ++steps;
      }
      main_open = main_open && number != 1;
    }
    user_does(closing);
    qqwfin(1);
    EXPECT_EQ(memory_window_count(), 0);
    EXPECT_EQ(steps_left(), 0U);
    open_device();
    EXPECT_EQ(memory_window_count(), 1) << "the next opening works";
    qqwfree();
  } while (std::next_permutation(order.begin(), order.end()));
}

void note_size(int32_t *, int32_t *, int32_t *, int32_t *, int32_t *) {}

TEST_F(EndOfPlot, AResizeEndsTheWaitWhenTheFrameIsReleasedIfSomebodyListens) {
  int32_t on = 1;
  open_device();
  qqswincb(reinterpret_cast<void *>(note_size), &on);
  user_does({[] { resize_memory_window(current_window_id(), 300, 200); }});
  qqwfin(1);
  EXPECT_EQ(steps_left(), 0U);
  EXPECT_EQ(output_context->window.pending_window_event, 1);
  const WindowSlot &slot = current_window_set()->slots[0];
  EXPECT_EQ(slot.seen_width, 300);
  EXPECT_EQ(slot.seen_height, 200);

  callback_slots.window = nullptr;
  int32_t steps = 0;
  user_does({[] { resize_memory_window(current_window_id(), 310, 210); }, [&] { ++steps; },
             [] { window_right_released(current_window_id()); }});
  qqwfin(1);
  EXPECT_EQ(steps, 1) << "nobody listens: the wait goes on";
}

TEST_F(EndOfPlot, MinimisingIsNoResize) {
  int32_t on = 1;
  open_device();
  qqswincb(reinterpret_cast<void *>(note_size), &on);
  output_context->window.pending_window_event = 0;
  window_resized(current_window_id(), true);
  resize_memory_window(current_window_id(), 0, 0);
  EXPECT_EQ(output_context->window.pending_window_event, 0);
  EXPECT_EQ(current_window_set()->slots[0].seen_width, 200);
}

TEST_F(EndOfPlot, HiddenAndInvisibleWindowsAreNotWaitedFor) {
  open_device();
  qqwhid(1, 1);
  bool waited = false;
  user_does({[&] { waited = true; }});
  qqwfin(0);
  EXPECT_FALSE(waited);
  EXPECT_EQ(memory_window_count(), 0);
  WindowWish unseen;
  unseen.buffering = 3;
  open_device(unseen);
  qqwfin(0);
  EXPECT_FALSE(waited);
  EXPECT_EQ(memory_window_count(), 0);
}

TEST_F(EndOfPlot, ATitleOfTheCallersStays) {
  open_device();
  qqwtit("My plot");
  std::string title;
  user_does({[&] { title = title_of(current_window_id()); }});
  qqwfin(1);
  EXPECT_EQ(title, "My plot");
}

TEST_F(EndOfPlot, ACallbackMayReleaseEverythingDuringTheWait) {
  open_device();
  user_does({[] { qqwfree(); }});
  EXPECT_EQ(qqwfin(0), 0);
  EXPECT_EQ(output_context, nullptr);
  EXPECT_EQ(memory_window_count(), 0);
}

TEST_F(EndOfPlot, NextPageWaitsForTheRightButtonAndPutsTheTitleBack) {
  open_device();
  std::string title;
  user_does({[&] { title = title_of(current_window_id()); },
             [] { window_right_released(current_window_id()); }});
  qqwnnp();
  EXPECT_EQ(title, "QUORIX 1 / Click MB2 for next page ...");
  EXPECT_EQ(title_of(current_window_id()), "QUORIX 1");
  EXPECT_EQ(steps_left(), 0U);
  qqwtit("Mine");
  user_does({[] { window_right_released(current_window_id()); }});
  qqwnnp();
  EXPECT_EQ(title_of(current_window_id()), "Mine");
}

TEST_F(EndOfPlot, NextPageEndsWhenTheWindowIsClosed) {
  open_device();
  user_does({[] { window_close_requested(current_window_id()); }});
  qqwnnp();
  EXPECT_EQ(memory_window_count(), 0);
  EXPECT_EQ(steps_left(), 0U);
}

TEST_F(EndOfPlot, AProgramCanGoOnForTheUser) {
  open_device();
  user_does({[] { qqwmb2(); }});
  qqwfin(0);
  EXPECT_EQ(memory_window_count(), 0);
  EXPECT_EQ(steps_left(), 0U);
}

TEST_F(EndOfPlot, WithoutAScriptEveryWaitEnds) {
  for (const int32_t mode : {0, 1, 2, 3, 4, 5, 6, 10, 25, 14}) {
    open_device();
    open_window(73);
    EXPECT_EQ(qqwfin(mode), 0);
    qqwfree();
    EXPECT_EQ(memory_window_count(), 0);
  }
}

// ---- Showing

TEST_F(EndOfPlot, ShowingPutsThePictureOnTheScreen) {
  open_device();
  qqwfll(10, 10, 5, 5, 0x010000FF);
  const WindowId window = current_window_id();
  EXPECT_EQ(memory_window_colour(window, 12, 12), 0U) << "nothing is shown before it is asked for";
  qqwsbf();
  EXPECT_EQ(memory_window_colour(window, 12, 12), 0xFFU);
}

TEST_F(EndOfPlot, LinesThatAreGatheredAreShownToo) {
  open_device();
  qqwclr(0x0100FF00);
  qqwdrw(0, 3, 3);
  qqwdrw(50, 3, 2);
  qqwsbf();
  EXPECT_EQ(memory_window_colour(current_window_id(), 20, 3), 0xFF00U);
}

TEST_F(EndOfPlot, AHostWindowKeepsItsPictureAfterThePlot) {
  const WindowId host = open_memory_host(120, 80);
  int32_t handle = host;
  qqwwid(1, &handle, 1);
  open_device();
  qqwfll(0, 0, 20, 20, 0x01FF0000);
  qqwfin(0);
  EXPECT_EQ(memory_window_colour(host, 5, 5), 0xFF0000U);
  EXPECT_EQ(output_context->window.widget_window_count, 1);
  resize_memory_window(host, 100, 80);  // what it showed is gone
  EXPECT_EQ(memory_window_colour(host, 5, 5), 0xFF0000U);
  window_needs_paint(host);
  EXPECT_EQ(memory_window_colour(host, 5, 5), 0xFF0000U);
  qqwfree();
  memory_window_system.close(host);
}

}  // namespace
}  // namespace quorix::testing

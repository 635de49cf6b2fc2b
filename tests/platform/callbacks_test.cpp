// SPDX-License-Identifier: MIT
//
// The three functions that the library keeps for the plotting layer.
#include <gtest/gtest.h>

#include <array>

#include "core/output_context.h"
#include "quorix/raster.h"
#include "quorix/system.h"
#include "quorix/window.h"
#include "raster/raster.h"
#include "window/window_set.h"

namespace quorix::testing {
namespace {

int projection_calls = 0;
std::array<void *, 2> projection_arguments;
void project(void *a, void *b) {
  ++projection_calls;
  projection_arguments = {a, b};
}
void project_otherwise(void *, void *) {
  projection_calls += 100;
}

int pie_calls = 0;
std::array<void *, 10> pie_arguments;
void draw_pie(void *a1, void *a2, void *a3, void *a4, void *a5, void *a6, void *a7, void *a8,
              void *a9, void *a10) {
  ++pie_calls;
  pie_arguments = {a1, a2, a3, a4, a5, a6, a7, a8, a9, a10};
}

int window_calls = 0;
std::array<int32_t, 5> window_arguments;
void note_window(int32_t *window, int32_t *x, int32_t *y, int32_t *width, int32_t *height) {
  ++window_calls;
  window_arguments = {*window, *x, *y, *width, *height};
  *window = 99;
  *x += 1000;
  *y += 1000;
  *width += 1000;
  *height += 1000;
}

template <class Function>
void *address(Function *function) {
  return reinterpret_cast<void *>(function);
}

void set_projection(void *function, int32_t flag) {
  EXPECT_EQ(qqwsetcb(function, &flag), 0);
}
void set_window(void *function, int32_t flag) {
  EXPECT_EQ(qqswincb(function, &flag), 0);
}

class Callbacks : public ::testing::Test {
 protected:
  void SetUp() override {
    qqwfree();
    forget();
    projection_calls = pie_calls = window_calls = 0;
  }
  void TearDown() override {
    forget();
    qqwfree();
  }
  static void forget() {
    set_projection(nullptr, 1);
    qqspiecb(nullptr);
    set_window(nullptr, 1);
  }
  static void project_once() { EXPECT_EQ(qqwprjcb(nullptr, nullptr), 0); }
  static void draw_one_pie() {
    EXPECT_EQ(qqwpiecb(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                       nullptr, nullptr),
              0);
  }
};

TEST_F(Callbacks, AreSilentWhereNoneIsSet) {
  project_once();
  draw_one_pie();
  EXPECT_EQ(qqwwincb(), 0);
  EXPECT_EQ(projection_calls + pie_calls + window_calls, 0);
}

TEST_F(Callbacks, GetTheirTwoArguments) {
  set_projection(address(project), 1);
  double a = 1, b = 2;
  EXPECT_EQ(qqwprjcb(&a, &b), 0);
  EXPECT_EQ(projection_calls, 1);
  EXPECT_EQ(projection_arguments, (std::array<void *, 2>{&a, &b}));
}

TEST_F(Callbacks, StayWhereTheProjectionFlagIsNotOne) {
  set_projection(address(project), 1);
  for (const int32_t flag : {0, 2, -1, 257}) {
    set_projection(address(project_otherwise), flag);
    set_projection(nullptr, flag);
  }
  project_once();
  EXPECT_EQ(projection_calls, 1);
  set_projection(address(project_otherwise), 1);
  project_once();
  EXPECT_EQ(projection_calls, 101);
  set_projection(nullptr, 1);
  project_once();
  EXPECT_EQ(projection_calls, 101);
}

TEST_F(Callbacks, GetTheirTenArguments) {
  EXPECT_EQ(qqspiecb(address(draw_pie)), 0);
  int32_t v[10] = {};
  EXPECT_EQ(qqwpiecb(&v[0], &v[1], &v[2], &v[3], &v[4], &v[5], &v[6], &v[7], &v[8], &v[9]), 0);
  EXPECT_EQ(pie_calls, 1);
  for (size_t i = 0; i < 10; ++i)
    EXPECT_EQ(pie_arguments[i], &v[i]);
  qqspiecb(nullptr);
  draw_one_pie();
  EXPECT_EQ(pie_calls, 1);
}

// A record with a window part, and a change in one window that nobody was called for yet.
WindowSlot *change_window(int32_t slot) {
  OutputContext *context = require_output_context();
  require_window_set(context);
  output_context->window.pending_window_event = slot + 1;
  WindowSlot *window = &output_context->window.window_set->slots[slot];
  window->left = 11;
  window->top = 12;
  window->seen_width = 13;
  window->seen_height = 14;
  return window;
}

TEST_F(Callbacks, HearOfAWindowsNewPlaceAndSizeOnce) {
  for (const int32_t slot : {0, 3, 7}) {
    window_calls = 0;
    const WindowSlot *window = change_window(slot);
    set_window(address(note_window), 1);
    EXPECT_EQ(qqwwincb(), 0);
    EXPECT_EQ(window_calls, 1);
    EXPECT_EQ(window_arguments, (std::array<int32_t, 5>{slot + 1, 11, 12, 13, 14}));
    EXPECT_EQ(output_context->window.pending_window_event, 0);
    // What the function changed is what the window has now, but for its number, a copy.
    EXPECT_EQ(window->left, 1011);
    EXPECT_EQ(window->top, 1012);
    EXPECT_EQ(window->seen_width, 1013);
    EXPECT_EQ(window->seen_height, 1014);
    EXPECT_EQ(qqwwincb(), 0);
    EXPECT_EQ(window_calls, 1);
  }
}

TEST_F(Callbacks, MissAWindowsChangeWhereNoneIsSetAndHearOfItLater) {
  change_window(2);
  EXPECT_EQ(qqwwincb(), 0);
  EXPECT_EQ(output_context->window.pending_window_event, 3);
  set_window(address(note_window), 1);
  EXPECT_EQ(qqwwincb(), 0);
  EXPECT_EQ(window_calls, 1);
}

TEST_F(Callbacks, AreClearedWhereTheWindowFlagIsNotOne) {
  change_window(0);
  for (const int32_t flag : {0, 2, -1, 257}) {
    set_window(address(note_window), 1);
    set_window(address(note_window), flag);
    EXPECT_EQ(qqwwincb(), 0);
    EXPECT_EQ(window_calls, 0) << flag;
  }
}

TEST_F(Callbacks, AreNotCalledWithoutAWindowPart) {
  set_window(address(note_window), 1);
  EXPECT_EQ(qqwwincb(), 0) << "no record";
  require_output_context();
  set_window(address(note_window), 1);
  EXPECT_EQ(qqwwincb(), 0) << "nothing pending";
  output_context->window.pending_window_event = 1;
  EXPECT_EQ(qqwwincb(), 0) << "no window part";
  EXPECT_EQ(window_calls, 0);
}

TEST_F(Callbacks, AreNotCalledForWindowsThatCannotBe) {
  change_window(0);
  set_window(address(note_window), 1);
  for (const int32_t event : {-1, 9, 1000, INT32_MAX, INT32_MIN}) {
    output_context->window.pending_window_event = event;
    EXPECT_EQ(qqwwincb(), 0);
    EXPECT_EQ(window_calls, 0) << event;
  }
}

TEST_F(Callbacks, AreClearedByTheDefaultsOfTheDrawingRecord) {
  change_window(0);
  set_projection(address(project), 1);
  qqspiecb(address(draw_pie));
  set_window(address(note_window), 1);
  int32_t unused = 0;
  qqwwid(99, &unused, 1);
  output_context->window.pending_window_event = 1;
  project_once();
  draw_one_pie();
  EXPECT_EQ(qqwwincb(), 0);
  EXPECT_EQ(projection_calls + pie_calls + window_calls, 0);
}

}  // namespace
}  // namespace quorix::testing

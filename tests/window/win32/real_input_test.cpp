// SPDX-License-Identifier: MIT
// Every interaction with a real mouse and real keys.

#include "platform/callbacks.h"
#include "tests/window/win32/real_window.h"

namespace quorix::testing {
namespace {

using RealInput = RealWindow;

TEST_F(RealInput, ARightClickEndsAPlot) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.wait_window("quomain", "Click MB2 to continue");
    ui.click(w, 50, 50, ui::kRight);
    ui.wait_gone(w);
  });
  EXPECT_EQ(qqwfin(0), 0);
}

TEST_F(RealInput, TheKeyThatWasAskedForEndsAPlot) {
  const struct {
    int32_t mode;
    WORD wrong, right;
  } cases[] = {{10, VK_ESCAPE, VK_RETURN}, {20, VK_RETURN, VK_ESCAPE}};
  for (const auto &c : cases) {
    open();
    HWND w = window();
    ui::Driver user([&](ui::Driver &ui) {
      ui.wait_window("quomain", "Click MB2 or");
      ui.settle();
      ui.key(c.wrong);
      EXPECT_TRUE(IsWindow(w)) << c.mode;
      ui.key(c.right);
      ui.wait_gone(w);
    });
    qqwfin(c.mode);
  }
}

TEST_F(RealInput, ClosingEndsAPlot) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.wait_window("quomain", "Click MB2");
    PostMessageA(w, WM_CLOSE, 0, 0);
    ui.wait_gone(w);
  });
  qqwfin(1);
  EXPECT_FALSE(IsWindow(w));
}

TEST_F(RealInput, NextPageWaitsForTheRightButton) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.wait_window("quomain", "next page");
    ui.click(w, 20, 20, ui::kRight);
  });
  qqwnnp();
  user.finish();
  EXPECT_TRUE(IsWindow(w));
  EXPECT_EQ(title(w), "QUORIX 1");
}

TEST_F(RealInput, CollectsClicks) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.settle();
    ui.click(w, 20, 30);
    ui.click(w, 120, 90);
    ui.click(w, 60, 60, ui::kRight);
  });
  int32_t x[4] = {};
  int32_t y[4] = {};
  int32_t count = 0;
  int32_t overflow = 0;
  qqwcu1(x, y, 4, &count, &overflow);
  ASSERT_EQ(count, 2);
  EXPECT_EQ(x[0], 20);
  EXPECT_EQ(y[0], 30);
  EXPECT_EQ(x[1], 120);
  EXPECT_EQ(y[1], 90);
}

TEST_F(RealInput, FollowsAPath) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.settle();
    ui.drag(w, 20, 30, 100, 70);
  });
  int32_t x[64] = {};
  int32_t y[64] = {};
  int32_t count = 0;
  int32_t overflow = 0;
  qqwcu2(x, y, 64, &count, &overflow);
  ASSERT_GE(count, 5);
  EXPECT_EQ(x[0], 20);
  EXPECT_EQ(y[0], 30);
  EXPECT_EQ(x[count - 1], 100);
  EXPECT_EQ(y[count - 1], 70);
}

TEST_F(RealInput, TakesARubberRectangleAndLeavesNoTrace) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.settle();
    ui.drag(w, 20, 30, 100, 70);
  });
  int32_t b[4] = {};
  qqwcu5(&b[0], &b[1], &b[2], &b[3]);
  user.finish();
  EXPECT_EQ(std::vector<int32_t>(b, b + 4), (std::vector<int32_t>{20, 30, 100, 70}));
  HDC dc = GetDC(w);
  int32_t traces = 0;
  for (int y = 0; y < 200; ++y) {
    for (int x = 0; x < 300; ++x)
      traces += GetPixel(dc, x, y) != RGB(0, 0, 0) ? 1 : 0;
  }
  ReleaseDC(w, dc);
  EXPECT_EQ(traces, 0);
}

TEST_F(RealInput, TakesARubberLine) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.settle();
    ui.drag(w, 90, 80, 10, 15);
  });
  int32_t b[4] = {};
  qqwcu6(&b[0], &b[1], &b[2], &b[3]);
  EXPECT_EQ(std::vector<int32_t>(b, b + 4), (std::vector<int32_t>{90, 80, 10, 15}));
}

TEST_F(RealInput, TakesARubberPolygon) {
  open();
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.settle();
    ui.drag(w, 20, 20, 80, 20);
    ui.drag(w, 80, 20, 80, 90);
    ui.click(w, 50, 50, ui::kRight);
  });
  int32_t x[8] = {};
  int32_t y[8] = {};
  int32_t count = 0;
  int32_t overflow = 0;
  qqwcu7(x, y, 8, &count, &overflow);
  ASSERT_EQ(count, 3);
  EXPECT_EQ(std::vector<int32_t>(x, x + 3), (std::vector<int32_t>{20, 80, 80}));
  EXPECT_EQ(std::vector<int32_t>(y, y + 3), (std::vector<int32_t>{20, 20, 90}));
}

TEST_F(RealInput, TellsKeysAndButtons) {
  const struct {
    WORD key;
    int32_t told;
  } cases[] = {{VK_LEFT, 1}, {VK_UP, 2}, {VK_RIGHT, 3}, {VK_DOWN, 4}, {VK_ESCAPE, 27}, {'A', 'a'}};
  open();
  for (const auto &c : cases) {
    ui::Driver user([&](ui::Driver &ui) {
      ui.settle();
      ui.key(c.key);
    });
    int32_t x = 0;
    int32_t y = 0;
    int32_t mode = 2;
    qqwcu4(&x, &y, &mode);
    EXPECT_EQ(mode, c.told);
  }
}

TEST_F(RealInput, MovesThePointer) {
  open();
  int32_t x = 77;
  int32_t y = 66;
  int32_t mode = 1;
  qqwcu4(&x, &y, &mode);
  POINT p = {};
  GetCursorPos(&p);
  ScreenToClient(window(), &p);
  EXPECT_EQ(p.x, 77);
  EXPECT_EQ(p.y, 66);
}

void note_size(int32_t *, int32_t *, int32_t *, int32_t *, int32_t *) {}

TEST_F(RealInput, LettingGoOfADraggedFrameEndsTheWait) {
  open();
  HWND w = window();
  int32_t on = 1;
  qqswincb(reinterpret_cast<void *>(note_size), &on);
  ui::Driver user([&](ui::Driver &ui) {
    ui.wait_window("quomain", "Click MB2");
    ui.settle();
    ui.drag(w, 302, 60, 342, 60);
  });
  qqwfin(1);
  user.finish();
  EXPECT_EQ(output_context->window.pending_window_event, 1);
  EXPECT_GT(current_window_set()->slots[0].seen_width, 300);
}

TEST_F(RealInput, WhatWasCoveredIsPaintedAgain) {
  open();
  qqwfll(10, 10, 50, 50, red);
  HWND w = window();
  ui::Driver user([&](ui::Driver &ui) {
    ui.wait_window("quomain", "Click MB2");
    ui.settle();
    ShowWindow(w, SW_MINIMIZE);
    ui.settle();
    ShowWindow(w, SW_RESTORE);
    ui.settle();
    EXPECT_EQ(ui.pixel(w, 30, 30), RGB(255, 0, 0));
    EXPECT_EQ(ui.pixel(w, 80, 30), RGB(0, 0, 0));
    ui.click(w, 50, 50, ui::kRight);
  });
  qqwfin(1);
}

}  // namespace
}  // namespace quorix::testing

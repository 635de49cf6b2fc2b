// SPDX-License-Identifier: MIT
// What Win32 itself says of our windows: class, style, place, size, menu, and what is left behind.

#include "tests/support/import_patch_windows.h"
#include "tests/support/platform_state_windows.h"
#include "tests/window/win32/real_window.h"

namespace quorix::testing {
namespace {

TEST_F(RealWindow, HasItsClassStyleTitleAndPlace) {
  open();
  HWND w = window();
  char name[64] = "";
  GetClassNameA(w, name, sizeof(name));
  EXPECT_STREQ(name, "quomain");
  EXPECT_EQ(GetClassLongPtrA(w, GCL_STYLE) & 3, 3);
  constexpr LONG overlapped = 0xCF0000;
  EXPECT_EQ(GetWindowLongA(w, GWL_STYLE) & overlapped, overlapped);
  EXPECT_EQ(title(w), "QUORIX 1 / Working");
  RECT outer = {};
  GetWindowRect(w, &outer);
  EXPECT_EQ(outer.left, 50);
  EXPECT_EQ(outer.top, 60);
  RECT client = {};
  GetClientRect(w, &client);
  EXPECT_EQ(client.right, 300);
  EXPECT_EQ(client.bottom, 200);
  EXPECT_TRUE(IsWindowVisible(w));
}

TEST_F(RealWindow, WithoutABorderIsAPopupOfItsClientSize) {
  open(72, 120, 90, 0, 100);
  HWND w = window();
  EXPECT_NE(GetWindowLongA(w, GWL_STYLE) & static_cast<LONG>(WS_POPUP), 0);
  EXPECT_EQ(title(w), " ");
  RECT outer = {};
  GetWindowRect(w, &outer);
  EXPECT_EQ(outer.right - outer.left, 120);
  EXPECT_EQ(outer.bottom - outer.top, 90);
}

TEST_F(RealWindow, StaysUnseenWhereThatWasAsked) {
  open(72, 300, 200, 3);
  EXPECT_FALSE(IsWindowVisible(window()));
}

TEST_F(RealWindow, CannotBeClosedWhileItIsDrawn) {
  open();
  EXPECT_FALSE(close_is_enabled(window()));
  qqwfin(2);
  EXPECT_TRUE(close_is_enabled(window()));
}

TEST_F(RealWindow, OpeningItsNumberAgainClosesTheOldOne) {
  open();
  HWND before = window();
  open();
  EXPECT_FALSE(IsWindow(before));
  EXPECT_TRUE(IsWindow(window()));
}

TEST_F(RealWindow, HidesShowsAndTakesTitles) {
  open();
  qqwhid(1, 1);
  EXPECT_FALSE(IsWindowVisible(window()));
  qqwhid(1, 0);
  EXPECT_TRUE(IsWindowVisible(window()));
  qqwtit("Fluxes");
  EXPECT_EQ(title(window()), "Fluxes");
}

// ---- Pixels

COLORREF shown(int x, int y) {
  HDC dc = GetDC(handle_of(current_window_set()->window));
  const COLORREF colour = GetPixel(dc, x, y);
  ReleaseDC(handle_of(current_window_set()->window), dc);
  return colour;
}

TEST_F(RealWindow, ShowsRectanglesLinesAndPixelsExactly) {
  open();
  qqwfll(10, 20, 30, 40, red);
  qqwclr(green);
  qqwdrw(100, 50, 3);
  qqwdrw(150, 50, 2);
  qqwdrw(150, 90, 2);
  qqwpix(200, 100, blue);
  qqwsbf();
  EXPECT_EQ(shown(10, 20), RGB(255, 0, 0));
  EXPECT_EQ(shown(39, 59), RGB(255, 0, 0));
  EXPECT_EQ(shown(40, 59), RGB(0, 0, 0));
  EXPECT_EQ(shown(39, 60), RGB(0, 0, 0));
  EXPECT_EQ(shown(9, 20), RGB(0, 0, 0));
  for (const int x : {100, 125, 150})
    EXPECT_EQ(shown(x, 50), RGB(0, 255, 0)) << x;
  EXPECT_EQ(shown(150, 90), RGB(0, 255, 0)) << "the last point is drawn";
  EXPECT_EQ(shown(150, 91), RGB(0, 0, 0));
  EXPECT_EQ(shown(200, 100), RGB(0, 0, 255));
  EXPECT_EQ(shown(201, 100), RGB(0, 0, 0));
}

TEST_F(RealWindow, ReadsBackWhatItShows) {
  open();
  qqwfll(10, 20, 30, 40, red);
  int32_t status = -1;
  qqwimg(0, &status);
  ASSERT_EQ(status, 0);
  uint8_t rgb[3 * 2] = {};
  qqwrdr(rgb, 39, 20, -2, 1);
  EXPECT_EQ(std::vector<uint8_t>(rgb, rgb + 6), (std::vector<uint8_t>{255, 0, 0, 0, 0, 0}));
  int32_t colour = 1;
  qqwrpx(10, 20, &colour);
  EXPECT_EQ(colour, red);
  qqwwpx(0, 0, blue);
  qqwimg(1, &status);
  qqwsbf();
  EXPECT_EQ(shown(0, 0), RGB(0, 0, 255));
}

TEST_F(RealWindow, WritesItsPictureAsPngFromEitherKindOfBuffering) {
  for (const int32_t buffering : {0, 1}) {
    open(72, 300, 200, buffering);
    qqwfll(10, 20, 30, 40, red);
    int32_t status = -1;
    qqwimg(0, &status);
    EXPECT_EQ(status, 0) << buffering;
    uint8_t rgb[3] = {};
    qqwrdr(rgb, 15, 25, -1, 1);
    EXPECT_EQ(rgb[0], 255) << buffering;
    qqwimg(1, &status);
    EXPECT_EQ(status, 0);
    qqwfree();
  }
}

TEST_F(RealWindow, TextLeavesInkAndHasWidths) {
  open(72, 300, 200, 0, 2);  // white
  int32_t widths[233] = {};
  int32_t io = 0;
  qqwfnt("Arial Bold", 24, 0, widths, &io);
  ASSERT_EQ(io, 0);
  EXPECT_GT(widths['W' - 32], widths['i' - 32]);
  qqwclr(0x01000000);
  qqwcha2('W', 100, 100, 0, 0);
  int32_t width = 0;
  qqwcln('W', 0, &width);
  EXPECT_EQ(width, widths['W' - 32]);
  qqwsbf();
  int32_t ink = 0;
  for (int y = 60; y < 140; ++y) {
    for (int x = 90; x < 140; ++x)
      ink += shown(x, y) != RGB(255, 255, 255) ? 1 : 0;
  }
  EXPECT_GT(ink, 50);
}

// ---- Failures

HWND WINAPI no_window_at_all(DWORD, LPCSTR, LPCSTR, DWORD, int, int, int, int, HWND, HMENU,
                             HINSTANCE, LPVOID) {
  SetLastError(1406);
  return nullptr;
}
HBITMAP WINAPI no_bitmap(HDC, int, int) {
  return nullptr;
}
int WINAPI no_pixel_format(HDC, const PIXELFORMATDESCRIPTOR *) {
  SetLastError(2000);
  return 0;
}

std::vector<std::string> messages;
int WINAPI note_message(HWND, LPCSTR text, LPCSTR caption, UINT) {
  messages.push_back(std::string(caption) + ": " + text);
  return IDOK;
}

TEST_F(RealWindow, SaysThatNoWindowCanBeHad) {
  const ImportPatch box(nullptr, "MessageBoxA", note_message);
  const ImportPatch create(nullptr, "CreateWindowExA", no_window_at_all);
  ASSERT_TRUE(create.found());
  messages.clear();
  open();
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].rfind("quoini: Window cannot be created:", 0), 0U) << messages[0];
  qqwdrw(1, 1, 3);
  qqwdrw(9, 9, 2);
  EXPECT_EQ(qqwfin(0), 0) << "there is nothing to wait for";
}

TEST_F(RealWindow, SaysThatNoBitmapCanBeHad) {
  const ImportPatch box(nullptr, "MessageBoxA", note_message);
  const ImportPatch create(nullptr, "CreateCompatibleBitmap", no_bitmap);
  ASSERT_TRUE(create.found());
  messages.clear();
  open();
  ASSERT_GE(messages.size(), 1U);
  EXPECT_EQ(messages[0], "quoini: Cannot create Bitmap");
  qqwfll(0, 0, 5, 5, red);
  int32_t status = 0;
  qqwimg(0, &status);
  EXPECT_EQ(status, 1);
  EXPECT_EQ(qqwfin(0), 0) << "the quit message ends the wait";
}

TEST_F(RealWindow, DrawsByGdiWhereOpenGlCannotBeHad) {
  const ImportPatch box(nullptr, "MessageBoxA", note_message);
  const ImportPatch choose(nullptr, "ChoosePixelFormat", no_pixel_format);
  ASSERT_TRUE(choose.found());
  messages.clear();
  open(81);
  ASSERT_EQ(messages.size(), 1U);
  EXPECT_EQ(messages[0].rfind("quoini: Pixel format for OPENGL not available:", 0), 0U)
      << messages[0];
  EXPECT_EQ(output_context->window.opengl_on, 0);
  qqwfll(10, 20, 30, 40, red);
  qqwsbf();
  EXPECT_EQ(shown(20, 30), RGB(255, 0, 0));
}

// ---- OpenGL

TEST_F(RealWindow, OpenGlDrawsWhatIsReadBack) {
  open(81);
  ASSERT_EQ(output_context->window.opengl_on, 1);
  qqwers();
  qqwfll(50, 40, 60, 30, red);
  int32_t status = -1;
  qqwimg(0, &status);
  ASSERT_EQ(status, 0);
  int32_t colour = 1;
  qqwrpx(70, 50, &colour);
  EXPECT_EQ(colour, red);
  colour = 1;
  qqwrpx(70, 30, &colour);
  EXPECT_EQ(colour, 0x01000000);
  qqwwpx(5, 7, green);
  colour = 1;
  qqwrpx(5, 7, &colour);
  EXPECT_EQ(colour, green);
  qqwsbf();
  EXPECT_EQ(title(window()).rfind("QUORIX GL 1", 0), 0U) << title(window());
  EXPECT_EQ(qqwfin(3), 0);
}

// ---- Nothing is left behind

class Leaks : public RealWindow {
 protected:
  static void draw() {
    qqwfll(1, 1, 20, 20, red);
    for (int32_t i = 0; i < 20; ++i) {
      qqwclr(i);
      qqwdrw(0, i, 3);
      qqwdrw(100, i, 2);
    }
    int32_t widths[233];
    int32_t io = 0;
    qqwfnt("Arial", 12, 0, widths, &io);
    qqwcha2('x', 10, 10, 0, 0);
  }
  static size_t windows() {
    std::vector<HWND> list;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND w, LPARAM to) -> BOOL {
          char name[64] = "";
          GetClassNameA(w, name, sizeof(name));
          if (std::string(name) == "quomain")
            reinterpret_cast<std::vector<HWND> *>(to)->push_back(w);
          return TRUE;
        },
        reinterpret_cast<LPARAM>(&list));
    return list.size();
  }
};

TEST_F(Leaks, NothingIsLeftOfOpenedAndClosedWindows) {
  const auto cycle = [] {
    open(72, 150, 100, 3);
    draw();
    qqwcls(1);
  };
  cycle();
  const int before = gdi_objects();
  for (int i = 0; i < 1000; ++i)
    cycle();
  EXPECT_EQ(gdi_objects(), before);
  EXPECT_EQ(windows(), 0U);
}

TEST_F(Leaks, NothingIsLeftOfTeardowns) {
  const auto cycle = [] {
    open(72, 150, 100, 3);
    draw();
    qqwfin(3);
  };
  cycle();
  const int before = gdi_objects();
  for (int i = 0; i < 50; ++i)
    cycle();
  EXPECT_EQ(gdi_objects(), before);
  EXPECT_EQ(windows(), 0U);
}

TEST_F(Leaks, NothingIsLeftOfSelectingAmongEightWindows) {
  open(72, 150, 100, 3);
  for (int32_t device = 73; device <= 79; ++device)
    open_another(device, 0, 0);
  const auto cycle = [] {
    for (int32_t number = 1; number <= 8; ++number) {
      qqwsel(number);
      draw();
    }
  };
  cycle();
  const int before = gdi_objects();
  for (int i = 0; i < 20; ++i)
    cycle();
  EXPECT_EQ(gdi_objects(), before);
  EXPECT_EQ(windows(), 8U);
}

}  // namespace
}  // namespace quorix::testing

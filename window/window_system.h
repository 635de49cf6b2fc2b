// SPDX-License-Identifier: MIT
//
// What the window device asks of a desktop, as a record of functions: Win32, Qt or memory.
//
// One system is in force for the process (choose_window_system). Windows are numbers that the
// system hands out, 0 is none; the system keeps its own table from numbers to its objects. What
// happens in windows comes back through window_events.h, called by the system from within `wait`
// and `pump`, or at once from an operation that causes it. A null function means that this system
// cannot do it.
#pragma once

#include <cstdint>

namespace quorix {

using WindowId = int32_t;
inline constexpr WindowId no_window = 0;

struct Canvas;
struct CanvasFont;
struct FontMetrics;
struct GlCalls;

struct ScreenInfo {
  int32_t width, height;
  int32_t bits;  // per pixel
};

struct FrameMetrics {
  int32_t frame_width, frame_height;
  int32_t caption_height;
};

struct NewWindow {
  const char *title;
  bool bordered;  // with frame, caption and system menu
  int32_t x, y;
  int32_t width, height;  // outer size
  bool shown;
};

struct WindowPlace {
  int32_t left, top;  // of the outer window, on the screen
};

struct NewCanvas {
  WindowId window;
  bool buffered;  // a bitmap of the given size, else the window itself
  int32_t width, height;
  bool copy_window;  // the bitmap begins as what the window shows
};

struct ScrollState {
  int32_t position, minimum, maximum;
};

enum class ScrollAxis : uint8_t { horizontal, vertical };

enum CursorKind : int32_t {
  cursor_kind_none = 0,
  cursor_cross = 1,
  cursor_arrow = 2,
  cursor_up = 3
};

enum class RubberShape : uint8_t { line, rectangle };

struct PointerPlace {
  int32_t x, y;  // in the window's client area
};

struct GlWindow {
  WindowId window;
  bool buffered;
  int32_t screen_bits;
  int32_t width, height;
  bool white_background;
};

// Steps of opening OpenGL that can fail.
enum class GlStep : uint8_t {
  done,
  no_pixel_format,
  pixel_format_refused,
  no_context,
  not_current
};

struct GlSystem {
  // Makes a context for the window and makes it current, with viewport, projection and buffers set.
  // On failure `error` is the system's number.
  GlStep (*open)(const GlWindow &window, int32_t *error);
  void (*make_current)(WindowId window);  // no_window: none
  void (*close)(WindowId window);
  // Copies the back buffer to the front one, which keeps the back buffer for the next plot.
  void (*show_back_buffer)(WindowId window, int32_t width, int32_t height);
  void (*flush)();
  void (*line_width)(int32_t width);
  void (*line_smooth)(bool on);
  void (*scissor)(int32_t x, int32_t y, int32_t width, int32_t height);
  // Outline fonts as display lists; false where the font cannot be had.
  bool (*select_font)(WindowId window, const CanvasFont &font);
  bool (*font_metrics)(WindowId window, FontMetrics *metrics);
  int32_t (*text_width)(WindowId window, int32_t code, bool wide);
  void (*release_font)();
  void (*text)(int32_t x, int32_t y, int32_t size, int32_t angle, int32_t code);
  const GlCalls *calls;
};

struct WindowSystem {
  // ---- The desktop
  void (*screen)(ScreenInfo *screen);
  void (*frame)(FrameMetrics *frame);
  void (*show_message)(const char *text, const char *caption);

  // ---- Windows
  void (*register_class)(bool white_background);
  void (*unregister_class)();
  // no_window on failure, and then `error` is the system's number.
  WindowId (*open)(const NewWindow &window, int32_t *error);
  void (*close)(WindowId window);
  bool (*exists)(WindowId window);
  bool (*bitmap_exists)(int32_t bitmap);  // null where bitmaps have no numbers
  void (*show)(WindowId window, bool shown);
  void (*raise)(WindowId window);
  void (*focus)(WindowId window);
  void (*set_title)(WindowId window, const char *title);
  bool (*set_icon)(WindowId window, const char *filename);
  void (*enable_close)(WindowId window, bool enabled);  // the close entry of the system menu
  bool (*client_size)(WindowId window, int32_t *width, int32_t *height);
  bool (*place)(WindowId window, WindowPlace *place);
  bool (*scroll_state)(WindowId window, ScrollAxis axis, ScrollState *state);
  void (*set_scroll_position)(WindowId window, ScrollAxis axis, int32_t position);

  // ---- Pictures
  // The target of drawing of a window, or null.
  Canvas *(*open_canvas)(const NewCanvas &canvas);
  // Puts a client-sized piece of the canvas's bitmap, from the offset on, into the window.
  void (*present)(WindowId window, Canvas *canvas, int32_t offset_x, int32_t offset_y,
                  int32_t width, int32_t height);
  // A canvas to measure text on while a metafile is open; null where there is none.
  Canvas *(*open_measuring_canvas)();

  // ---- Pointer and cursor
  void (*set_cursor)(int32_t kind);  // CursorKind
  void (*set_class_cursor)(WindowId window, int32_t kind);
  bool (*pointer)(WindowId window, PointerPlace *place);
  void (*set_pointer)(WindowId window, int32_t x, int32_t y);
  void (*capture)(WindowId window);
  void (*release_capture)();
  // Inverts a line or the outline of a rectangle on the window; a second time takes it away.
  void (*rubber_band)(WindowId window, RubberShape shape, int32_t x1, int32_t y1, int32_t x2,
                      int32_t y2);

  // ---- Time
  void (*wait)();  // dispatches events until `quit`; nested, each quit ends the innermost
  void (*quit)();
  bool (*pump)();  // dispatches what waits; true if a paint event was among it
  void (*sleep)(int32_t milliseconds);
  void (*update)(WindowId window);  // has the window painted now

  const GlSystem *gl;  // null without OpenGL
};

// The system in force: the platform's, or another that a test or a module set.
const WindowSystem *window_system();
void choose_window_system(const WindowSystem *system);  // null: the platform's own

}  // namespace quorix

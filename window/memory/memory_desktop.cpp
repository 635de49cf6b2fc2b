// SPDX-License-Identifier: MIT
//
// The desktop in memory as a WindowSystem, and what tests set and ask of it.
#include "window/memory/memory_desktop.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "base/files.h"
#include "base/memory.h"
#include "window/memory/window_table.h"
#include "window/window_events.h"

namespace quorix {

namespace {

constexpr ScreenInfo default_screen = {1920, 1080, 32};
constexpr FrameMetrics default_frame = {4, 4, 22};

ScreenInfo the_screen = default_screen;
FrameMetrics the_frame = default_frame;
MemoryScript the_script = nullptr;
void *script_data = nullptr;
bool screens_kept = false;
bool quit_posted = false;
int32_t the_cursor = cursor_arrow;
PointerPlace the_pointer = {-1, -1};  // in the client area that was last asked about

// ---- The desktop

void screen(ScreenInfo *result) {
  *result = the_screen;
}

void frame(FrameMetrics *result) {
  *result = the_frame;
}

// Whoever runs without a screen reads the error stream.
void show_message(const char *text, const char *caption) {
  for (const char *part : {caption, ": ", text, "\n"})
    std::fputs(part, stderr);
  std::fflush(stderr);
}

void nothing_to_register(bool /*white_background*/) {}

void nothing_to_unregister() {}

// ---- Windows

void set_title(WindowId number, const char *title) {
  MemoryWindow *window = memory_window(number);
  if (window == nullptr) return;
  const size_t bytes = std::strlen(title) + 1;
  auto copy = allocate_array<char>(bytes);
  if (!copy) return;
  std::memcpy(copy.get(), title, bytes);
  release_bytes(window->title);
  window->title = copy.release();
}

WindowId open(const NewWindow &wanted, int32_t *error) {
  const FrameMetrics f = wanted.bordered ? the_frame : FrameMetrics{};
  const WindowId number = add_memory_window();
  *error = 0;
  if (number == no_window) return no_window;
  MemoryWindow *window = memory_window(number);
  window->left = wanted.x;
  window->top = wanted.y;
  window->width = std::max(0, wanted.width - 2 * f.frame_width);
  window->height = std::max(0, wanted.height - 2 * f.frame_height - f.caption_height);
  window->bordered = wanted.bordered;
  window->shown = wanted.shown;
  window->close_enabled = true;
  window->class_cursor = cursor_arrow;
  set_title(number, wanted.title);
  return number;
}

void close(WindowId number) {
  if (memory_window(number) == nullptr) return;
  window_destroyed(number);
  remove_memory_window(number);
}

bool exists(WindowId number) {
  return memory_window(number) != nullptr;
}

void show(WindowId number, bool shown) {
  MemoryWindow *window = memory_window(number);
  if (window != nullptr) window->shown = shown;
}

void nothing_to_raise(WindowId /*number*/) {}

// Nobody sees the icon, but a file that holds none is a failure here too.
bool set_icon(WindowId /*number*/, const char *filename) {
  constexpr uint8_t icon_signature[4] = {0, 0, 1, 0};
  uint8_t header[6] = {};
  const OwnedFile file = open_file(filename, "rb");
  if (!file || read_file(file.get(), header, sizeof(header)) != sizeof(header)) return false;
  const bool has_images = header[4] != 0 || header[5] != 0;
  return std::memcmp(header, icon_signature, sizeof(icon_signature)) == 0 && has_images;
}

void enable_close(WindowId number, bool enabled) {
  MemoryWindow *window = memory_window(number);
  if (window != nullptr) window->close_enabled = enabled;
}

bool client_size(WindowId number, int32_t *width, int32_t *height) {
  const MemoryWindow *window = memory_window(number);
  *width = window == nullptr ? 0 : window->width;
  *height = window == nullptr ? 0 : window->height;
  return window != nullptr;
}

bool place(WindowId number, WindowPlace *result) {
  const MemoryWindow *window = memory_window(number);
  if (window == nullptr) return false;
  *result = {window->left, window->top};
  return true;
}

bool scroll_state(WindowId number, ScrollAxis axis, ScrollState *state) {
  const MemoryWindow *window = memory_window(number);
  if (window == nullptr) return false;
  *state = window->scroll[static_cast<size_t>(axis)];
  return true;
}

void set_scroll_position(WindowId number, ScrollAxis axis, int32_t position) {
  MemoryWindow *window = memory_window(number);
  if (window != nullptr) window->scroll[static_cast<size_t>(axis)].position = position;
}

// ---- Pictures

// What a window shows, made anew where its size has changed.
BitmapCanvas *screen_of(MemoryWindow *window) {
  BitmapCanvas *screen = window->screen;
  if (screen != nullptr && screen->loops.page.width == window->width &&
      screen->loops.page.height == window->height) {
    return screen;
  }
  BitmapCanvas *renewed = create_bitmap_canvas(window->width, window->height, the_screen.bits);
  if (renewed == nullptr) return nullptr;
  if (screen != nullptr) release_bitmap_canvas(screen);
  window->screen = renewed;
  return renewed;
}

// Copies what both have in common, from an offset in `from` on.
void copy_picture(const BitmapCanvas *from, BitmapCanvas *to, int32_t x, int32_t y) {
  const PixelBuffer &source = from->loops.buffers.raster;
  const PixelBuffer &target = to->loops.buffers.raster;
  if (x < 0 || y < 0) return;
  const size_t pixel = source.page.rgba != 0 ? 4 : 1;
  const int32_t width = std::min(source.page.width - x, target.page.width);
  const int32_t height = std::min(source.page.height - y, target.page.height);
  if (width < 1 || source.page.rgba != target.page.rgba) return;
  for (int32_t row = 0; row < height; ++row) {
    const size_t from_at = static_cast<size_t>(row + y) * static_cast<size_t>(source.page.width) +
                           static_cast<size_t>(x);
    const size_t to_at = static_cast<size_t>(row) * static_cast<size_t>(target.page.width);
    std::memcpy(target.pixels + to_at * pixel, source.pixels + from_at * pixel,
                static_cast<size_t>(width) * pixel);
  }
}

// Drawing without a bitmap goes to the window's own picture, which closes with the window.
Canvas *open_canvas(const NewCanvas &wanted) {
  MemoryWindow *window = memory_window(wanted.window);
  if (window == nullptr) return nullptr;
  if (!wanted.buffered) {
    BitmapCanvas *direct = screen_of(window);
    if (direct == nullptr) return nullptr;
    direct->borrowed = true;
    return &direct->canvas;
  }
  BitmapCanvas *canvas = create_bitmap_canvas(wanted.width, wanted.height, the_screen.bits);
  if (canvas == nullptr) return nullptr;
  if (wanted.copy_window && window->screen != nullptr) copy_picture(window->screen, canvas, 0, 0);
  return &canvas->canvas;
}

// Nobody looks, so nothing is copied unless a test wants to.
void present(WindowId number, Canvas *canvas, int32_t offset_x, int32_t offset_y, int32_t /*width*/,
             int32_t /*height*/) {
  MemoryWindow *window = memory_window(number);
  if (window == nullptr || !screens_kept) return;
  BitmapCanvas *screen = screen_of(window);
  if (screen == nullptr) return;
  copy_picture(reinterpret_cast<const BitmapCanvas *>(canvas), screen, offset_x, offset_y);
}

// ---- Pointer and cursor

void set_cursor(int32_t kind) {
  the_cursor = kind;
}

void set_class_cursor(WindowId number, int32_t kind) {
  MemoryWindow *window = memory_window(number);
  if (window != nullptr) window->class_cursor = kind;
}

// In the middle, until somebody moves it.
PointerPlace pointer_in(const MemoryWindow &window) {
  return the_pointer.x >= 0 ? the_pointer : PointerPlace{window.width / 2, window.height / 2};
}

bool pointer(WindowId number, PointerPlace *result) {
  const MemoryWindow *window = memory_window(number);
  if (window == nullptr) return false;
  *result = pointer_in(*window);
  return true;
}

void set_pointer(WindowId /*number*/, int32_t x, int32_t y) {
  the_pointer = {x, y};
}

void nothing_to_capture(WindowId /*number*/) {}

void nothing_to_release() {}

// The band inverts what is shown and leaves the picture alone; nobody sees it here.
void no_rubber_band(WindowId /*number*/, RubberShape /*shape*/, int32_t /*x1*/, int32_t /*y1*/,
                    int32_t /*x2*/, int32_t /*y2*/) {}

// ---- Time

void quit() {
  quit_posted = true;
}

// What a user does who wants to go on, until the wait has ended.
void go_on() {
  for (WindowId i = 1; i < memory_windows_end() && !quit_posted; ++i)
    window_right_released(i);
  for (WindowId i = 1; i < memory_windows_end() && !quit_posted; ++i) {
    const MemoryWindow *window = memory_window(i);
    if (window == nullptr) continue;
    const PointerPlace at = pointer_in(*window);
    window_left_pressed(i, at.x, at.y);
    window_left_released(i, at.x, at.y);
  }
  for (WindowId i = 1; i < memory_windows_end() && !quit_posted; ++i) {
    if (memory_window(i) != nullptr) window_close_requested(i);
  }
}

void wait() {
  bool scripted = the_script != nullptr;
  while (!quit_posted && scripted)
    scripted = the_script(script_data);
  if (!quit_posted) go_on();
  quit_posted = false;
}

bool pump() {
  return false;
}

void no_sleep(int32_t /*milliseconds*/) {}

void update(WindowId number) {
  window_needs_paint(number);
}

}  // namespace

const WindowSystem memory_window_system = {
    .screen = screen,
    .frame = frame,
    .show_message = show_message,
    .register_class = nothing_to_register,
    .unregister_class = nothing_to_unregister,
    .open = open,
    .close = close,
    .exists = exists,
    .bitmap_exists = nullptr,
    .show = show,
    .raise = nothing_to_raise,
    .focus = nothing_to_raise,
    .set_title = set_title,
    .set_icon = set_icon,
    .enable_close = enable_close,
    .client_size = client_size,
    .place = place,
    .scroll_state = scroll_state,
    .set_scroll_position = set_scroll_position,
    .open_canvas = open_canvas,
    .present = present,
    .open_measuring_canvas = nullptr,
    .set_cursor = set_cursor,
    .set_class_cursor = set_class_cursor,
    .pointer = pointer,
    .set_pointer = set_pointer,
    .capture = nothing_to_capture,
    .release_capture = nothing_to_release,
    .rubber_band = no_rubber_band,
    .wait = wait,
    .quit = quit,
    .pump = pump,
    .sleep = no_sleep,
    .update = update,
    .gl = nullptr,
};

// ---- For tests and for dialogs in memory

void set_memory_screen(const ScreenInfo &wanted) {
  the_screen = wanted;
}

void set_memory_frame(const FrameMetrics &wanted) {
  the_frame = wanted;
}

void set_memory_script(MemoryScript script, void *data) {
  the_script = script;
  script_data = data;
}

WindowId open_memory_host(int32_t width, int32_t height) {
  int32_t error = 0;
  return open({"", false, 0, 0, width, height, true}, &error);
}

void set_memory_scroll(WindowId number, ScrollAxis axis, const ScrollState &state) {
  MemoryWindow *window = memory_window(number);
  if (window != nullptr) window->scroll[static_cast<size_t>(axis)] = state;
}

void resize_memory_window(WindowId number, int32_t width, int32_t height) {
  MemoryWindow *window = memory_window(number);
  if (window == nullptr) return;
  window->width = width;
  window->height = height;
  window_resized(number, false);
  window_resize_ended(number);
}

void set_memory_pointer(WindowId number, int32_t x, int32_t y) {
  set_pointer(number, x, y);
}

bool memory_window_state(WindowId number, MemoryWindowState *state) {
  const MemoryWindow *window = memory_window(number);
  if (window == nullptr) return false;
  *state = {window->title == nullptr ? "" : window->title,
            window->left,
            window->top,
            window->width,
            window->height,
            window->bordered,
            window->shown,
            window->close_enabled,
            window->class_cursor};
  return true;
}

int32_t memory_window_count() {
  int32_t count = 0;
  for (WindowId i = 1; i < memory_windows_end(); ++i) {
    if (memory_window(i) != nullptr) ++count;
  }
  return count;
}

int32_t memory_cursor() {
  return the_cursor;
}

void keep_memory_screens(bool keep) {
  screens_kept = keep;
}

uint32_t memory_window_colour(WindowId number, int32_t x, int32_t y) {
  const MemoryWindow *window = memory_window(number);
  if (window == nullptr || window->screen == nullptr) return 0;
  return bitmap_canvas_colour(window->screen, x, y);
}

}  // namespace quorix

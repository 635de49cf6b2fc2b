// SPDX-License-Identifier: MIT
#include "tests/window/recording_system.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#include "quorix/quorix.h"
#include "window/opengl_depth.h"

namespace quorix::testing {

Recording recording;

namespace {

std::string shown(const char *text) {
  return "'" + std::string(text) + "'";
}

std::string shown(bool value) {
  return value ? "true" : "false";
}

template <class Number>
std::string shown(Number value) {
  std::ostringstream text;
  text << +value;
  return text.str();
}

template <class... Arguments>
void note(const std::string &name, const Arguments &...arguments) {
  std::string text;
  ((text += (text.empty() ? "" : ", ") + shown(arguments)), ...);
  recording.calls.push_back(name + "(" + text + ")");
}

std::string hex(uint32_t value) {
  std::ostringstream text;
  text << std::hex << value;
  return text.str();
}

void note_text(const std::string &text) {
  recording.calls.push_back(text);
}

// ---- The canvas

struct RecordedCanvas {
  Canvas canvas;
  bool measures;
  BitmapInfo info;
};

RecordedCanvas *of(Canvas *canvas) {
  return reinterpret_cast<RecordedCanvas *>(canvas);
}

std::string rect_text(const CanvasRect &r) {
  return shown(r.left) + " " + shown(r.top) + " " + shown(r.right) + " " + shown(r.bottom);
}

std::string font_text(const CanvasFont &f) {
  return std::string(f.face) + " " + shown(f.height) + " " + shown(f.escapement) + " " +
         shown(f.weight) + (f.italic ? " italic" : "");
}

int32_t width_of(int32_t code, bool wide) {
  return wide ? 1000 + code : code;
}

const CanvasCalls canvas_calls = {
    .close =
        [](Canvas *canvas) {
          note_text(of(canvas)->measures ? "close measuring canvas" : "close canvas");
          --(of(canvas)->measures ? recording.measure_canvases : recording.canvases);
          delete of(canvas);
        },
    .set_pen =
        [](Canvas *, const CanvasPen &p) {
          note_text("pen " + hex(p.style) + " " + shown(p.width) + " " + hex(p.colour));
        },
    .set_text_colour = [](Canvas *, uint32_t colour) { note_text("text colour " + hex(colour)); },
    .clip = [](Canvas *, const CanvasRect &r) { note_text("clip " + rect_text(r)); },
    .save_clip =
        [](Canvas *) {
          note_text("save clip");
          return 7;
        },
    .intersect_clip = [](Canvas *, const CanvasRect &r) { note_text("intersect " + rect_text(r)); },
    .restore_clip = [](Canvas *, int32_t saved) { note("restore clip", saved); },
    .set_palette =
        [](Canvas *, const PaletteEntry *e, int32_t n) {
          note("palette", n, static_cast<int32_t>(e[n - 1].r));
          return !recording.palettes_fail;
        },
    .polyline =
        [](Canvas *, const int32_t *xs, const int32_t *ys, int32_t n) {
          std::string text = "polyline";
          for (int32_t i = 0; i < n; ++i)
            text += " " + shown(xs[i]) + "," + shown(ys[i]);
          note_text(text);
        },
    .polygon =
        [](Canvas *, const CanvasPoint *p, int32_t n, uint32_t colour) {
          std::string text = "polygon " + hex(colour) + ":";
          for (int32_t i = 0; i < n; ++i)
            text += " " + shown(p[i].x) + "," + shown(p[i].y);
          note_text(text);
        },
    .fill_rectangle =
        [](Canvas *, const CanvasRect &r, uint32_t colour) {
          note_text("fill " + rect_text(r) + " " + hex(colour));
        },
    .set_pixel =
        [](Canvas *, int32_t x, int32_t y, uint32_t colour) {
          note_text("pixel " + shown(x) + "," + shown(y) + " " + hex(colour));
        },
    .get_pixel = [](Canvas *, int32_t, int32_t) { return recording.pixel_colour; },
    .arc =
        [](Canvas *, const CanvasRect &r, CanvasPoint from, CanvasPoint to) {
          note_text("arc " + rect_text(r) + " from " + shown(from.x) + "," + shown(from.y) +
                    " to " + shown(to.x) + "," + shown(to.y));
        },
    .chord =
        [](Canvas *, const CanvasRect &r, CanvasPoint from, CanvasPoint to, uint32_t colour) {
          note_text("chord " + rect_text(r) + " from " + shown(from.x) + "," + shown(from.y) +
                    " to " + shown(to.x) + "," + shown(to.y) + " " + hex(colour));
        },
    .ellipse = [](Canvas *, const CanvasRect &r,
                  uint32_t colour) { note_text("ellipse " + rect_text(r) + " " + hex(colour)); },
    .select_font =
        [](Canvas *canvas, const CanvasFont &font) {
          note_text((of(canvas)->measures ? "measuring font " : "font ") + font_text(font));
          return !recording.fonts_fail;
        },
    .font_metrics =
        [](Canvas *, FontMetrics *metrics) {
          *metrics = {3, 1};
          return true;
        },
    .text_width = [](Canvas *, int32_t code, bool wide) { return width_of(code, wide); },
    .text =
        [](Canvas *, int32_t x, int32_t y, int32_t code, bool wide) {
          note_text("text " + shown(x) + "," + shown(y) + " " + shown(code) +
                    (wide ? " wide" : ""));
        },
    .begin_access =
        [](Canvas *canvas, BitmapInfo *info) {
          note_text("begin access");
          *info = of(canvas)->info;
          return !recording.bitmaps_fail;
        },
    .read_bits =
        [](Canvas *, uint8_t *bytes, size_t size) {
          note_text("read bits");
          recording.bytes.resize(size);
          std::copy(recording.bytes.begin(), recording.bytes.end(), bytes);
        },
    .write_bits =
        [](Canvas *, const uint8_t *bytes, size_t size) {
          note_text("write bits");
          recording.bytes.assign(bytes, bytes + size);
        },
    .end_access = [](Canvas *, bool show) { note("end access", show); },
    .bitmap = [](Canvas *) { return 4321; },
};

Canvas *new_canvas(bool measures, int32_t width, int32_t height) {
  const int32_t bits = recording.screen.bits <= 8 ? 8 : recording.screen.bits;
  BitmapInfo info = {width, height, (width * bits + 15) / 16 * 2, 1, bits};
  if (recording.info.width != 0) info = recording.info;
  ++(measures ? recording.measure_canvases : recording.canvases);
  return &(new RecordedCanvas{{&canvas_calls}, measures, info})->canvas;
}

// ---- OpenGL

const GlCalls gl_calls = {
    .enable = [](uint32_t n) { note("glEnable", n); },
    .disable = [](uint32_t n) { note("glDisable", n); },
    .depth_function = [](uint32_t n) { note("glDepthFunc", n); },
    .blend_function = [](uint32_t a, uint32_t b) { note("glBlendFunc", a, b); },
    .clear = [](uint32_t n) { note("glClear", n); },
    .begin = [](uint32_t n) { note("glBegin", n); },
    .end = [] { note("glEnd"); },
    .vertex_2f = [](float x, float y) { note("glVertex2f", x, y); },
    .vertex_2i = [](int32_t x, int32_t y) { note("glVertex2i", x, y); },
    .vertex_3f = [](float x, float y, float z) { note("glVertex3f", x, y, z); },
    .colour_3f = [](float r, float g, float b) { note("glColor3f", r, g, b); },
    .colour_4f = [](float r, float g, float b, float a) { note("glColor4f", r, g, b, a); },
    .raster_position = [](int32_t x, int32_t y) { note("glRasterPos2i", x, y); },
    .read_pixels =
        [](int32_t x, int32_t y, int32_t w, int32_t h, uint32_t format, uint32_t type,
           void *pixels) {
          note("glReadPixels", x, y, w, h, format, type);
          const size_t count = static_cast<size_t>(w) * (format == 6407 ? 3U : 4U);
          auto *to = static_cast<uint8_t *>(pixels);
          for (size_t i = 0; i < count && !recording.gl_rows.empty(); ++i)
            to[i] = recording.gl_rows[i % recording.gl_rows.size()];
        },
    .draw_pixels =
        [](int32_t w, int32_t h, uint32_t format, uint32_t type, const void *pixels) {
          note("glDrawPixels", w, h, format, type);
          std::string text;
          const size_t count = static_cast<size_t>(w) * (format == 6407 ? 3U : 4U);
          for (size_t i = 0; i < count; ++i)
            text += (i == 0 ? "" : " ") + shown(static_cast<const uint8_t *>(pixels)[i]);
          note_text(text);
        },
};

const GlSystem gl_system = {
    .open =
        [](const GlWindow &w, int32_t *error) {
          note("gl open", w.window, w.buffered, w.screen_bits, w.width, w.height,
               w.white_background);
          *error = recording.error;
          return recording.gl_step;
        },
    .make_current = [](WindowId w) { note("gl current", w); },
    .close = [](WindowId w) { note("gl close", w); },
    .show_back_buffer = [](WindowId w, int32_t a, int32_t b) { note("gl show", w, a, b); },
    .flush = [] { note("gl flush"); },
    .line_width = [](int32_t width) { note("glLineWidth", width); },
    .line_smooth = [](bool on) { note("gl smooth", on); },
    .scissor = [](int32_t x, int32_t y, int32_t w, int32_t h) { note("glScissor", x, y, w, h); },
    .select_font =
        [](WindowId w, const CanvasFont &font) {
          note_text("gl font " + shown(w) + " " + font_text(font));
          return !recording.fonts_fail;
        },
    .font_metrics =
        [](WindowId, FontMetrics *metrics) {
          *metrics = {3, 1};
          return true;
        },
    .text_width = [](WindowId, int32_t code, bool wide) { return width_of(code, wide); },
    .release_font = [] { note("gl release font"); },
    .text = [](int32_t x, int32_t y, int32_t size, int32_t angle,
               int32_t code) { note("gl text", x, y, size, angle, code); },
    .calls = &gl_calls,
};

// ---- The system

struct Opened {
  WindowId id;
  int32_t width, height;
};
std::vector<Opened> opened;
WindowId next_id = 1;

bool known(WindowId window) {
  const bool own =
      std::any_of(opened.begin(), opened.end(), [&](const Opened &o) { return o.id == window; });
  return own || std::count(recording.hosts.begin(), recording.hosts.end(), window) != 0;
}

bool tell_client_size(WindowId window, int32_t *width, int32_t *height) {
  *width = recording.client_width;
  *height = recording.client_height;
  if (*width != 0) return known(window);
  for (const Opened &o : opened) {
    if (o.id != window) continue;
    *width = o.width;
    *height = o.height;
    return true;
  }
  return known(window);
}

WindowId open_window_of(const NewWindow &w, int32_t *error) {
  note("open", w.title, w.bordered, w.x, w.y, w.width, w.height, w.shown);
  *error = recording.error;
  if (recording.windows_fail) return no_window;
  const FrameMetrics f = w.bordered ? recording.frame : FrameMetrics{};
  opened.push_back(
      {next_id, w.width - 2 * f.frame_width, w.height - 2 * f.frame_height - f.caption_height});
  return next_id++;
}

WindowSystem make_system() {
  return {
      .screen = [](ScreenInfo *screen) { *screen = recording.screen; },
      .frame = [](FrameMetrics *frame) { *frame = recording.frame; },
      .show_message = [](const char *text, const char *caption) { note("message", text, caption); },
      .register_class = [](bool white) { note("register class", white); },
      .unregister_class = [] { note("unregister class"); },
      .open = open_window_of,
      .close =
          [](WindowId window) {
            note("close", window);
            opened.erase(std::remove_if(opened.begin(), opened.end(),
                                        [&](const Opened &o) { return o.id == window; }),
                         opened.end());
          },
      .exists = known,
      .bitmap_exists = [](int32_t bitmap) { return bitmap == 0x123456; },
      .show = [](WindowId w, bool shown_now) { note("show", w, shown_now); },
      .raise = [](WindowId w) { note("raise", w); },
      .focus = [](WindowId w) { note("focus", w); },
      .set_title = [](WindowId w, const char *title) { note("title", w, title); },
      .set_icon =
          [](WindowId w, const char *name) {
            note("icon", w, name);
            return !recording.icons_fail;
          },
      .enable_close = [](WindowId w, bool on) { note("enable close", w, on); },
      .client_size = tell_client_size,
      .place =
          [](WindowId window, WindowPlace *place) {
            *place = {31, 42};
            return known(window);
          },
      .scroll_state = nullptr,
      .set_scroll_position = nullptr,
      .open_canvas =
          [](const NewCanvas &c) {
            note("canvas", c.window, c.buffered, c.width, c.height, c.copy_window);
            return recording.canvases_fail ? nullptr : new_canvas(false, c.width, c.height);
          },
      .present = [](WindowId w, Canvas *, int32_t x, int32_t y, int32_t a,
                    int32_t b) { note("present", w, x, y, a, b); },
      .open_measuring_canvas =
          [] {
            note("measuring canvas");
            return new_canvas(true, 1, 1);
          },
      .set_cursor = [](int32_t kind) { note("cursor", kind); },
      .set_class_cursor = [](WindowId w, int32_t kind) { note("class cursor", w, kind); },
      .pointer = nullptr,
      .set_pointer = nullptr,
      .capture = nullptr,
      .release_capture = nullptr,
      .rubber_band = nullptr,
      .wait = [] { note("wait"); },
      .quit = [] { note("quit"); },
      .pump =
          [] {
            note("pump");
            return false;
          },
      .sleep = [](int32_t ms) { note("sleep", ms); },
      .update = [](WindowId w) { note("update", w); },
      .gl = recording.has_gl ? &gl_system : nullptr,
  };
}

WindowSystem system_now = make_system();

}  // namespace

RecordedWindow::RecordedWindow() {
  qqwfree();
  recording = {};
  opened.clear();
  next_id = 1;
  system_now = make_system();
  choose_window_system(&system_now);
}

RecordedWindow::~RecordedWindow() {
  qqwfree();
  EXPECT_EQ(recording.canvases, 0);
  EXPECT_EQ(recording.measure_canvases, 0);
  EXPECT_TRUE(opened.empty());
  choose_window_system(nullptr);
}

Calls RecordedWindow::taken() {
  Calls calls = std::move(recording.calls);
  recording.calls.clear();
  return calls;
}

OpenedDevice open_recorded(const WindowWish &wish) {
  system_now = make_system();
  OpenedDevice result = {};
  int32_t buffering = wish.buffering;
  qqwini(wish.device, &wish.page_width, &wish.page_height, &wish.placement, &wish.x, &wish.y,
         &wish.width, &wish.height, &result.bits, &wish.colour_mode, &result.width, &buffering,
         &wish.options);
  result.height = buffering;
  return result;
}

int32_t option(int32_t number, int32_t value) {
  return qqwwid(number, &value, 1);
}

}  // namespace quorix::testing

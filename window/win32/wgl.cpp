// SPDX-License-Identifier: MIT
//
// OpenGL 1.1 through wgl, one context per window, and its functions as the window device wants
// them.
#include <GL/gl.h>

#include "window/opengl_depth.h"
#include "window/win32/win32.h"
#include "window/window_set.h"

namespace quorix {

namespace {

constexpr GLsizei font_characters = 256;

struct GlContext {
  HWND window;
  HDC dc;
  HGLRC context;
};

// As many as there are plot windows.
GlContext contexts[window_slot_count] = {};

HFONT font = nullptr;
GLuint list_base = 0;

GlContext *context_of(WindowId window) {
  for (GlContext &c : contexts) {
    if (c.context != nullptr && c.window == handle_of(window)) return &c;
  }
  return nullptr;
}

GlContext *free_context() {
  for (GlContext &c : contexts) {
    if (c.context == nullptr) return &c;
  }
  return nullptr;
}

PIXELFORMATDESCRIPTOR pixel_format(const GlWindow &wanted) {
  PIXELFORMATDESCRIPTOR format = {};
  format.nSize = sizeof(format);
  format.nVersion = 1;
  format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
  if (wanted.buffered) format.dwFlags |= PFD_DOUBLEBUFFER;
  format.iPixelType = PFD_TYPE_RGBA;
  format.cColorBits = static_cast<BYTE>(wanted.screen_bits);
  format.cDepthBits = 16;
  return format;
}

GlStep create_context(const GlWindow &wanted, HDC dc, HGLRC *context) {
  const PIXELFORMATDESCRIPTOR format = pixel_format(wanted);
  const int number = ChoosePixelFormat(dc, &format);
  if (number == 0) return GlStep::no_pixel_format;
  if (SetPixelFormat(dc, number, &format) == 0) return GlStep::pixel_format_refused;
  *context = wglCreateContext(dc);
  if (*context == nullptr) return GlStep::no_context;
  return wglMakeCurrent(dc, *context) != 0 ? GlStep::done : GlStep::not_current;
}

void set_up(const GlWindow &w) {
  glViewport(0, 0, w.width, w.height);
  glMatrixMode(GL_PROJECTION);
  glLoadIdentity();
  glOrtho(0, w.width, 0, w.height, 1, -1);
  glMatrixMode(GL_MODELVIEW);
  glLoadIdentity();
  const GLenum buffer = w.buffered ? GL_BACK : GL_FRONT;
  glDrawBuffer(buffer);
  glReadBuffer(buffer);
  glDisable(GL_DEPTH_TEST);
  glEnable(GL_SCISSOR_TEST);
  const GLclampf background = w.white_background ? 1 : 0;
  glClearColor(background, background, background, 1);
  glClear(GL_COLOR_BUFFER_BIT);
}

GlStep open(const GlWindow &wanted, int32_t *error) {
  HWND window = handle_of(wanted.window);
  HDC dc = GetDC(window);
  HGLRC context = nullptr;
  *error = 0;
  const GlStep step = create_context(wanted, dc, &context);
  GlContext *place = step == GlStep::done ? free_context() : nullptr;
  if (place == nullptr) {
    *error = static_cast<int32_t>(GetLastError());
    wglMakeCurrent(nullptr, nullptr);
    if (context != nullptr) wglDeleteContext(context);
    ReleaseDC(window, dc);
    return step == GlStep::done ? GlStep::no_context : step;
  }
  *place = {window, dc, context};
  set_up(wanted);
  return GlStep::done;
}

void make_current(WindowId window) {
  const GlContext *c = context_of(window);
  if (c == nullptr) {
    wglMakeCurrent(nullptr, nullptr);
  } else {
    wglMakeCurrent(c->dc, c->context);
  }
}

void close(WindowId window) {
  GlContext *c = context_of(window);
  if (c == nullptr) return;
  if (wglGetCurrentContext() == c->context) wglMakeCurrent(nullptr, nullptr);
  wglDeleteContext(c->context);
  ReleaseDC(c->window, c->dc);
  *c = {};
}

void show_back_buffer(WindowId window, int32_t width, int32_t height) {
  make_current(window);
  glDrawBuffer(GL_FRONT);
  glRasterPos2i(0, 0);
  glCopyPixels(0, 0, width, height, GL_COLOR);
  glDrawBuffer(GL_BACK);
}

void flush() {
  glFlush();
}

void line_width(int32_t width) {
  glLineWidth(static_cast<GLfloat>(width));
}

void line_smooth(bool on) {
  if (on) {
    glEnable(GL_LINE_SMOOTH);
  } else {
    glDisable(GL_LINE_SMOOTH);
  }
}

void scissor(int32_t x, int32_t y, int32_t width, int32_t height) {
  glScissor(x, y, width, height);
}

// ---- Text: a display list per character, of outlines one unit high

void release_lists() {
  if (list_base != 0) glDeleteLists(list_base, font_characters);
  list_base = 0;
}

bool select_font(WindowId window, const CanvasFont &wanted) {
  const GlContext *c = context_of(window);
  if (c == nullptr) return false;
  HFONT made = create_gdi_font(wanted);
  if (made == nullptr) return false;
  SelectObject(c->dc, made);
  SetBkMode(c->dc, TRANSPARENT);
  if (font != nullptr) DeleteObject(font);
  font = made;
  release_lists();
  list_base = glGenLists(font_characters);
  GLYPHMETRICSFLOAT metrics[font_characters];
  wglUseFontOutlinesA(c->dc, 0, font_characters, list_base, 0, 0, WGL_FONT_POLYGONS, metrics);
  return true;
}

bool font_metrics(WindowId window, FontMetrics *metrics) {
  const GlContext *c = context_of(window);
  return c != nullptr && measure_gdi_font(c->dc, metrics);
}

int32_t text_width(WindowId window, int32_t code, bool wide) {
  const GlContext *c = context_of(window);
  return c == nullptr ? 0 : gdi_text_width(c->dc, code, wide);
}

void release_font() {
  release_lists();
  HDC dc = wglGetCurrentDC();
  if (dc != nullptr) SelectObject(dc, GetStockObject(SYSTEM_FONT));
  if (font != nullptr) DeleteObject(font);
  font = nullptr;
}

void text(int32_t x, int32_t y, int32_t size, int32_t angle, int32_t code) {
  const auto list = static_cast<GLubyte>(code & 255);
  glPushMatrix();
  glPushAttrib(GL_LIST_BIT);
  glListBase(list_base);
  glLoadIdentity();
  glTranslatef(static_cast<GLfloat>(x), static_cast<GLfloat>(y), 0);
  glScaled(size, size, 1);
  glRotatef(static_cast<GLfloat>(angle), 0, 0, 1);
  glCallLists(1, GL_UNSIGNED_BYTE, &list);
  glPopAttrib();
  glPopMatrix();
}

// ---- OpenGL's functions, whose calling convention is the system's

void enable(uint32_t capability) {
  glEnable(capability);
}
void disable(uint32_t capability) {
  glDisable(capability);
}
void depth_function(uint32_t function) {
  glDepthFunc(function);
}
void blend_function(uint32_t source, uint32_t target) {
  glBlendFunc(source, target);
}
void clear(uint32_t buffers) {
  glClear(buffers);
}
void begin(uint32_t primitive) {
  glBegin(primitive);
}
void end() {
  glEnd();
}
void vertex_2f(float x, float y) {
  glVertex2f(x, y);
}
void vertex_2i(int32_t x, int32_t y) {
  glVertex2i(x, y);
}
void vertex_3f(float x, float y, float z) {
  glVertex3f(x, y, z);
}
void colour_3f(float r, float g, float b) {
  glColor3f(r, g, b);
}
void colour_4f(float r, float g, float b, float a) {
  glColor4f(r, g, b, a);
}
void raster_position(int32_t x, int32_t y) {
  glRasterPos2i(x, y);
}
void read_pixels(int32_t x, int32_t y, int32_t width, int32_t height, uint32_t format,
                 uint32_t type, void *pixels) {
  glPixelStorei(GL_PACK_ALIGNMENT, 1);
  glReadPixels(x, y, width, height, format, type, pixels);
}
void draw_pixels(int32_t width, int32_t height, uint32_t format, uint32_t type,
                 const void *pixels) {
  glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
  glDrawPixels(width, height, format, type, pixels);
}

constexpr GlCalls gl_calls = {
    enable,    disable,   depth_function,  blend_function, clear,
    begin,     end,       vertex_2f,       vertex_2i,      vertex_3f,
    colour_3f, colour_4f, raster_position, read_pixels,    draw_pixels,
};

}  // namespace

const GlSystem wgl_system = {
    .open = open,
    .make_current = make_current,
    .close = close,
    .show_back_buffer = show_back_buffer,
    .flush = flush,
    .line_width = line_width,
    .line_smooth = line_smooth,
    .scissor = scissor,
    .select_font = select_font,
    .font_metrics = font_metrics,
    .text_width = text_width,
    .release_font = release_font,
    .text = text,
    .calls = &gl_calls,
};

}  // namespace quorix

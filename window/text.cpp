// SPDX-License-Identifier: MIT
//
// The system's fonts on windows: choosing one, drawing and measuring single characters. Strings are
// put together by whoever calls, which is why all widths are given at once.
//
// Without a font nothing is drawn and every width is 0. A metafile cannot measure, so while one is
// open a screen canvas of its own does it.
#include <cstring>

#include "base/char_codes.h"
#include "base/numbers.h"
#include "base/text.h"
#include "base/trig.h"
#include "quorix/windowtext.h"
#include "window/ask.h"
#include "window/window.h"

namespace quorix {

namespace {

constexpr int32_t bold_weight = 700;
constexpr int32_t first_measured_code = 32;
constexpr int32_t last_measured_code = 264;
constexpr int32_t mapped_level = 95;  // from this level of mapping on, codes go through Latin-1
constexpr int32_t first_wide_code = 256;
constexpr double tenths = 10.0;

bool contains_word(const char *text, const char *word) {
  return std::strstr(text, word) != nullptr;
}

// Family names lose their style words; any other name stays, as far as there is room.
const char *face_of(const char *name) {
  if (contains_word(name, "Arial") && !contains_word(name, "Unicode")) return "Arial";
  if (contains_word(name, "Courier")) return "Courier";
  if (contains_word(name, "Times")) return "Times";
  return name;
}

// OpenGL turns its characters by itself.
CanvasFont describe_font(const char *name, int32_t size, int32_t angle, bool gl) {
  CanvasFont font = {};
  copy_bytes(font.face, face_of(name), face_capacity - 1);
  font.height = size;
  font.escapement = gl ? 0 : to_int32(angle * tenths);
  font.weight = contains_word(name, "Bold") ? bold_weight : 0;
  font.italic = contains_word(name, "Italic");
  return font;
}

// ---- Measuring

const GlSystem *text_gl(const OutputContext *context) {
  return context->window.opengl_on != 0 ? window_system()->gl : nullptr;
}

// What characters are measured on, with the current font selected.
class Ruler {
 public:
  explicit Ruler(const OutputContext *context)
      : set_(context->window.window_set), gl_(text_gl(context)), canvas_(set_->draw_canvas) {
    if (set_->metafile == nullptr) return;
    gl_ = nullptr;
    canvas_ = own_ = ask(window_system()->open_measuring_canvas);
    if (own_ != nullptr) ask(own_->calls->select_font, own_, set_->font);
  }
  ~Ruler() {
    if (own_ != nullptr) own_->calls->close(own_);
  }
  Ruler(const Ruler &) = delete;
  Ruler &operator=(const Ruler &) = delete;

  int32_t lead() const {
    FontMetrics metrics = {};
    if (gl_ != nullptr) {
      ask(gl_->font_metrics, set_->window, &metrics);
    } else if (canvas_ != nullptr) {
      ask(canvas_->calls->font_metrics, canvas_, &metrics);
    }
    return saturated_sum(metrics.internal_leading, metrics.external_leading);
  }

  // In tenths of a pixel.
  int32_t width(int32_t code, bool wide) const {
    int32_t pixels = 0;
    if (gl_ != nullptr) {
      pixels = ask(gl_->text_width, set_->window, code, wide);
    } else if (canvas_ != nullptr) {
      pixels = ask(canvas_->calls->text_width, canvas_, code, wide);
    }
    return to_int32(pixels * tenths);
  }

 private:
  const WindowSet *set_;
  const GlSystem *gl_;
  Canvas *canvas_;
  Canvas *own_ = nullptr;
};

int32_t low_byte_of(int32_t code) {
  return code & 255;
}

// Kept: with mapping on, a character set other than 0 lets codes pass as they are.
int32_t measured_byte(const OutputContext *context, int32_t code) {
  const Options &options = context->options;
  if (options.text_map_level >= mapped_level)
    return low_byte_of(map_char_code(code, options.font_charset != 0, charset_latin1_alone));
  return low_byte_of(map_char_for_font(options.font_charset, code));
}

void measure_all(OutputContext *context, int32_t *widths) {
  constexpr int32_t low_16_bits = 0xFFFF;
  const Ruler ruler(context);
  context->window.window_set->font_lead = ruler.lead();
  for (int32_t code = first_measured_code; code <= last_measured_code; ++code) {
    widths[code - first_measured_code] =
        ruler.width(measured_byte(context, code), false) & low_16_bits;
  }
}

bool select_font(const OutputContext *context, const CanvasFont &font) {
  const WindowSet *set = context->window.window_set;
  if (const GlSystem *gl = text_gl(context); gl != nullptr)
    return ask(gl->select_font, set->window, font);
  return set->draw_canvas != nullptr &&
         ask(set->draw_canvas->calls->select_font, set->draw_canvas, font);
}

// ---- Drawing

// Up along the turned vertical by the leading, so that the top of the text stands at the point.
// Kept: at right angles the product falls a hair short of the leading, and truncation takes 1 off.
CanvasPoint start_of(const WindowSet *set, int32_t x, int32_t y) {
  const double angle = set->font_angle * 3.1415927 / 180.0;
  const int32_t dx = to_int32(set->font_lead * portable_sin(angle));
  const int32_t dy = to_int32(set->font_lead * portable_cos(angle));
  return {to_int32(static_cast<double>(x) - dx), to_int32(static_cast<double>(y) - dy)};
}

void draw_on_canvas(const WindowSet *set, int32_t code, int32_t x, int32_t y, bool wide) {
  if (set->draw_canvas == nullptr) return;
  const CanvasPoint at = start_of(set, x, y);
  ask(set->draw_canvas->calls->text, set->draw_canvas, at.x, at.y, code, wide);
}

void draw_character(const OutputContext *context, int32_t code, int32_t x, int32_t y) {
  const WindowSet *set = context->window.window_set;
  if (const GlSystem *gl = text_gl(context); gl != nullptr) {
    ask(gl->text, x, to_int32(context->page.height - 1.0 - y), set->font_size, set->font_angle,
        low_byte_of(code));
    return;
  }
  const bool wide = code >= first_wide_code;
  draw_on_canvas(set, wide ? code : low_byte_of(code), x, y, wide);
}

// The record, where there is a font to draw or measure with.
OutputContext *context_with_font() {
  const WindowSet *set = current_window_set();
  return set != nullptr && set->font_selected ? output_context : nullptr;
}

}  // namespace

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwfnt(const char *name, int32_t size, int32_t angle, int32_t *widths,
                          int32_t *io) {
  OutputContext *context = output_context;
  WindowSet *set = current_window_set();
  const int32_t charset = *io;
  *io = 1;
  if (set == nullptr || name == nullptr) return 0;
  context->options.font_charset = charset;
  set->font_angle = angle;
  set->font_size = size;
  const CanvasFont font = describe_font(name, size, angle, context->window.opengl_on != 0);
  if (!select_font(context, font)) return 0;
  set->font = font;
  set->font_selected = true;
  measure_all(context, widths);
  *io = 0;
  return 0;
}

extern "C" int32_t qqwcha(int32_t code, int32_t x, int32_t y, int32_t /*unused*/) {
  const OutputContext *context = context_with_font();
  if (context == nullptr || context->window.opengl_on != 0) return 0;
  const int32_t byte = low_byte_of(map_char_for_font(context->options.font_charset, code));
  draw_on_canvas(context->window.window_set, byte, x, y, false);
  return 0;
}

extern "C" int32_t qqwcha2(int32_t code, int32_t x, int32_t y, int32_t raw, int32_t /*unused*/) {
  const OutputContext *context = context_with_font();
  if (context == nullptr) return 0;
  draw_character(context, map_char_code(code, raw != 0, charset_latin1_alone), x, y);
  return 0;
}

extern "C" int32_t qqwcln(int32_t code, int32_t raw, int32_t *width) {
  *width = 0;
  const OutputContext *context = context_with_font();
  if (context == nullptr) return 0;
  const int32_t c = map_char_code(code, raw != 0, charset_latin1_alone);
  const bool wide = c >= first_wide_code;
  *width = Ruler(context).width(wide ? c : low_byte_of(c), wide);
  return 0;
}

// SPDX-License-Identifier: MIT
//
// Text: outlines of TrueType characters as polygons, by this library, stb_truetype and FreeType,
// and characters of bitmap fonts drawn on the raster, by this library and by a plain loop.
//
// Outlines: 100,000 characters of a text, each looked up by its Unicode value, read, flattened to
// four points a curve and scaled, all contours closed. Bitmaps: 100,000 characters within the page.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "core/output_context.h"
#include "formats/bdf.h"
#include "quorix/fonts.h"
#include "quorix/raster.h"
#include "quorix/window.h"

#ifdef HAVE_STB
#include <stb/stb_truetype.h>
#endif
#ifdef HAVE_FREETYPE2
#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#endif

namespace {

constexpr size_t character_count = 100000;
constexpr int32_t room = 16384;
constexpr int32_t size = 24;  // four points a curve
constexpr int32_t curve_points = 4;
constexpr char font_file[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

constexpr char32_t english[] =
    U"Monthly mean relative sunspot numbers from 1749 to 1983, collected at the Federal "
    U"Observatory in Zurich until 1960 and at the Tokyo Astronomical Observatory since then. ";
constexpr char32_t european[] =
    U"Größe und Häufigkeit der Sonnenflecken; Fréquence des taches où l'été s'achève déjà; "
    U"Częstość występowania plam słonecznych; Četnost slunečních skvrn; Güneş lekelerinin sıklığı; "
    U"Frecuencia según el año; Fläckarnas utbredning på solytan; A napfoltok gyakorisága űrből. ";

struct Points {
  double x[room], y[room];
  int32_t sizes[256];
  int32_t contours;
  int32_t count;
};
Points points;

// The words of a sentence in any order, so that no branch predictor learns the text by heart.
std::u32string long_text(const std::u32string &sentence) {
  std::vector<std::u32string> words(1);
  for (const char32_t c : sentence) {
    words.back() += c;
    if (c == U' ') words.emplace_back();
  }
  std::mt19937 random(1);
  std::u32string text;
  while (text.size() < character_count)
    text += words[random() % words.size()];
  text.resize(character_count);
  return text;
}

template <class Read>
void read_text(benchmark::State &state, const std::u32string &sentence, Read read) {
  const std::u32string text = long_text(sentence);
  for (auto _ : state) {
    for (const char32_t c : text) {
      read(static_cast<int32_t>(c));
      benchmark::ClobberMemory();
    }
  }
}

void outlines_quorix(benchmark::State &state, const std::u32string &text) {
  int32_t status = 0;
  qqttf1(font_file, 1, &status);
  if (status != 0) return state.SkipWithError("no font");
  read_text(state, text, [](int32_t code) {
    int32_t unicode = 1;
    qqttf2(code, points.x, points.y, room, &points.count, points.sizes, 256, &points.contours, size,
           &unicode);
  });
  qqttf3();
}

// What the peers share: one curve, or its end, appended.
struct Pen {
  double x, y, start_x, start_y;
};

void put(double x, double y, double scale) {
  points.x[points.count] = x * scale;
  points.y[points.count++] = y * scale;
}

void put_curve(Pen *pen, double cx, double cy, double ex, double ey, double scale) {
  for (int32_t j = 1; j <= curve_points; ++j) {
    const double t = static_cast<double>(j) / curve_points;
    const double p = (1 - t) * (1 - t), c = 2 * (1 - t) * t, e = t * t;
    put(p * pen->x + c * cx + e * ex, p * pen->y + c * cy + e * ey, scale);
  }
  pen->x = ex;
  pen->y = ey;
}

#ifdef HAVE_STB
void outlines_stb(benchmark::State &state, const std::u32string &text) {
  std::ifstream file(font_file, std::ios::binary);
  const std::vector<char> bytes((std::istreambuf_iterator<char>(file)), {});
  if (bytes.empty()) return state.SkipWithError("no font");
  const auto *const data = reinterpret_cast<const unsigned char *>(bytes.data());
  stbtt_fontinfo font;
  stbtt_InitFont(&font, data, stbtt_GetFontOffsetForIndex(data, 0));
  const double scale = size / 1493.0;  // the capitals of this font
  read_text(state, text, [&](int32_t code) {
    stbtt_vertex *vertices = nullptr;
    const int count = stbtt_GetCodepointShape(&font, code, &vertices);
    points.count = points.contours = 0;
    Pen pen = {0, 0, 0, 0};
    for (int i = 0; i < count; ++i) {
      const stbtt_vertex &v = vertices[i];
      if (v.type == STBTT_vmove) ++points.contours;
      if (v.type == STBTT_vcurve) {
        put_curve(&pen, v.cx, v.cy, v.x, v.y, scale);
      } else {
        put(v.x, v.y, scale);
        pen = {static_cast<double>(v.x), static_cast<double>(v.y), 0, 0};
      }
    }
    stbtt_FreeShape(&font, vertices);
  });
}
#endif

#ifdef HAVE_FREETYPE2
constexpr double freetype_scale = size / 1493.0;

int move_to(const FT_Vector *to, void *user) {
  auto *const pen = static_cast<Pen *>(user);
  ++points.contours;
  pen->x = static_cast<double>(to->x);
  pen->y = static_cast<double>(to->y);
  put(pen->x, pen->y, freetype_scale);
  return 0;
}

int line_to(const FT_Vector *to, void *user) {
  auto *const pen = static_cast<Pen *>(user);
  pen->x = static_cast<double>(to->x);
  pen->y = static_cast<double>(to->y);
  put(pen->x, pen->y, freetype_scale);
  return 0;
}

int conic_to(const FT_Vector *control, const FT_Vector *to, void *user) {
  put_curve(static_cast<Pen *>(user), static_cast<double>(control->x),
            static_cast<double>(control->y), static_cast<double>(to->x), static_cast<double>(to->y),
            freetype_scale);
  return 0;
}

void outlines_freetype(benchmark::State &state, const std::u32string &text) {
  FT_Library library = nullptr;
  FT_Face face = nullptr;
  FT_Init_FreeType(&library);
  if (FT_New_Face(library, font_file, 0, &face) != 0) return state.SkipWithError("no font");
  const FT_Outline_Funcs functions = {move_to, line_to, conic_to, nullptr, 0, 0};
  read_text(state, text, [&](int32_t code) {
    points.count = points.contours = 0;
    Pen pen = {0, 0, 0, 0};
    FT_Load_Glyph(face, FT_Get_Char_Index(face, static_cast<FT_ULong>(code)), FT_LOAD_NO_SCALE);
    FT_Outline_Decompose(&face->glyph->outline, &functions, &pen);
  });
  FT_Done_Face(face);
  FT_Done_FreeType(library);
}
#endif

void ascii_quorix(benchmark::State &state) {
  outlines_quorix(state, english);
}
void european_quorix(benchmark::State &state) {
  outlines_quorix(state, european);
}
BENCHMARK(ascii_quorix)->Name("outlines, English text/quorix");
BENCHMARK(european_quorix)->Name("outlines, European text/quorix");
#ifdef HAVE_STB
void ascii_stb(benchmark::State &state) {
  outlines_stb(state, english);
}
void european_stb(benchmark::State &state) {
  outlines_stb(state, european);
}
BENCHMARK(ascii_stb)->Name("outlines, English text/stb_truetype");
BENCHMARK(european_stb)->Name("outlines, European text/stb_truetype");
#endif
#ifdef HAVE_FREETYPE2
void ascii_freetype(benchmark::State &state) {
  outlines_freetype(state, english);
}
void european_freetype(benchmark::State &state) {
  outlines_freetype(state, european);
}
BENCHMARK(ascii_freetype)->Name("outlines, English text/FreeType");
BENCHMARK(european_freetype)->Name("outlines, European text/FreeType");
#endif

// ---- bitmap fonts

constexpr int32_t page_width = 1920, page_height = 1080;
constexpr int32_t raster = 101;

// Opens an RGBA raster and makes helve12 current; QUORIX names the folder above `fonts`.
bool open_page(const char *sources) {
  int32_t width = page_width, height = page_height;
  const int32_t family = 3, font_size = 12, use_directory = 1;
  int32_t status = 0;
  qqvini(-1, 1, &width, &height, 1, &status);
  if (status != 0) return false;
  int32_t widths[233];
  qqbdf1n(sources, &use_directory, &family, &font_size, widths, &status);
  qqvclr(0x01FFFFFF);
  return status == 0;
}

struct Place {
  int32_t code, x, y;
};

std::vector<Place> places() {
  const std::u32string text = long_text(english);
  std::vector<Place> all;
  for (size_t i = 0; i < character_count; ++i) {
    const auto n = static_cast<int32_t>(i);
    all.push_back({static_cast<int32_t>(text[i]), 40 + n * 9 % 1800, 40 + n / 200 * 17 % 1000});
  }
  return all;
}

void bitmaps_quorix(benchmark::State &state, int32_t angle) {
  if (!open_page(QUORIX_SOURCES)) return state.SkipWithError("no font");
  const std::vector<Place> all = places();
  for (auto _ : state) {
    for (const Place &p : all)
      qqbdf2(&p.code, &p.x, &p.y, &angle, &raster, nullptr);
    benchmark::ClobberMemory();
  }
  qqwfree();
}

// The same pixels from lists that are at hand, into memory that is at hand.
void bitmaps_plainly(benchmark::State &state, int32_t angle) {
  if (!open_page(QUORIX_SOURCES)) return state.SkipWithError("no font");
  const quorix::BdfFont &font = *quorix::output_context->fonts.bdf_current;
  uint8_t *page = nullptr;
  qqvptr(&page);
  const double sine = std::sin(angle * 3.1415927 / 180), cosine = std::cos(angle * 3.1415927 / 180);
  const std::vector<Place> all = places();
  for (auto _ : state) {
    for (const Place &p : all) {
      const quorix::BdfGlyph &glyph = font.glyphs[font.glyph_of_code[p.code]];
      for (size_t i = 0; i < glyph.pixel_count; ++i) {
        const quorix::BdfPixel &pixel = font.pixels[glyph.first_pixel + i];
        const int32_t c = glyph.box[2] + pixel.column;
        const int32_t r = glyph.box[1] + glyph.box[3] - 1 - pixel.row;
        int32_t x = p.x + c, y = p.y - r;
        if (angle != 0) {
          x = p.x + static_cast<int32_t>(c * cosine - r * sine + 0.5);
          y = p.y - static_cast<int32_t>(c * sine + r * cosine + 0.5);
        }
        if (x < 0 || x >= page_width || y < 0 || y >= page_height) continue;
        uint8_t *const to =
            page + 4 * (static_cast<size_t>(y) * page_width + static_cast<size_t>(x));
        to[0] = 255;
        to[1] = 255;
        to[2] = 255;
      }
    }
    benchmark::ClobberMemory();
  }
  qqwfree();
}

BENCHMARK_CAPTURE(bitmaps_quorix, upright, 0)->Name("bitmap text, upright/quorix");
BENCHMARK_CAPTURE(bitmaps_plainly, upright, 0)->Name("bitmap text, upright/plain loop");
BENCHMARK_CAPTURE(bitmaps_quorix, slanted, 30)->Name("bitmap text, 30 degrees/quorix");
BENCHMARK_CAPTURE(bitmaps_plainly, slanted, 30)->Name("bitmap text, 30 degrees/plain loop");

}  // namespace

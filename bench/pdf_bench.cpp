// SPDX-License-Identifier: MIT
//
// Vector PDF into memory: a page of 10,000 polylines of 101 points and 100,000 characters, plain
// and compressed, and documents of many pages, each with an image and a bookmark. The limit of a
// compressed page is deflate of the same bytes in the same blocks.
#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdlib>
#include <random>
#include <vector>

#ifdef HAVE_LIBHPDF
#include <hpdf.h>
#endif
#ifdef HAVE_CAIRO
#include <cairo-pdf.h>
#include <cairo.h>
#endif

#include "quorix/quorix.h"

namespace {

constexpr int polylines = 10000, points_per_line = 101, characters = 100000;
constexpr int image_side = 8;
constexpr size_t block_bytes = 300000;  // of page content that is compressed at a time

struct Point {
  double x, y;
};

void must(bool fine) {
  if (!fine) std::abort();
}

// Curves across an A4 page, as a plot has them: each point near the last one.
const std::vector<Point> &curve_points() {
  static const std::vector<Point> points = [] {
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> start(50.0, 500.0), step(-3.0, 5.0);
    std::vector<Point> made;
    for (int i = 0; i < polylines; ++i) {
      Point at = {start(random), start(random)};
      for (int j = 0; j < points_per_line; ++j) {
        made.push_back(at);
        at.x += step(random) * 0.3;
        at.y += step(random);
      }
    }
    return made;
  }();
  return points;
}

Point place_of_character(int i) {
  return {50.0 + i % 100 * 5.01, 50.0 + i / 100 % 70 * 10.3};
}

char character(int i) {
  return static_cast<char>('a' + i % 26);
}

std::vector<uint8_t> image_pixels() {
  std::vector<uint8_t> pixels(size_t{image_side} * image_side * 3);
  for (size_t i = 0; i < pixels.size(); ++i)
    pixels[i] = static_cast<uint8_t>(i * 7);
  return pixels;
}

// ---- this library

void operate(double x, double y, int32_t op) {
  qqpdf2(&x, &y, op);
}

void start(bool compressed) {
  int32_t status = 0;
  qqpdf1(nullptr, 595, 842, compressed ? 3 : 2, &status);
  must(status == 0);
}

std::vector<uint8_t> fetch() {
  int32_t count = 0;
  qqpdf6(nullptr, 0, &count);
  std::vector<uint8_t> bytes(static_cast<size_t>(count));
  qqpdf6(bytes.data(), count, &count);
  must(count > 0);
  return bytes;
}

void draw_plot() {
  const Point *point = curve_points().data();
  for (int i = 0; i < polylines; ++i) {
    for (int j = 0; j < points_per_line; ++j, ++point)
      qqpdf2(&point->x, &point->y, j == 0 ? 3 : 2);
  }
  for (int i = 0; i < characters; ++i) {
    const Point at = place_of_character(i);
    const double matrix[7] = {1, 0, 0, 1, at.x, at.y, 1};
    qqpdf5(character(i), matrix, 0, 4, 9);
  }
}

void plot_by_quorix(benchmark::State &state, bool compressed) {
  curve_points();
  for (auto _ : state) {
    start(compressed);
    draw_plot();
    operate(0, 0, 1);
  }
  qqpfree();
}

void pages_by_quorix(benchmark::State &state, int pages) {
  const std::vector<uint8_t> pixels = image_pixels();
  for (auto _ : state) {
    start(false);
    for (int i = 0; i < pages; ++i) {
      if (i != 0) operate(0, 0, 4);
      const int32_t level = i % 10 == 0 ? 0 : 1;
      int32_t status = 0;
      qqpdf9("Page", &level, &status);
      operate(image_side, image_side, 10);
      qqpdf7(pixels.data(), static_cast<int32_t>(pixels.size()));
      operate(0, 0, 11);
      operate(100, 100, 12);
      operate(200, 200, 14);
    }
    operate(0, 0, 1);
  }
  qqpfree();
}

// ---- the limit: the content of the plain page, cut where the library cuts it

std::vector<uint8_t> page_content() {
  start(false);
  draw_plot();
  operate(0, 0, 1);
  return fetch();  // what stands around the content is a hundredth of a percent
}

void plot_by_deflate(benchmark::State &state) {
  const std::vector<uint8_t> content = page_content();
  std::vector<uint8_t> target(block_bytes + block_bytes / 100 + 13);
  for (auto _ : state) {
    for (size_t at = 0; at < content.size(); at += block_bytes) {
      z_stream stream = {};
      must(deflateInit(&stream, Z_DEFAULT_COMPRESSION) == Z_OK);
      stream.next_in = const_cast<uint8_t *>(content.data() + at);
      stream.avail_in = static_cast<uInt>(std::min(block_bytes, content.size() - at));
      stream.next_out = target.data();
      stream.avail_out = static_cast<uInt>(target.size());
      must(deflate(&stream, Z_FINISH) == Z_STREAM_END);
      deflateEnd(&stream);
      benchmark::DoNotOptimize(target.data());
    }
  }
}

// ---- libharu

#ifdef HAVE_LIBHPDF
void haru_failed(HPDF_STATUS /*error*/, HPDF_STATUS /*detail*/, void * /*unused*/) {
  std::abort();
}

HPDF_Doc start_haru(bool compressed) {
  HPDF_Doc document = HPDF_New(haru_failed, nullptr);
  HPDF_SetCompressionMode(document, compressed ? HPDF_COMP_ALL : HPDF_COMP_NONE);
  return document;
}

HPDF_Page add_haru_page(HPDF_Doc document) {
  HPDF_Page page = HPDF_AddPage(document);
  HPDF_Page_SetWidth(page, 595);
  HPDF_Page_SetHeight(page, 842);
  return page;
}

void end_haru(HPDF_Doc document) {
  HPDF_SaveToStream(document);
  must(HPDF_GetStreamSize(document) > 0);
  HPDF_Free(document);
}

void plot_by_haru(benchmark::State &state, bool compressed) {
  curve_points();
  for (auto _ : state) {
    HPDF_Doc document = start_haru(compressed);
    HPDF_Page page = add_haru_page(document);
    const Point *point = curve_points().data();
    for (int i = 0; i < polylines; ++i) {
      for (int j = 0; j < points_per_line; ++j, ++point) {
        const auto x = static_cast<HPDF_REAL>(point->x), y = static_cast<HPDF_REAL>(point->y);
        if (j == 0) {
          HPDF_Page_MoveTo(page, x, y);
        } else {
          HPDF_Page_LineTo(page, x, y);
        }
      }
      HPDF_Page_Stroke(page);
    }
    HPDF_Page_BeginText(page);
    HPDF_Page_SetFontAndSize(page, HPDF_GetFont(document, "Helvetica", "WinAnsiEncoding"), 9);
    for (int i = 0; i < characters; ++i) {
      const Point at = place_of_character(i);
      const char text[2] = {character(i), '\0'};
      HPDF_Page_SetTextMatrix(page, 1, 0, 0, 1, static_cast<HPDF_REAL>(at.x),
                              static_cast<HPDF_REAL>(at.y));
      HPDF_Page_ShowText(page, text);
    }
    HPDF_Page_EndText(page);
    end_haru(document);
  }
}

void pages_by_haru(benchmark::State &state, int pages) {
  const std::vector<uint8_t> pixels = image_pixels();
  for (auto _ : state) {
    HPDF_Doc document = start_haru(false);
    HPDF_Outline parent = nullptr;
    for (int i = 0; i < pages; ++i) {
      HPDF_Page page = add_haru_page(document);
      HPDF_Outline outline =
          HPDF_CreateOutline(document, i % 10 == 0 ? nullptr : parent, "Page", nullptr);
      if (i % 10 == 0) parent = outline;
      HPDF_Outline_SetDestination(outline, HPDF_Page_CreateDestination(page));
      HPDF_Image image = HPDF_LoadRawImageFromMem(document, pixels.data(), image_side, image_side,
                                                  HPDF_CS_DEVICE_RGB, 8);
      HPDF_Page_DrawImage(page, image, 100, 100, 200, 200);
    }
    end_haru(document);
  }
}
#endif

// ---- cairo, which always compresses

#ifdef HAVE_CAIRO
cairo_status_t take_bytes(void *count, const unsigned char * /*bytes*/, unsigned length) {
  *static_cast<size_t *>(count) += length;
  return CAIRO_STATUS_SUCCESS;
}

void plot_by_cairo(benchmark::State &state) {
  curve_points();
  for (auto _ : state) {
    size_t written = 0;
    cairo_surface_t *surface = cairo_pdf_surface_create_for_stream(take_bytes, &written, 595, 842);
    cairo_t *page = cairo_create(surface);
    const Point *point = curve_points().data();
    for (int i = 0; i < polylines; ++i) {
      for (int j = 0; j < points_per_line; ++j, ++point) {
        if (j == 0) {
          cairo_move_to(page, point->x, point->y);
        } else {
          cairo_line_to(page, point->x, point->y);
        }
      }
      cairo_stroke(page);
    }
    cairo_select_font_face(page, "Helvetica", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
    cairo_set_font_size(page, 9);
    for (int i = 0; i < characters; ++i) {
      const Point at = place_of_character(i);
      const char text[2] = {character(i), '\0'};
      cairo_move_to(page, at.x, at.y);
      cairo_show_text(page, text);
    }
    cairo_destroy(page);
    cairo_surface_destroy(surface);
    must(written > 0);
  }
}
BENCHMARK(plot_by_cairo)->Name("plot, compressed/cairo")->Unit(benchmark::kMillisecond);
#endif

BENCHMARK_CAPTURE(plot_by_quorix, plain, false)->Name("plot, plain/quorix");
BENCHMARK_CAPTURE(plot_by_quorix, compressed, true)->Name("plot, compressed/quorix");
BENCHMARK(plot_by_deflate)->Name("plot, compressed/deflate");
BENCHMARK_CAPTURE(pages_by_quorix, thousand, 1000)->Name("1,000 pages/quorix");
BENCHMARK_CAPTURE(pages_by_quorix, ten_thousand, 10000)->Name("10,000 pages/quorix");
#ifdef HAVE_LIBHPDF
BENCHMARK_CAPTURE(plot_by_haru, plain, false)->Name("plot, plain/libharu");
BENCHMARK_CAPTURE(plot_by_haru, compressed, true)->Name("plot, compressed/libharu");
BENCHMARK_CAPTURE(pages_by_haru, thousand, 1000)->Name("1,000 pages/libharu");
#endif

}  // namespace

// SPDX-License-Identifier: MIT
#include "raster_peers.h"

#include "quorix/quorix.h"

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wunused-parameter"
#pragma GCC diagnostic ignored "-Wpedantic"
#endif

#ifdef HAVE_LIBAGG
#include <agg_conv_stroke.h>
#include <agg_path_storage.h>
#include <agg_pixfmt_rgba.h>
#include <agg_rasterizer_outline_aa.h>
#include <agg_rasterizer_scanline_aa.h>
#include <agg_renderer_base.h>
#include <agg_renderer_outline_aa.h>
#include <agg_renderer_primitives.h>
#include <agg_renderer_scanline.h>
#include <agg_rendering_buffer.h>
#include <agg_scanline_bin.h>
#endif
#ifdef HAVE_CAIRO
#include <cairo.h>
#endif
#ifdef HAVE_IMLIB2
#define X_DISPLAY_MISSING  // keeps the macros of the X headers out
#include <Imlib2.h>
#endif
#ifdef HAVE_GDLIB
#include <gd.h>
#endif
#ifdef HAVE_PIXMAN_1
#include <pixman.h>
#endif
#ifdef HAVE_OPENCV
#include <opencv2/imgproc.hpp>
#endif
#ifdef HAVE_QT6
#include <QImage>
#include <QPainter>
#endif

namespace {

// ---- This library

void set_option(int32_t option, int32_t value) {
  qqwwid(option, &value, 1);
}

void quorix_open(int32_t no_clip, int32_t smooth) {
  int32_t w = page_width;
  int32_t h = page_height;
  int32_t status = 0;
  qqwfree();
  qqvini(-1, 1, &w, &h, 1, &status);
  set_option(33, no_clip);
  set_option(34, smooth);
  qqvclr(0x01203060);
}

void quorix_open_page() {
  quorix_open(0, 1);
}

void quorix_open_smooth() {
  quorix_open(0, 2);
}

void quorix_open_unclipped() {
  quorix_open(1, 1);
}

void quorix_line(const Segment &s) {
  qqvlin(s.x0, s.y0, s.x1, s.y1);
}

void quorix_colour(uint8_t r, uint8_t g, uint8_t b) {
  qqvclr(0x01000000 | b << 16 | g << 8 | r);
}

void quorix_stroke(const Segment &s) {
  qqvdrw(s.x0, s.y0, 3);
  qqvdrw(s.x1, s.y1, 2);
}

void quorix_wide_line(const Corner *points, int count, int width, Join join) {
  set_option(26, width);
  set_option(27, 0);
  set_option(28, join == Join::round ? 1 : 0);
  qqvdrw(static_cast<int32_t>(points[0].x), static_cast<int32_t>(points[0].y), 3);
  for (int i = 1; i < count; ++i) {
    qqvdrw(static_cast<int32_t>(points[i].x), static_cast<int32_t>(points[i].y), 2);
  }
  set_option(26, 1);
}

void quorix_polygon(const Corner *points, int count) {
  double xs[100];
  double ys[100];
  for (int i = 0; i < count; ++i) {
    xs[i] = points[i].x;
    ys[i] = points[i].y;
  }
  int32_t status = 0;
  qqvpol(xs, ys, &count, &status);
}

void quorix_rectangle(int x, int y, int w, int h) {
  qqvfll(x, y, x + w - 1, y + h - 1, 0x01203060);
}

void quorix_erase() {
  qqvers();
}

#ifdef HAVE_LIBAGG
using AggFormat = agg::pixfmt_rgba32;
using AggBase = agg::renderer_base<AggFormat>;

struct AggPage {
  std::vector<unsigned char> pixels = std::vector<unsigned char>(page_width * page_height * 4);
  agg::rendering_buffer buffer{pixels.data(), page_width, page_height, page_width * 4};
  AggFormat format{buffer};
  AggBase base{format};
  agg::renderer_primitives<AggBase> primitives{base};
  agg::line_profile_aa profile{1.0, agg::gamma_none()};
  agg::renderer_outline_aa<AggBase> outline{base, profile};
  agg::rasterizer_outline_aa<agg::renderer_outline_aa<AggBase>> outliner{outline};
  agg::rasterizer_scanline_aa<> rasterizer;
  agg::scanline_bin scanline;
};

AggPage *agg_page;

void agg_open() {
  delete agg_page;
  agg_page = new AggPage;
  agg_page->primitives.line_color(agg::rgba8(96, 48, 32));
  agg_page->outline.color(agg::rgba8(96, 48, 32));
}

void agg_colour(uint8_t r, uint8_t g, uint8_t b) {
  agg_page->primitives.line_color(agg::rgba8(r, g, b));
}

void agg_line(const Segment &s) {
  agg_page->primitives.line(s.x0 * 256, s.y0 * 256, s.x1 * 256, s.y1 * 256, true);
}

void agg_smooth_line(const Segment &s) {
  agg_page->outliner.move_to_d(s.x0, s.y0);
  agg_page->outliner.line_to_d(s.x1, s.y1);
  agg_page->outliner.render(false);
}

void agg_render() {
  agg::render_scanlines_bin_solid(agg_page->rasterizer, agg_page->scanline, agg_page->base,
                                  agg::rgba8(96, 48, 32));
}

void agg_wide_line(const Corner *points, int count, int width, Join join) {
  agg::path_storage path;
  path.move_to(points[0].x, points[0].y);
  for (int i = 1; i < count; ++i)
    path.line_to(points[i].x, points[i].y);
  agg::conv_stroke<agg::path_storage> stroke(path);
  stroke.width(width);
  stroke.line_join(join == Join::round ? agg::round_join : agg::miter_join);
  agg_page->rasterizer.reset();
  agg_page->rasterizer.add_path(stroke);
  agg_render();
}

void agg_polygon(const Corner *points, int count) {
  agg_page->rasterizer.reset();
  agg_page->rasterizer.filling_rule(agg::fill_even_odd);
  agg_page->rasterizer.move_to_d(points[0].x, points[0].y);
  for (int i = 1; i < count; ++i)
    agg_page->rasterizer.line_to_d(points[i].x, points[i].y);
  agg_render();
}

void agg_rectangle(int x, int y, int w, int h) {
  agg_page->base.copy_bar(x, y, x + w - 1, y + h - 1, agg::rgba8(96, 48, 32));
}
#endif

#ifdef HAVE_CAIRO
cairo_t *cairo_page;

void cairo_open() {
  if (cairo_page != nullptr) cairo_destroy(cairo_page);
  cairo_surface_t *surface =
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, page_width, page_height);
  cairo_page = cairo_create(surface);
  cairo_surface_destroy(surface);
  cairo_set_source_rgb(cairo_page, 0.4, 0.2, 0.1);
  cairo_set_antialias(cairo_page, CAIRO_ANTIALIAS_NONE);
  cairo_set_fill_rule(cairo_page, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_set_line_cap(cairo_page, CAIRO_LINE_CAP_BUTT);
}

void cairo_colour(uint8_t r, uint8_t g, uint8_t b) {
  cairo_set_source_rgb(cairo_page, r / 255.0, g / 255.0, b / 255.0);
}

void cairo_path(const Corner *points, int count) {
  cairo_move_to(cairo_page, points[0].x, points[0].y);
  for (int i = 1; i < count; ++i)
    cairo_line_to(cairo_page, points[i].x, points[i].y);
}

void cairo_line(const Segment &s) {
  cairo_set_antialias(cairo_page, CAIRO_ANTIALIAS_NONE);
  cairo_set_line_width(cairo_page, 1.0);
  cairo_move_to(cairo_page, s.x0 + 0.5, s.y0 + 0.5);
  cairo_line_to(cairo_page, s.x1 + 0.5, s.y1 + 0.5);
  cairo_stroke(cairo_page);
}

void cairo_smooth_line(const Segment &s) {
  cairo_set_antialias(cairo_page, CAIRO_ANTIALIAS_FAST);
  cairo_set_line_width(cairo_page, 1.0);
  cairo_move_to(cairo_page, s.x0 + 0.5, s.y0 + 0.5);
  cairo_line_to(cairo_page, s.x1 + 0.5, s.y1 + 0.5);
  cairo_stroke(cairo_page);
}

void cairo_wide_line(const Corner *points, int count, int width, Join join) {
  cairo_set_antialias(cairo_page, CAIRO_ANTIALIAS_NONE);
  cairo_set_line_width(cairo_page, width);
  cairo_set_line_join(cairo_page,
                      join == Join::round ? CAIRO_LINE_JOIN_ROUND : CAIRO_LINE_JOIN_MITER);
  cairo_path(points, count);
  cairo_stroke(cairo_page);
}

void cairo_polygon(const Corner *points, int count) {
  cairo_set_antialias(cairo_page, CAIRO_ANTIALIAS_NONE);
  cairo_path(points, count);
  cairo_close_path(cairo_page);
  cairo_fill(cairo_page);
}
#endif

#ifdef HAVE_IMLIB2
void imlib2_open() {
  static Imlib_Image image = nullptr;
  if (image == nullptr) image = imlib_create_image(page_width, page_height);
  imlib_context_set_image(image);
  imlib_context_set_color(96, 48, 32, 255);
  imlib_context_set_blend(0);
}

void imlib2_colour(uint8_t r, uint8_t g, uint8_t b) {
  imlib_context_set_color(r, g, b, 255);
}

void imlib2_line(const Segment &s) {
  imlib_context_set_anti_alias(0);
  imlib_image_draw_line(s.x0, s.y0, s.x1, s.y1, 0);
}

void imlib2_smooth_line(const Segment &s) {
  imlib_context_set_anti_alias(1);
  imlib_context_set_blend(1);
  imlib_image_draw_line(s.x0, s.y0, s.x1, s.y1, 0);
}

void imlib2_polygon(const Corner *points, int count) {
  imlib_context_set_anti_alias(0);
  ImlibPolygon polygon = imlib_polygon_new();
  for (int i = 0; i < count; ++i) {
    imlib_polygon_add_point(polygon, static_cast<int>(points[i].x), static_cast<int>(points[i].y));
  }
  imlib_image_fill_polygon(polygon);
  imlib_polygon_free(polygon);
}

void imlib2_rectangle(int x, int y, int w, int h) {
  imlib_image_fill_rectangle(x, y, w, h);
}
#endif

#ifdef HAVE_GDLIB
gdImagePtr gd_page;

void gd_open() {
  if (gd_page == nullptr) gd_page = gdImageCreateTrueColor(page_width, page_height);
  gdImageSetThickness(gd_page, 1);
}

int gd_colour = 0x603020;

void gd_set_colour(uint8_t r, uint8_t g, uint8_t b) {
  gd_colour = gdTrueColor(r, g, b);
}

void gd_line(const Segment &s) {
  gdImageLine(gd_page, s.x0, s.y0, s.x1, s.y1, gd_colour);
}

void gd_smooth_line(const Segment &s) {
  gdImageSetAntiAliased(gd_page, gd_colour);
  gdImageLine(gd_page, s.x0, s.y0, s.x1, s.y1, gdAntiAliased);
}

void gd_polygon(const Corner *points, int count) {
  gdPoint corners[100];
  for (int i = 0; i < count; ++i) {
    corners[i] = {static_cast<int>(points[i].x), static_cast<int>(points[i].y)};
  }
  gdImageFilledPolygon(gd_page, corners, count, gd_colour);
}

void gd_rectangle(int x, int y, int w, int h) {
  gdImageFilledRectangle(gd_page, x, y, x + w - 1, y + h - 1, gd_colour);
}
#endif

#ifdef HAVE_OPENCV
cv::Mat cv_page;
cv::Scalar cv_colour(96, 48, 32, 255);

void cv_set_colour(uint8_t r, uint8_t g, uint8_t b) {
  cv_colour = cv::Scalar(r, g, b, 255);
}

void cv_open() {
  cv_page = cv::Mat(page_height, page_width, CV_8UC4, cv::Scalar(0, 0, 0, 0));
}

void cv_line(const Segment &s) {
  cv::line(cv_page, {s.x0, s.y0}, {s.x1, s.y1}, cv_colour, 1, cv::LINE_8);
}

void cv_smooth_line(const Segment &s) {
  cv::line(cv_page, {s.x0, s.y0}, {s.x1, s.y1}, cv_colour, 1, cv::LINE_AA);
}

// Its joins are always round.
void cv_wide_line(const Corner *points, int count, int width, Join /*join*/) {
  cv::Point corners[100];
  for (int i = 0; i < count; ++i) {
    corners[i] = {static_cast<int>(points[i].x), static_cast<int>(points[i].y)};
  }
  const cv::Point *all = corners;
  cv::polylines(cv_page, &all, &count, 1, false, cv_colour, width, cv::LINE_8);
}

void cv_polygon(const Corner *points, int count) {
  cv::Point corners[100];
  for (int i = 0; i < count; ++i) {
    corners[i] = {static_cast<int>(points[i].x), static_cast<int>(points[i].y)};
  }
  const cv::Point *all = corners;
  cv::fillPoly(cv_page, &all, &count, 1, cv_colour, cv::LINE_8);
}

void cv_rectangle(int x, int y, int w, int h) {
  cv::rectangle(cv_page, {x, y}, {x + w - 1, y + h - 1}, cv_colour, cv::FILLED);
}
#endif

#ifdef HAVE_PIXMAN_1
pixman_image_t *pixman_page;

void pixman_open() {
  if (pixman_page == nullptr) {
    pixman_page = pixman_image_create_bits(PIXMAN_a8r8g8b8, page_width, page_height, nullptr, 0);
  }
}

void pixman_rectangle(int x, int y, int w, int h) {
  pixman_fill(pixman_image_get_data(pixman_page), page_width, 32, x, y, w, h, 0xFF603020U);
}

void pixman_erase() {
  pixman_rectangle(0, 0, page_width, page_height);
}
#endif

#ifdef HAVE_QT6
QImage *qt_image;
QPainter *qt_painter;

void qt_open() {
  delete qt_painter;
  delete qt_image;
  qt_image = new QImage(page_width, page_height, QImage::Format_RGB32);
  qt_image->fill(0);
  qt_painter = new QPainter(qt_image);
  qt_painter->setPen(QColor(96, 48, 32));
  qt_painter->setBrush(QColor(96, 48, 32));
}

void qt_colour(uint8_t r, uint8_t g, uint8_t b) {
  qt_painter->setPen(QColor(r, g, b));
}

void qt_line(const Segment &s) {
  qt_painter->drawLine(s.x0, s.y0, s.x1, s.y1);
}

void qt_polygon(const Corner *points, int count) {
  QPointF corners[100];
  for (int i = 0; i < count; ++i)
    corners[i] = QPointF(points[i].x, points[i].y);
  if (qt_painter->pen().style() != Qt::NoPen) qt_painter->setPen(Qt::NoPen);
  qt_painter->drawPolygon(corners, count, Qt::OddEvenFill);
}

void qt_wide_line(const Corner *points, int count, int width, Join join) {
  QPointF corners[100];
  for (int i = 0; i < count; ++i)
    corners[i] = QPointF(points[i].x, points[i].y);
  QPen pen(QColor(96, 48, 32), width);
  pen.setCapStyle(Qt::FlatCap);
  pen.setJoinStyle(join == Join::round ? Qt::RoundJoin : Qt::MiterJoin);
  qt_painter->setPen(pen);
  qt_painter->drawPolyline(corners, count);
}

void qt_rectangle(int x, int y, int w, int h) {
  qt_painter->fillRect(x, y, w, h, QColor(96, 48, 32));
}

void qt_erase() {
  qt_image->fill(0);
}
#endif

std::vector<Contender> make_contenders() {
  std::vector<Contender> all;
  all.push_back({.name = "quorix",
                 .open = quorix_open_page,
                 .colour = quorix_colour,
                 .line = quorix_line,
                 .stroke = quorix_stroke,
                 .wide_line = quorix_wide_line,
                 .polygon = quorix_polygon,
                 .rectangle = quorix_rectangle,
                 .erase = quorix_erase});
  all.push_back({.name = "quorix smooth", .open = quorix_open_smooth, .smooth_line = quorix_line});
  all.push_back({.name = "quorix unclipped",
                 .open = quorix_open_unclipped,
                 .colour = quorix_colour,
                 .line = quorix_line,
                 .stroke = quorix_stroke});
  all.push_back(plain_contender());
#ifdef HAVE_LIBAGG
  all.push_back({.name = "agg",
                 .open = agg_open,
                 .colour = agg_colour,
                 .line = agg_line,
                 .smooth_line = agg_smooth_line,
                 .wide_line = agg_wide_line,
                 .polygon = agg_polygon,
                 .rectangle = agg_rectangle});
#endif
#ifdef HAVE_CAIRO
  all.push_back({.name = "cairo",
                 .open = cairo_open,
                 .colour = cairo_colour,
                 .line = cairo_line,
                 .smooth_line = cairo_smooth_line,
                 .wide_line = cairo_wide_line,
                 .polygon = cairo_polygon});
#endif
#ifdef HAVE_IMLIB2
  all.push_back({.name = "imlib2",
                 .open = imlib2_open,
                 .colour = imlib2_colour,
                 .line = imlib2_line,
                 .smooth_line = imlib2_smooth_line,
                 .polygon = imlib2_polygon,
                 .rectangle = imlib2_rectangle});
#endif
#ifdef HAVE_GDLIB
  all.push_back({.name = "gd",
                 .open = gd_open,
                 .colour = gd_set_colour,
                 .line = gd_line,
                 .smooth_line = gd_smooth_line,
                 .polygon = gd_polygon,
                 .rectangle = gd_rectangle});
#endif
#ifdef HAVE_OPENCV
  all.push_back({.name = "opencv",
                 .open = cv_open,
                 .colour = cv_set_colour,
                 .line = cv_line,
                 .smooth_line = cv_smooth_line,
                 .wide_line = cv_wide_line,
                 .polygon = cv_polygon,
                 .rectangle = cv_rectangle});
#endif
#ifdef HAVE_PIXMAN_1
  all.push_back({.name = "pixman",
                 .open = pixman_open,
                 .rectangle = pixman_rectangle,
                 .erase = pixman_erase});
#endif
#ifdef HAVE_QT6
  all.push_back({.name = "qt6",
                 .open = qt_open,
                 .colour = qt_colour,
                 .line = qt_line,
                 .wide_line = qt_wide_line,
                 .polygon = qt_polygon,
                 .rectangle = qt_rectangle,
                 .erase = qt_erase});
#endif
  return all;
}

}  // namespace

const std::vector<Contender> &contenders() {
  static const std::vector<Contender> all = make_contenders();
  return all;
}

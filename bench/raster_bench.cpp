// SPDX-License-Identifier: MIT
//
// Lines, polygons and rectangles on a 1920x1080 RGBA page, by this library and by its peers.
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>

#include "raster_peers.h"

namespace {

using Random = std::mt19937_64;

double between(Random &random, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(random);
}

// Segments of the given lengths in random directions, wholly on the page.
std::vector<Segment> segments_on_page(int count, double shortest, double longest) {
  Random random(1);
  std::vector<Segment> segments;
  while (static_cast<int>(segments.size()) < count) {
    const double angle = between(random, 0.0, 6.283185);
    const double length = between(random, shortest, longest);
    const int x = static_cast<int>(between(random, 0, page_width));
    const int y = static_cast<int>(between(random, 0, page_height));
    const int x1 = x + static_cast<int>(length * std::cos(angle));
    const int y1 = y + static_cast<int>(length * std::sin(angle));
    if (x1 < 0 || x1 >= page_width || y1 < 0 || y1 >= page_height) continue;
    segments.push_back({x, y, x1, y1});
  }
  return segments;
}

// Long segments whose ends lie up to a page beyond each edge.
std::vector<Segment> segments_off_page(int count) {
  Random random(2);
  std::vector<Segment> segments;
  for (int i = 0; i < count; ++i) {
    const auto x = [&] { return static_cast<int>(between(random, -page_width, 2 * page_width)); };
    const auto y = [&] { return static_cast<int>(between(random, -page_height, 2 * page_height)); };
    segments.push_back({x(), y(), x(), y()});
  }
  return segments;
}

using Polygons = std::vector<std::vector<Corner>>;

// Star-shaped polygons of the given size.
Polygons polygons(int count, int corners, double smallest, double largest) {
  Random random(3);
  Polygons all;
  for (int i = 0; i < count; ++i) {
    const double size = between(random, smallest, largest);
    const double cx = between(random, size, page_width - size);
    const double cy = between(random, size, page_height - size);
    std::vector<Corner> polygon;
    for (int k = 0; k < corners; ++k) {
      const double angle = 6.283185 * k / corners;
      const double radius = size / 2 * between(random, 0.5, 1.0);
      polygon.push_back({cx + radius * std::cos(angle), cy + radius * std::sin(angle)});
    }
    all.push_back(polygon);
  }
  return all;
}

// Curves of 90 points, as a plot has them.
Polygons curves(int count) {
  Random random(4);
  Polygons all;
  for (int i = 0; i < count; ++i) {
    std::vector<Corner> curve;
    double y = between(random, 200, page_height - 200);
    for (int k = 0; k < 90; ++k) {
      y += between(random, -25, 25);
      curve.push_back({20.0 + k * 21, std::min(std::max(y, 20.0), page_height - 20.0)});
    }
    for (Corner &p : curve)
      p = {std::trunc(p.x), std::trunc(p.y)};
    all.push_back(curve);
  }
  return all;
}

template <class Work>
void add(const char *workload, const Contender &contender, Work work) {
  const std::string name = std::string(workload) + "/" + contender.name;
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
    contender.open();
    for (auto _ : state)
      work(contender);
  });
}

void add_lines(const char *workload, std::vector<Segment> segments, bool smooth) {
  for (const Contender &contender : contenders()) {
    if ((smooth ? contender.smooth_line : contender.line) == nullptr) continue;
    add(workload, contender, [=](const Contender &c) {
      const auto draw = smooth ? c.smooth_line : c.line;
      for (const Segment &s : segments)
        draw(s);
    });
  }
}

// Lines as a program draws them that goes from curve to curve: moves and draws, and now and then
// another colour.
void add_strokes(const char *workload, std::vector<Segment> segments) {
  constexpr size_t strokes_per_colour = 1000;
  for (const Contender &contender : contenders()) {
    const auto draw = contender.stroke != nullptr ? contender.stroke : contender.line;
    if (draw == nullptr) continue;
    add(workload, contender, [=](const Contender &c) {
      for (size_t i = 0; i < segments.size(); ++i) {
        const auto shade = static_cast<uint8_t>(i / strokes_per_colour);
        if (i % strokes_per_colour == 0) c.colour(96, 48, shade);
        draw(segments[i]);
      }
    });
  }
}

void add_wide_lines(const char *workload, Join join) {
  const Polygons all = curves(20);
  for (const Contender &contender : contenders()) {
    if (contender.wide_line == nullptr) continue;
    add(workload, contender, [=](const Contender &c) {
      for (const auto &curve : all) {
        c.wide_line(curve.data(), static_cast<int>(curve.size()), 5, join);
      }
    });
  }
}

void add_polygons(const char *workload, Polygons all) {
  for (const Contender &contender : contenders()) {
    if (contender.polygon == nullptr) continue;
    add(workload, contender, [=](const Contender &c) {
      for (const auto &polygon : all) {
        c.polygon(polygon.data(), static_cast<int>(polygon.size()));
      }
    });
  }
}

void add_rectangles(const char *workload, int count, double smallest, double largest) {
  Random random(5);
  std::vector<Segment> all;
  for (int i = 0; i < count; ++i) {
    const int w = static_cast<int>(between(random, smallest, largest));
    const int h = static_cast<int>(between(random, smallest, largest));
    all.push_back({static_cast<int>(between(random, 0, page_width - w)),
                   static_cast<int>(between(random, 0, page_height - h)), w, h});
  }
  for (const Contender &contender : contenders()) {
    if (contender.rectangle == nullptr) continue;
    add(workload, contender, [=](const Contender &c) {
      for (const Segment &r : all)
        c.rectangle(r.x0, r.y0, r.x1, r.y1);
    });
  }
}

void add_erase() {
  for (const Contender &contender : contenders()) {
    if (contender.erase == nullptr) continue;
    add("erase", contender, [](const Contender &c) { c.erase(); });
  }
}

const bool registered = [] {
  add_lines("lines 10-30 px", segments_on_page(100000, 10, 30), false);
  add_strokes("1e6 moves and draws of 10-30 px", segments_on_page(1000000, 10, 30));
  add_lines("lines 300-900 px", segments_on_page(10000, 300, 900), false);
  add_lines("lines off the page, clipped", segments_off_page(10000), false);
  add_lines("antialiased lines 10-30 px", segments_on_page(20000, 10, 30), true);
  add_lines("antialiased lines 300-900 px", segments_on_page(2000, 300, 900), true);
  add_wide_lines("width 5, miter joins", Join::miter);
  add_wide_lines("width 5, round joins", Join::round);
  add_polygons("polygons 3 corners, 10-50 px", polygons(10000, 3, 10, 50));
  add_polygons("polygons 5 corners, 10-50 px", polygons(10000, 5, 10, 50));
  add_polygons("polygons 60 corners, 400-800 px", polygons(100, 60, 400, 800));
  add_rectangles("rectangles 5-50 px", 20000, 5, 50);
  add_rectangles("1e5 rectangles 5-200 px", 100000, 5, 200);
  add_rectangles("rectangles 300-900 px", 100, 300, 900);
  add_erase();
  return true;
}();

}  // namespace

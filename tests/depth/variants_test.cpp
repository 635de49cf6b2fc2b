// SPDX-License-Identifier: MIT
//
// The fast forms of spans and of compositing against the plain ones, bit for bit.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "base/processor.h"
#include "depth/composite.h"
#include "depth/depth_line.h"
#include "depth/shade.h"

namespace quorix {

namespace {

using Random = std::mt19937_64;

double between(Random &random, double low, double high) {
  return std::uniform_real_distribution<double>(low, high)(random);
}

int32_t whole(Random &random, int32_t low, int32_t high) {
  return std::uniform_int_distribution<int32_t>(low, high)(random);
}

// ---- Spans

// A small page whose pixels and depths are compared whole.
struct Page {
  int32_t width, height;
  std::vector<uint32_t> pixels;
  std::vector<float> depths;
};

Page random_page(Random &random) {
  Page page = {whole(random, 1, 40), whole(random, 1, 12), {}, {}};
  const auto count = static_cast<size_t>(page.width) * static_cast<size_t>(page.height);
  for (size_t i = 0; i < count; ++i) {
    page.pixels.push_back(static_cast<uint32_t>(random()));
    page.depths.push_back(static_cast<float>(between(random, 0, 1)));
  }
  return page;
}

Target target_of(Page *page, OutputContext *context, bool tested) {
  Target t = {};
  t.context = context;
  t.bitmap.base = reinterpret_cast<uint8_t *>(page->pixels.data());
  t.bitmap.row_bytes = static_cast<size_t>(page->width) * 4;
  t.bitmap.width = page->width;
  t.bitmap.height = page->height;
  t.bitmap.bits = 32;
  t.bitmap.order = PixelOrder::rgba;
  t.page = {0, 0, page->width - 1, page->height - 1};
  t.depth = tested ? page->depths.data() : nullptr;
  t.depth_pitch = page->width;
  return t;
}

// Sometimes a whole number or a half, where roundings meet.
double coordinate(Random &random, int32_t width) {
  const double x = between(random, -0.3 * width - 3, 1.3 * width + 3);
  switch (whole(random, 0, 3)) {
    case 0:
      return std::floor(x);
    case 1:
      return std::floor(x) + 0.5;
    default:
      return x;
  }
}

ShadePoint random_point(Random &random, int32_t width) {
  ShadePoint p = {};
  p.v[shade_x] = coordinate(random, width);
  for (int i = 0; i < span_shades; ++i)
    p.v[i] = between(random, -20, 300);
  p.v[shade_z] = whole(random, 0, 3) == 0 ? 0.5 : between(random, -0.5, 1.5);
  if (whole(random, 0, 60) == 0) p.v[shade_z] = NAN;
  if (whole(random, 0, 60) == 0) p.v[shade_z] = INFINITY;
  return p;
}

ShadeEdges random_edges(Random &random, int32_t width, int32_t rows) {
  ShadeEdges e = {};
  e.on_short = random_point(random, width);
  e.on_long = random_point(random, width);
  if (whole(random, 0, 4) == 0) e.on_long.v[shade_x] = e.on_short.v[shade_x];
  const auto step = [&](const ShadePoint &from) {
    const ShadePoint to = random_point(random, width);
    ShadePoint s = {};
    for (int i = 0; i < edge_shades; ++i)
      s.v[i] = (to.v[i] - from.v[i]) / rows;
    return s;
  };
  e.short_step = step(e.on_short);
  e.long_step = step(e.on_long);
  return e;
}

bool same_bits(const ShadeEdges &a, const ShadeEdges &b) {
  const auto same = [](const ShadePoint &p, const ShadePoint &q) {
    return std::memcmp(p.v, q.v, sizeof(p.v)) == 0;
  };
  return same(a.on_short, b.on_short) && same(a.on_long, b.on_long);
}

[[maybe_unused]] void compare_spans(ShadeRgbaRows fast_rows) {
  Random random(1);
  OutputContext context = {};
  int drawn = 0;
  for (int k = 0; k < 40000; ++k) {
    const Page before = random_page(random);
    Page plain = before;
    Page fast = before;
    const bool tested = k % 3 != 0;
    context.colours.colour_alpha = static_cast<uint8_t>(k);
    const Rect clip = {whole(random, 0, before.width - 1), 0, whole(random, 0, before.width - 1),
                       before.height - 1};
    Target plain_target = target_of(&plain, &context, tested);
    Target fast_target = target_of(&fast, &context, tested);
    plain_target.clip = plain_target.box = clip;
    fast_target.clip = fast_target.box = clip;
    ShadeEdges plain_edges = random_edges(random, before.width, before.height);
    ShadeEdges fast_edges = plain_edges;
    shade_rows_plain(plain_target, &plain_edges, 0, before.height - 1);
    fast_rows(rgba_rows(fast_target), &fast_edges, 0, before.height - 1);
    ASSERT_EQ(plain.pixels, fast.pixels) << "case " << k;
    ASSERT_EQ(std::memcmp(plain.depths.data(), fast.depths.data(), 4 * plain.depths.size()), 0)
        << "case " << k;
    ASSERT_TRUE(same_bits(plain_edges, fast_edges)) << "case " << k;
    if (plain.pixels != before.pixels) ++drawn;
  }
  EXPECT_GT(drawn, 10000);
}

#if QUORIX_X86_64
TEST(ShadedSpans, AreTheSameFourAtATimeWithSse2) {
  compare_spans(shade_rows_sse2);
}

TEST(ShadedSpans, AreTheSameFourAtATimeWithAvx2) {
  if (!processor().avx2) GTEST_SKIP() << "no AVX2 here";
  compare_spans(shade_rows_avx2);
}
#endif

// ---- Lines

#if QUORIX_X86_64
TEST(DepthLines, AreTheSameWithoutBranches) {
  Random random(3);
  OutputContext context = {};
  int drawn = 0;
  for (int k = 0; k < 60000; ++k) {
    const Page before = random_page(random);
    Page plain = before;
    Page fast = before;
    context.depth.depth_bias = k % 2 == 0 ? 0.001F : 1e-5F;
    Target plain_target = target_of(&plain, &context, true);
    Target fast_target = target_of(&fast, &context, true);
    plain_target.clip = plain_target.box = plain_target.page;
    fast_target.clip = fast_target.box = fast_target.page;
    const bool x_major = k % 4 < 2;
    const int32_t length = x_major ? before.width : before.height;
    const int32_t breadth = x_major ? before.height : before.width;
    const double from[3] = {between(random, -1, length), coordinate(random, breadth),
                            between(random, 0, 1)};
    const double to[3] = {between(random, -1, length), coordinate(random, breadth),
                          between(random, 0, 1)};
    const LineWalk w = walk_line(x_major, from, to);
    if (w.first == w.last || !run_rgba_line_sse2(fast_target, 0xFF123456U, w)) continue;
    run_rgba_line_plain(plain_target, 0xFF123456U, w);
    ASSERT_EQ(plain.pixels, fast.pixels) << "case " << k;
    ASSERT_EQ(std::memcmp(plain.depths.data(), fast.depths.data(), 4 * plain.depths.size()), 0)
        << "case " << k;
    if (plain.pixels != before.pixels) ++drawn;
  }
  EXPECT_GT(drawn, 3000);
}
#endif

// ---- Compositing

void compare_compositing(CompositeRow fast_row) {
  Random random(2);
  int blended = 0;
  for (int k = 0; k < 40000; ++k) {
    const CompositeRule rule = {static_cast<uint8_t>(k % 2 == 0 ? 255 : 0), k % 3 == 0};
    const auto count = static_cast<size_t>(whole(random, 0, 40));
    std::vector<uint8_t> to(4 * count + 1, 77);
    std::vector<uint8_t> layer(4 * count + 1, 99);
    for (size_t i = 0; i < count; ++i) {
      const auto d = static_cast<uint32_t>(random());
      auto s = static_cast<uint32_t>(random());
      const uint32_t picture = whole(random, 0, 2) == 0 ? rule.background * 0x010101U : d;
      if (k % 5 == 0 || whole(random, 0, 3) == 0) s &= 0x00FFFFFFU;
      if (whole(random, 0, 5) == 0) s |= 0xFF000000U;
      std::memcpy(&to[4 * i], &picture, 4);
      std::memcpy(&layer[4 * i], &s, 4);
    }
    auto fast_to = to;
    auto fast_layer = layer;
    const auto before = to;
    composite_row_rgba(to.data(), layer.data(), count, rule);
    fast_row(fast_to.data(), fast_layer.data(), count, rule);
    ASSERT_EQ(to, fast_to) << "case " << k;
    ASSERT_EQ(layer, fast_layer) << "case " << k;
    if (to != before) ++blended;
  }
  EXPECT_GT(blended, 10000);
}

#if QUORIX_X86_64
TEST(Compositing, IsTheSameFourAtATimeWithSse2) {
  compare_compositing(composite_row_sse2);
}

TEST(Compositing, IsTheSameEightAtATimeWithAvx2) {
  if (!processor().avx2) GTEST_SKIP() << "no AVX2 here";
  compare_compositing(composite_row_avx2);
}
#endif

// The form for this processor, whichever it is.
TEST(Compositing, IsTheSameInTheFormThatIsChosen) {
  compare_compositing(composite_row());
}

// All pairs of channels and all alphas, which the arithmetic of 16 bits has to survive.
TEST(Compositing, IsTheSameForEveryAlphaAndEveryPairOfChannels) {
  std::vector<uint8_t> to(4 * 256);
  std::vector<uint8_t> layer(4 * 256);
  for (int32_t alpha = 0; alpha < 256; ++alpha) {
    for (int32_t d = 0; d < 256; ++d) {
      for (size_t s = 0; s < 256; ++s) {
        std::memset(&to[4 * s], d, 4);
        std::memset(&layer[4 * s], static_cast<int>(s), 3);
        layer[4 * s + 3] = static_cast<uint8_t>(alpha);
      }
      auto fast_to = to;
      auto fast_layer = layer;
      composite_row_rgba(to.data(), layer.data(), 256, {0, false});
      composite_row()(fast_to.data(), fast_layer.data(), 256, {0, false});
      ASSERT_EQ(to, fast_to) << "alpha " << alpha << " on " << d;
      ASSERT_EQ(layer, fast_layer);
    }
  }
}

}  // namespace

}  // namespace quorix

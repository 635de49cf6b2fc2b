// SPDX-License-Identifier: MIT
// Colour arguments, the palette, the nearest colour, and what the raster's mode makes of them.

#include <climits>
#include <cmath>
#include <limits>

#include "base/sort3.h"
#include "tests/raster/raster_page.h"

namespace quorix::testing {
namespace {

using Colours = RasterTest;
using Palette = RasterTest;
using NearestColour = RasterTest;
using TransparentColour = RasterTest;
using RasterMode = RasterTest;

// ---- Colour arguments

TEST_F(Colours, APackedColourHasRedInItsLowByte) {
  open_rgba_page(2, 1);
  qqvclr(0x01332211);
  EXPECT_EQ(output_context->colours.colour_r, 0x11);
  EXPECT_EQ(output_context->colours.colour_g, 0x22);
  EXPECT_EQ(output_context->colours.colour_b, 0x33);
  EXPECT_EQ(output_context->colours.colour_arg, 0x01332211);
}

TEST_F(Colours, AnIndexTakesItsThreeTableEntries) {
  open_page(2, 1);
  qqvclr(5);
  EXPECT_EQ(output_context->colours.colour_index, 5);
  EXPECT_EQ(output_context->colours.colour_r, 255);
  EXPECT_EQ(output_context->colours.colour_g, 255);
  EXPECT_EQ(output_context->colours.colour_b, 0);
}

TEST_F(Colours, AnyOtherNumberIsAnIndexByItsLowEightBits) {
  open_page(2, 1);
  const struct {
    int32_t argument;
    uint8_t index;
  } cases[] = {{255, 255},  {256, 0},          {300, 44},       {-1, 255},        {-256, 0},
               {-257, 255}, {0x00FFFFFF, 255}, {0x02000005, 5}, {INT32_MAX, 255}, {INT32_MIN, 0}};
  for (const auto &c : cases) {
    qqvclr(c.argument);
    EXPECT_EQ(output_context->colours.colour_index, c.index) << c.argument;
    EXPECT_EQ(output_context->colours.colour_arg, c.argument);
  }
}

TEST_F(Colours, APackedColourOnAPalettePageIsRoundedToTheTable) {
  open_page(2, 1);
  qqvclr(packed_rgb(250, 10, 10));  // 25 from red, further from all greys
  EXPECT_EQ(output_context->colours.colour_index, 2);
  EXPECT_EQ(output_context->colours.colour_r, 255);
  EXPECT_EQ(output_context->colours.colour_g, 0);
  EXPECT_EQ(output_context->colours.colour_b, 0);
}

TEST_F(Colours, APackedColourOnAnRgbaPageStaysAndLeavesTheIndex) {
  open_rgba_page(2, 1);
  qqvclr(4);
  qqvclr(packed_rgb(250, 10, 10));
  EXPECT_EQ(output_context->colours.colour_index, 4);
  EXPECT_EQ(output_context->colours.colour_r, 250);
  EXPECT_EQ(output_context->colours.colour_g, 10);
  EXPECT_EQ(output_context->colours.colour_b, 10);
}

TEST_F(Colours, SettingOneDrawsGatheredLinesInTheOldOne) {
  open_page(4, 1);
  qqvlin(0, 0, 2, 0);
  qqvclr(2);
  EXPECT_EQ(picture_without_flush(), rows({"111."}));
}

TEST_F(Colours, ResolveToTheirThreeBytes) {
  open_page(1, 1);
  uint8_t r = 0;
  uint8_t g = 0;
  uint8_t b = 0;
  colour_to_rgb(output_context, 0x01030201, &r, &g, &b);
  EXPECT_EQ(r, 1);
  EXPECT_EQ(g, 2);
  EXPECT_EQ(b, 3);
  colour_to_rgb(output_context, 200, &r, &g, &b);
  EXPECT_EQ(r, 200);
  colour_to_rgb(output_context, -1, &r, &g, &b);
  EXPECT_EQ(r, 255);
  EXPECT_EQ(g, 255);
  EXPECT_EQ(b, 255);
  colour_to_rgb(output_context, 256 + 4, &r, &g, &b);
  EXPECT_EQ(r, 0);
  EXPECT_EQ(g, 0);
  EXPECT_EQ(b, 255);
}

// ---- The palette

TEST_F(Palette, WordsHaveRedInTheirHighByte) {
  open_page(1, 1);
  std::vector<uint32_t> table(256, 0);
  table[7] = 0xFF112233;
  EXPECT_EQ(qqvvlt(1, table.data()), 0);
  EXPECT_EQ(output_context->colours.palette_r[7], 0x11);
  EXPECT_EQ(output_context->colours.palette_g[7], 0x22);
  EXPECT_EQ(output_context->colours.palette_b[7], 0x33);
}

// The tables are no longer than what may be read of them.
TEST_F(Palette, HasNineEntriesForKindZeroSixteenForKindSevenElseAll) {
  const struct {
    uint8_t kind;
    size_t count;
  } cases[] = {{0, 9}, {7, 16}, {1, 256}, {8, 256}, {255, 256}};
  for (const auto &c : cases) {
    open_page(1, 1);
    const std::vector<uint32_t> table(c.count, 0x0A0B0C);
    qqvvlt(c.kind, table.data());
    EXPECT_EQ(output_context->colours.palette_kind, c.kind);
    EXPECT_EQ(output_context->colours.palette_r[c.count - 1], 0x0A);
    EXPECT_EQ(output_context->colours.palette_b[c.count - 1], 0x0C);
    if (c.count < 256) {
      EXPECT_EQ(output_context->colours.palette_r[c.count], c.count);  // as before
    }
  }
}

TEST_F(Palette, LoadingItLeavesTheCurrentColour) {
  open_page(1, 1);
  qqvclr(2);
  const std::vector<uint32_t> table(256, 0x010101);
  qqvvlt(1, table.data());
  EXPECT_EQ(output_context->colours.colour_index, 2);
  EXPECT_EQ(output_context->colours.colour_r, 255);
}

TEST_F(Palette, LoadingItWithoutARecordDoesNothing) {
  const std::vector<uint32_t> table(256, 0x010101);
  EXPECT_EQ(qqvvlt(1, table.data()), 0);
  EXPECT_EQ(output_context, nullptr);
}

// ---- The nearest colour

// All entries far from everything asked for, but those given.
void load_palette(uint8_t kind, const std::vector<std::pair<size_t, uint32_t>> &entries) {
  std::vector<uint32_t> table(256, 0xF0F0F0);
  for (const auto &entry : entries)
    table[entry.first] = entry.second;
  qqvvlt(kind, table.data());
}

int32_t nearest(uint8_t r, uint8_t g, uint8_t b) {
  return nearest_colour(output_context, r, g, b);
}

TEST_F(NearestColour, TakesTheHighestOfEqualsWithoutBlueAndTheLowestWithBlue) {
  open_page(1, 1);
  load_palette(1, {{3, 0x0C0A00}, {7, 0x0C0A00}});
  EXPECT_EQ(nearest(10, 10, 0), 7);
  EXPECT_EQ(nearest(10, 10, 1), 3);
}

TEST_F(NearestColour, TakesTheFirstExactHitInItsDirection) {
  open_page(1, 1);
  load_palette(1, {{3, 0x0A0A00}, {7, 0x0A0A00}, {4, 0x0A0A01}, {8, 0x0A0A01}});
  EXPECT_EQ(nearest(10, 10, 0), 7);
  EXPECT_EQ(nearest(10, 10, 1), 4);
}

TEST_F(NearestColour, MeasuresTheSumOfTheThreeDifferences) {
  open_page(1, 1);
  // From (100, 100, 100): 30 + 0 + 0 = 30 against 11 + 11 + 11 = 33.
  load_palette(1, {{20, 0x826464}, {10, 0x6F6F6F}});
  EXPECT_EQ(nearest(100, 100, 100), 20);
}

TEST_F(NearestColour, PrefersAnEntryOfExactBlackAtEitherEnd) {
  open_page(1, 1);
  load_palette(1, {{0, 0x000000}, {5, 0x000000}, {255, 0x000000}});
  EXPECT_EQ(nearest(0, 0, 0), 0);
  load_palette(1, {{5, 0x000000}, {255, 0x000000}});
  EXPECT_EQ(nearest(0, 0, 0), 255);
  load_palette(1, {{5, 0x000000}, {9, 0x000000}});
  EXPECT_EQ(nearest(0, 0, 0), 9);
}

TEST_F(NearestColour, PrefersAnEntryOfExactWhiteAtEitherEnd) {
  open_page(1, 1);
  load_palette(1, {{0, 0xFFFFFF}, {5, 0xFFFFFF}, {255, 0xFFFFFF}});
  EXPECT_EQ(nearest(255, 255, 255), 0);
  load_palette(1, {{5, 0xFFFFFF}, {255, 0xFFFFFF}});
  EXPECT_EQ(nearest(255, 255, 255), 255);
  load_palette(1, {{5, 0xFFFFFF}, {9, 0xFFFFFF}});
  EXPECT_EQ(nearest(255, 255, 255), 5);
}

TEST_F(NearestColour, LooksAtTheEntriesOfTheKindAlone) {
  open_page(1, 1);
  load_palette(1, {{8, 0x505050}, {9, 0x404040}, {15, 0x303030}, {16, 0x202020}});
  output_context->colours.palette_kind = 0;
  palette_changed(output_context);
  EXPECT_EQ(nearest(0x20, 0x20, 0x20), 8);
  output_context->colours.palette_kind = 7;
  palette_changed(output_context);
  EXPECT_EQ(nearest(0x20, 0x20, 0x20), 15);
  output_context->colours.palette_kind = 2;
  palette_changed(output_context);
  EXPECT_EQ(nearest(0x20, 0x20, 0x20), 16);
}

TEST_F(NearestColour, TakesTheLastEntryOfItsKindForBlackAndWhite) {
  open_page(1, 1);
  load_palette(0, {{8, 0x000000}, {4, 0x000000}});
  EXPECT_EQ(nearest(0, 0, 0), 8);
  load_palette(7, {{15, 0xFFFFFF}, {4, 0xFFFFFF}});
  EXPECT_EQ(nearest(255, 255, 255), 15);
}

TEST_F(NearestColour, FollowsEveryNewPalette) {
  open_page(2, 1);
  load_palette(1, {{30, 0x102030}});
  qqvwpx(0, 0, packed_rgb(0x10, 0x20, 0x30));
  load_palette(1, {{31, 0x102030}});
  qqvwpx(1, 0, packed_rgb(0x10, 0x20, 0x30));
  EXPECT_EQ(picture(), rows({"uv"}));
}

// ---- The transparent colour

TEST_F(TransparentColour, NoneIsMinusOne) {
  open_page(1, 1);
  set_option(32, 2);
  set_option(32, -1);
  EXPECT_EQ(output_context->colours.transparent_colour, -1);
  EXPECT_EQ(output_context->colours.transparent_r, 255);  // of the red before
}

TEST_F(TransparentColour, AnIndexTakesItsTableEntriesAndStays) {
  open_page(1, 1);
  set_option(32, 2);
  EXPECT_EQ(output_context->colours.transparent_colour, 2);
  EXPECT_EQ(output_context->colours.transparent_r, 255);
  EXPECT_EQ(output_context->colours.transparent_g, 0);
  EXPECT_EQ(output_context->colours.transparent_b, 0);
}

TEST_F(TransparentColour, AnIndexAbove255TakesTheEntriesOfItsLowEightBits) {
  open_page(1, 1);
  set_option(32, 256 + 3);
  EXPECT_EQ(output_context->colours.transparent_colour, 259);
  EXPECT_EQ(output_context->colours.transparent_r, 0);
  EXPECT_EQ(output_context->colours.transparent_g, 255);
  EXPECT_EQ(output_context->colours.transparent_b, 0);
}

TEST_F(TransparentColour, APackedColourKeepsItsBytesAndBecomesTheNearestIndex) {
  open_page(1, 1);
  set_option(32, packed_rgb(250, 10, 10));
  EXPECT_EQ(output_context->colours.transparent_colour, 2);
  EXPECT_EQ(output_context->colours.transparent_r, 250);
  EXPECT_EQ(output_context->colours.transparent_g, 10);
  EXPECT_EQ(output_context->colours.transparent_b, 10);
}

// ---- What the mode of the raster changes

TEST_F(RasterMode, OfAPaletteWritesTheCurrentIndexWithLinesPolygonsTrianglesAndCircles) {
  open_page(12, 8);
  qqvclr(packed_rgb(250, 10, 10));  // 2
  qqvlin(0, 0, 1, 0);
  qqvsym(15, 3, 0, 1);
  fill_polygon_of({5, 7, 7, 5}, {-1, -1, 0, 0});
  const int32_t xs[] = {9, 9, 9};
  const int32_t ys[] = {0, 0, 0};
  qqvftr(xs, ys, packed_rgb(0, 0, 255));
  EXPECT_EQ(picture().substr(0, 12), "22.2.222.4..");
}

TEST_F(RasterMode, OfRgbaWritesTheCurrentColourAndAlpha) {
  open_rgba_page(12, 1);
  set_option(19, 77);
  qqvclr(packed_rgb(250, 10, 11));
  qqvlin(0, 0, 1, 0);
  qqvsym(15, 3, 0, 1);
  fill_polygon_of({5, 7, 7, 5}, {-1, -1, 0, 0});
  EXPECT_EQ(rgba_at(0, 0), "fa0a0b4d");
  EXPECT_EQ(rgba_at(3, 0), "fa0a0b4d");
  EXPECT_EQ(rgba_at(6, 0), "fa0a0b4d");
  const int32_t xs[] = {9, 9, 9};
  const int32_t ys[] = {0, 0, 0};
  qqvftr(xs, ys, packed_rgb(1, 2, 3));
  EXPECT_EQ(rgba_at(9, 0), "0102034d");
}

TEST_F(RasterMode, OfAPaletteRoundsAPackedColourOfRectanglesAndPixels) {
  open_page(6, 1);
  qqvfll(0, 0, 0, 0, packed_rgb(250, 10, 10));
  qqvpix(1, 0, packed_rgb(10, 250, 10));
  qqvwpx(2, 0, packed_rgb(10, 10, 250));
  qqvfll(3, 0, 3, 0, 5);
  qqvpix(4, 0, 6);
  qqvwpx(5, 0, 7);
  EXPECT_EQ(picture(), rows({"234567"}));
}

TEST_F(RasterMode, OfRgbaKeepsAPackedColourOfRectanglesAndPixels) {
  open_rgba_page(6, 1);
  set_option(19, 16);
  qqvfll(0, 0, 0, 0, packed_rgb(250, 10, 11));
  qqvpix(1, 0, packed_rgb(250, 10, 12));
  qqvwpx(2, 0, packed_rgb(250, 10, 13));
  qqvfll(3, 0, 3, 0, 2);
  qqvpix(4, 0, 3);
  qqvwpx(5, 0, 4);
  EXPECT_EQ(rgba_at(0, 0), "fa0a0b10");
  EXPECT_EQ(rgba_at(1, 0), "fa0a0c10");
  EXPECT_EQ(rgba_at(2, 0), "fa0a0d10");
  EXPECT_EQ(rgba_at(3, 0), "ff000010");
  EXPECT_EQ(rgba_at(4, 0), "00ff0010");
  EXPECT_EQ(rgba_at(5, 0), "0000ff10");
}

TEST_F(RasterMode, OfAPaletteNeverAntialiases) {
  open_page(5, 3);
  set_option(34, 2);
  qqvlin(0, 0, 4, 2);
  // Bresenham's line: columns 0 and 1, 2 and 3, then 4.
  EXPECT_EQ(picture(), rows({"11...", "..11.", "....1"}));
}

// ---- Index sort

struct Order {
  int32_t first;
  int32_t second;
  int32_t third;
};

bool operator==(const Order &a, const Order &b) {
  return a.first == b.first && a.second == b.second && a.third == b.third;
}

Order order_of(int32_t a, int32_t b, int32_t c) {
  const int32_t values[] = {a, b, c};
  Order order{-1, -1, -1};
  sort3_int(values, &order.first, &order.second, &order.third);
  return order;
}

Order order_of_doubles(double a, double b, double c) {
  const double values[] = {a, b, c};
  Order order{-1, -1, -1};
  sort3_double(values, &order.first, &order.second, &order.third);
  return order;
}

struct OrderCase {
  int32_t values[3];
  Order order;
};

// Both kinds of every line of the table: with and without equal values.
constexpr OrderCase order_cases[] = {
    {{2, 3, 1}, {2, 0, 1}}, {{1, 2, 1}, {2, 0, 1}}, {{1, 2, 3}, {0, 1, 2}}, {{1, 2, 2}, {0, 1, 2}},
    {{1, 3, 2}, {0, 2, 1}}, {{3, 2, 1}, {2, 1, 0}}, {{2, 2, 2}, {2, 1, 0}}, {{3, 1, 1}, {2, 1, 0}},
    {{2, 1, 3}, {1, 0, 2}}, {{2, 1, 2}, {1, 0, 2}}, {{1, 1, 2}, {1, 0, 2}}, {{3, 1, 2}, {1, 2, 0}}};

TEST(IndexSort, OfThreeIntegersFollowsItsTable) {
  for (const OrderCase &c : order_cases) {
    EXPECT_TRUE(order_of(c.values[0], c.values[1], c.values[2]) == c.order)
        << c.values[0] << " " << c.values[1] << " " << c.values[2];
  }
}

TEST(IndexSort, OfThreeDoublesFollowsTheSameTable) {
  for (const OrderCase &c : order_cases) {
    EXPECT_TRUE(order_of_doubles(c.values[0] / 8.0, c.values[1] / 8.0, c.values[2] / 8.0) ==
                c.order)
        << c.values[0] << " " << c.values[1] << " " << c.values[2];
  }
}

TEST(IndexSort, WithNanStillNamesEachValueOnce) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double values[] = {1.0, 2.0, nan};
  for (const double a : values) {
    for (const double b : values) {
      for (const double c : values) {
        const Order order = order_of_doubles(a, b, c);
        EXPECT_EQ((1 << order.first) | (1 << order.second) | (1 << order.third), 7);
      }
    }
  }
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
// Colours, lines, areas, polygons and markers, call by call on a canvas and in OpenGL.

#include "quorix/quorix.h"
#include "tests/support/failing_memory.h"
#include "tests/window/recording_system.h"

namespace quorix::testing {
namespace {

// Entry i is (i, 255 - i, 7).
void load_palette(uint8_t kind) {
  int32_t table[256];
  for (int32_t i = 0; i < 256; ++i)
    table[i] = i << 16 | (255 - i) << 8 | 7;
  qqwvlt(kind, table);
}

class Drawing : public RecordedWindow {
 protected:
  Drawing() { start({}); }
  static void start(const WindowWish &wish) {
    open_recorded(wish);
    load_palette(1);
    forget();
  }
};

class DrawingByGl : public RecordedWindow {
 protected:
  DrawingByGl() {
    open_recorded({.device = 81});
    load_palette(1);
    forget();
  }
};

// ---- Colours

TEST_F(Drawing, APackedColourIsBlueInItsHighByte) {
  qqwclr(0x1FF0000);
  EXPECT_EQ(taken(), (Calls{"text colour ff0000", "pen 0 1 ff0000"}));
  EXPECT_EQ(output_context->colours.colour_b, 255);
}

TEST_F(Drawing, AnIndexIsAnEntryOfThePalette) {
  qqwclr(0x0000FF);
  EXPECT_EQ(taken(), (Calls{"text colour 700ff", "pen 0 1 700ff"}));
  qqwclr(-1);  // the low 8 bits
  EXPECT_EQ(taken(), Calls{});
  qqwclr(0x102);
  EXPECT_EQ(taken(), (Calls{"text colour 7fd02", "pen 0 1 7fd02"}));
}

TEST_F(Drawing, TheSameColourNeedsNoNewPen) {
  qqwclr(3);
  forget();
  qqwclr(3);
  qqwclr(0x1000000 | 7 << 16 | 252 << 8 | 3);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(Drawing, WithoutPaletteModeTheColourStays) {
  current_window_set()->palette_mode = palette_none;
  qqwclr(5);
  EXPECT_EQ(output_context->colours.colour_arg, 5);
  EXPECT_EQ(current_window_set()->colorref, 0xFFFFFFU);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(Drawing, IndicesShareTheEntriesOfSmallDisplays) {
  struct Case {
    int32_t bits;
    uint8_t colour_mode, kind;
    int32_t index, entry;
  };
  const Case cases[] = {
      {8, 0, 0, 0, 0},     {8, 0, 0, 1, 1},   {8, 0, 0, 8, 8},     {8, 0, 0, 9, 1},
      {8, 0, 0, 16, 8},    {8, 0, 0, 255, 7}, {8, 0, 7, 15, 15},   {8, 0, 7, 16, 0},
      {8, 0, 1, 0, 0},     {8, 0, 1, 1, 1},   {8, 0, 1, 2, 1},     {8, 0, 1, 255, 128},
      {8, 2, 1, 127, 127}, {8, 2, 1, 128, 0}, {8, 1, 1, 200, 200}, {8, 0, 1, -1, 128},
      {4, 1, 1, 17, 1},    {4, 0, 1, 0, 0},   {4, 0, 1, 255, 15},  {4, 0, 1, 1, 1},
      {4, 0, 1, 254, 14},  {4, 0, 1, 100, 6}, {4, 0, 0, 8, 8},     {4, 2, 7, 31, 15}};
  for (const Case &c : cases) {
    SCOPED_TRACE(std::to_string(c.bits) + " " + std::to_string(c.index));
    qqwfree();
    recording.screen.bits = c.bits;
    open_recorded({.colour_mode = c.colour_mode});
    load_palette(c.kind);
    qqwclr(c.index);
    EXPECT_EQ(current_window_set()->colorref, 0x1000000U + static_cast<uint32_t>(c.entry));
    EXPECT_EQ(output_context->colours.window_colour_index, c.entry);
  }
}

TEST_F(Drawing, ThePaletteOfADisplayInvertsTheSharing) {
  struct Case {
    int32_t bits;
    uint8_t colour_mode, kind;
    int32_t entry, index, count, last;
  };
  const Case cases[] = {
      {8, 0, 1, 0, 0, 129, 255},   {8, 0, 1, 1, 1, 129, 255},   {8, 0, 1, 64, 127, 129, 255},
      {8, 1, 1, 77, 77, 129, 128}, {8, 2, 1, 5, 5, 129, 128},   {8, 0, 0, 8, 8, 9, 8},
      {8, 0, 7, 15, 15, 16, 15},   {4, 0, 1, 0, 0, 16, 255},    {4, 0, 1, 1, 1, 16, 255},
      {4, 0, 1, 7, 118, 16, 255},  {4, 0, 1, 14, 254, 16, 255}, {4, 1, 1, 9, 9, 16, 15}};
  for (const Case &c : cases) {
    SCOPED_TRACE(std::to_string(c.bits) + " " + std::to_string(c.entry));
    qqwfree();
    recording.screen.bits = c.bits;
    open_recorded({.colour_mode = c.colour_mode});
    forget();
    load_palette(c.kind);
    EXPECT_EQ(current_window_set()->palette_entries[c.entry].r, c.index);
    EXPECT_EQ(taken(),
              Calls{"palette(" + std::to_string(c.count) + ", " + std::to_string(c.last) + ")"});
  }
}

// ---- Lines

TEST_F(Drawing, ARepeatedPointDoesNotGrowTheLine) {
  qqwdrw(1, 1, 3);
  qqwdrw(2, 2, 2);
  qqwdrw(2, 2, 2);
  EXPECT_EQ(current_window_set()->line_count, 2);
  qqwdrw(5, 5, 2);
  qqwdrw(0, 0, 999);
  EXPECT_EQ(taken(), (Calls{"polyline 1,1 2,2 5,5", "pixel 5,5 ffffff"}));
  qqwdrw(7, 7, 2);  // from where the pen stayed
  qqwdrw(0, 0, 3);
  EXPECT_EQ(taken(), (Calls{"polyline 5,5 7,7", "pixel 7,7 ffffff"}));
}

TEST_F(Drawing, TheHundredthPointIsDrawnAtOnce) {
  qqwdrw(0, 0, 3);
  for (int32_t i = 1; i < 99; ++i)
    qqwdrw(i, 0, 2);
  EXPECT_EQ(taken(), Calls{});
  qqwdrw(99, 0, 2);
  EXPECT_EQ(taken().size(), 2U);
  EXPECT_EQ(current_window_set()->line_count, 1);
  qqwdrw(99, 5, 2);
  qqwdrw(0, 0, 3);
  EXPECT_EQ(taken()[0], "polyline 99,0 99,5");
}

TEST_F(Drawing, ADotHasTheShapeOfTheCap) {
  struct Case {
    int32_t width, cap;
    const char *call;
  };
  const Case cases[] = {{1, 2, "pixel 3,4 ffffff"},
                        {5, 0, "pixel 3,4 ffffff"},
                        {5, 1, "ellipse 3 4 4 5 ffffff"},
                        {5, 2, "fill 1 2 6 7 ffffff"},
                        {4, 7, "fill 1 2 5 6 ffffff"}};
  for (const Case &c : cases) {
    option(26, c.width);
    option(27, c.cap);
    forget();
    qqwdrw(3, 4, 3);
    qqwdrw(3, 4, 2);
    qqwdrw(9, 9, 3);
    EXPECT_EQ(taken(), Calls{c.call});
  }
}

TEST_F(Drawing, AMoveAloneDrawsNothing) {
  qqwdrw(3, 4, 3);
  qqwdrw(5, 6, 3);
  qqwdrw(0, 0, 999);
  qqwclr(0x1FFFFFF);
  EXPECT_EQ(taken(), Calls{});
}

// ---- Areas

TEST_F(Drawing, AnEmptyRectangleLeavesTheColour) {
  qqwfll(1, 1, 0, 5, 3);
  qqwfll(1, 1, 5, -1, 3);
  EXPECT_EQ(taken(), Calls{});
  EXPECT_EQ(output_context->colours.colour_arg, 0);
}

TEST_F(Drawing, ARectangleHasWidthAndHeightAndSetsTheColour) {
  qqwfll(1, 2, 3, 4, 0x10000FF);
  EXPECT_EQ(taken(), (Calls{"text colour ff", "pen 0 1 ff", "fill 1 2 4 6 ff"}));
  qqwpix(8, 9, 0x10000FF);
  EXPECT_EQ(taken(), Calls{"pixel 8,9 ff"});
}

TEST_F(Drawing, ClearingLeavesColourZeroCurrent) {
  qqwers();
  EXPECT_EQ(taken(), (Calls{"text colour 7ff00", "pen 0 1 7ff00", "fill 0 0 200 150 7ff00"}));
}

TEST_F(Drawing, FlatTrianglesAreLines) {
  const int32_t rising[3] = {5, 1, 3};
  const int32_t level[3] = {2, 2, 2};
  qqwclr(0x10000FF);
  forget();
  qqwftr(rising, level, 0x10000FF);
  qqwftr(level, rising, 0x10000FF);
  const int32_t x[3] = {0, 4, 2};
  qqwftr(x, rising, 0x10000FF);
  EXPECT_EQ(taken(), (Calls{"polyline 1,2 6,2", "polyline 2,1 2,6", "polygon ff: 0,5 4,1 2,3"}));
}

TEST_F(Drawing, PolygonsKeepWhatWasAnnounced) {
  qqwpol(3, 0, 1);
  for (int32_t i = 1; i <= 4; ++i)
    qqwpol(i, 10 * i, 2);
  qqwpol(0, 0, 9);
  EXPECT_EQ(taken(), Calls{"polygon ffffff: 1,10 2,20 3,30"});
  for (const int32_t count : {0, -5}) {
    qqwpol(count, 0, 1);
    qqwpol(1, 1, 2);
    qqwpol(0, 0, 9);
  }
  qqwpol(0, 0, 9);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(Drawing, APolygonAtOnceIsRounded) {
  const double x[3] = {0.5, -0.5, -1.5};
  const double y[3] = {1.49, 1.5, 2e10};
  const int32_t n = 3;
  int32_t status = -1;
  qqwpol2(x, y, &n, &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(taken(), Calls{"polygon ffffff: 1,1 0,2 -1,2147483647"});
  const FailingMemory memory(1);
  qqwpol2(x, y, &n, &status);
  EXPECT_EQ(status, 1);
}

// ---- Markers of half size 4 around (10, 20)

const Calls plus = {"polyline 6,20 14,20", "polyline 10,16 10,24"};
const Calls cross = {"polyline 6,16 14,24", "polyline 6,24 14,16"};
const Calls square = {"polyline 6,16 14,16 14,24 6,24 6,16"};
const Calls octagon = {"polyline 8,16 12,16 14,18 14,22 12,24 8,24 6,22 6,18 8,16"};
const Calls up = {"polyline 10,16 14,24 6,24 10,16"};
const Calls down = {"polyline 10,24 6,16 14,16 10,24"};
const Calls diamond = {"polyline 10,16 14,20 10,24 6,20 10,16"};

Calls both(Calls first, const Calls &second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

Calls filled(const Calls &shape) {
  return {shape[0], "polygon ffffff:" + shape[0].substr(8)};
}

TEST_F(Drawing, EveryMarkerHasItsShapes) {
  const Calls expected[24] = {square,
                              octagon,
                              up,
                              plus,
                              cross,
                              diamond,
                              down,
                              both(cross, square),
                              both(plus, cross),
                              both(plus, diamond),
                              both(plus, octagon),
                              both(up, down),
                              both(plus, square),
                              both(cross, octagon),
                              both(square, up),
                              {"arc 6 16 14 24 from 14,20 to 14,20"},
                              filled(square),
                              filled(octagon),
                              filled(up),
                              filled(diamond),
                              filled(down),
                              {"ellipse 6 16 14 24 ffffff"},
                              {"arc 6 16 14 24 from 14,20 to 6,20", "polyline 6,20 14,20"},
                              {"chord 6 16 14 24 from 14,20 to 6,20 ffffff"}};
  for (int32_t symbol = 0; symbol < 24; ++symbol) {
    qqwsym(symbol, 10, 20, 8);
    EXPECT_EQ(taken(), expected[symbol]) << symbol;
  }
  for (const int32_t symbol : {-1, 24, 31, 32, INT32_MAX, INT32_MIN})
    qqwsym(symbol, 10, 20, 8);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(Drawing, AMarkerIsAtLeastOneToEachSide) {
  for (const int32_t size : {1, 0, -8, 2, 3}) {
    qqwsym(3, 10, 20, size);
    EXPECT_EQ(taken(), (Calls{"polyline 9,20 11,20", "polyline 10,19 10,21"})) << size;
  }
}

// ---- OpenGL, on a page of 150 rows

TEST_F(DrawingByGl, ColoursAreSharesOfOne) {
  qqwclr(0x1FF0000);
  qqwclr(255);
  EXPECT_EQ(taken(), (Calls{"glColor3f(0, 0, 1)", "glColor3f(1, 0, 0.027451)"}));
}

TEST_F(DrawingByGl, ARectangleIsAQuadTurnedUpsideDown) {
  qqwfll(1, 2, 3, 4, 0x10000FF);
  EXPECT_EQ(taken(),
            (Calls{"glColor3f(1, 0, 0)", "glBegin(7)", "glVertex2i(1, 147)", "glVertex2i(3, 147)",
                   "glVertex2i(3, 144)", "glVertex2i(1, 144)", "glEnd()"}));
  qqwpix(5, 6, 0x10000FF);
  EXPECT_EQ(taken(), (Calls{"glColor3f(1, 0, 0)", "glBegin(0)", "glVertex2i(5, 143)", "glEnd()"}));
  qqwers();
  EXPECT_EQ(taken(), Calls{"glClear(16384)"});
}

TEST_F(DrawingByGl, LinesOfThePenAreDrawnElsewhere) {
  qqwdrw(1, 1, 3);
  qqwdrw(9, 9, 2);
  qqwdrw(0, 0, 999);
  EXPECT_EQ(taken(), Calls{});
  EXPECT_EQ(current_window_set()->line_count, 0);
}

TEST_F(DrawingByGl, MarkersAreStripsAndRoundOnesNothing) {
  qqwsym(18, 10, 20, 8);
  EXPECT_EQ(taken(),
            (Calls{"glBegin(3)", "glVertex2i(10, 133)", "glVertex2i(14, 125)", "glVertex2i(6, 125)",
                   "glVertex2i(10, 133)", "glEnd()", "glBegin(9)", "glVertex2i(10, 133)",
                   "glVertex2i(14, 125)", "glVertex2i(6, 125)", "glVertex2i(10, 133)", "glEnd()"}));
  for (const int32_t symbol : {15, 21, 22, 23})
    qqwsym(symbol, 10, 20, 8);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(DrawingByGl, TrianglesAndQuadrilateralsAreItsOwn) {
  const double x[4] = {0, 4.5, 4, 0};
  const double y[4] = {0, 0, 3.5, 3};
  int32_t n = 3;
  int32_t status = -1;
  qqwpol2(x, y, &n, &status);
  EXPECT_EQ(taken(), (Calls{"glBegin(4)", "glVertex2i(0, 149)", "glVertex2i(5, 149)",
                            "glVertex2i(4, 146)", "glEnd()"}));
  n = 4;
  qqwpol2(x, y, &n, &status);
  EXPECT_EQ(taken()[0], "glBegin(7)");
  EXPECT_EQ(status, 0);
}

class GlRows : public DrawingByGl {
 protected:
  GlRows() {
    qqwclr(0x10000FF);
    forget();
  }
  // A rectangle of five corners, rows 0 to 3.
  static int32_t fill(double left, double right) {
    const double x[5] = {left, right, right, (left + right) / 2, left};
    const double y[5] = {0, 0, 3, 3, 3};
    const int32_t n = 5;
    int32_t status = -1;
    qqwpol2(x, y, &n, &status);
    return status;
  }
};

TEST_F(GlRows, AnEdgeCountsItsLowerEndAndNotItsUpperOne) {
  EXPECT_EQ(fill(2, 3), 0);
  const std::string two = "255 0 0 255 255 0 0 255";
  EXPECT_EQ(taken(), (Calls{"glRasterPos2i(2, 149)", "glDrawPixels(2, 1, 6408, 5121)", two,
                            "glRasterPos2i(2, 148)", "glDrawPixels(2, 1, 6408, 5121)", two,
                            "glRasterPos2i(2, 147)", "glDrawPixels(2, 1, 6408, 5121)", two}));
}

TEST_F(GlRows, AreCutToTheClipRectangle) {
  option(11, 3);
  option(12, 1);
  option(13, 5);
  option(14, 1);
  EXPECT_EQ(fill(0, 100), 0);
  EXPECT_EQ(taken(), (Calls{"glRasterPos2i(3, 148)", "glDrawPixels(3, 1, 6408, 5121)",
                            "255 0 0 255 255 0 0 255 255 0 0 255"}));
  option(12, 50);
  option(14, 60);
  EXPECT_EQ(fill(0, 100), 0);
  EXPECT_EQ(taken(), Calls{});
}

TEST_F(GlRows, APairBesideTheClipRectangleEndsTheRow) {
  // Two towers on a base that lies below the clip rectangle: columns 0 to 2 and 10 to 12.
  const double x[8] = {0, 2, 2, 10, 10, 12, 12, 0};
  const double y[8] = {0, 0, 5, 5, 0, 0, 9, 9};
  const int32_t n = 8;
  int32_t status = -1;
  option(12, 1);
  option(14, 1);
  qqwpol2(x, y, &n, &status);
  EXPECT_EQ(taken().size(), 6U);  // both towers
  option(11, 5);
  qqwpol2(x, y, &n, &status);
  EXPECT_EQ(taken(), Calls{});  // the first one lies beside, so the second is not looked at
}

TEST_F(GlRows, MoreThan99CrossingsOfARowAreStatus1) {
  // Teeth: each two corners cross row 1 once up and once down.
  std::vector<double> x;
  std::vector<double> y;
  for (int32_t i = 0; i < 50; ++i) {
    x.insert(x.end(), {4.0 * i, 4.0 * i + 1, 4.0 * i + 1, 4.0 * i + 3});
    y.insert(y.end(), {0, 0, 2, 2});
  }
  int32_t n = 4 * 49;  // 98 crossings
  int32_t status = -1;
  qqwpol2(x.data(), y.data(), &n, &status);
  EXPECT_EQ(status, 0);
  n = 4 * 50;
  qqwpol2(x.data(), y.data(), &n, &status);
  EXPECT_EQ(status, 1);
}

TEST_F(GlRows, WithoutMemoryForTheRowAreStatus1) {
  const FailingMemory memory(1);
  EXPECT_EQ(fill(2, 3), 1);
  EXPECT_EQ(taken(), Calls{});
}

}  // namespace
}  // namespace quorix::testing

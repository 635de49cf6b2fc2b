/* SPDX-License-Identifier: MIT
 *
 * A stroke font for the example programs, since the library draws lines and no text.
 *
 * A glyph is a text of points on a grid 12 units tall from base line to capital height. A point is
 * two digits to base 36, x and y: y is 4 on the base line, 12 (c) at the height of small letters,
 * 16 (g) at that of capitals, 0 at the foot of a descender. A blank lifts the pen. A dot before a
 * point makes it a control point: the stroke bends towards it, and between two control points it
 * passes through their middle.
 */
#include <math.h>
#include <string.h>

#include "axes.h"

enum { CAPITAL_HEIGHT = 12, BASE_LINE = 4, GAP = 3, SPACE_WIDTH = 3, CURVE_STEPS = 6 };

static const char *const ascii_glyphs[96] = {
    "",                                        /* space */
    "0g08 0504",                               /* ! */
    "0g0d 3g3d",                               /* " */
    "3g15 7g55 0c8c 0888",                     /* # */
    "7c.7e3e.0e.0a.7a.76.0608 3g34",           /* $ */
    "0d.0g.4g.4a.0a0d 57.5a.9a.94.5457 8g14",  /* % */
    "842d.1g.6g.6c.09.04.5488",                /* & */
    "0g0d",                                    /* ' */
    "3h.0e.0633",                              /* ( */
    "0h.3e.3603",                              /* ) */
    "3g3a 0e6c 6e0c",                          /* * */
    "0a8a 4e46",                               /* + */
    "1512.1201",                               /* , */
    "0a6a",                                    /* - */
    "0504",                                    /* . */
    "6h03",                                    /* / */
    "0a.0g.7g.74.040a",                        /* 0 */
    "1d4g44",                                  /* 1 */
    "0d.0g.7g7c.7a0474",                       /* 2 */
    "0d.0g.6g.6a3a.7a.74.0407",                /* 3 */
    "545g0777",                                /* 4 */
    "6g1g0a.1c.7c.74.0407",                    /* 5 */
    "6e.6g.0g08.04.74.7c.0c08",                /* 6 */
    "0g7g24",                                  /* 7 */
    "1d.1g.6g.6a.1a1d 07.0a.7a.74.0407",       /* 8 */
    "16.14.747c.7g.0g.08.787c",                /* 9 */
    "0504 0b0c",                               /* : */
    "1512.1201 1b1c",                          /* ; */
    "7e0a76",                                  /* < */
    "0c8c 0888",                               /* = */
    "0e7a06",                                  /* > */
    "0d.0g.6g.6b3938 3534",                    /* ? */
    "79.7c.3c.38.7879.78.98.9b.9g.0g.04.5484", /* @ */
    "044g84 1777",                             /* A */
    "040g3g.6g.6a3a0a 3a.7a.743404",           /* B */
    "8d.8g4g.0g.0444.8487",                    /* C */
    "040g3g.8g.843404",                        /* D */
    "7g0g0474 0a6a",                           /* E */
    "7g0g04 0a6a",                             /* F */
    "8d.8g4g.0g.0444.848a5a",                  /* G */
    "0g04 8g84 0a8a",                          /* H */
    "0g04",                                    /* I */
    "5g58.54.0407",                            /* J */
    "0g04 7g09 2b84",                          /* K */
    "0g0464",                                  /* L */
    "040g58aga4",                              /* M */
    "040g848g",                                /* N */
    "0a.0g.9g.94.040a",                        /* O */
    "040g3g.7g.793909",                        /* P */
    "0a.0g.9g.94.040a 6793",                   /* Q */
    "040g3g.7g.793909 3974",                   /* R */
    "7d.7g.0g.0a.7a.74.0407",                  /* S */
    "0g8g 4g44",                               /* T */
    "0g08.04.84888g",                          /* U */
    "0g448g",                                  /* V */
    "0g346g94cg",                              /* W */
    "0g84 8g04",                               /* X */
    "0g4a8g 4a44",                             /* Y */
    "0g8g0484",                                /* Z */
    "3h0h0333",                                /* [ */
    "0h63",                                    /* \ */
    "0h3h3303",                                /* ] */
    "0c3g6c",                                  /* ^ */
    "0282",                                    /* _ */
    "0g2d",                                    /* ` */
    "68.6c.0c.04.6468 6c64",                   /* a */
    "0g04 08.0c.6c.64.0408",                   /* b */
    "6a.6c3c.0c.0434.6466",                    /* c */
    "6g64 68.6c.0c.04.6468",                   /* d */
    "0868.6c.0c.0434.5465",                    /* e */
    "4g.2g2d24 0c4c",                          /* f */
    "68.6c.0c.04.6468 6c63.6030.1001",         /* g */
    "0g04 08.0c3c.6c6864",                     /* h */
    "0c04 0f0g",                               /* i */
    "2c21.2000 2f2g",                          /* j */
    "0g04 5c07 2964",                          /* k */
    "0g04",                                    /* l */
    "0c04 08.0c2c.5c5854 58.5c7c.aca8a4",      /* m */
    "0c04 08.0c3c.6c6864",                     /* n */
    "08.0c.7c.74.0408",                        /* o */
    "0c00 08.0c.6c.64.0408",                   /* p */
    "6c60 68.6c.0c.04.6468",                   /* q */
    "0c04 08.0c4c",                            /* r */
    "5a.5c.0c.08.58.54.0406",                  /* s */
    "2f26.2444 0c4c",                          /* t */
    "0c08.0434.6468 6c64",                     /* u */
    "0c346c",                                  /* v */
    "0c245c84ac",                              /* w */
    "0c64 6c04",                               /* x */
    "0c34 6c34.2000",                          /* y */
    "0c6c0464",                                /* z */
    "3h.1h1d.1a0a.1a17.1333",                  /* { */
    "0h02",                                    /* | */
    "0h.2h2d.2a3a.2a27.2303",                  /* } */
    "09.0c.3c.59.898c",                        /* ~ */
    "040g8g8404",                              /* missing */
};

/* The letters U+00C0 to U+00FF, and the marks of each half of them. */
static const char latin_letters[] =
    "AAAAAAACEEEEIIIIDNOOOOO*OUUUUYPsaaaaaaaceeeeiiiidnooooo/ouuuuypy";
static const char latin_marks[] = "`'^~:o ,`'^:`'^: ~`'^~: /`'^:' :";

/* Marks are 4 wide and stand over small letters; their names are those of latin_marks. */
static const char mark_names[] = "`'^~:o,/";
static const char *const mark_glyphs[] = {
    "1g3d", "3g1d", "0d2g4d", "0d.1g.3c4f", "0e0f 4e4f", "1e.1g.3g.3d.1d1e", "24.4200", "0348",
};

enum { MISSING = 127 };

/* One character as it is drawn: a glyph, at full size or as a small digit above or below. */
typedef struct Sign {
  const char *glyph;
  double scale;     /* of the full size */
  double lift;      /* in units */
  const char *mark; /* an accent, or null */
  double mark_lift;
} Sign;

/* The next code point of UTF-8 text; a wrong byte stands for itself. */
static unsigned next_code(const char **text) {
  const unsigned char *byte = (const unsigned char *)*text;
  int more = *byte >= 0xE0 ? 2 : *byte >= 0xC2 ? 1 : 0;
  unsigned code = *byte;
  if (*byte >= 0xF0 || (more >= 1 && (byte[1] & 0xC0) != 0x80) ||
      (more == 2 && (byte[2] & 0xC0) != 0x80))
    more = 0;
  if (more == 1) code = (*byte & 0x1Fu) << 6 | (byte[1] & 0x3Fu);
  if (more == 2) code = (*byte & 0x0Fu) << 12 | (byte[1] & 0x3Fu) << 6 | (byte[2] & 0x3Fu);
  *text += more + 1;
  return code;
}

static Sign small_digit(unsigned digit, double lift) {
  return (Sign){ascii_glyphs['0' - 32 + digit], 0.6, lift, NULL, 0};
}

static Sign latin_sign(unsigned place) {
  char letter = latin_letters[place];
  Sign sign = {ascii_glyphs[letter - 32], 1, 0, NULL, 0};
  const char *name = strchr(mark_names, latin_marks[place % 32]);
  if (name == NULL || letter == 's') return sign;
  sign.mark = mark_glyphs[name - mark_names];
  sign.mark_lift = letter < 'a' && *name != ',' ? 4 : 0;
  if (letter == 'i') sign.glyph = "0c04"; /* without its dot */
  return sign;
}

static Sign sign_of(unsigned code) {
  Sign sign = {ascii_glyphs[MISSING - 32], 1, 0, NULL, 0};
  if (code >= 0xC0 && code <= 0xFF && code != 0xD7 && code != 0xF7) return latin_sign(code - 0xC0);
  if (code >= 0x2080 && code <= 0x2089) return small_digit(code - 0x2080, -3);
  if (code >= 0x2070 && code <= 0x2079) return small_digit(code - 0x2070, 6);
  if (code == 0xB2 || code == 0xB3) return small_digit(code - 0xB0, 6);
  switch (code) {
    case 0xB0:
      sign.glyph = "0e.0g.4g.4c.0c0e";
      break; /* degree */
    case 0xB5:
      sign.glyph = "0c00 08.0434.6468 6c64";
      break; /* micro */
    case 0xB7:
      sign.glyph = "0a09";
      break; /* middle dot */
    case 0xD7:
      sign.glyph = "0d66 6d06";
      break; /* times */
    case 0x2212:
      sign.glyph = "0a8a";
      break; /* minus */
    case 0x2013:
      sign.glyph = "0a7a";
      break; /* dash */
    default:
      if (code >= 32 && code < MISSING) sign.glyph = ascii_glyphs[code - 32];
  }
  return sign;
}

static int digit36(char c) {
  return c <= '9' ? c - '0' : c - 'a' + 10;
}

static double glyph_width(Sign sign) {
  int width = sign.glyph[0] ? 0 : SPACE_WIDTH;
  for (const char *p = sign.glyph; *p; p++) {
    if (*p == ' ' || *p == '.') continue;
    if (digit36(*p) > width) width = digit36(*p);
    p++;
  }
  return width * sign.scale;
}

/* Where the text stands, how large it is and which way it runs. */
typedef struct Line {
  int x, y, upward;
  double unit; /* pixels */
} Line;

static void pen_to(const Line *line, double x, double y, int code) {
  int along = (int)floor(x * line->unit + 0.5), above = (int)floor(y * line->unit + 0.5);
  if (line->upward)
    plot_pen(line->x - above, line->y - along, code);
  else
    plot_pen(line->x + along, line->y - above, code);
}

typedef struct Point {
  double x, y;
} Point;

static void draw_curve(const Line *line, Point from, Point control, Point to) {
  for (int i = 1; i <= CURVE_STEPS; i++) {
    double t = (double)i / CURVE_STEPS, a = (1 - t) * (1 - t), b = 2 * t * (1 - t), c = t * t;
    pen_to(line, a * from.x + b * control.x + c * to.x, a * from.y + b * control.y + c * to.y, 2);
  }
}

static void draw_glyph(const Line *line, double start, Sign sign) {
  Point pen = {0, 0}, control = {0, 0};
  int drawing = 0, bending = 0;
  for (const char *p = sign.glyph; *p; p++) {
    if (*p == ' ') {
      drawing = 0;
      continue;
    }
    int controls = *p == '.';
    p += controls;
    Point next = {start + digit36(p[0]) * sign.scale,
                  (digit36(p[1]) - BASE_LINE) * sign.scale + sign.lift};
    p++;
    Point end = next;
    if (controls && bending) end = (Point){(control.x + next.x) / 2, (control.y + next.y) / 2};
    if (bending)
      draw_curve(line, pen, control, end);
    else if (!controls)
      pen_to(line, end.x, end.y, drawing ? 2 : 3);
    if (!controls || bending) pen = end;
    bending = controls;
    control = next;
    drawing = 1;
  }
}

static double width_in_units(const char *text) {
  double width = 0;
  while (*text)
    width += glyph_width(sign_of(next_code(&text))) + GAP;
  return width > 0 ? width - GAP : 0;
}

int text_width(int size, const char *text) {
  return (int)floor(width_in_units(text) * size / CAPITAL_HEIGHT + 0.5);
}

static void draw_line(Line line, int size, int align, const char *text) {
  line.unit = (double)size / CAPITAL_HEIGHT;
  double start = -width_in_units(text) * align / 2;
  set_pen((size + 4) / 9 < 5 ? (size + 4) / 9 + (size < 5) : 5, ROUND_CAP, ROUND_JOIN);
  while (*text) {
    Sign sign = sign_of(next_code(&text));
    draw_glyph(&line, start, sign);
    if (sign.mark)
      draw_glyph(&line, start + glyph_width(sign) / 2 - 2,
                 (Sign){sign.mark, 1, sign.mark_lift, NULL, 0});
    start += glyph_width(sign) + GAP;
  }
}

void draw_text(int x, int y, int size, int align, const char *text) {
  draw_line((Line){x, y, 0, 1}, size, align, text);
}

void draw_text_upward(int x, int y, int size, int align, const char *text) {
  draw_line((Line){x, y, 1, 1}, size, align, text);
}

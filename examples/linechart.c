/* SPDX-License-Identifier: MIT
 *
 * A line chart of a CSV file: linechart data.csv out.png [title]. The picture is written as
 * PostScript or as PDF if its name ends so.
 *
 * The first column is x, every other column a series. A first line that holds a word where a
 * number would stand names the columns. Fields may be quoted; lines that are blank or start with #
 * are skipped; an empty field, NA and NaN are gaps. A BOM and CR LF line ends do no harm.
 *
 * Short series get thick lines and markers, each with joins and caps of its own; long ones lines.
 */
#include <errno.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "axes.h"

enum {
  MAX_COLUMNS = 9,
  MAX_LINE = 4096,
  MAX_NAME = 64,
  WIDTH = 1600,
  HEIGHT = 900,
  MARKED_ROWS = 40, /* with more rows, markers would hide the lines */
  NAME_SIZE = 22,
  MAX_NAME_WIDTH = 300
};

typedef struct Table {
  const char *file;
  int line; /* number of the line that is read */
  int columns, rows, room;
  int named;
  char names[MAX_COLUMNS][MAX_NAME];
  double *values; /* row by row */
} Table;

static double value_at(const Table *table, int row, int column) {
  return table->values[row * table->columns + column];
}

static int is_missing(double value) {
  return value != value;
}

/* ---- Reading ----------------------------------------------------------------------------- */

/* Cuts the next field off a line, in place, and moves on past its comma; null ends the line. */
static char *next_field(const Table *table, char **rest) {
  char *from = *rest + strspn(*rest, " \t"), *to = from, *field = from;
  if (*from == '"') {
    for (from++; *from != '"' || from[1] == '"'; *to++ = *from++) {
      if (*from == '"') from++; /* two quotes stand for one */
      if (*from == '\0') fail("%s:%d: a quoted field does not end", table->file, table->line);
    }
    from += 1 + strspn(from + 1, " \t");
    if (*from != ',' && *from != '\0')
      fail("%s:%d: text after a quoted field: %s", table->file, table->line, from);
  } else {
    from += strcspn(from, ",");
    to = from;
    while (to > field && (to[-1] == ' ' || to[-1] == '\t'))
      to--;
  }
  *rest = *from == ',' ? from + 1 : NULL;
  *to = '\0';
  return field;
}

static int is_gap(const char *field) {
  return *field == '\0' || strcmp(field, "NA") == 0 || strcmp(field, "NaN") == 0 ||
         strcmp(field, "nan") == 0;
}

static int is_number(const char *field, double *value) {
  char *end;
  *value = strtod(field, &end);
  return end != field && *end == '\0' && is_finite(*value);
}

static int split_line(Table *table, char *line, char *fields[MAX_COLUMNS]) {
  int count = 0;
  for (char *rest = line; rest != NULL;) {
    char *field = next_field(table, &rest);
    if (count == MAX_COLUMNS)
      fail("%s:%d: more than %d columns", table->file, table->line, MAX_COLUMNS);
    fields[count++] = field;
  }
  return count;
}

static void take_names(Table *table, char *fields[MAX_COLUMNS]) {
  for (int i = 0; i < table->columns; i++)
    snprintf(table->names[i], MAX_NAME, "%.*s", MAX_NAME - 1, fields[i]);
  table->named = 1;
}

static void take_values(Table *table, char *fields[MAX_COLUMNS]) {
  if (table->rows == table->room) {
    table->room = 2 * table->room + 64;
    double *larger =
        realloc(table->values, sizeof(double) * (size_t)table->columns * (size_t)table->room);
    if (larger == NULL) fail("%s:%d: no memory for so many lines", table->file, table->line);
    table->values = larger;
  }
  double *row = table->values + table->rows * table->columns;
  for (int i = 0; i < table->columns; i++) {
    if (is_gap(fields[i]) && i > 0)
      row[i] = NAN;
    else if (!is_number(fields[i], &row[i]))
      fail("%s:%d: column %d is not a number: \"%s\"", table->file, table->line, i + 1, fields[i]);
  }
  table->rows++;
}

static int has_a_word(char *fields[MAX_COLUMNS], int count) {
  double value;
  for (int i = 0; i < count; i++)
    if (!is_gap(fields[i]) && !is_number(fields[i], &value)) return 1;
  return 0;
}

static void take_line(Table *table, char *line) {
  char *fields[MAX_COLUMNS];
  line[strcspn(line, "\r\n")] = '\0';
  if (line[strspn(line, " \t")] == '\0' || line[0] == '#') return;
  int count = split_line(table, line, fields);
  if (table->columns == 0) {
    if (count < 2)
      fail("%s:%d: one column; x and at least one series are wanted", table->file, table->line);
    table->columns = count;
    if (has_a_word(fields, count)) {
      take_names(table, fields);
      return;
    }
  }
  if (count != table->columns)
    fail("%s:%d: %d columns instead of %d", table->file, table->line, count, table->columns);
  take_values(table, fields);
}

static void read_table(Table *table, const char *file) {
  static const char mark[] = "\xEF\xBB\xBF"; /* some programs start UTF-8 text with it */
  char line[MAX_LINE];
  *table = (Table){.file = file};
  FILE *stream = fopen(file, "rb");
  if (stream == NULL) fail("%s: %s", file, strerror(errno));
  while (fgets(line, MAX_LINE, stream) != NULL) {
    table->line++;
    if (strlen(line) == MAX_LINE - 1 && line[MAX_LINE - 2] != '\n')
      fail("%s:%d: the line is longer than %d characters", file, table->line, MAX_LINE - 2);
    take_line(table, line + (table->line == 1 && strncmp(line, mark, 3) == 0 ? 3 : 0));
  }
  if (ferror(stream)) fail("%s:%d: cannot be read on", file, table->line + 1);
  fclose(stream);
  if (table->rows == 0) fail("%s: no numbers in it", file);
}

/* ---- Drawing ----------------------------------------------------------------------------- */

static const int32_t series_colours[] = {BLUE, VERMILION, GREEN, PURPLE, ORANGE, SKY, INK, GREY};
static const int series_markers[] = {21, 16, 18, 19, 20, 17, 5, 0}; /* filled where they can be */

/* Smallest and largest value of some columns; false if there is none. */
static int range_of(const Table *table, int first, int last, double *low, double *high) {
  *low = INFINITY;
  *high = -INFINITY;
  for (int row = 0; row < table->rows; row++) {
    for (int column = first; column <= last; column++) {
      double value = value_at(table, row, column);
      if (value < *low) *low = value; /* a gap is neither */
      if (value > *high) *high = value;
    }
  }
  return *low <= *high;
}

/* Makes a range of values that are one, or too near each other to tell their ticks apart. */
static void widen_range(double *low, double *high) {
  const double near = 1e-13, smallest = 1e-300;
  double size = fmax(fabs(*low), fabs(*high));
  if (size > smallest && *high - *low > size * near) return;
  double half = size > smallest ? size / 2 : 1;
  *low -= half;
  *high += half;
}

/* The room for a legend: its widest name, cut where it would take too much. */
static int legend_width(Table *table) {
  int widest = 0;
  if (table->columns == 2 || !table->named) return 0;
  for (int column = 1; column < table->columns; column++) {
    char *name = table->names[column];
    while (text_width(NAME_SIZE, name) > MAX_NAME_WIDTH) {
      size_t length = strlen(name) - 1;
      while ((name[length] & 0xC0) == 0x80)
        length--; /* whole characters */
      name[length] = '\0';
    }
    int width = text_width(NAME_SIZE, name);
    if (width > widest) widest = width;
  }
  return widest + 120;
}

static Axes axes_for(Table *table) {
  Axes axes = {.left = 170, .top = 110, .bottom = HEIGHT - 130};
  axes.right = WIDTH - 50 - legend_width(table);
  if (!range_of(table, 1, table->columns - 1, &axes.y_first, &axes.y_last))
    fail("%s: every value is missing", table->file);
  range_of(table, 0, 0, &axes.x_first, &axes.x_last);
  widen_range(&axes.x_first, &axes.x_last);
  widen_range(&axes.y_first, &axes.y_last);
  double room = (axes.x_last - axes.x_first) / 50;
  double step = nice_step(axes.y_last - axes.y_first, 8);
  axes.x_first -= room;
  axes.x_last += room;
  axes.y_first = floor(axes.y_first / step) * step;
  axes.y_last = ceil(axes.y_last / step) * step;
  if (!is_finite(axes.x_last - axes.x_first) || !is_finite(axes.y_last - axes.y_first))
    fail("%s: the numbers are too far apart", table->file);
  return axes;
}

/* Series take turns through the joins and the caps. */
static void set_series_pen(int column, int width) {
  static const int joins[] = {ROUND_JOIN, MITER_JOIN, BEVEL_JOIN};
  static const int caps[] = {ROUND_CAP, SQUARE_CAP, BUTT_CAP};
  set_pen(width, caps[(column - 1) % 3], joins[(column - 1) % 3]);
}

static void draw_series(const Table *table, const Axes *axes, int column) {
  int marked = table->rows <= MARKED_ROWS, pen_is_down = 0;
  qqvclr(series_colours[column - 1]);
  set_series_pen(column, marked ? 6 : 4);
  for (int row = 0; row < table->rows; row++) {
    double y = value_at(table, row, column);
    if (!is_missing(y))
      qqvdrw(column_of(axes, value_at(table, row, 0)), row_of(axes, y), pen_is_down ? 2 : 3);
    pen_is_down = !is_missing(y);
    /* A point between two gaps shows as a dot. */
    if (pen_is_down && (row == 0 || is_missing(value_at(table, row - 1, column))))
      qqvdrw(column_of(axes, value_at(table, row, 0)), row_of(axes, y), 2);
  }
  set_pen(2, BUTT_CAP, MITER_JOIN);
  for (int row = 0; marked && row < table->rows; row++) {
    double y = value_at(table, row, column);
    if (!is_missing(y))
      qqvsym(series_markers[column - 1], column_of(axes, value_at(table, row, 0)), row_of(axes, y),
             20);
  }
}

static void draw_legend(const Table *table, const Axes *axes) {
  int left = axes->right + 40, y = axes->top + NAME_SIZE;
  for (int column = 1; column < table->columns; column++, y += 48) {
    qqvclr(series_colours[column - 1]);
    set_series_pen(column, table->rows <= MARKED_ROWS ? 6 : 4);
    qqvlin(left, y - NAME_SIZE / 2, left + 70, y - NAME_SIZE / 2);
    set_pen(2, BUTT_CAP, MITER_JOIN);
    if (table->rows <= MARKED_ROWS)
      qqvsym(series_markers[column - 1], left + 35, y - NAME_SIZE / 2, 20);
    qqvclr(INK);
    draw_text(left + 90, y, NAME_SIZE, LEFT, table->names[column]);
  }
}

int main(int argc, char **argv) {
  if (argc != 3 && argc != 4) {
    fprintf(stderr, "usage: linechart data.csv out.png [title]\n");
    return 2;
  }
  Table table;
  read_table(&table, argv[1]);
  Axes axes = axes_for(&table);
  open_page(WIDTH, HEIGHT);
  draw_axes(&axes, argc == 4 ? argv[3] : NULL, table.names[0],
            table.columns == 2 ? table.names[1] : NULL);
  set_clip(axes.left, axes.top, axes.right, axes.bottom);
  for (int column = 1; column < table.columns; column++)
    draw_series(&table, &axes, column);
  set_clip(0, 0, WIDTH - 1, HEIGHT - 1);
  if (table.columns > 2 && table.named) draw_legend(&table, &axes);
  save_picture(argv[2], WIDTH, HEIGHT);
  free(table.values);
  qqwfree();
  return 0;
}

/* SPDX-License-Identifier: MIT
 *
 * A scatter plot with a line of least squares for each group: penguins penguins.csv out.png
 *
 * The picture is made in memory, as a program would that sends it on, and only then put into a
 * file.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "axes.h"

enum { WIDTH = 1600, HEIGHT = 1000, SPECIES = 3, MAX_BIRDS = 200 };

typedef struct Species {
  const char *name;
  int32_t colour;
  int marker, count;
  double flipper[MAX_BIRDS], mass[MAX_BIRDS];
} Species;

static Species all[SPECIES] = {{.name = "Adelie", .colour = ORANGE, .marker = 21},
                               {.name = "Chinstrap", .colour = PURPLE, .marker = 18},
                               {.name = "Gentoo", .colour = BLUE, .marker = 16}};

static void read_birds(const char *file) {
  char line[200], name[32];
  double flipper, mass;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (fgets(line, sizeof line, stream) != NULL) {
    if (sscanf(line, "%31[A-Za-z],%lf,%lf", name, &flipper, &mass) != 3) continue;
    for (int i = 0; i < SPECIES; i++) {
      Species *species = &all[i];
      if (strcmp(name, species->name) != 0 || species->count == MAX_BIRDS) continue;
      species->flipper[species->count] = flipper;
      species->mass[species->count++] = mass / 1000;
    }
  }
  fclose(stream);
  for (int i = 0; i < SPECIES; i++)
    if (all[i].count < 2) fail("%s: no %s in it", file, all[i].name);
}

static void draw_birds(const Axes *axes, const Species *species) {
  qqvclr(species->colour);
  set_pen(1, BUTT_CAP, MITER_JOIN);
  for (int i = 0; i < species->count; i++)
    qqvsym(species->marker, column_of(axes, species->flipper[i]), row_of(axes, species->mass[i]),
           17);
}

static void draw_fit(const Axes *axes, const Species *species) {
  double n = species->count, x = 0, y = 0, xx = 0, xy = 0, low = 1e9, high = 0;
  for (int i = 0; i < species->count; i++) {
    double flipper = species->flipper[i], mass = species->mass[i];
    x += flipper;
    y += mass;
    xx += flipper * flipper;
    xy += flipper * mass;
    if (flipper < low) low = flipper;
    if (flipper > high) high = flipper;
  }
  double slope = (n * xy - x * y) / (n * xx - x * x), offset = (y - slope * x) / n;
  qqvclr(INK);
  set_pen(5, ROUND_CAP, ROUND_JOIN);
  qqvlin(column_of(axes, low), row_of(axes, offset + slope * low), column_of(axes, high),
         row_of(axes, offset + slope * high));
}

static void draw_legend(const Axes *axes) {
  for (int i = 0; i < SPECIES; i++) {
    int x = axes->left + 50, y = axes->top + 60 + 50 * i;
    char text[64];
    snprintf(text, sizeof text, "%s (%d)", all[i].name, all[i].count);
    qqvclr(all[i].colour);
    set_pen(1, BUTT_CAP, MITER_JOIN);
    qqvsym(all[i].marker, x, y - 11, 22);
    qqvclr(INK);
    draw_text(x + 30, y, 22, LEFT, text);
  }
}

/* Asks for the size, then for the bytes. */
static uint8_t *png_in_memory(int32_t *size) {
  int32_t device = -101, order = 1, width = WIDTH, height = HEIGHT, colours = -256, room = 0;
  qqppng(NULL, &device, &order, &width, &height, NULL, &colours, &room);
  uint8_t *bytes = malloc((size_t)room);
  if (room == 0 || bytes == NULL) fail("no memory for the picture");
  *size = room;
  qqppng((char *)bytes, &device, &order, &width, &height, NULL, &colours, size);
  if (*size != room) fail("the picture does not fit");
  return bytes;
}

int main(int argc, char **argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: penguins penguins.csv out.png\n");
    return 2;
  }
  read_birds(argv[1]);
  Axes axes = {170, 110, WIDTH - 50, HEIGHT - 130, 168, 236, 2.5, 6.5, 0, 0};
  open_page(WIDTH, HEIGHT);
  draw_axes(&axes, "Penguins of the Palmer Archipelago", "flipper length (mm)", "body mass (kg)");
  for (int i = 0; i < SPECIES; i++)
    draw_birds(&axes, &all[i]);
  for (int i = 0; i < SPECIES; i++)
    draw_fit(&axes, &all[i]);
  draw_legend(&axes);

  int32_t size;
  uint8_t *bytes = png_in_memory(&size);
  FILE *stream = fopen(argv[2], "wb");
  if (stream == NULL || fwrite(bytes, 1, (size_t)size, stream) != (size_t)size ||
      fclose(stream) != 0)
    fail("%s cannot be written", argv[2]);
  free(bytes);
  qqwfree();
  return 0;
}

/* SPDX-License-Identifier: MIT
 *
 * A histogram with the normal curve of the same mean and deviation:
 * histogram michelson.csv out.png
 */
#include <math.h>
#include <stdio.h>

#include "axes.h"

enum { WIDTH = 1600, HEIGHT = 900, FIRST = 600, BIN = 50, BINS = 10, MAX_VALUES = 1000 };

typedef struct Sample {
  int count, in_bin[BINS];
  double mean, deviation;
} Sample;

static Sample read_sample(const char *file) {
  Sample sample = {0};
  char line[200];
  int experiment, run, speed;
  double sum = 0, squares = 0;
  FILE *stream = fopen(file, "r");
  if (stream == NULL) fail("%s cannot be opened", file);
  while (fgets(line, sizeof line, stream) != NULL) {
    if (sscanf(line, "%d,%d,%d", &experiment, &run, &speed) != 3) continue;
    int bin = (speed - FIRST) / BIN;
    if (speed < FIRST || bin >= BINS) fail("%s: %d is out of the plot", file, speed);
    sample.in_bin[bin]++;
    sample.count++;
    sum += speed;
    squares += (double)speed * speed;
  }
  fclose(stream);
  if (sample.count < 2) fail("%s: no measurements in it", file);
  sample.mean = sum / sample.count;
  sample.deviation = sqrt((squares - sum * sample.mean) / (sample.count - 1));
  return sample;
}

static void draw_bars(const Axes *axes, const Sample *sample) {
  for (int bin = 0; bin < BINS; bin++) {
    if (sample->in_bin[bin] == 0) continue;
    int left = column_of(axes, 299000 + FIRST + bin * BIN) + 2;
    int right = column_of(axes, 299000 + FIRST + (bin + 1) * BIN) - 3;
    qqvfll(left, row_of(axes, sample->in_bin[bin]), right, axes->bottom - 2, SKY);
  }
}

static void draw_normal_curve(const Axes *axes, const Sample *sample) {
  const double root_of_two_pi = 2.50662827463100050242;
  double top = sample->count * BIN / (sample->deviation * root_of_two_pi);
  qqvclr(VERMILION);
  set_pen(6, ROUND_CAP, ROUND_JOIN);
  for (int x = axes->left; x <= axes->right; x += 8) {
    double value = FIRST + (double)BINS * BIN * (x - axes->left) / (axes->right - axes->left);
    double z = (value - sample->mean) / sample->deviation;
    qqvdrw(x, row_of(axes, top * exp(-z * z / 2)), x == axes->left ? 3 : 2);
  }
}

static void mark(const Axes *axes, double value, int row, int align, const char *text) {
  int x = column_of(axes, value);
  qqvclr(INK);
  set_pen(3, BUTT_CAP, MITER_JOIN);
  for (int y = axes->top + 20; y < axes->bottom; y += 24)
    qqvlin(x, y, x, y + 12);
  draw_text(align == LEFT ? x + 14 : x - 14, row, 20, align, text);
}

int main(int argc, char **argv) {
  if (argc != 3) {
    fprintf(stderr, "usage: histogram michelson.csv out.png\n");
    return 2;
  }
  Sample sample = read_sample(argv[1]);
  Axes axes = {170, 110, WIDTH - 80, HEIGHT - 130, 299000 + FIRST, 299000 + FIRST + BINS * BIN, 0,
               35,  0,   0};
  open_page(WIDTH, HEIGHT);
  draw_axes(&axes, "Michelson's 100 measurements of the speed of light, 1879", "speed (km/s)",
            "measurements");
  draw_bars(&axes, &sample);
  draw_normal_curve(&axes, &sample);
  char text[80];
  snprintf(text, sizeof text, "mean %.0f, deviation %.0f", 299000 + sample.mean, sample.deviation);
  mark(&axes, 299000 + sample.mean, axes.top + 50, LEFT, text);
  mark(&axes, 299792.458, axes.top + 50, RIGHT, "in vacuum, by definition");
  save_png(argv[2], WIDTH, HEIGHT);
  qqwfree();
  return 0;
}

/* SPDX-License-Identifier: MIT
 *
 * Converts a picture: convert [options] in out. See `convert --help`.
 *
 * The picture is read into memory, cropped there, shown on a page at the size that is wanted, and
 * written as the name of the output says.
 */
#include <ctype.h>
#include <getopt.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "axes.h"
#include "picture_file.h"

enum {
  RASTER = 101,
  LARGE = 4000000, /* pixels from which on progress is told */
  DEFAULT_RESOLUTION = 100,
  WRONG_USE = 2 /* exit status */
};

static const char help[] =
    "Usage: convert [options] IN OUT\n"
    "\n"
    "Reads the picture IN, which is a PNG, GIF, TIFF or BMP file whatever its name, and\n"
    "writes OUT in the format that its name ends with: .png, .ppm, .gif, .tif or .tiff,\n"
    ".bmp, .ps (PostScript), .pdf (a page of A4).\n"
    "\n"
    "  -c, --crop WxH+X+Y      take W by H pixels, the upper left one at column X, row Y\n"
    "  -s, --scale WxH         change the size, after cropping; Wx or xH keep the proportions\n"
    "  -b, --background RRGGBB colour behind transparent pixels, in hexadecimal (FFFFFF)\n"
    "  -p, --palette           at most 256 colours: PNG, TIFF and BMP (GIF always)\n"
    "  -r, --resolution N      pixels per inch, in TIFF and BMP (100)\n"
    "  -q, --quiet             no progress of large pictures\n"
    "  -h, --help              this text\n";

typedef struct Options {
  const char *in, *out;
  int cropped, x, y, width, height; /* the part to take */
  int scaled, to_width, to_height;  /* 0: in proportion to the other */
  int background;                   /* 0xRRGGBB */
  int palette, resolution, quiet;
} Options;

/* ---- Command line ------------------------------------------------------------------------ */

static void refuse(const char *format, ...) {
  va_list arguments;
  va_start(arguments, format);
  vfprintf(stderr, format, arguments);
  va_end(arguments);
  fputs("\nTry: convert --help\n", stderr);
  exit(WRONG_USE);
}

/* The number at the start of a text, which moves on behind it; -1 if there is none. */
static int take_number(const char **text) {
  if (!isdigit((unsigned char)**text)) return -1;
  char *end;
  long value = strtol(*text, &end, 10);
  *text = end;
  return value > 0x7FFFFFF ? -1 : (int)value;
}

static int take_sign(const char **text, char sign) {
  if (**text != sign) return 0;
  ++*text;
  return 1;
}

static void set_crop(Options *options, const char *text) {
  const char *rest = text;
  options->cropped = 1;
  options->width = take_number(&rest);
  int whole = take_sign(&rest, 'x');
  options->height = take_number(&rest);
  whole = whole && take_sign(&rest, '+');
  options->x = take_number(&rest);
  whole = whole && take_sign(&rest, '+');
  options->y = take_number(&rest);
  if (!whole || *rest != '\0' || options->width <= 0 || options->height <= 0 || options->x < 0 ||
      options->y < 0)
    refuse("--crop wants WxH+X+Y, not \"%s\"", text);
}

static void set_scale(Options *options, const char *text) {
  const char *rest = text;
  options->scaled = 1;
  options->to_width = *rest == 'x' ? 0 : take_number(&rest);
  int whole = take_sign(&rest, 'x');
  options->to_height = *rest == '\0' ? 0 : take_number(&rest);
  if (!whole || *rest != '\0' || options->to_width < 0 || options->to_height < 0 ||
      options->to_width + options->to_height == 0)
    refuse("--scale wants WxH, Wx or xH, not \"%s\"", text);
}

static void set_background(Options *options, const char *text) {
  if (strlen(text) != 6 || strspn(text, "0123456789abcdefABCDEF") != 6)
    refuse("--background wants six hexadecimal digits, not \"%s\"", text);
  options->background = (int)strtol(text, NULL, 16);
}

static void set_resolution(Options *options, const char *text) {
  const char *rest = text;
  options->resolution = take_number(&rest);
  if (*rest != '\0' || options->resolution <= 0 || options->resolution > 50000)
    refuse("--resolution wants pixels per inch, not \"%s\"", text);
}

static void set_option(Options *options, int letter) {
  switch (letter) {
    case 'c':
      set_crop(options, optarg);
      break;
    case 's':
      set_scale(options, optarg);
      break;
    case 'b':
      set_background(options, optarg);
      break;
    case 'p':
      options->palette = 1;
      break;
    case 'r':
      set_resolution(options, optarg);
      break;
    case 'q':
      options->quiet = 1;
      break;
    case 'h':
      fputs(help, stdout);
      exit(0);
    default:
      fputs("Try: convert --help\n", stderr);
      exit(WRONG_USE);
  }
}

static Options parse(int count, char **arguments) {
  static const struct option names[] = {{"crop", required_argument, NULL, 'c'},
                                        {"scale", required_argument, NULL, 's'},
                                        {"background", required_argument, NULL, 'b'},
                                        {"palette", no_argument, NULL, 'p'},
                                        {"resolution", required_argument, NULL, 'r'},
                                        {"quiet", no_argument, NULL, 'q'},
                                        {"help", no_argument, NULL, 'h'},
                                        {NULL, 0, NULL, 0}};
  Options options = {.background = 0xFFFFFF, .resolution = DEFAULT_RESOLUTION};
  for (int letter; (letter = getopt_long(count, arguments, "c:s:b:pr:qh", names, NULL)) != -1;)
    set_option(&options, letter);
  if (count - optind != 2) refuse("Two names are wanted: of the file to read and of the new one");
  options.in = arguments[optind];
  options.out = arguments[optind + 1];
  return options;
}

/* ---- Reading ----------------------------------------------------------------------------- */

static void tell(const Options *options, double pixels, const char *format, ...) {
  va_list arguments;
  if (options->quiet || pixels < LARGE) return;
  va_start(arguments, format);
  vfprintf(stderr, format, arguments);
  va_end(arguments);
}

/* The file's picture into memory. `width` and `height` are those of the page it comes on. */
static void read_picture(const char *file, PictureKind kind, int32_t width, int32_t height) {
  int32_t hold = 0, zero = 0, status = 0;
  switch (kind) {
    case PNG_FILE:
      qqpipng(file, &hold, NULL, &width, &height, &zero, &zero, &status);
      break;
    case GIF_FILE:
      qqpigif(file, &hold, NULL, &width, &height, &zero, &zero, &status);
      break;
    case BMP_FILE:
      qqpibmp(file, &hold, NULL, &width, &height, &zero, &zero, &status);
      break;
    case TIFF_FILE:
      qqpitif(file, &hold, NULL, &width, &height, &zero, &zero, &status);
      break;
  }
  if (status == -5) {
    fprintf(stderr, "%s: some pixels have no colour in the palette\n", file);
  } else if (status == -2) {
    fail("%s: no memory for the picture", file);
  } else if (status == -11) {
    fail("%s: this kind of TIFF file is not read", file);
  } else if (status != 0) {
    fail("%s: the %s file is damaged (status %d)", file, kind_name(kind), (int)status);
  }
}

static void crop_picture(const Options *options) {
  int32_t x = options->x, y = options->y, width = options->width, height = options->height;
  int32_t status = 0;
  qqpiwin(&x, &y, &width, &height, &status);
  if (status != 0) fail("%s: no memory to crop the picture", options->in);
}

/* Without --crop the part to take is the whole; one side of the new size may follow the other. */
static void settle_sizes(Options *options, const PictureFile *picture) {
  if (!options->cropped) {
    options->width = picture->width;
    options->height = picture->height;
  } else if (options->width > picture->width - options->x ||
             options->height > picture->height - options->y) {
    fail("%s: the picture has %d by %d pixels, and the part reaches outside", options->in,
         picture->width, picture->height);
  }
  double ratio = (double)options->width / options->height;
  if (!options->scaled) {
    options->to_width = options->width;
    options->to_height = options->height;
  }
  if (options->to_width == 0) options->to_width = (int)(options->to_height * ratio + 0.5);
  if (options->to_height == 0) options->to_height = (int)(options->to_width / ratio + 0.5);
  if (options->to_width == 0) options->to_width = 1;
  if (options->to_height == 0) options->to_height = 1;
}

/* ---- Scaling ----------------------------------------------------------------------------- */

static void show_picture(const Options *options, int32_t width, int32_t height) {
  int32_t raster = RASTER, zero = 0, status = 0;
  open_page(width, height);
  qqvfll(0, 0, width - 1, height - 1, COLOUR(options->background));
  qqpiscl(&raster, NULL, &width, &height, &zero, &zero, &status);
  if (status != 0) fail("%s: no memory to scale the picture", options->in);
}

/* One row to another width, interpolated between neighbours. */
static void stretch_row(const uint8_t *from, int width, uint8_t *to, int to_width) {
  for (int i = 0; i < to_width; i++) {
    double place = (double)i * (width - 1) / (to_width - 1);
    int left = (int)place, right = left + 1 < width ? left + 1 : left;
    for (int k = 0; k < 3; k++)
      *to++ = (uint8_t)(from[3 * left + k] +
                        (place - left) * (from[3 * right + k] - from[3 * left + k]) + 0.5);
  }
}

/* Makes the page wider. The library shows as many columns as the picture had before scaling, so
 * what becomes wider is stretched here, row by row. */
static void widen_page(const Options *options, int width, int height, int to_width) {
  size_t row_bytes = 3 * (size_t)width;
  uint8_t *rows = malloc(row_bytes * (size_t)height), *row = malloc(3 * (size_t)to_width);
  if (rows == NULL || row == NULL) fail("%s: no memory to scale the picture", options->in);
  qqvrdr(rows, 0, 0, -width, height);
  open_page(to_width, height);
  for (int y = 0; y < height; y++) {
    stretch_row(rows + row_bytes * (size_t)y, width, row, to_width);
    qqvrow(row, 0, y, -to_width);
    if (y % 256 == 0)
      tell(options, (double)to_width * height, "\rscaling %d%%", (int)(100.0 * y / height));
  }
  tell(options, (double)to_width * height, "\rscaling 100%%\n");
  free(row);
  free(rows);
}

/* ---- Writing ----------------------------------------------------------------------------- */

static int has_ending(const char *file, const char *ending) {
  size_t length = strlen(file), size = strlen(ending);
  if (length <= size) return 0;
  for (size_t i = 0; i < size; i++)
    if (tolower((unsigned char)file[length - size + i]) != ending[i]) return 0;
  return 1;
}

static const char *format_of(const char *file) {
  static const char *const endings[] = {".png",  ".ppm", ".gif", ".tif",
                                        ".tiff", ".bmp", ".ps",  ".pdf"};
  for (size_t i = 0; i < sizeof endings / sizeof endings[0]; i++)
    if (has_ending(file, endings[i])) return endings[i];
  return NULL;
}

/* A4 in tenths of a millimetre, without margins. */
static int write_page(const char *file, int32_t device, int32_t width, int32_t height, int pdf) {
  int32_t given = 1, page_width = 2100, page_height = 2970, margin = 0, compress = 1, status = 0;
  if (pdf)
    qqppdf(file, &device, &width, &height, &given, &page_width, &page_height, &given, &margin,
           &margin, &compress, &status);
  else
    qqpps(file, &device, &width, &height, &given, &page_width, &page_height, &given, &margin,
          &margin, &status);
  return status;
}

/* A device number below 0 asks for true colours; the height below 0 says that the page has them. */
static int write_as(const char *file, const char *ending, const Options *options) {
  int32_t width = options->to_width, height = -options->to_height, order = 1, colours = 256;
  int32_t device = options->palette ? RASTER : -RASTER, true_colours = -RASTER, zero = 0;
  int32_t status = 0;
  uint8_t background = 0;
  if (strcmp(ending, ".png") == 0) {
    qqppng((char *)file, &device, &order, &width, &height, NULL, &colours, &status);
  } else if (strcmp(ending, ".ppm") == 0) {
    qqpppm(file, &device, &width, &height, NULL, &status);
  } else if (strcmp(ending, ".gif") == 0) {
    qqpgif(file, &true_colours, &order, &width, &height, NULL, NULL, &background, &zero, &status);
  } else if (strncmp(ending, ".tif", 4) == 0) {
    status = options->resolution; /* in and out */
    qqptif(file, &device, &order, &width, &height, NULL, &zero, &status);
  } else if (strcmp(ending, ".bmp") == 0) {
    order = (int)(options->resolution / 0.0254 + 0.5); /* per metre */
    qqpbmp(file, &device, &order, &width, &height, NULL, &colours, &status);
  } else {
    status = write_page(file, device, width, height, strcmp(ending, ".pdf") == 0);
  }
  return status;
}

static void write_picture(const Options *options, const char *ending) {
  if (strcmp(ending, ".gif") == 0 && (options->to_width > 65535 || options->to_height > 65535))
    fail("%s: a GIF picture has at most 65535 pixels in a row or column", options->out);
  int status = write_as(options->out, ending, options);
  if (status == -1) fail("%s: the file cannot be written", options->out);
  if (status != 0) fail("%s: no memory to write the file (status %d)", options->out, status);
  check_written(options->out, status);
}

int main(int count, char **arguments) {
  Options options = parse(count, arguments);
  const char *ending = format_of(options.out);
  if (ending == NULL) refuse("%s: no known ending of a picture's name", options.out);
  PictureFile picture = look_at_picture(options.in);
  settle_sizes(&options, &picture);

  double pixels = (double)picture.width * picture.height;
  int width = options.to_width, height = options.to_height;
  int shown = width < options.width ? width : options.width;
  tell(&options, pixels, "reading %s: %s, %d by %d pixels\n", options.in, kind_name(picture.kind),
       picture.width, picture.height);
  read_picture(options.in, picture.kind, shown, height);
  if (options.cropped) crop_picture(&options);
  tell(&options, pixels, "showing %d by %d pixels\n", shown, height);
  show_picture(&options, shown, height);
  if (shown < width) widen_page(&options, shown, height, width);
  tell(&options, (double)width * height, "writing %s\n", options.out);
  write_picture(&options, ending);
  qqvfin();
  return 0;
}

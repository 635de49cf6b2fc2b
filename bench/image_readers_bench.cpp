// SPDX-License-Identifier: MIT
//
// Reading image files into memory as RGB: a plot and a photograph of 1920 x 1080. The files are
// written by libpng, giflib and libtiff. Limits: for PNG one call of inflate for the whole stream,
// for TIFF reading the file and copying it once.
#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#ifdef HAVE_LIBPNG
#include <png.h>
#endif
#ifdef HAVE_SPNG
#include <spng.h>
#endif
#ifdef HAVE_STB
#define STB_IMAGE_STATIC
#define STB_IMAGE_IMPLEMENTATION
#define STBI_ONLY_PNG
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wunused-function"
#include <stb/stb_image.h>
#pragma GCC diagnostic pop
#endif
#ifdef HAVE_GIFLIB
#include <gif_lib.h>
#endif
#ifdef HAVE_GDLIB
#include <gd.h>
#endif
#ifdef HAVE_LIBTIFF_4
#include <tiffio.h>
#endif

#include "bench/plot_picture.h"
#include "quorix/quorix.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr int32_t width = 1920, height = 1080;
constexpr size_t row_bytes = 3 * static_cast<size_t>(width);
constexpr size_t picture_bytes = row_bytes * height;

void must(bool fine) {
  if (!fine) std::abort();
}

Bytes picture(bool photo) {
  return photo ? photo_triples(width, height, 1.0) : plot_triples(width, height);
}

// ---- files

struct TemporaryFile {
  std::string name;
  explicit TemporaryFile(const std::string &suffix) {
    const char *const folder = std::getenv("TMPDIR");
    name = std::string(folder != nullptr ? folder : "/tmp") + "/quorix_bench" + suffix;
  }
  ~TemporaryFile() { std::remove(name.c_str()); }
  TemporaryFile(const TemporaryFile &) = delete;
  TemporaryFile &operator=(const TemporaryFile &) = delete;
};

Bytes whole_file(const std::string &name) {
  std::FILE *const file = std::fopen(name.c_str(), "rb");
  must(file != nullptr);
  std::fseek(file, 0, SEEK_END);
  Bytes bytes(static_cast<size_t>(std::ftell(file)));
  std::rewind(file);
  must(std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size());
  std::fclose(file);
  return bytes;
}

// ---- Quorix

using Reader = int32_t (*)(const char *, const int32_t *, const void *, const int32_t *,
                           const int32_t *, const int32_t *, const int32_t *, int32_t *);

void by_quorix(Reader reader, const std::string &name) {
  const int32_t none = 0;
  const int32_t give_back = -1;
  int32_t status = 1;
  reader(name.c_str(), &none, nullptr, &none, &none, &none, &none, &status);
  must(status == 0);
  qqpgrow(nullptr, &none, &none, &give_back);
}

// ---- registering

template <class Work>
void add(const std::string &workload, const char *contender, Work work) {
  benchmark::RegisterBenchmark((workload + "/" + contender).c_str(), [work](
                                                                         benchmark::State &state) {
    for (auto _ : state)
      work();
  })->Unit(benchmark::kMillisecond);
}

// ---- PNG

#ifdef HAVE_LIBPNG
void write_png(const std::string &name, const Bytes &rgb) {
  std::FILE *const file = std::fopen(name.c_str(), "wb");
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file);
  png_set_IHDR(png, info, width, height, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  for (size_t y = 0; y < height; ++y)
    png_write_row(png, &rgb[y * row_bytes]);
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  std::fclose(file);
}

void png_by_libpng(const std::string &name) {
  std::FILE *const file = std::fopen(name.c_str(), "rb");
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_init_io(png, file);
  png_set_crc_action(png, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
  png_read_info(png, info);
  auto *const pixels = static_cast<uint8_t *>(std::malloc(picture_bytes));
  for (size_t y = 0; y < height; ++y)
    png_read_row(png, pixels + y * row_bytes, nullptr);
  png_destroy_read_struct(&png, &info, nullptr);
  std::fclose(file);
  benchmark::DoNotOptimize(pixels);
  std::free(pixels);
}

// The rows with their filter bytes, out of the IDAT chunks put together beforehand.
void png_by_inflate(const Bytes &stream) {
  const size_t room = picture_bytes + height;
  auto *const rows = static_cast<uint8_t *>(std::malloc(room));
  auto size = static_cast<uLongf>(room);
  must(uncompress(rows, &size, stream.data(), stream.size()) == Z_OK && size == room);
  benchmark::DoNotOptimize(rows);
  std::free(rows);
}

Bytes png_stream(const Bytes &png) {
  Bytes stream;
  for (size_t at = 8; at + 12 <= png.size();) {
    const size_t length =
        size_t{png[at]} << 24 | size_t{png[at + 1]} << 16 | size_t{png[at + 2]} << 8 | png[at + 3];
    const uint8_t *const data = &png[at + 8];
    if (std::memcmp(&png[at + 4], "IDAT", 4) == 0) stream.insert(stream.end(), data, data + length);
    at += 12 + length;
  }
  return stream;
}
#endif

#ifdef HAVE_SPNG
void png_by_spng(const std::string &name) {
  std::FILE *const file = std::fopen(name.c_str(), "rb");
  spng_ctx *const context = spng_ctx_new(SPNG_CTX_IGNORE_ADLER32);
  spng_set_crc_action(context, SPNG_CRC_USE, SPNG_CRC_USE);
  must(spng_set_png_file(context, file) == 0);
  auto *const pixels = static_cast<uint8_t *>(std::malloc(picture_bytes));
  must(spng_decode_image(context, pixels, picture_bytes, SPNG_FMT_RGB8, 0) == 0);
  spng_ctx_free(context);
  std::fclose(file);
  benchmark::DoNotOptimize(pixels);
  std::free(pixels);
}
#endif

#ifdef HAVE_STB
void png_by_stb(const std::string &name) {
  int w = 0;
  int h = 0;
  int samples = 0;
  stbi_uc *const pixels = stbi_load(name.c_str(), &w, &h, &samples, 3);
  must(pixels != nullptr);
  stbi_image_free(pixels);
}
#endif

void add_png(bool photo) {
#ifdef HAVE_LIBPNG
  static const TemporaryFile files[] = {TemporaryFile("_plot.png"), TemporaryFile("_photo.png")};
  const std::string &name = files[photo ? 1 : 0].name;
  write_png(name, picture(photo));
  const std::string workload = photo ? "PNG of a photograph" : "PNG of a plot";
  add(workload, "quorix", [=] { by_quorix(qqpipng, name); });
  add(workload, "libpng", [=] { png_by_libpng(name); });
  const Bytes stream = png_stream(whole_file(name));
  add(workload, "one inflate", [=] { png_by_inflate(stream); });
#ifdef HAVE_SPNG
  add(workload, "libspng", [=] { png_by_spng(name); });
#endif
#ifdef HAVE_STB
  add(workload, "stb_image", [=] { png_by_stb(name); });
#endif
#endif
}

// ---- GIF

#ifdef HAVE_GIFLIB
void write_gif(const std::string &name, const Bytes &rgb) {
  const size_t pixels = rgb.size() / 3;
  Bytes planes[3];
  for (size_t k = 0; k < 3; ++k) {
    planes[k].resize(pixels);
    for (size_t i = 0; i < pixels; ++i)
      planes[k][i] = rgb[3 * i + k];
  }
  ColorMapObject *const map = GifMakeMapObject(256, nullptr);
  Bytes indices(pixels);
  int colours = 256;
  must(GifQuantizeBuffer(width, height, &colours, planes[0].data(), planes[1].data(),
                         planes[2].data(), indices.data(), map->Colors) == GIF_OK);
  int error = 0;
  GifFileType *const gif = EGifOpenFileName(name.c_str(), false, &error);
  must(gif != nullptr && EGifPutScreenDesc(gif, width, height, 8, 0, map) == GIF_OK);
  must(EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr) == GIF_OK);
  for (size_t y = 0; y < height; ++y)
    must(EGifPutLine(gif, &indices[y * width], width) == GIF_OK);
  EGifCloseFile(gif, &error);
  GifFreeMapObject(map);
}

void gif_by_giflib(const std::string &name, bool to_rgb) {
  int error = 0;
  GifFileType *const gif = DGifOpenFileName(name.c_str(), &error);
  must(gif != nullptr && DGifSlurp(gif) == GIF_OK);
  if (to_rgb) {
    auto *const pixels = static_cast<uint8_t *>(std::malloc(picture_bytes));
    const GifByteType *const indices = gif->SavedImages[0].RasterBits;
    const GifColorType *const colours = gif->SColorMap->Colors;
    for (size_t i = 0; i < picture_bytes / 3; ++i)
      std::memcpy(pixels + 3 * i, &colours[indices[i]], 3);
    benchmark::DoNotOptimize(pixels);
    std::free(pixels);
  }
  DGifCloseFile(gif, &error);
}

#ifdef HAVE_GDLIB
void gif_by_gd(const std::string &name) {
  std::FILE *const file = std::fopen(name.c_str(), "rb");
  gdImagePtr image = gdImageCreateFromGif(file);
  must(image != nullptr);
  gdImageDestroy(image);
  std::fclose(file);
}
#endif
#endif

void add_gif(bool photo) {
#ifdef HAVE_GIFLIB
  static const TemporaryFile files[] = {TemporaryFile("_plot.gif"), TemporaryFile("_photo.gif")};
  const std::string &name = files[photo ? 1 : 0].name;
  write_gif(name, picture(photo));
  const std::string workload = photo ? "GIF of a photograph" : "GIF of a plot";
  add(workload, "quorix", [=] { by_quorix(qqpigif, name); });
  add(workload, "giflib to RGB", [=] { gif_by_giflib(name, true); });
  add(workload, "giflib indices", [=] { gif_by_giflib(name, false); });
#ifdef HAVE_GDLIB
  add(workload, "libgd indices", [=] { gif_by_gd(name); });
#endif
#endif
}

// ---- TIFF

#ifdef HAVE_LIBTIFF_4
void write_tiff(const std::string &name, const Bytes &rgb, int compression, uint32_t rows) {
  TIFF *const tiff = TIFFOpen(name.c_str(), "w");
  must(tiff != nullptr);
  TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
  TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
  TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
  TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 3);
  TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB);
  TIFFSetField(tiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
  TIFFSetField(tiff, TIFFTAG_COMPRESSION, compression);
  TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rows);
  for (uint32_t y = 0; y < height; ++y)
    must(TIFFWriteScanline(tiff, const_cast<uint8_t *>(&rgb[y * row_bytes]), y, 0) == 1);
  TIFFClose(tiff);
}

void tiff_by_libtiff(const std::string &name) {
  TIFF *const tiff = TIFFOpen(name.c_str(), "r");
  must(tiff != nullptr);
  auto *const pixels = static_cast<uint8_t *>(std::malloc(picture_bytes));
  size_t done = 0;
  for (uint32_t strip = 0; strip < TIFFNumberOfStrips(tiff); ++strip) {
    const tmsize_t bytes = TIFFReadEncodedStrip(tiff, strip, pixels + done, -1);
    must(bytes > 0);
    done += static_cast<size_t>(bytes);
  }
  must(done == picture_bytes);
  TIFFClose(tiff);
  benchmark::DoNotOptimize(pixels);
  std::free(pixels);
}

void read_and_copy(const std::string &name) {
  const Bytes bytes = whole_file(name);
  auto *const pixels = static_cast<uint8_t *>(std::malloc(bytes.size()));
  std::memcpy(pixels, bytes.data(), bytes.size());
  benchmark::DoNotOptimize(pixels);
  std::free(pixels);
}

void add_tiff(const char *form, int compression, bool photo, uint32_t rows) {
  static std::vector<std::unique_ptr<TemporaryFile>> files;
  files.push_back(std::make_unique<TemporaryFile>(std::to_string(files.size()) + ".tif"));
  const std::string name = files.back()->name;
  write_tiff(name, picture(photo), compression, rows);
  const std::string workload = std::string("TIFF ") + form + (photo ? " photograph" : " plot") +
                               ", strips of " + std::to_string(rows);
  add(workload, "quorix", [=] { by_quorix(qqpitif, name); });
  add(workload, "libtiff", [=] { tiff_by_libtiff(name); });
  add(workload, "read and copy", [=] { read_and_copy(name); });
}
#endif

const bool registered = [] {
  for (const bool photo : {false, true}) {
    add_png(photo);
    add_gif(photo);
#ifdef HAVE_LIBTIFF_4
    add_tiff("raw", COMPRESSION_NONE, photo, 1);
    add_tiff("raw", COMPRESSION_NONE, photo, 16);
    add_tiff("LZW", COMPRESSION_LZW, photo, 16);
    add_tiff("PackBits", COMPRESSION_PACKBITS, photo, 16);
#endif
  }
  return true;
}();

}  // namespace

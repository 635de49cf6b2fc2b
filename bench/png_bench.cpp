// SPDX-License-Identifier: MIT
//
// Writing what a raster holds as PNG into memory. The limit is one call of deflate at the default
// level over rows that are there already, without filters; other writers start from the raster's
// pixels, as qqppng does.
#include <benchmark/benchmark.h>
#include <zlib.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#ifdef HAVE_LIBPNG
#include <png.h>
#endif
#ifdef HAVE_SPNG
#include <spng.h>
#endif

#include "bench/plot_picture.h"
#include "quorix/quorix.h"

namespace {

using Bytes = std::vector<uint8_t>;

struct Job {
  int32_t width, height;
  bool rgba;  // an RGBA raster as true colour, or a palette raster as indices
};

constexpr size_t palette_entries = 256;

size_t row_bytes(const Job &job) {
  return static_cast<size_t>(job.width) * (job.rgba ? 3 : 1);
}

const uint8_t *raster_row(const Job &job, int32_t y) {
  uint8_t *raster = nullptr;
  qqvptr(&raster);
  const size_t stride = static_cast<size_t>(job.width) * (job.rgba ? 4 : 1);
  return raster + static_cast<size_t>(y) * stride;
}

// Room for any of the streams: plots compress well.
Bytes target_for(const Job &job) {
  return Bytes(row_bytes(job) * static_cast<size_t>(job.height) / 4 + 100000);
}

void must(bool fine) {
  if (!fine) std::abort();
}

// ---- contenders: each writes one picture into `target` and gives its size

size_t by_quorix(const Job &job, Bytes *target) {
  static const std::vector<uint32_t> palette(palette_entries, 0x808080);
  const int32_t device = job.rgba ? -101 : 101;
  const int32_t order = 1;
  const int32_t colours = -static_cast<int32_t>(palette_entries);
  auto status = static_cast<int32_t>(target->size());
  qqppng(reinterpret_cast<char *>(target->data()), &device, &order, &job.width, &job.height,
         palette.data(), &colours, &status);
  must(status > 0);
  return static_cast<size_t>(status);
}

Bytes filtered_rows(const Job &job) {
  const size_t row = row_bytes(job) + 1;
  Bytes rows(row * static_cast<size_t>(job.height));
  for (int32_t y = 0; y < job.height; ++y) {
    uint8_t *const to = &rows[row * static_cast<size_t>(y)] + 1;
    qqvrdr(to, 0, y, job.rgba ? -job.width : job.width, 1);
  }
  return rows;
}

size_t by_deflate(const Bytes &rows, Bytes *target) {
  z_stream stream = {};
  must(deflateInit(&stream, Z_DEFAULT_COMPRESSION) == Z_OK);
  stream.next_in = const_cast<uint8_t *>(rows.data());
  stream.avail_in = static_cast<uInt>(rows.size());
  stream.next_out = target->data();
  stream.avail_out = static_cast<uInt>(target->size());
  must(deflate(&stream, Z_FINISH) == Z_STREAM_END);
  deflateEnd(&stream);
  return target->size() - stream.avail_out;
}

#ifdef HAVE_LIBPNG
struct PngOutput {
  Bytes *target;
  size_t count;
};

void take_bytes(png_structp png, png_bytep bytes, size_t count) {
  auto *output = static_cast<PngOutput *>(png_get_io_ptr(png));
  must(count <= output->target->size() - output->count);
  std::memcpy(output->target->data() + output->count, bytes, count);
  output->count += count;
}

void no_flush(png_structp /*png*/) {}

// Its own choice of filters, or none.
size_t by_libpng(const Job &job, Bytes *target, bool filters) {
  PngOutput output = {target, 0};
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &output, take_bytes, no_flush);
  png_set_IHDR(png, info, static_cast<png_uint_32>(job.width), static_cast<png_uint_32>(job.height),
               8, job.rgba ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  const png_color palette[palette_entries] = {};
  if (!job.rgba) png_set_PLTE(png, info, palette, palette_entries);
  if (!filters) png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
  png_write_info(png, info);
  if (job.rgba) png_set_filler(png, 0, PNG_FILLER_AFTER);
  for (int32_t y = 0; y < job.height; ++y)
    png_write_row(png, raster_row(job, y));
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return output.count;
}
#endif

#ifdef HAVE_SPNG
size_t by_spng(const Job &job, bool filters) {
  spng_ctx *const context = spng_ctx_new(SPNG_CTX_ENCODER);
  spng_set_option(context, SPNG_ENCODE_TO_BUFFER, 1);
  if (!filters) spng_set_option(context, SPNG_FILTER_CHOICE, SPNG_DISABLE_FILTERING);
  spng_ihdr header = {};
  header.width = static_cast<uint32_t>(job.width);
  header.height = static_cast<uint32_t>(job.height);
  header.bit_depth = 8;
  header.color_type = job.rgba ? SPNG_COLOR_TYPE_TRUECOLOR : SPNG_COLOR_TYPE_INDEXED;
  spng_set_ihdr(context, &header);
  static spng_plte palette = {};
  palette.n_entries = palette_entries;
  if (!job.rgba) spng_set_plte(context, &palette);
  must(spng_encode_image(context, nullptr, 0, SPNG_FMT_PNG,
                         SPNG_ENCODE_PROGRESSIVE | SPNG_ENCODE_FINALIZE) == 0);
  Bytes row(row_bytes(job));
  for (int32_t y = 0; y < job.height; ++y) {
    qqvrdr(row.data(), 0, y, job.rgba ? -job.width : job.width, 1);
    const int status = spng_encode_row(context, row.data(), row.size());
    must(status == 0 || status == SPNG_EOI);
  }
  size_t size = 0;
  int error = 0;
  void *const stream = spng_get_png_buffer(context, &size, &error);
  must(stream != nullptr);
  std::free(stream);
  spng_ctx_free(context);
  return size;
}
#endif

// ---- workloads

// Draws anew only where the raster shows another picture.
void open_raster(const Job &job) {
  static Job shown = {0, 0, false};
  if (shown.width == job.width && shown.height == job.height && shown.rgba == job.rgba) return;
  draw_plot(job.rgba ? -1 : 1, job.width, job.height);
  shown = job;
}

template <class Write>
void run(benchmark::State &state, const Job &job, Write write) {
  open_raster(job);
  Bytes target = target_for(job);
  size_t size = 0;
  for (auto _ : state)
    size = write(&target);
  state.counters["bytes"] = static_cast<double>(size);
}

void run_deflate(benchmark::State &state, const Job &job) {
  open_raster(job);
  const Bytes rows = filtered_rows(job);
  run(state, job, [&](Bytes *target) { return by_deflate(rows, target); });
}

void add(const std::string &workload, const Job &job) {
  const auto add_one = [&](const char *contender, auto work) {
    benchmark::RegisterBenchmark((workload + "/" + contender).c_str(), work)
        ->Unit(benchmark::kMillisecond);
  };
  add_one("quorix", [=](benchmark::State &state) {
    run(state, job, [&](Bytes *target) { return by_quorix(job, target); });
  });
  add_one("one deflate", [=](benchmark::State &state) { run_deflate(state, job); });
#ifdef HAVE_LIBPNG
  for (const bool filters : {false, true})
    add_one(filters ? "libpng" : "libpng unfiltered", [=](benchmark::State &state) {
      run(state, job, [&](Bytes *target) { return by_libpng(job, target, filters); });
    });
#endif
#ifdef HAVE_SPNG
  for (const bool filters : {false, true})
    add_one(filters ? "spng" : "spng unfiltered", [=](benchmark::State &state) {
      run(state, job, [&](Bytes *) { return by_spng(job, filters); });
    });
#endif
}

const bool registered = [] {
  add("PNG of an RGBA plot 1920x1080", {1920, 1080, true});
  add("PNG of a palette plot 1920x1080", {1920, 1080, false});
  add("PNG of an RGBA plot 7680x4320", {7680, 4320, true});
  return true;
}();

}  // namespace

// SPDX-License-Identifier: MIT
//
// A held picture at another size, against the plain loop over the pixels of the target that works
// out everything where it needs it. Both give the same bytes.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "bench/plot_picture.h"
#include "imagein/imagein.h"
#include "imagein/scale.h"
#include "quorix/quorix.h"

namespace {

using Bytes = std::vector<uint8_t>;

struct Job {
  int32_t from_width, from_height, width, height;
};

void must(bool fine) {
  if (!fine) std::abort();
}

Bytes picture_of(const Job &job) {
  Bytes rgb = photo_triples(job.from_width, job.from_height, 1.0);
  rgb.resize(rgb.size() + quorix::pixel_slack);
  return rgb;
}

// Where a target row or column lies.
struct Place {
  int32_t index;
  double share;
};

Place place_of(int32_t target, int32_t target_size, int32_t source_size) {
  const double place = static_cast<double>(target) * (source_size - 1) / (target_size - 1);
  auto index = static_cast<int32_t>(place);
  double share = place - index;
  if (index >= source_size - 1) {
    index = source_size - 2;
    share = 1.0;
  }
  return {index, share};
}

void plain_loop(const Job &job, const Bytes &from, Bytes *to) {
  uint8_t *out = to->data();
  for (int32_t y = 0; y < job.height; ++y) {
    const Place v = place_of(y, job.height, job.from_height);
    for (int32_t x = 0; x < job.width; ++x) {
      const Place h = place_of(x, job.width, job.from_width);
      const size_t step = 3 * static_cast<size_t>(job.from_width);
      const uint8_t *const p =
          &from[static_cast<size_t>(v.index) * step + 3 * static_cast<size_t>(h.index)];
      for (size_t k = 0; k < 3; ++k)
        *out++ = static_cast<uint8_t>(
            (1 - v.share) * (1 - h.share) * p[k] + (1 - v.share) * h.share * p[k + 3] +
            (1 - h.share) * v.share * p[step + k] + v.share * h.share * p[step + k + 3]);
    }
  }
}

void by_rows(const Job &job, const Bytes &from, Bytes *to, quorix::ScaleRgb scale) {
  std::vector<quorix::ScaleColumn> columns;
  for (int32_t x = 0; x < job.width; ++x) {
    const quorix::ScalePlace place = quorix::scale_place(x, job.width, job.from_width);
    columns.push_back({static_cast<size_t>(place.index), place.share, 1.0 - place.share});
  }
  const size_t step = 3 * static_cast<size_t>(job.from_width);
  for (int32_t y = 0; y < job.height; ++y) {
    const quorix::ScalePlace place = quorix::scale_place(y, job.height, job.from_height);
    const uint8_t *const upper = &from[static_cast<size_t>(place.index) * step];
    const quorix::ScaleRow row = {upper, upper + step, place.share, 1.0 - place.share};
    scale(row, columns.data(), columns.size(),
          to->data() + 3 * columns.size() * static_cast<size_t>(y));
  }
}

template <class Work>
void add(const std::string &workload, const char *contender, const Job &job, Work work) {
  benchmark::RegisterBenchmark((workload + "/" + contender).c_str(), [=](benchmark::State &state) {
    static Bytes from;
    static Bytes expected;
    if (from.empty()) {
      from = picture_of(job);
      expected.resize(3 * size_t{1920} * 1080 + 1);
      plain_loop(job, from, &expected);
    }
    Bytes to(expected.size());
    for (auto _ : state)
      work(job, from, &to);
    to.back() = expected.back();
    must(to == expected);
  })->Unit(benchmark::kMillisecond);
}

const bool registered = [] {
  const Job job = {4000, 3000, 1920, 1080};
  const std::string workload = "scaling 4000x3000 to 1920x1080";
  add(workload, "quorix", job, [](const Job &j, const Bytes &from, Bytes *to) {
    by_rows(j, from, to, quorix::scale_rgb());
  });
  add(workload, "without AVX2", job, [](const Job &j, const Bytes &from, Bytes *to) {
    by_rows(j, from, to, quorix::scale_rgb_plain);
  });
  add(workload, "plain loop", job, plain_loop);
  return true;
}();

}  // namespace

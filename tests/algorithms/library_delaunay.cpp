// SPDX-License-Identifier: MIT
//
// Calls qqdlau and looks behind the ends of its arrays.
#include "tests/algorithms/library_delaunay.h"

#include <algorithm>

#include "quorix/algorithms.h"

namespace quorix::testing {

namespace {

constexpr size_t guard_cells = 8;

template <class T>
bool is_filled(const std::vector<T> &values, size_t from, T value) {
  return std::all_of(values.begin() + static_cast<std::ptrdiff_t>(from), values.end(),
                     [value](T each) { return each == value; });
}

// The places of the last entry that differs from `untouched`, plus 1.
size_t written_entries(const std::vector<int32_t> &values, size_t count) {
  while (count > 0 && values[count - 1] == untouched_vertex)
    count--;
  return count;
}

}  // namespace

std::vector<double> with_room(std::vector<double> points) {
  points.insert(points.end(), 3, untouched_coordinate);
  return points;
}

LibraryTriangulation library_delaunay(const std::vector<double> &x, const std::vector<double> &y,
                                      int32_t n, int32_t nmax) {
  const size_t coordinates = x.size();
  const size_t capacity = static_cast<size_t>(std::max(nmax, 0));
  std::vector<double> xray = x;
  std::vector<double> yray = y;
  xray.insert(xray.end(), guard_cells, untouched_coordinate);
  yray.insert(yray.end(), guard_cells, untouched_coordinate);
  std::vector<int32_t> corner[3];
  for (std::vector<int32_t> &array : corner)
    array.assign(capacity + guard_cells, untouched_vertex);

  LibraryTriangulation run;
  run.triangulation.status = -1;
  run.result = qqdlau(xray.data(), yray.data(), n, corner[0].data(), corner[1].data(),
                      corner[2].data(), nmax, &run.ntri, &run.triangulation.status);

  for (const std::vector<int32_t> &array : corner) {
    if (!is_filled(array, capacity, untouched_vertex)) run.damage += "written past nmax; ";
    run.written = std::max(run.written, written_entries(array, capacity));
  }
  if (!is_filled(xray, coordinates, untouched_coordinate)) run.damage += "xray past n + 3; ";
  if (!is_filled(yray, coordinates, untouched_coordinate)) run.damage += "yray past n + 3; ";
  if (run.ntri < 0 || run.ntri > nmax) {
    run.damage += run.ntri == 0 ? "" : "ntri is out of range; ";
  } else {
    for (size_t i = 0; i < static_cast<size_t>(run.ntri); i++)
      run.triangulation.triangles.push_back({corner[0][i], corner[1][i], corner[2][i]});
  }
  xray.resize(coordinates);
  yray.resize(coordinates);
  run.triangulation.x = xray;
  run.triangulation.y = yray;
  return run;
}

}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// The walk through the whole list of triangles at each point, which defines the result.
#include "tests/algorithms/literal_delaunay.h"

#include <algorithm>
#include <cmath>

#include "tests/algorithms/literal_index_sort.h"

namespace quorix::literal {

namespace {

constexpr double eps = 1e-8;
constexpr double span_factor = 3.0;
constexpr float corner_x_single = 0.866F;
constexpr double corner_y = 0.5;
constexpr size_t least_edge_cap = 100;

constexpr int32_t done = 0;
constexpr int32_t array_too_small = 1;
constexpr int32_t too_many_edges = 3;
constexpr int32_t flat_triangle = 4;
constexpr int32_t too_many_triangles = 5;

struct Edge {
  int32_t from;  // 0: cancelled
  int32_t to;
};

struct Work {
  Triangulation result;
  std::vector<uint8_t> complete;
  std::vector<Edge> edges;
  std::vector<int32_t> order;
  size_t points;
  size_t edge_cap;
  size_t triangle_cap;
};

enum class Place { inside, outside, beyond, flat };

void write_corners(Work *work) {
  std::vector<double> &x = work->result.x;
  std::vector<double> &y = work->result.y;
  double xmin = x[0], xmax = x[0], ymin = y[0], ymax = y[0];
  for (size_t i = 0; i < work->points; i++) {
    if (x[i] < xmin) xmin = x[i];
    if (x[i] > xmax) xmax = x[i];
    if (y[i] < ymin) ymin = y[i];
    if (y[i] > ymax) ymax = y[i];
  }
  const double dx = xmax - xmin;
  const double dy = ymax - ymin;
  const double span = dy > dx ? span_factor * dy : span_factor * dx;
  const double xmid = (xmin + xmax) / 2.0;
  const double ymid = (ymin + ymax) / 2.0;
  const double corner_x = static_cast<double>(corner_x_single);
  const size_t n = work->points;
  x[n] = xmid - corner_x * span;
  y[n] = ymid - corner_y * span;
  x[n + 1] = xmid + corner_x * span;
  y[n + 1] = ymid - corner_y * span;
  x[n + 2] = xmid;
  y[n + 2] = ymid + span;
}

bool is_duplicate(const Work &work, size_t position) {
  const std::vector<double> &x = work.result.x;
  const std::vector<double> &y = work.result.y;
  const size_t p = static_cast<size_t>(work.order[position]);
  for (size_t back = position; back > 0; back--) {
    const size_t q = static_cast<size_t>(work.order[back - 1]);
    if (!(std::fabs(x[p] - x[q]) < eps)) return false;
    if (std::fabs(y[p] - y[q]) < eps) return true;
  }
  return false;
}

Place place_of_point(const Work &work, const Triangle &triangle, size_t p) {
  const std::vector<double> &x = work.result.x;
  const std::vector<double> &y = work.result.y;
  const size_t a = static_cast<size_t>(triangle[0]) - 1;
  const size_t b = static_cast<size_t>(triangle[1]) - 1;
  const size_t c = static_cast<size_t>(triangle[2]) - 1;
  const double ax = x[b] - x[a];
  const double ay = y[b] - y[a];
  const double bx = x[c] - x[a];
  const double by = y[c] - y[a];
  const double det = ax * by - ay * bx;
  if (std::fabs(det) < eps) return Place::flat;
  const double f = 0.5 / det;
  const double aa = ax * ax + ay * ay;
  const double bb = bx * bx + by * by;
  const double u = (aa * by - bb * ay) * f;
  const double v = (ax * bb - bx * aa) * f;
  const double r2 = u * u + v * v;
  const double hx = (x[a] + u) - x[p];
  if (!(r2 - eps > hx * hx)) return Place::beyond;
  const double hy = (y[a] + v) - y[p];
  return hx * hx + hy * hy + eps < r2 ? Place::inside : Place::outside;
}

void remove_triangle(Work *work, size_t slot) {
  std::vector<Triangle> &triangles = work->result.triangles;
  triangles[slot] = triangles.back();
  work->complete[slot] = work->complete.back();
  triangles.pop_back();
  work->complete.pop_back();
}

int32_t open_cavity(Work *work, size_t p) {
  work->edges.clear();
  size_t slot = 0;
  while (slot < work->result.triangles.size()) {
    if (work->complete[slot] != 0) {
      slot++;
      continue;
    }
    const Triangle triangle = work->result.triangles[slot];
    const Place place = place_of_point(*work, triangle, p);
    if (place == Place::flat) return flat_triangle;
    if (place != Place::inside) {
      if (place == Place::beyond) work->complete[slot] = 1;
      slot++;
      continue;
    }
    const size_t cavity = work->edges.size() / 3 + 1;
    work->result.largest_cavity = std::max(work->result.largest_cavity, cavity);
    if (work->edges.size() + 3 >= work->edge_cap) return too_many_edges;
    work->edges.push_back({triangle[0], triangle[1]});
    work->edges.push_back({triangle[1], triangle[2]});
    work->edges.push_back({triangle[2], triangle[0]});
    remove_triangle(work, slot);
  }
  return done;
}

void cancel_shared_edges(std::vector<Edge> *edges) {
  for (size_t j = 0; j + 1 < edges->size(); j++) {
    const Edge edge = (*edges)[j];
    if (edge.from == 0) continue;
    for (size_t k = j + 1; k < edges->size(); k++) {
      Edge &other = (*edges)[k];
      if (other.from == 0) continue;
      if (other.to == edge.from && other.from == edge.to) {
        (*edges)[j].from = 0;
        other.from = 0;
      }
    }
  }
}

int32_t insert_point(Work *work, size_t p) {
  const int32_t status = open_cavity(work, p);
  if (status != done) return status;
  cancel_shared_edges(&work->edges);
  for (const Edge &edge : work->edges) {
    if (edge.from == 0) continue;
    if (work->result.triangles.size() == work->triangle_cap) return too_many_triangles;
    work->result.triangles.push_back({edge.from, edge.to, static_cast<int32_t>(p) + 1});
    work->complete.push_back(0);
  }
  return done;
}

void remove_corners(Work *work) {
  const int32_t n = static_cast<int32_t>(work->points);
  size_t slot = 0;
  while (slot < work->result.triangles.size()) {
    const Triangle &triangle = work->result.triangles[slot];
    if (triangle[0] > n || triangle[1] > n || triangle[2] > n) {
      remove_triangle(work, slot);
    } else {
      slot++;
    }
  }
}

int32_t triangulate(Work *work) {
  const int32_t n = static_cast<int32_t>(work->points);
  for (int32_t i = 0; i < n; i++)
    work->order.push_back(i);
  index_sort(work->result.x.data(), work->order.data(), n);
  write_corners(work);
  work->result.triangles.push_back({n + 1, n + 2, n + 3});
  work->complete.push_back(0);
  for (size_t position = 0; position < work->points; position++) {
    if (position > 0 && is_duplicate(*work, position)) continue;
    const int32_t status = insert_point(work, static_cast<size_t>(work->order[position]));
    if (status != done) return status;
  }
  remove_corners(work);
  return done;
}

}  // namespace

Triangulation delaunay(const std::vector<double> &x, const std::vector<double> &y, int32_t n,
                       int32_t nmax) {
  Work work = {};
  work.result.x = x;
  work.result.y = y;
  if (n < 1) return work.result;
  if (int64_t{nmax} < 2 * int64_t{n} + 1) {
    work.result.status = array_too_small;
    return work.result;
  }
  work.points = static_cast<size_t>(n);
  work.edge_cap = std::max(work.points, least_edge_cap);
  work.triangle_cap = static_cast<size_t>(nmax);
  work.result.status = triangulate(&work);
  if (work.result.status != done) work.result.triangles.clear();
  return work.result;
}

}  // namespace quorix::literal

// SPDX-License-Identifier: MIT
//
// Triangles from the library qhull, where it is installed.
#include "tests/algorithms/qhull_delaunay.h"

#ifdef QUORIX_TEST_WITH_QHULL

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

extern "C" {
#include <libqhull_r/qhull_ra.h>
}

namespace quorix::testing {

namespace {

// One run of qhull with one of its command lines; what it found lives as long as this.
struct QhullRun {
  qhT state;
  std::vector<coordT> coordinates;

  QhullRun(const std::vector<double> &x, const std::vector<double> &y, const char *command) {
    for (size_t i = 0; i < x.size(); i++) {
      coordinates.push_back(x[i]);
      coordinates.push_back(y[i]);
    }
    qh_zero(&state, stderr);
    std::vector<char> line(command, command + std::char_traits<char>::length(command) + 1);
    const int failure = qh_new_qhull(&state, 2, static_cast<int>(x.size()), coordinates.data(),
                                     False, line.data(), nullptr, stderr);
    EXPECT_EQ(failure, 0);
  }
  ~QhullRun() {
    int blocks = 0;
    int bytes = 0;
    qh_freeqhull(&state, qh_ALL);
    qh_memfreeshort(&state, &blocks, &bytes);
  }
  QhullRun(const QhullRun &) = delete;
  QhullRun &operator=(const QhullRun &) = delete;
};

}  // namespace

std::set<std::array<int32_t, 3>> qhull_delaunay(const std::vector<double> &x,
                                                const std::vector<double> &y) {
  QhullRun run(x, y, "qhull d Qbb Qt");
  std::set<std::array<int32_t, 3>> triangles;
  for (const facetT *facet = run.state.facet_list; facet != nullptr && facet->next != nullptr;
       facet = facet->next) {
    if (facet->upperdelaunay) continue;
    std::array<int32_t, 3> triangle = {};
    size_t corners = 0;
    for (setelemT *element = facet->vertices->e; element->p != nullptr; element++) {
      const vertexT *vertex = static_cast<const vertexT *>(element->p);
      if (corners < 3) triangle[corners] = qh_pointid(&run.state, vertex->point) + 1;
      corners++;
    }
    EXPECT_EQ(corners, 3U);
    std::sort(triangle.begin(), triangle.end());
    triangles.insert(triangle);
  }
  return triangles;
}

std::vector<int32_t> qhull_hull(const std::vector<double> &x, const std::vector<double> &y) {
  QhullRun run(x, y, "qhull");
  std::vector<int32_t> corners;
  for (const vertexT *vertex = run.state.vertex_list; vertex != nullptr && vertex->next != nullptr;
       vertex = vertex->next)
    corners.push_back(qh_pointid(&run.state, vertex->point) + 1);
  return corners;
}

}  // namespace quorix::testing

#endif

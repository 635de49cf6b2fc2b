// SPDX-License-Identifier: MIT
//
// qqply1 and qqply2: merging, numbering, the file.
#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <limits>

#include "formats/ply_mesh.h"
#include "quorix/datafiles.h"
#include "tests/formats/ply_mesh.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix::testing {
namespace {

using Face = std::vector<Corner>;

class PlyWriter : public ::testing::Test {
 protected:
  void SetUp() override { discard_mesh(); }
  void TearDown() override { discard_mesh(); }

  // Ends the mesh; the text of the file.
  std::string written(const std::string &object = "thing") {
    EXPECT_EQ(end_mesh(folder_.file("a.ply"), object), 0);
    return text_of(read_whole_file(folder_.file("a.ply")));
  }

  TemporaryFolder folder_;
};

const Face triangle = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}};

TEST_F(PlyWriter, WritesHeaderVerticesAndFaces) {
  ASSERT_EQ(
      add_face({{0, 0.5, -1, 1, 0, 0.5}, {1.25, 0, 0, 0, 1, 0}, {0, 1e6, 0.0000005, 0, 0, 1}}), 0);
  // 0.0000005 is stored as a float that is a little less.
  EXPECT_EQ(written("a name with blanks"),
            "ply\n"
            "format ascii 1.0\n"
            "comment author: Quorix\n"
            "comment object: a name with blanks\n"
            "element vertex 3\n"
            "property float x\n"
            "property float y\n"
            "property float z\n"
            "property uchar red\n"
            "property uchar green\n"
            "property uchar blue\n"
            "element face 1\n"
            "property list uchar int vertex_indices\n"
            "end_header\n"
            "0.000000 0.500000 -1.000000 255 0 128\n"
            "1.250000 0.000000 0.000000 0 255 0\n"
            "0.000000 1000000.000000 0.000000 0 0 255\n"
            "3 0 1 2\n");
}

TEST_F(PlyWriter, MergesTheCornersThatTwoTrianglesShare) {
  ASSERT_EQ(add_face(triangle), 0);
  ASSERT_EQ(add_face({{1, 0, 0}, {1, 1, 0}, {0, 1, 0}}), 0);
  const PlyFile file = parse_ply(written());
  EXPECT_EQ(file.vertices.size(), 4U);
  ASSERT_EQ(file.faces.size(), 2U);
  EXPECT_EQ(file.faces[0], (std::vector<int32_t>{0, 1, 2}));
  EXPECT_EQ(file.faces[1], (std::vector<int32_t>{1, 3, 2}));
}

TEST_F(PlyWriter, MergesCornersOfOneFace) {
  ASSERT_EQ(add_face({{1, 2, 3}, {1, 2, 3}, {4, 5, 6}, {1, 2, 3}}), 0);
  const PlyFile file = parse_ply(written());
  EXPECT_EQ(file.vertices.size(), 2U);
  EXPECT_EQ(file.faces[0], (std::vector<int32_t>{0, 0, 1, 0}));
}

TEST_F(PlyWriter, KeepsCornersOfDifferentColoursApart) {
  ASSERT_EQ(
      add_face({{1, 2, 3, 1, 0, 0}, {1, 2, 3, 0, 1, 0}, {1, 2, 3, 0, 0, 1}, {1, 2, 3, 1, 0, 0}}),
      0);
  const PlyFile file = parse_ply(written());
  EXPECT_EQ(file.vertices.size(), 3U);
  EXPECT_EQ(file.faces[0], (std::vector<int32_t>{0, 1, 2, 0}));
}

TEST_F(PlyWriter, MergesWhatIsEqualOnceItIsStored) {
  // Doubles that narrow to one float, colours that round to one byte.
  ASSERT_EQ(add_face({{0.1, 0, 0, 0.5, 0, 0},
                      {0.1 + 1e-12, 0, 0, 0.5001, 0, 0},
                      {0.1 + 1e-6, 0, 0, 0.5, 0, 0}}),
            0);
  EXPECT_EQ(parse_ply(written()).faces[0], (std::vector<int32_t>{0, 0, 1}));
}

TEST_F(PlyWriter, WritesColoursByTheirLowByte) {
  const double components[] = {0, 1, 0.5, 0.25, -0.2, 1.2, 2, -1, 1.0 / 255, 0.499 / 255, 10};
  // trunc(255 c + 0.5): 0 255 128 64 -50 306 510 -254 1 0 2550
  const double bytes[] = {0, 255, 128, 64, 206, 50, 254, 2, 1, 0, 246};
  Face face;
  for (const double c : components)
    face.push_back({static_cast<double>(face.size()), 0, 0, c, c, c});
  ASSERT_EQ(add_face(face), 0);
  const PlyFile file = parse_ply(written());
  ASSERT_EQ(file.vertices.size(), std::size(bytes));
  for (size_t i = 0; i < std::size(bytes); ++i) {
    EXPECT_EQ(file.vertices[i].r, bytes[i]) << components[i];
    EXPECT_EQ(file.vertices[i].g, bytes[i]) << components[i];
    EXPECT_EQ(file.vertices[i].b, bytes[i]) << components[i];
  }
}

TEST_F(PlyWriter, TakesColoursThatAreNoNumbersOrTooLarge) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  ASSERT_EQ(add_face({{0, 0, 0, nan, inf, -inf}, {1, 0, 0, 1e300, -1e300, 1e10}}), 0);
  const PlyFile file = parse_ply(written());
  // Beyond 32 bits the nearest end counts: 2147483647 is 255, -2147483648 is 0.
  EXPECT_EQ(file.vertices[0].r, 0);
  EXPECT_EQ(file.vertices[0].g, 255);
  EXPECT_EQ(file.vertices[0].b, 0);
  EXPECT_EQ(file.vertices[1].r, 255);
  EXPECT_EQ(file.vertices[1].g, 0);
  EXPECT_EQ(file.vertices[1].b, 255);
}

TEST_F(PlyWriter, TakesTheTwoZeroesForOneAndKeepsTheFirst) {
  ASSERT_EQ(add_face({{-0.0, 0, 1}, {0.0, -0.0, 1}, {0.0, 0.0, -0.0}, {-0.0, -0.0, 0.0}}), 0);
  const std::string text = written();
  EXPECT_EQ(parse_ply(text).faces[0], (std::vector<int32_t>{0, 0, 1, 1}));
  EXPECT_NE(text.find("\n-0.000000 0.000000 1.000000 0 0 0\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\n0.000000 0.000000 -0.000000 0 0 0\n"), std::string::npos) << text;
}

TEST_F(PlyWriter, NeverMergesWhatIsNoNumber) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  ASSERT_EQ(add_face({{nan, 0, 0}, {nan, 0, 0}, {0, nan, 0}, {0, 0, nan}, {0, 0, nan}}), 0);
  const std::string text = written();
  EXPECT_NE(text.find("element vertex 5\n"), std::string::npos);
  EXPECT_NE(text.find("\n5 0 1 2 3 4\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\nnan 0.000000 0.000000 0 0 0\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\n0.000000 0.000000 nan 0 0 0\n"), std::string::npos) << text;
}

TEST_F(PlyWriter, MergesInfinities) {
  const double inf = std::numeric_limits<double>::infinity();
  ASSERT_EQ(add_face({{inf, 0, 0}, {1e300, 0, 0}, {-inf, 0, 0}, {-1e39, 0, 0}}), 0);
  const std::string text = written();
  EXPECT_NE(text.find("\n4 0 0 1 1\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\ninf 0.000000"), std::string::npos) << text;
  EXPECT_NE(text.find("\n-inf 0.000000"), std::string::npos) << text;
}

TEST_F(PlyWriter, WritesSixDecimalsOfTheExactFloat) {
  LiteralMesh mesh;
  RandomNumbers random(5);
  Face face;
  for (const double v :
       {1e-7, 5e-7, 4.9999997e-7, 0.1, 0.0000015, 0.9999995, 0.99999949, 1.0 / 3, 9.9999999,
        16777216.0, 3.4028235e38, 1e-45, 123456.789, 0.5, 2.5e-6, 8388607.5})
    for (const double sign : {1.0, -1.0})
      face.push_back({sign * v, v / 3, -v});
  for (int i = 0; i < 20000; ++i) {
    // Any bits that are no NaN, and numbers of everyday size with all their digits.
    uint32_t bits = random.word();
    if ((bits & 0x7F800000U) == 0x7F800000U) bits &= 0xBFFFFFFFU;
    float value = 0;
    static_assert(sizeof(value) == sizeof(bits));
    std::memcpy(&value, &bits, sizeof(value));
    face.push_back({value, random.between(-2000000, 2000000) / 997.0,
                    random.between(-1000000, 1000000) / 1000000.0 + 0.0000005});
  }
  ASSERT_EQ(add_face(face), 0);
  mesh.add(face);
  const bool equal = written() == mesh.text("thing");
  EXPECT_TRUE(equal);
}

TEST_F(PlyWriter, FollowsNoLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char *name : {"de_DE.UTF-8", "de_DE", "German_Germany.1252", "fr_FR.UTF-8"})
    if (std::setlocale(LC_ALL, name) != nullptr) break;
  ASSERT_EQ(add_face({{0.5, 1.5, 2.5}}), 0);
  const std::string text = written();
  std::setlocale(LC_ALL, before.c_str());
  EXPECT_NE(text.find("\n0.500000 1.500000 2.500000 0 0 0\n"), std::string::npos) << text;
}

TEST_F(PlyWriter, TakesFacesOfAnySize) {
  LiteralMesh mesh;
  for (const Face &face : {Face{}, Face{{1, 2, 3}}, Face{{1, 2, 3}, {4, 5, 6}}, triangle, Face{}}) {
    ASSERT_EQ(add_face(face), 0);
    mesh.add(face);
  }
  const std::string text = written();
  EXPECT_EQ(text, mesh.text("thing"));
  EXPECT_NE(text.find("\n0\n"), std::string::npos);
}

TEST_F(PlyWriter, RefusesNegativeCounts) {
  EXPECT_EQ(add_face(triangle, -1), 1);
  EXPECT_EQ(add_face(triangle, INT32_MIN), 1);
  ASSERT_EQ(add_face(triangle), 0);
  EXPECT_EQ(add_face(triangle, -3), 1);
  ASSERT_EQ(add_face(triangle), 0);
  EXPECT_EQ(parse_ply(written()).faces.size(), 2U);
}

TEST_F(PlyWriter, StartsAFreshMeshAfterEachFile) {
  ASSERT_EQ(add_face(triangle), 0);
  written();
  ASSERT_EQ(add_face({{7, 7, 7}}), 0);
  const PlyFile file = parse_ply(written("next"));
  EXPECT_EQ(file.object, "next");
  EXPECT_EQ(file.vertices.size(), 1U);
  EXPECT_EQ(file.faces.size(), 1U);
}

TEST_F(PlyWriter, DiscardsAMeshWithoutTouchingTheDisk) {
  for (const int32_t mode : {1, -1, 2, INT32_MAX}) {
    FailingFiles files;
    ASSERT_EQ(add_face(triangle), 0);
    EXPECT_EQ(end_mesh(folder_.file("b.ply"), "thing", mode), 0);
    EXPECT_EQ(files.calls(), 0U);
    EXPECT_FALSE(file_exists(folder_.file("b.ply")));
  }
  ASSERT_EQ(add_face({{7, 7, 7}}), 0);
  EXPECT_EQ(parse_ply(written()).vertices.size(), 1U);
}

TEST_F(PlyWriter, DoesNothingWithoutAMesh) {
  EXPECT_EQ(end_mesh(folder_.file("b.ply"), "thing", 0), 0);
  EXPECT_EQ(end_mesh(folder_.file("b.ply"), "thing", 1), 0);
  EXPECT_FALSE(file_exists(folder_.file("b.ply")));
}

TEST_F(PlyWriter, TellsThatTheFileCannotBeCreatedAndReleasesTheMesh) {
  const std::string names[] = {folder_.file("no/such/folder"), "", std::string(100000, 'n')};
  for (const std::string &name : names) {
    FailingMemory memory;
    ASSERT_EQ(add_face(triangle), 0);
    EXPECT_EQ(end_mesh(name, "thing"), 1);
    EXPECT_EQ(memory.live_blocks(), 0U);
  }
}

TEST_F(PlyWriter, TakesObjectNamesOfAnyLength) {
  const std::string name(100000, 'o');
  ASSERT_EQ(add_face(triangle), 0);
  EXPECT_EQ(parse_ply(written(name)).object, name);
  ASSERT_EQ(add_face(triangle), 0);
  EXPECT_EQ(parse_ply(written("100% %s %d %n")).object, "100% %s %d %n");
  ASSERT_EQ(add_face(triangle), 0);
  EXPECT_EQ(parse_ply(written("")).object, "");
}

// ---- numbering

TEST_F(PlyWriter, NumbersVerticesLikeALiteralScan) {
  for (uint32_t seed = 1; seed <= 12; ++seed) {
    RandomNumbers random(seed);
    LiteralMesh mesh;
    const uint32_t grid = 2 + 3 * seed;
    for (int i = 0; i < 400; ++i) {
      Face face(random.below(7));
      for (Corner &c : face) {
        c = {static_cast<double>(random.below(grid)) - 2,
             static_cast<double>(random.below(3)) * 0.1,
             static_cast<double>(random.below(2)),
             random.below(2) * 0.5,
             random.below(2) * 1.0,
             0.3};
        if (random.below(20) == 0) c.z = -0.0;
      }
      ASSERT_EQ(add_face(face), 0);
      mesh.add(face);
    }
    EXPECT_EQ(written(), mesh.text("thing")) << seed;
  }
}

TEST_F(PlyWriter, NumbersManyDifferentVertices) {
  // Past the 10,000 vertices and 40,000 entries that the mesh starts with, more than once.
  Face face;

  for (int32_t i = 0; i < 30000; i += 3) {
    face = {{static_cast<double>(i), 0, 0}, {static_cast<double>(i) + 1, 0, 0}, {0, i * 0.5, 1}};
    ASSERT_EQ(add_face(face), 0);
  }
  for (int32_t i = 0; i < 30000; i += 3)
    ASSERT_EQ(add_face({{static_cast<double>(i), 0, 0}, {static_cast<double>(i) + 1, 0, 0}}), 0);
  const PlyFile file = parse_ply(written());
  ASSERT_EQ(file.vertices.size(), 30000U);
  ASSERT_EQ(file.faces.size(), 20000U);
  for (size_t i = 0; i < 10000; ++i) {
    const auto first = static_cast<int32_t>(3 * i);
    ASSERT_EQ(file.faces[i], (std::vector<int32_t>{first, first + 1, first + 2}));
    ASSERT_EQ(file.faces[10000 + i], (std::vector<int32_t>{first, first + 1}));
    ASSERT_EQ(file.vertices[3 * i].x, first);
    ASSERT_EQ(file.vertices[3 * i + 2].y, first * 0.5);
  }
}

TEST_F(PlyWriter, TakesAFaceLargerThanAnyStep) {
  Face face;
  for (int32_t i = 0; i < 130000; ++i)
    face.push_back({static_cast<double>(i % 65000), 1, 2});
  ASSERT_EQ(add_face(triangle), 0);
  ASSERT_EQ(add_face(face), 0);
  const PlyFile file = parse_ply(written());
  ASSERT_EQ(file.vertices.size(), 65003U);
  ASSERT_EQ(file.faces[1].size(), 130000U);
  for (size_t i = 0; i < 130000; ++i)
    ASSERT_EQ(file.faces[1][i], static_cast<int32_t>(3 + i % 65000));
}

// ---- failures

TEST_F(PlyWriter, GoesOnWhereTheFirstMemoryIsRefused) {
  for (size_t n = 1;; ++n) {
    FailingMemory memory(n);
    const int32_t status = add_face(triangle);
    if (!memory.failed()) {
      EXPECT_EQ(status, 0);
      discard_mesh();
      EXPECT_EQ(memory.live_blocks(), 0U);
      break;
    }
    EXPECT_EQ(status, 1);
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    // Nothing stands in the way of the next.
    EXPECT_EQ(add_face(triangle), 0);
    discard_mesh();
  }
}

TEST_F(PlyWriter, KnowsVerticesApartByEachComponentAlone) {
  const Corner base = {1, 2, 3, 0.2, 0.4, 0.6};
  Face corners = {base};
  for (size_t i = 0; i < 6; ++i) {
    Corner other = base;
    double *const components[] = {&other.x, &other.y, &other.z, &other.r, &other.g, &other.b};
    *components[i] += 0.25;
    corners.push_back(other);
  }
  corners.push_back(base);
  ASSERT_EQ(add_face(corners), 0);
  const PlyFile file = parse_ply(written());
  EXPECT_EQ(file.vertices.size(), 7U);
  ASSERT_EQ(file.faces.size(), 1U);
  EXPECT_EQ(file.faces[0], (std::vector<int32_t>{0, 1, 2, 3, 4, 5, 6, 0}));
}

TEST_F(PlyWriter, FindsVerticesAgainAfterItsTableGrewAroundSomeWithNaN) {
  constexpr int32_t faces = 6000;  // more vertices than half of the first table's slots
  const double nan = std::numeric_limits<double>::quiet_NaN();
  LiteralMesh expected;
  const auto add = [&](int32_t i) {
    const double place = i;
    const Face face = {{place, 0, 0}, {nan, place, 0}, {place, 1, 0}};
    ASSERT_EQ(add_face(face), 0);
    expected.add(face);
  };
  for (int32_t i = 0; i < faces; ++i)
    add(i);
  for (const int32_t i : {0, 1, 4321, faces - 1})
    add(i);
  const std::string text = written();
  EXPECT_TRUE(text == expected.text("thing"));
  // The vertex with a NaN equals none, so each of the last faces brings one and finds two.
  EXPECT_NE(text.find("element vertex 18004\n"), std::string::npos);
}

TEST(PlyMesh, IsLostRatherThanHaveMoreVerticesThan32BitsCount) {
  PlyMesh *const mesh = create_ply_mesh();
  ASSERT_NE(mesh, nullptr);
  mesh->vertex_count = INT32_MAX - 3;
  const FailingMemory memory;
  EXPECT_FALSE(reserve_ply_face(mesh, 4));
  EXPECT_TRUE(mesh->lost);
  EXPECT_EQ(memory.requests(), 0U);
  release_ply_mesh(mesh);
}

TEST(PlyMesh, MayBeMissingWhenItIsReleased) {
  const FailingMemory memory(1);
  PlyMesh *const mesh = create_ply_mesh();
  EXPECT_EQ(mesh, nullptr);
  release_ply_mesh(mesh);
  EXPECT_EQ(memory.live_blocks(), 0U);
}

// A mesh that is about to grow both of its lists.
void nearly_fill_mesh() {
  for (int32_t i = 0; i < 9990; ++i)
    ASSERT_EQ(add_face({{static_cast<double>(i), 0, 0},
                        {static_cast<double>(i), 0, 0},
                        {static_cast<double>(i), 0, 0}}),
              0);
}

// Lets it grow, and ends it, while request n is refused; answers whether it was.
bool grow_and_end_mesh(size_t n, const std::string &file) {
  FailingMemory memory(n);
  bool lost = false;
  for (int32_t i = 0; i < 60; ++i) {
    const int32_t status = add_face({{i + 0.5, 1, 0}, {i + 0.5, 2, 0}, {i + 0.5, 3, 0}});
    EXPECT_TRUE(status == 0 || (status == 1 && memory.failed())) << status;
    lost = lost || status != 0;
  }
  EXPECT_EQ(lost, memory.failed()) << "each refusal while it grows has a status";
  const int32_t ended = end_mesh(file, "thing");
  EXPECT_TRUE(ended == 0 || (ended == 1 && memory.failed())) << ended;
  EXPECT_EQ(memory.live_blocks(), 0U);
  return memory.failed();
}

TEST_F(PlyWriter, SurvivesEveryRefusalWhileItGrows) {
  size_t refusals = 0;
  for (bool refused = true; refused; ++refusals) {
    nearly_fill_mesh();
    refused = grow_and_end_mesh(refusals + 1, folder_.file("a.ply"));
    // A fresh mesh knows nothing of it.
    EXPECT_EQ(add_face(triangle), 0);
    EXPECT_EQ(parse_ply(written()).vertices.size(), 3U);
    ASSERT_LT(refusals, 100U);
  }
  EXPECT_GE(refusals, 3U);
}

TEST_F(PlyWriter, StaysAsItWasWithoutMemoryForMoreFaces) {
  const Face point = {{5, 5, 5}, {5, 5, 5}, {5, 5, 5}};
  for (int i = 0; i < 9000; ++i)
    ASSERT_EQ(add_face(point), 0);
  size_t added = 9000;
  {
    FailingMemory memory(1);
    for (int i = 0; i < 100000 && !memory.failed(); ++i) {
      const int32_t status = add_face(point);
      ASSERT_EQ(status, memory.failed() ? 1 : 0);
      added += status == 0 ? 1 : 0;
    }
    ASSERT_TRUE(memory.failed());
  }
  EXPECT_EQ(add_face(point), 0);
  const PlyFile file = parse_ply(written());
  EXPECT_EQ(file.faces.size(), added + 1);
  EXPECT_EQ(file.vertices.size(), 1U);
}

TEST_F(PlyWriter, IsLostWithoutMemoryForMoreVertices) {
  double next = 0;
  for (; next < 9000; ++next)
    ASSERT_EQ(add_face({{next, 5, 5}}), 0);
  {
    FailingMemory memory(1);
    for (int i = 0; i < 100000 && !memory.failed(); ++i, ++next) {
      const int32_t status = add_face({{next, 5, 5}});
      ASSERT_EQ(status, memory.failed() ? 1 : 0);
    }
    ASSERT_TRUE(memory.failed());
  }
  for (int i = 0; i < 3; ++i)
    EXPECT_EQ(add_face({{0, 5, 5}}), 1);
  EXPECT_EQ(end_mesh(folder_.file("a.ply"), "thing"), 1);
  EXPECT_EQ(add_face(triangle), 0);
  EXPECT_EQ(parse_ply(written()).vertices.size(), 3U);
}

TEST_F(PlyWriter, SurvivesEveryFailingFileCall) {
  MemoryFiles disk;
  for (size_t n = 1;; ++n) {
    FailingFiles files(n);
    FailingMemory memory;
    ASSERT_EQ(add_face(triangle), 0);
    const int32_t status = end_mesh("a", "thing");
    EXPECT_TRUE(status == 0 || status == 1);
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    if (!files.failed()) break;
    ASSERT_LT(n, 10000U);
  }
}

TEST_F(PlyWriter, KeepsItsFileOpenThoughAllOfItIsThere) {
  FailingFiles files;
  ASSERT_EQ(add_face(triangle), 0);
  const PlyFile file = parse_ply(written());
  EXPECT_EQ(file.faces.size(), 1U);
  EXPECT_EQ(files.open_files(), 1U) << "kept: the stream is never closed";
}

TEST_F(PlyWriter, ReplacesAFileThatWasThere) {
  write_whole_file(folder_.file("a.ply"), Bytes(100000, 'x'));
  ASSERT_EQ(add_face(triangle), 0);
  EXPECT_EQ(parse_ply(written()).faces.size(), 1U);
}

TEST_F(PlyWriter, WritesFileAfterFileEachComplete) {
  for (int i = 0; i < 20; ++i) {
    ASSERT_EQ(add_face({{static_cast<double>(i), 0, 0}}), 0);
    const std::string name = folder_.file("file" + std::to_string(i));
    ASSERT_EQ(end_mesh(name, "thing"), 0);
    EXPECT_EQ(parse_ply(text_of(read_whole_file(name))).vertices[0].x, i);
  }
}

}  // namespace
}  // namespace quorix::testing

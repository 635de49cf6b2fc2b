// SPDX-License-Identifier: MIT
//
// The byte source over memory, over files in memory, over real files and over a made-up file of
// five gigabytes.
#include "base/byte_source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"
#include "tests/support/temporary_folder.h"

namespace quorix {
namespace {

using testing::FailingFiles;
using testing::FailingMemory;
using testing::MemoryFiles;
using testing::TemporaryFolder;

using Bytes = std::vector<uint8_t>;

// Different at every place, so that a byte from the wrong place shows.
Bytes some_bytes(size_t count) {
  std::mt19937 random(51);
  Bytes bytes(count);
  for (uint8_t &byte : bytes)
    byte = static_cast<uint8_t>(random());
  return bytes;
}

// Runs a check on a source over memory, and on one over a file.
void on_both(const Bytes &bytes, const std::function<void(ByteSource *)> &check) {
  {
    SCOPED_TRACE("memory");
    ByteSource source;
    open_memory_source(&source, bytes.data(), bytes.size());
    check(&source);
  }
  SCOPED_TRACE("file");
  MemoryFiles files;
  files.put("in", bytes);
  ByteSource source;
  ASSERT_TRUE(open_source(&source, "in"));
  check(&source);
}

// What a source must be like after any failure.
void expect_dead(ByteSource *source) {
  EXPECT_TRUE(source->failed);
  EXPECT_EQ(bytes_left(*source), 0U);
  EXPECT_TRUE(source_at_end(*source));
  EXPECT_FALSE(fits(*source, 0, 0));
  EXPECT_FALSE(fits(*source, 1, 1));
  EXPECT_EQ(read_u8(source), 0);
  EXPECT_EQ(read_i8(source), 0);
  EXPECT_EQ(read_u16_le(source), 0);
  EXPECT_EQ(read_u16_be(source), 0);
  EXPECT_EQ(read_u32_le(source), 0U);
  EXPECT_EQ(read_u32_be(source), 0U);
  uint8_t place[4] = {1, 2, 3, 4};
  EXPECT_EQ(read_available(source, place, 4), 0U);
  EXPECT_EQ(place[0], 1);
  EXPECT_EQ(read_bytes(source, place, 4), 0U);
  EXPECT_EQ(Bytes(place, place + 4), Bytes(4, 0));
  skip_bytes(source, 0);
  seek_source(source, 0);
  EXPECT_TRUE(source->failed);
  EXPECT_EQ(read_u8(source), 0);
}

TEST(ByteSource, ReadsNumbersOfBothByteOrders) {
  const Bytes bytes = {0x01, 0x02, 0x03, 0x84, 0x85, 0x86, 0x07,
                       0x88, 0x89, 0x0A, 0x0B, 0x8C, 0x8D};
  on_both(bytes, [](ByteSource *source) {
    EXPECT_EQ(read_u8(source), 0x01);
    EXPECT_EQ(read_u16_le(source), 0x0302);
    EXPECT_EQ(read_u16_be(source), 0x8485);
    EXPECT_EQ(read_u32_le(source), 0x89880786U);
    EXPECT_EQ(read_u32_be(source), 0x0A0B8C8DU);
    EXPECT_TRUE(source_at_end(*source));
    EXPECT_FALSE(source->failed);
    seek_source(source, 1);
    EXPECT_EQ(read_u16(source, ByteOrder::big), 0x0203);
    EXPECT_EQ(read_u16(source, ByteOrder::little), 0x8584);
    EXPECT_EQ(read_u32(source, ByteOrder::big), 0x86078889U);
    EXPECT_EQ(read_u32(source, ByteOrder::little), 0x8D8C0B0AU);
    EXPECT_FALSE(source->failed);
  });
}

TEST(ByteSource, ReadsNegativeNumbersInTwosComplement) {
  const Bytes bytes = {0xFF, 0xFE, 0xFF, 0xFF, 0xFD, 0xFC, 0xFF,
                       0xFF, 0xFF, 0x80, 0x00, 0x00, 0x00};
  on_both(bytes, [](ByteSource *source) {
    EXPECT_EQ(read_i8(source), -1);
    EXPECT_EQ(read_i16_le(source), -2);
    EXPECT_EQ(read_i16_be(source), -3);
    EXPECT_EQ(read_i32_le(source), -4);
    EXPECT_EQ(read_i32_be(source), INT32_MIN);
    EXPECT_FALSE(source->failed);
  });
}

TEST(ByteSource, TellsWhereItStandsAndWhatIsLeft) {
  on_both(some_bytes(20), [](ByteSource *source) {
    EXPECT_EQ(source->size, 20U);
    EXPECT_EQ(source_position(*source), 0U);
    EXPECT_EQ(bytes_left(*source), 20U);
    read_u32_le(source);
    skip_bytes(source, 6);
    EXPECT_EQ(source_position(*source), 10U);
    EXPECT_EQ(bytes_left(*source), 10U);
    EXPECT_FALSE(source_at_end(*source));
    skip_bytes(source, 10);
    EXPECT_EQ(source_position(*source), 20U);
    EXPECT_TRUE(source_at_end(*source));
    EXPECT_FALSE(source->failed);
    seek_source(source, 0);
    EXPECT_EQ(bytes_left(*source), 20U);
  });
}

TEST(ByteSource, HoldsCountsAgainstTheBytesThatAreLeft) {
  on_both(some_bytes(21), [](ByteSource *source) {
    read_u8(source);
    EXPECT_TRUE(fits(*source, 20, 1));
    EXPECT_FALSE(fits(*source, 21, 1));
    EXPECT_TRUE(fits(*source, 6, 3));
    EXPECT_FALSE(fits(*source, 7, 3));
    EXPECT_TRUE(fits(*source, 1, 20));
    EXPECT_FALSE(fits(*source, 1, 21));
    EXPECT_TRUE(fits(*source, 0, UINT64_MAX));
    EXPECT_TRUE(fits(*source, UINT64_MAX, 0));
    EXPECT_FALSE(fits(*source, UINT64_MAX, UINT64_MAX));
    EXPECT_FALSE(fits(*source, uint64_t{1} << 63, 2));  // the product wraps to zero
    skip_bytes(source, 20);
    EXPECT_TRUE(fits(*source, 0, 8));
    EXPECT_FALSE(fits(*source, 1, 1));
  });
}

TEST(ByteSource, GivesZerosForWhatIsMissingAndFails) {
  on_both({1, 2, 3}, [](ByteSource *source) {
    uint8_t place[6] = {9, 9, 9, 9, 9, 9};
    EXPECT_EQ(read_bytes(source, place, 5), 3U);
    EXPECT_EQ(Bytes(place, place + 6), (Bytes{1, 2, 3, 0, 0, 9}));
    expect_dead(source);
  });
}

TEST(ByteSource, StopsAtTheEndWithoutFailureWhereFewerBytesWillDo) {
  on_both({1, 2, 3}, [](ByteSource *source) {
    uint8_t place[6] = {9, 9, 9, 9, 9, 9};
    EXPECT_EQ(read_available(source, place, 5), 3U);
    EXPECT_EQ(Bytes(place, place + 6), (Bytes{1, 2, 3, 9, 9, 9}));
    EXPECT_EQ(read_available(source, place, 5), 0U);
    EXPECT_EQ(read_bytes(source, place, 0), 0U);
    EXPECT_FALSE(source->failed);
  });
}

TEST(ByteSource, GivesNoPartOfANumberThatIsCut) {
  on_both({0xFF, 0xFF, 0xFF}, [](ByteSource *source) {
    EXPECT_EQ(read_u32_be(source), 0U);
    expect_dead(source);
  });
  on_both({0xFF}, [](ByteSource *source) {
    EXPECT_EQ(read_u16_le(source), 0U);
    expect_dead(source);
  });
  on_both({}, [](ByteSource *source) {
    EXPECT_EQ(read_u8(source), 0U);
    expect_dead(source);
  });
}

TEST(ByteSource, FailsOnAJumpBeyondTheEndAndStandsOnTheEndItself) {
  on_both(some_bytes(10), [](ByteSource *source) {
    seek_source(source, 10);
    EXPECT_FALSE(source->failed);
    EXPECT_TRUE(source_at_end(*source));
    seek_source(source, 11);
    expect_dead(source);
  });
  on_both(some_bytes(10), [](ByteSource *source) {
    read_u8(source);
    skip_bytes(source, 10);
    expect_dead(source);
  });
  on_both(some_bytes(10), [](ByteSource *source) {
    read_u8(source);
    skip_bytes(source, UINT64_MAX);  // the position would wrap to 0
    expect_dead(source);
  });
}

TEST(ByteSource, FindsItsPlaceAgainAfterJumpsWithoutAReadBetween) {
  const Bytes bytes = some_bytes(4 * source_buffer_size);
  on_both(bytes, [&](ByteSource *source) {
    EXPECT_EQ(read_u8(source), bytes[0]);
    seek_source(source, 3 * source_buffer_size);
    seek_source(source, 0);
    EXPECT_EQ(read_u8(source), bytes[0]);
    skip_bytes(source, 2 * source_buffer_size);
    seek_source(source, source_position(*source) - 1);
    EXPECT_EQ(read_u8(source), bytes[2 * source_buffer_size]);
  });
}

// A small format with every kind of read; the second value is where its number ends.
using Values = std::vector<std::pair<uint64_t, size_t>>;

Values read_everything(ByteSource *source) {
  Values values;
  const auto note = [&](uint64_t value, size_t end) { values.emplace_back(value, end); };
  note(read_u8(source), 1);
  note(read_u16_le(source), 3);
  note(read_u16_be(source), 5);
  note(read_u32_le(source), 9);
  note(read_u32_be(source), 13);
  note(static_cast<uint8_t>(read_i8(source)), 14);
  skip_bytes(source, 3);
  note(read_u8(source), 18);
  uint8_t block[5];
  read_bytes(source, block, sizeof block);
  note(block[4], 23);
  seek_source(source, 25);
  note(read_u16(source, ByteOrder::big), 27);
  return values;
}

TEST(ByteSource, KeepsWhatStandsBeforeACutAndGivesZerosAfterIt) {
  const Bytes whole = some_bytes(27);
  Values expected;
  on_both(whole, [&](ByteSource *source) {
    expected = read_everything(source);
    EXPECT_FALSE(source->failed);
    EXPECT_TRUE(source_at_end(*source));
  });
  for (size_t cut = 0; cut < whole.size(); ++cut) {
    SCOPED_TRACE(cut);
    on_both(Bytes(whole.begin(), whole.begin() + static_cast<ptrdiff_t>(cut)),
            [&](ByteSource *source) {
              const Values values = read_everything(source);
              for (size_t i = 0; i < values.size(); ++i) {
                const uint64_t whole_value = expected[i].second <= cut ? expected[i].first : 0;
                EXPECT_EQ(values[i].first, whole_value) << "value " << i;
              }
              expect_dead(source);
            });
  }
}

TEST(ByteSource, FailsWhateverCallOfTheSystemFails) {
  const Bytes bytes = some_bytes(3 * source_buffer_size);
  MemoryFiles files;
  files.put("in", bytes);
  size_t n = 1;
  for (;; ++n) {
    SCOPED_TRACE(n);
    FailingFiles failing(n, testing::all_file_calls & ~unsigned{testing::file_close});
    ByteSource source;
    const bool open = open_source(&source, "in");
    Bytes place(bytes.size());
    read_u8(&source);
    seek_source(&source, bytes.size() - 10);
    read_u8(&source);
    seek_source(&source, 0);
    const size_t count = read_bytes(&source, place.data(), place.size());
    if (!failing.failed()) {
      EXPECT_TRUE(open);
      EXPECT_FALSE(source.failed);
      EXPECT_EQ(place, bytes);
      break;
    }
    EXPECT_EQ(open, n > 3) << "open, seek and tell come first";
    if (!open) {
      EXPECT_EQ(failing.open_files(), 0U);
    }
    EXPECT_LT(count, place.size());
    EXPECT_EQ(Bytes(place.begin(), place.begin() + static_cast<ptrdiff_t>(count)),
              Bytes(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(count)));
    expect_dead(&source);
    close_source(&source);
    EXPECT_EQ(failing.open_files(), 0U);
  }
  EXPECT_GT(n, 6U);
}

TEST(ByteSource, GathersWhatTheSystemBringsInPieces) {
  const Bytes bytes = some_bytes(2 * source_buffer_size + 100);
  MemoryFiles files;
  files.put("in", bytes);
  for (const size_t piece : {size_t{1}, size_t{3}, size_t{1000}}) {
    FailingFiles pieces;
    pieces.limit_bytes_of_a_read(piece);
    ByteSource source;
    ASSERT_TRUE(open_source(&source, "in"));
    EXPECT_EQ(read_u32_be(&source), uint32_t{bytes[0]} << 24 | uint32_t{bytes[1]} << 16 |
                                        uint32_t{bytes[2]} << 8 | bytes[3]);
    seek_source(&source, 0);
    Bytes place(bytes.size());
    EXPECT_EQ(read_bytes(&source, place.data(), place.size()), bytes.size());
    EXPECT_EQ(place, bytes);
    EXPECT_FALSE(source.failed);
  }
}

TEST(ByteSource, RefusesAFileThatIsNotThere) {
  MemoryFiles files;
  for (const char *name : {"nothing", "", static_cast<const char *>(nullptr)}) {
    ByteSource source;
    EXPECT_FALSE(open_source(&source, name));
    expect_dead(&source);
  }
}

TEST(ByteSource, IsEmptyBeforeItIsOpened) {
  ByteSource source;
  EXPECT_FALSE(source.failed);
  EXPECT_TRUE(source_at_end(source));
  EXPECT_EQ(read_u8(&source), 0);
  expect_dead(&source);
}

TEST(ByteSource, TakesAnEmptyBlockWithoutAnAddress) {
  ByteSource source;
  open_memory_source(&source, nullptr, 0);
  EXPECT_TRUE(source_at_end(source));
  seek_source(&source, 0);
  skip_bytes(&source, 0);
  EXPECT_FALSE(source.failed);
  EXPECT_EQ(read_u16_be(&source), 0);
  expect_dead(&source);
}

TEST(ByteSource, StartsAfreshWhenItIsOpenedAgain) {
  MemoryFiles files;
  files.put("in", {1, 2, 3});
  const Bytes block = {4, 5};
  ByteSource source;
  EXPECT_FALSE(open_source(&source, "nothing"));
  EXPECT_TRUE(open_source(&source, "in"));
  EXPECT_FALSE(source.failed);
  EXPECT_EQ(read_u8(&source), 1);
  open_memory_source(&source, block.data(), block.size());
  EXPECT_EQ(files.open_files(), 0U);
  EXPECT_EQ(read_u16_be(&source), 0x0405);
  EXPECT_EQ(read_u8(&source), 0);
  EXPECT_TRUE(open_source(&source, "in"));
  EXPECT_EQ(read_u8(&source), 1);
  EXPECT_EQ(bytes_left(source), 2U);
  close_source(&source);
  EXPECT_EQ(files.open_files(), 0U);
  EXPECT_TRUE(source_at_end(source));
  EXPECT_FALSE(source.failed);
}

TEST(ByteSource, ClosesItsFileWithItself) {
  MemoryFiles files;
  files.put("in", {1, 2, 3});
  {
    ByteSource source;
    ASSERT_TRUE(open_source(&source, open_file("in", "rb")));
    EXPECT_EQ(files.open_files(), 1U);
  }
  EXPECT_EQ(files.open_files(), 0U);
}

TEST(ByteSource, AsksForNoMemory) {
  const Bytes bytes = some_bytes(100000);
  FailingMemory memory;
  on_both(bytes, [](ByteSource *source) {
    Bytes place(50000);
    read_u8(source);
    EXPECT_EQ(read_bytes(source, place.data(), place.size()), place.size());
  });
  EXPECT_EQ(memory.requests(), 0U);
}

TEST(ByteSource, ReadsARealFileBehindMoreThanOneBuffer) {
  TemporaryFolder folder;
  const std::string path = folder.file("bytes.bin");
  Bytes bytes = some_bytes(3 * source_buffer_size);
  bytes[100] = 0x1A;  // would end a file that is read as text on Windows
  bytes[101] = 0x0D;
  bytes[102] = 0x0A;
  testing::write_whole_file(path, bytes);
  ByteSource source;
  ASSERT_TRUE(open_source(&source, path.c_str()));
  EXPECT_EQ(source.size, bytes.size());
  for (const uint8_t byte : bytes)
    ASSERT_EQ(read_u8(&source), byte);
  EXPECT_TRUE(source_at_end(source));
  EXPECT_FALSE(source.failed);
}

TEST(ByteSource, FailsWhereAFileBecameShorter) {
  MemoryFiles files;
  files.put("in", some_bytes(20000));
  ByteSource source;
  ASSERT_TRUE(open_source(&source, "in"));
  files.put("in", some_bytes(15000));
  Bytes place(20000, 9);
  EXPECT_EQ(read_bytes(&source, place.data(), place.size()), 15000U);
  EXPECT_EQ(place[15000], 0);
  expect_dead(&source);
}

// A file of 5 GiB in which each byte is the sum of its position's bytes.
constexpr int64_t huge_size = int64_t{5} << 30;
int64_t huge_position;

uint8_t huge_byte(uint64_t position) {
  uint64_t sum = 0;
  for (; position != 0; position >>= 8)
    sum += position & 255;
  return static_cast<uint8_t>(sum);
}

size_t read_huge(void *buffer, size_t bytes, std::FILE *) {
  for (size_t i = 0; i < bytes; ++i) {
    static_cast<uint8_t *>(buffer)[i] = huge_byte(static_cast<uint64_t>(huge_position++));
  }
  return bytes;
}

int seek_huge(std::FILE *, int64_t offset, int origin) {
  huge_position = origin == SEEK_SET ? offset : huge_size + offset;
  return 0;
}

int64_t tell_huge(std::FILE *) {
  return huge_position;
}

TEST(ByteSource, ReachesBeyondFourGigabytes) {
  MemoryFiles files;
  files.put("in", {0});
  const FileGate before = file_gate;
  ByteSource source;
  file_gate.read = read_huge;
  file_gate.seek = seek_huge;
  file_gate.tell = tell_huge;
  ASSERT_TRUE(open_source(&source, "in"));
  EXPECT_EQ(source.size, uint64_t{huge_size});
  EXPECT_TRUE(fits(source, uint64_t{5} << 20, 1024));
  EXPECT_FALSE(fits(source, (uint64_t{5} << 20) + 1, 1024));
  for (const uint64_t place :
       {(uint64_t{1} << 32) - 1, uint64_t{1} << 31, uint64_t{huge_size} - 2}) {
    seek_source(&source, place);
    EXPECT_EQ(read_u8(&source), huge_byte(place));
    EXPECT_EQ(read_u8(&source), huge_byte(place + 1));
    EXPECT_EQ(source_position(source), place + 2);
  }
  EXPECT_TRUE(source_at_end(source));
  seek_source(&source, 16);
  skip_bytes(&source, uint64_t{1} << 32);
  EXPECT_EQ(read_u8(&source), huge_byte((uint64_t{1} << 32) + 16));
  EXPECT_FALSE(source.failed);
  file_gate = before;
}

// ---- random use ----

// The whole as a vector and a place in it.
struct Model {
  Bytes bytes;
  uint64_t place = 0;
  bool failed = false;

  Bytes take(uint64_t count, bool all) {
    const uint64_t left = failed ? 0 : bytes.size() - place;
    const ptrdiff_t first = static_cast<ptrdiff_t>(place);
    const Bytes taken(bytes.begin() + first,
                      bytes.begin() + first + static_cast<ptrdiff_t>(std::min(count, left)));
    place += taken.size();
    failed = failed || (all && count > left);
    return taken;
  }
  uint32_t number(size_t count, bool big) {
    Bytes taken = take(count, true);
    if (taken.size() < count) return 0;
    if (!big) std::reverse(taken.begin(), taken.end());
    uint32_t total = 0;
    for (const uint8_t byte : taken)
      total = total * 256 + byte;
    return total;
  }
  void jump(uint64_t to) {
    if (failed) return;
    if (to > bytes.size()) {
      failed = true;
    } else {
      place = to;
    }
  }
};

void random_step(std::mt19937_64 *random, ByteSource *source, Model *model) {
  const uint64_t choice = (*random)() % 16;
  const uint64_t size = model->bytes.size();
  const uint64_t amount = (*random)() % (choice % 2 == 0 ? 40 : 3 * source_buffer_size);
  if (choice < 4) {
    ASSERT_EQ(read_u8(source), model->number(1, true));
  } else if (choice < 6) {
    ASSERT_EQ(read_u16_le(source), model->number(2, false));
  } else if (choice < 8) {
    ASSERT_EQ(read_u32_be(source), model->number(4, true));
  } else if (choice < 10) {
    Bytes place(amount, 7);
    Bytes expected = model->take(amount, true);
    ASSERT_EQ(read_bytes(source, place.data(), amount), expected.size());
    expected.resize(amount, 0);
    ASSERT_EQ(place, expected);
  } else if (choice < 12) {
    Bytes place(amount, 7);
    Bytes expected = model->take(amount, false);
    ASSERT_EQ(read_available(source, place.data(), amount), expected.size());
    expected.resize(amount, 7);
    ASSERT_EQ(place, expected);
  } else if (choice < 14) {
    skip_bytes(source, amount);
    model->jump(model->place + amount);
  } else {
    const uint64_t to = (*random)() % (size + 2);
    seek_source(source, to);
    model->jump(to);
  }
  ASSERT_EQ(source->failed, model->failed);
  ASSERT_EQ(bytes_left(*source), model->failed ? 0 : size - model->place);
}

TEST(ByteSource, AgreesWithAVectorOnRandomSequencesOfReadsAndJumps) {
  std::mt19937_64 random(52);
  MemoryFiles files;
  for (int round = 0; round < 600; ++round) {
    SCOPED_TRACE(round);
    const size_t most = round % 3 == 0 ? 50 : 5 * source_buffer_size;
    Model model{some_bytes(random() % most)};
    files.put("in", model.bytes);
    FailingFiles pieces;
    if (round % 5 == 0) pieces.limit_bytes_of_a_read(1 + random() % 5000);
    ByteSource source;
    if (round % 2 == 0) {
      ASSERT_TRUE(open_source(&source, "in"));
    } else {
      open_memory_source(&source, model.bytes.data(), model.bytes.size());
    }
    for (int step = 0; step < 60 && !model.failed; ++step) {
      ASSERT_NO_FATAL_FAILURE(random_step(&random, &source, &model)) << "step " << step;
    }
    if (model.failed) expect_dead(&source);
  }
}

}  // namespace
}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// Random, damaged and truncated files against the literal reader, and failing calls.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/formats/fits_file.h"
#include "tests/formats/literal_fits.h"
#include "tests/imageout/random_numbers.h"
#include "tests/support/failing_files.h"
#include "tests/support/failing_memory.h"
#include "tests/support/memory_files.h"

namespace quorix::testing {
namespace {

// A file that an assertion left open.
struct ClosedAtTheEnd {
  ~ClosedAtTheEnd() { close_fits(); }
};

template <size_t n>
std::string one_of(RandomNumbers *random, const char *const (&words)[n]) {
  return words[random->below(n)];
}

std::string random_value(RandomNumbers *random) {
  static const char *const pieces[] = {"'", "''", " ",  "T", "F", ".", "(",   ")",  "1",      "23",
                                       "-", "/",  "= ", "E", "x", ",", "'a'", "  ", "'b'' c'"};
  std::string value;
  for (uint32_t i = random->below(9); i > 0; --i)
    value += one_of(random, pieces);
  return value;
}

const char *const text_keywords[] = {"VALUE", "WORD", "VALUES"};
const char *const equals[] = {"", " ", "=", "= ", "  = "};
const char *const keywords[] = {"BITPIX", "NAXIS",  "NAXIS1", "NAXIS2", "NAXIS12",  "EXTENSIO",
                                "VALUE",  "VALUES", "WORD",   "",       "XTENSION", "ENVOY"};

// Mostly sensible headers, with everything in them that decides something.
FitsFile random_file(RandomNumbers *random) {
  static const char *const bitpixes[] = {"8", "16", "-32", "64", "7", "-64", "x", "-1"};
  static const char *const counts[] = {"0", "1", "2", "2", "3", "12", "-1", "1000"};
  static const char *const lengths[] = {"0", "1", "3", "40", "300", "-1", "-2", "5"};
  static const char *const types[] = {"'IMAGE'", "'TABLE'", "'BINTABLE'", "' '"};
  FitsFile file;
  for (uint32_t unit = 1 + random->below(4); unit > 0; --unit) {
    for (uint32_t i = 3 + random->below(12); i > 0; --i) {
      switch (random->below(9)) {
        case 0:
          file.value("BITPIX", one_of(random, bitpixes));
          break;
        case 1:
          file.value("NAXIS", one_of(random, counts));
          break;
        case 2:
        case 3:
          file.value("NAXIS" + std::to_string(1 + random->below(3)), one_of(random, lengths));
          break;
        case 4:
          file.value("EXTENSIO", one_of(random, types));
          break;
        case 5:
          file.card(one_of(random, keywords) + one_of(random, equals) + random_value(random));
          break;
        default:
          file.value(one_of(random, text_keywords), random_value(random));
      }
    }
    if (random->below(3) == 0) file.blanks_until(35);
    if (random->below(12) != 0) file.end();
    file.data(counted_bytes(random->below(3) * 1440, static_cast<uint8_t>(random->word() & 255)));
  }
  return file;
}

void compare_numbers(const LiteralFits &model, const std::string &keyword) {
  for (const int32_t type : {1, 2, 3}) {
    int32_t integer = 5, expected_integer = 5;
    double real = 7.5, expected_real = 7.5;
    const int32_t expected = model.number(keyword, type, &expected_integer, &expected_real);
    ASSERT_EQ(fits_number(keyword, type, &integer, &real), expected) << keyword << " " << type;
    ASSERT_EQ(integer, expected_integer) << keyword << " " << type;
    ASSERT_EQ(real, expected_real) << keyword << " " << type;
  }
}

void compare_texts(const LiteralFits &model, const std::string &keyword) {
  for (const int32_t size : {81, 7, 3, 2, 1}) {
    std::string text, expected_text;
    const int32_t expected = model.text(keyword, size, &expected_text);
    ASSERT_EQ(fits_text(keyword, size, &text), expected) << keyword << " " << size;
    ASSERT_EQ(text, expected_text) << keyword << " " << size;
  }
}

void compare_data(const LiteralFits &model) {
  for (const int32_t size : {1, 100, 5000}) {
    Bytes data, expected_data;
    const int32_t expected = model.data(size, &expected_data);
    ASSERT_EQ(fits_data(size, &data), expected) << size;
    ASSERT_EQ(data, expected_data) << size;
  }
}

// The lines that look like any, to be shown where something differs.
std::string cards_of(const Bytes &bytes) {
  std::string text;
  for (size_t i = 0; i + 80 <= bytes.size(); i += 80) {
    const std::string card(bytes.begin() + static_cast<std::ptrdiff_t>(i),
                           bytes.begin() + static_cast<std::ptrdiff_t>(i) + 40);
    const bool readable = std::all_of(card.begin(), card.end(), [](char c) { return c >= ' '; });
    if (readable && card[0] != ' ') text += std::to_string(i / 80) + ": " + card + "\n";
  }
  return text;
}

// Every answer about a file.
void compare(MemoryFiles *files, const Bytes &bytes) {
  files->put("a", bytes);
  SCOPED_TRACE(cards_of(bytes));
  const ClosedAtTheEnd closed;
  LiteralFits model(bytes);
  ASSERT_EQ(open_fits("a"), model.open());
  for (const char *keyword : keywords) {
    ASSERT_NO_FATAL_FAILURE(compare_numbers(model, keyword));
    ASSERT_NO_FATAL_FAILURE(compare_texts(model, keyword));
  }
  ASSERT_NO_FATAL_FAILURE(compare_data(model));
  for (const int32_t number : {1, 2, 3, 2, 5, 1, 4}) {
    ASSERT_EQ(select_fits_unit(number), model.select(number)) << number;
    ASSERT_NO_FATAL_FAILURE(compare_data(model)) << "unit " << number;
  }
  ASSERT_EQ(close_fits(), 0);
}

TEST(FitsReader, AgreesWithTheLiteralReaderOnRandomFiles) {
  MemoryFiles files;
  RandomNumbers random(71);
  for (int i = 0; i < 1000; ++i)
    ASSERT_NO_FATAL_FAILURE(compare(&files, random_file(&random).bytes())) << "file " << i;
  EXPECT_EQ(files.open_files(), 0U);
}

// A file with what there is: three units, texts, numbers.
Bytes small_seed() {
  FitsFile file;
  file.image(16, {3, 2}).value("WORD", "'it''s' / why").value("VALUE", "-1.5E1");
  file.blanks_until(17).end().blanks(18).data_blocks(counted_bytes(12));
  file.image(-32, {2}, "EXTENSIO= 'IMAGE   '").value("VALUE", "(1., 2.)").blanks_until(17).end();
  file.blanks(18).data_blocks(counted_bytes(8));
  file.image(8, {4, 3}, "EXTENSIO= 'BINTABLE'").end();
  return file.bytes();
}

TEST(FitsReader, AgreesWithTheLiteralReaderOnAFileCutAnywhere) {
  MemoryFiles files;
  const Bytes seed = small_seed();
  for (size_t length = 0; length <= seed.size(); length += length < 1500 ? 1 : 17) {
    const Bytes cut(seed.begin(), seed.begin() + static_cast<std::ptrdiff_t>(length));
    ASSERT_NO_FATAL_FAILURE(compare(&files, cut)) << length;
  }
}

TEST(FitsReader, AgreesWithTheLiteralReaderOnDamagedFiles) {
  MemoryFiles files;
  RandomNumbers random(72);
  const Bytes seed = small_seed();
  static const char replacements[] = " '=/.TF(E0127-";
  for (int i = 0; i < 1000; ++i) {
    Bytes damaged = seed;
    for (uint32_t changes = 1 + random.below(6); changes > 0; --changes) {
      const size_t place = random.below(3) == 0 ? random.below(1000)
                                                : random.below(static_cast<uint32_t>(seed.size()));
      damaged[place] = static_cast<uint8_t>(replacements[random.below(sizeof(replacements))]);
    }
    ASSERT_NO_FATAL_FAILURE(compare(&files, damaged)) << "damage " << i;
  }
}

// All operations one after another, whatever comes of them; no answer may lie outside its table.
void run_everything() {
  const int32_t opened = open_fits("a");
  EXPECT_TRUE(opened == 0 || (opened >= -5 && opened <= -1)) << opened;
  int32_t integer = 0;
  double real = 0;
  const int32_t number = fits_number("VALUE", 2, &integer, &real);
  EXPECT_TRUE(number == 0 || number == -1 || number == -3) << number;
  EXPECT_TRUE(number != 0 || real == -15.0) << real;
  std::string text;
  const int32_t words = fits_text("WORD", 80, &text);
  EXPECT_TRUE(words == 0 || words == -1 || words == -3) << words;
  EXPECT_TRUE(words != 0 || text == "it''s") << text;
  const int32_t bytes = fits_data(12, nullptr);
  EXPECT_TRUE(bytes >= -3 && bytes <= 12) << bytes;
  for (const int32_t unit : {3, 2, 1}) {
    const int32_t selected = select_fits_unit(unit);
    EXPECT_TRUE(selected >= -6 && selected <= 3) << selected;
    const int32_t unit_bytes = fits_data(100, nullptr);
    EXPECT_TRUE(unit_bytes >= -3 && unit_bytes <= 100) << unit_bytes;
  }
  EXPECT_EQ(close_fits(), opened == -1 || opened == -2 ? -1 : 0);
}

TEST(FitsReader, GoesOnWhereMemoryIsRefused) {
  MemoryFiles files;
  files.put("a", small_seed());
  run_everything();
  size_t refusals = 0;
  for (size_t n = 1;; ++n) {
    FailingMemory memory(n);
    run_everything();
    EXPECT_EQ(memory.live_blocks(), 0U) << n;
    EXPECT_EQ(files.open_files(), 0U) << n;
    if (!memory.failed()) break;
    ++refusals;
  }
  EXPECT_GT(refusals, 1U);
}

TEST(FitsReader, TellsThatMemoryIsRefusedAtOpening) {
  MemoryFiles files;
  files.put("a", small_seed());
  for (size_t n = 1;; ++n) {
    FailingMemory memory(n);
    const int32_t status = open_fits("a");
    if (!memory.failed()) {
      EXPECT_EQ(status, 0);
      close_fits();
      break;
    }
    EXPECT_EQ(status, -2);
    EXPECT_EQ(files.open_files(), 0U);
    EXPECT_EQ(close_fits(), -1);
  }
}

TEST(FitsReader, TellsThatMemoryIsRefusedAtMoving) {
  MemoryFiles files;
  files.put("a", small_seed());
  ASSERT_EQ(open_fits("a"), 0);
  size_t refusals = 0;
  for (size_t n = 1;; ++n) {
    FailingMemory memory(n);
    const int32_t result = select_fits_unit(2);
    if (!memory.failed()) {
      EXPECT_EQ(result, 1);
      break;
    }
    EXPECT_EQ(result, -2);
    ++refusals;
    EXPECT_EQ(fits_data(0, nullptr), 12) << "the unit before stays";
  }
  EXPECT_GT(refusals, 0U);
  EXPECT_EQ(close_fits(), 0);
}

TEST(FitsReader, GoesOnWhereFileCallsFail) {
  MemoryFiles disk;
  disk.put("a", small_seed());
  bool failed = true;
  for (size_t n = 1; failed; ++n) {
    FailingFiles files(n);
    run_everything();
    failed = files.failed();
    EXPECT_EQ(files.open_files(), 0U) << n;
    ASSERT_LT(n, 100000U);
  }
}

TEST(FitsReader, TellsThatItCannotSeek) {
  MemoryFiles disk;
  disk.put("a", small_seed());
  ASSERT_EQ(open_fits("a"), 0);
  size_t refusals = 0;
  for (size_t n = 1;; ++n) {
    FailingFiles files(n, file_seek);
    const int32_t result = select_fits_unit(3);
    if (!files.failed()) {
      EXPECT_EQ(result, 3);
      break;
    }
    EXPECT_EQ(result, -1);
    ++refusals;
  }
  EXPECT_GT(refusals, 0U);
  close_fits();
}

}  // namespace
}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
// Drawings made from a number: the same calls for the same number on every system, run through a
// target, which is the library or the literal raster.
//
// make_drawing gives the calls; start_run, then run_call for each of them; follow_page says what
// page there is after a call, so that its bytes can be looked at.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quorix::drawings {

enum class Operation {
  vini,
  vfin,
  vers,
  vclr,
  vvlt,
  vwin,
  vcrp,
  vlin,
  vdrw,
  vfll,
  vpix,
  vpol,
  vsym,
  vftr,
  vwpx,
  vrow,
  vrpx,
  vrdr,
  write_file,
  read_file,
  read_own_file,
  wwid,
  wfree
};

// One call. `args` holds the numbers in the order of the operation's arguments; what goes in by
// reference stands there as a number too.
struct Call {
  Operation operation = Operation::vers;
  std::array<int32_t, 6> args{};
  std::vector<double> xs;  // polygon corners
  std::vector<double> ys;
  std::vector<uint8_t> bytes;   // a row of pixels, or a file
  std::vector<uint32_t> words;  // a palette
};

// All that comes back from a call.
struct Outcome {
  int32_t result = 0;
  std::vector<int32_t> numbers;
  std::vector<uint8_t> bytes;
};

// What can be drawn on. The prototypes are those of the exported operations; files are handed over
// as bytes.
struct DrawingTarget {
  const char *name;
  int32_t (*vini)(int32_t, int32_t, int32_t *, int32_t *, int32_t, int32_t *);
  int32_t (*vfin)();
  int32_t (*vers)();
  int32_t (*vclr)(int32_t);
  int32_t (*vvlt)(uint8_t, const uint32_t *);
  int32_t (*vptr)(uint8_t **);
  int32_t (*vwin)(const int32_t *, const int32_t *, const int32_t *, const int32_t *, int32_t *);
  int32_t (*vcrp)(int32_t *, int32_t *, int32_t *, int32_t *);
  int32_t (*vlin)(int32_t, int32_t, int32_t, int32_t);
  int32_t (*vdrw)(int32_t, int32_t, int32_t);
  int32_t (*vfll)(int32_t, int32_t, int32_t, int32_t, int32_t);
  int32_t (*vpix)(int32_t, int32_t, int32_t);
  int32_t (*vpol)(const double *, const double *, const int32_t *, int32_t *);
  int32_t (*vsym)(int32_t, int32_t, int32_t, int32_t);
  int32_t (*vftr)(const int32_t *, const int32_t *, int32_t);
  int32_t (*vwpx)(int32_t, int32_t, int32_t);
  int32_t (*vrow)(const uint8_t *, int32_t, int32_t, int32_t);
  int32_t (*vrpx)(int32_t, int32_t, int32_t *);
  int32_t (*vrdr)(uint8_t *, int32_t, int32_t, int32_t, int32_t);
  int32_t (*write_file)(std::vector<uint8_t> *, int32_t *);
  int32_t (*read_file)(const std::vector<uint8_t> &, int32_t *);
  int32_t (*wwid)(int32_t, int32_t *, int32_t);
  int32_t (*wfree)();
};

struct Page {
  bool valid = false;
  int32_t width = 0;
  int32_t height = 0;
  int32_t bytes_per_pixel = 1;
};

// What a run keeps from call to call.
struct Run {
  const DrawingTarget *target = nullptr;
  Page page;
  std::vector<uint8_t> last_file;
};

std::vector<Call> make_drawing(uint64_t number);

// Frees the target's record, so that every drawing starts from nothing.
Run start_run(const DrawingTarget &target);
Outcome run_call(Run &run, const Call &call);
size_t page_size(const Page &page);
// The page as it stands; null without one.
const uint8_t *page_bytes(const Run &run);

// One call as a line of C.
std::string describe(const Call &call);

// --- Numbers ---

// splitmix64: the same sequence everywhere.
struct Random {
  uint64_t state;
};

uint64_t next_number(Random &random);
// From 0 to count - 1.
int32_t below(Random &random, int32_t count);
// From low to high, both included.
int32_t between(Random &random, int32_t low, int32_t high);
bool one_in(Random &random, int32_t count);

}  // namespace quorix::drawings

// SPDX-License-Identifier: MIT
// Runs the calls of a drawing on a target, and tells a call in words.

#include <cstdlib>
#include <sstream>

#include "tests/raster/random_drawings.h"

namespace quorix::drawings {

namespace {

constexpr uint8_t untouched = 0xA5;

void open_page(Run &run, const Call &call, Outcome *outcome) {
  int32_t w = call.args[2];
  int32_t h = call.args[3];
  int32_t status = call.args[5];
  outcome->result = run.target->vini(call.args[0], call.args[1], &w, &h, call.args[4], &status);
  outcome->numbers = {w, h, status};
  run.page.valid = status == 0;
  if (!run.page.valid) return;
  run.page.width = w;
  run.page.height = h;
  run.page.bytes_per_pixel = call.args[0] < 0 ? 4 : 1;
}

void crop_page(Run &run, const Call &call, Outcome *outcome) {
  int32_t status = 77;
  outcome->result =
      run.target->vwin(&call.args[0], &call.args[1], &call.args[2], &call.args[3], &status);
  outcome->numbers = {status};
  if (outcome->result != 0) return;
  run.page.width = call.args[2];
  run.page.height = call.args[3];
}

void find_drawn_box(Run &run, Outcome *outcome) {
  int32_t box[4] = {77, 77, 77, 77};
  outcome->result = run.target->vcrp(&box[0], &box[1], &box[2], &box[3]);
  outcome->numbers.assign(box, box + 4);
}

void draw_polygon(Run &run, const Call &call, Outcome *outcome) {
  int32_t status = 77;
  outcome->result = run.target->vpol(call.xs.data(), call.ys.data(), &call.args[0], &status);
  outcome->numbers = {status};
}

void draw_triangle(Run &run, const Call &call, Outcome *outcome) {
  const int32_t xs[3] = {call.args[0], call.args[2], call.args[4]};
  const int32_t ys[3] = {call.args[1], call.args[3], call.args[5]};
  outcome->result = run.target->vftr(xs, ys, static_cast<int32_t>(call.words[0]));
}

void read_rectangle(Run &run, const Call &call, Outcome *outcome) {
  const int32_t n = call.args[2];
  const int32_t rows = call.args[3];
  const size_t room = static_cast<size_t>(std::abs(n)) * static_cast<size_t>(std::abs(rows)) *
                      static_cast<size_t>(n < 0 ? 3 : 1);
  // One byte more, which must stay as it is.
  outcome->bytes.assign(room + 1, untouched);
  outcome->result = run.target->vrdr(outcome->bytes.data(), call.args[0], call.args[1], n, rows);
}

void write_file(Run &run, Outcome *outcome) {
  int32_t status = 77;
  outcome->result = run.target->write_file(&outcome->bytes, &status);
  outcome->numbers = {status};
  run.last_file = outcome->bytes;
}

void read_file(Run &run, const std::vector<uint8_t> &file, Outcome *outcome) {
  int32_t status = 77;
  outcome->result = run.target->read_file(file, &status);
  outcome->numbers = {status};
}

void use_option(Run &run, const Call &call, Outcome *outcome) {
  int32_t value = call.args[1];
  outcome->result = run.target->wwid(call.args[0], &value, call.args[2]);
  outcome->numbers = {value};
}

void read_pixel(Run &run, const Call &call, Outcome *outcome) {
  int32_t colour = 77;
  outcome->result = run.target->vrpx(call.args[0], call.args[1], &colour);
  outcome->numbers = {colour};
}

}  // namespace

Run start_run(const DrawingTarget &target) {
  target.wfree();
  Run run;
  run.target = &target;
  return run;
}

Outcome run_call(Run &run, const Call &call) {
  const DrawingTarget &target = *run.target;
  const std::array<int32_t, 6> &a = call.args;
  Outcome outcome;
  switch (call.operation) {
    case Operation::vini:
      open_page(run, call, &outcome);
      break;
    case Operation::vfin:
      outcome.result = target.vfin();
      run.page.valid = false;
      break;
    case Operation::vers:
      outcome.result = target.vers();
      break;
    case Operation::vclr:
      outcome.result = target.vclr(a[0]);
      break;
    case Operation::vvlt:
      outcome.result = target.vvlt(static_cast<uint8_t>(a[0]), call.words.data());
      break;
    case Operation::vwin:
      crop_page(run, call, &outcome);
      break;
    case Operation::vcrp:
      find_drawn_box(run, &outcome);
      break;
    case Operation::vlin:
      outcome.result = target.vlin(a[0], a[1], a[2], a[3]);
      break;
    case Operation::vdrw:
      outcome.result = target.vdrw(a[0], a[1], a[2]);
      break;
    case Operation::vfll:
      outcome.result = target.vfll(a[0], a[1], a[2], a[3], a[4]);
      break;
    case Operation::vpix:
      outcome.result = target.vpix(a[0], a[1], a[2]);
      break;
    case Operation::vpol:
      draw_polygon(run, call, &outcome);
      break;
    case Operation::vsym:
      outcome.result = target.vsym(a[0], a[1], a[2], a[3]);
      break;
    case Operation::vftr:
      draw_triangle(run, call, &outcome);
      break;
    case Operation::vwpx:
      outcome.result = target.vwpx(a[0], a[1], a[2]);
      break;
    case Operation::vrow:
      outcome.result = target.vrow(call.bytes.data(), a[0], a[1], a[2]);
      break;
    case Operation::vrpx:
      read_pixel(run, call, &outcome);
      break;
    case Operation::vrdr:
      read_rectangle(run, call, &outcome);
      break;
    case Operation::write_file:
      write_file(run, &outcome);
      break;
    case Operation::read_file:
      read_file(run, call.bytes, &outcome);
      break;
    case Operation::read_own_file:
      read_file(run, run.last_file, &outcome);
      break;
    case Operation::wwid:
      use_option(run, call, &outcome);
      break;
    case Operation::wfree:
      outcome.result = target.wfree();
      run.page.valid = false;
      break;
  }
  return outcome;
}

size_t page_size(const Page &page) {
  if (!page.valid) return 0;
  return static_cast<size_t>(page.width) * static_cast<size_t>(page.height) *
         static_cast<size_t>(page.bytes_per_pixel);
}

const uint8_t *page_bytes(const Run &run) {
  if (!run.page.valid) return nullptr;
  uint8_t *bytes = nullptr;
  run.target->vptr(&bytes);
  return bytes;
}

namespace {

const char *name_of(Operation operation) {
  static const char *const names[] = {
      "qqvini",       "qqvfin",      "qqvers",          "qqvclr", "qqvvlt", "qqvwin",
      "qqvcrp",       "qqvlin",      "qqvdrw",          "qqvfll", "qqvpix", "qqvpol",
      "qqvsym",       "qqvftr",      "qqvwpx",          "qqvrow", "qqvrpx", "qqvrdr",
      "qqvfil write", "qqvfil read", "qqvfil read own", "qqwwid", "qqwfree"};
  return names[static_cast<size_t>(operation)];
}

int argument_count(Operation operation) {
  static const int counts[] = {6, 0, 0, 1, 1, 4, 0, 4, 3, 5, 3, 1, 4, 6, 3, 3, 2, 4, 0, 0, 0, 3, 0};
  return counts[static_cast<size_t>(operation)];
}

template <class T>
void print_list(std::ostringstream &out, const char *name, const std::vector<T> &values) {
  if (values.empty()) return;
  out << "; " << name << " {";
  for (size_t i = 0; i < values.size(); i++) {
    if (i > 0) out << ", ";
    out << +values[i];
  }
  out << "}";
}

}  // namespace

std::string describe(const Call &call) {
  std::ostringstream out;
  out.precision(17);
  out << name_of(call.operation) << "(";
  for (int i = 0; i < argument_count(call.operation); i++) {
    if (i > 0) out << ", ";
    out << call.args[static_cast<size_t>(i)];
  }
  out << ")";
  print_list(out, "xs", call.xs);
  print_list(out, "ys", call.ys);
  print_list(out, "bytes", call.bytes);
  print_list(out, "words", call.words);
  return out.str();
}

}  // namespace quorix::drawings

// SPDX-License-Identifier: MIT
//
// Draws calls by chance, so that each kind meets each other.
#include "tests/pdf/random_document.h"

#include <algorithm>
#include <random>

namespace quorix::testing {

namespace {

class Source {
 public:
  explicit Source(uint32_t seed) : generator_(seed) {}
  uint32_t word() { return static_cast<uint32_t>(generator_()); }
  uint32_t below(uint32_t limit) { return word() % limit; }
  int32_t between(int32_t low, int32_t high) {
    return low + static_cast<int32_t>(below(static_cast<uint32_t>(high - low) + 1));
  }
  bool one_in(uint32_t count) { return below(count) == 0; }

 private:
  std::mt19937 generator_;
};

// Coordinates as they come: whole, with some decimals, half way between two hundredths, tiny, or
// any number of a page; and the last one again, for lines that go nowhere.
double coordinate(Source &source, double last) {
  switch (source.below(10)) {
    case 0:
      return last;
    case 1:
      return source.between(-20, 900);
    case 2:
      return source.between(-8000, 8000) / 8.0;
    case 3:
      return source.between(-100000, 100000) / 1000.0;
    case 4:
      return source.between(-50, 50) / 10000.0;
    case 5:
      return source.between(INT32_MIN / 2, INT32_MAX / 2) * 1024.0;
    default:
      return source.word() / 4294967296.0 * 842.0;
  }
}

Call empty_call(Call::Operation operation) {
  return {operation, {}, {}, "", {"", 0, 0, 1, 1, 0, 0, 1, 1, 0, 0}};
}

Call draw_call(int32_t op, double x, double y) {
  Call call = empty_call(Call::Operation::draw);
  call.integers[0] = op;
  call.numbers[0] = x;
  call.numbers[1] = y;
  return call;
}

Call bytes_call(const std::string &text) {
  Call call = empty_call(Call::Operation::bytes);
  call.text = text;
  return call;
}

std::string random_bytes(Source &source, size_t count) {
  std::string text;
  text.reserve(count);
  uint32_t state = source.word();
  for (size_t i = 0; i < count; ++i) {
    state = state * 1664525U + 1013904223U;
    text += static_cast<char>(state >> 24);
  }
  return text;
}

std::string comment_line(Source &source) {
  std::string line = "%";
  for (uint32_t left = source.below(30); left > 0; --left)
    line += static_cast<char>(source.between(' ', '~'));
  return line + "\n";
}

Call random_bytes_call(Source &source, RandomKind kind) {
  if (kind == RandomKind::large_writes && !source.one_in(4))
    return bytes_call(
        random_bytes(source, source.one_in(5) ? source.below(1400000) : source.below(290000)));
  if (kind == RandomKind::viewable) return bytes_call(comment_line(source));
  return bytes_call(random_bytes(source, source.below(40)));
}

Call colour_call(Source &source) {
  Call call = empty_call(Call::Operation::colour);
  for (int32_t i = 0; i < 3; ++i)
    call.integers[i] = source.one_in(3) ? 255 * source.between(0, 1) : source.between(0, 255);
  call.integers[3] = source.one_in(8) ? source.between(-1, 3) : source.between(0, 1);
  return call;
}

Call rectangle_call(Source &source) {
  Call call = empty_call(Call::Operation::rectangle);
  for (int32_t i = 0; i < 4; ++i)
    call.numbers[i] = coordinate(source, i >= 2 ? 0 : call.numbers[0]);
  return call;
}

Call character_call(Source &source) {
  Call call = empty_call(Call::Operation::character);
  call.integers[0] = source.one_in(3) ? source.between(-260, 260) : source.between(32, 126);
  const int32_t rotations[] = {0, 0, 0, 90, 45, -90, 180};
  call.integers[1] = rotations[source.below(7)];
  call.integers[2] = source.one_in(10) ? source.between(-3, 40) : source.between(0, 3);
  call.integers[3] = source.one_in(3) ? source.between(-200, 200) : 12;
  for (int32_t i = 0; i < 7; ++i)
    call.numbers[i] = coordinate(source, 1);
  return call;
}

Call form_call(Source &source, RandomKind kind) {
  Call call = empty_call(Call::Operation::form);
  literal::FormCall &form = call.form_call;
  form.data = kind == RandomKind::viewable ? comment_line(source) + "0 0 m\n5 5 l\nS\n"
                                           : random_bytes(source, source.below(300));
  for (double *number : {&form.box_x, &form.box_y, &form.place_x, &form.place_y, &form.target_width,
                         &form.target_height})
    *number = coordinate(source, 1);
  // What saturates at the smallest integer has no digits, and a box with such a number has no size.
  if (kind == RandomKind::viewable) form.box_x = form.box_y = source.between(-900, 900);
  form.box_width = source.between(1, 8000) / 8.0;
  form.box_height = source.between(1, 8000) / 8.0;
  form.compress = source.between(-1, 2) / 2;
  form.rotate = source.between(0, 2);
  return call;
}

Call outline_call(Source &source) {
  Call call = empty_call(Call::Operation::outline);
  call.integers[0] = source.one_in(10) ? source.between(-2, 6) : source.between(0, 4);
  call.text = "title " + std::to_string(source.below(1000));
  return call;
}

void add_image(Source &source, std::vector<Call> *list) {
  const int32_t width = source.between(1, 12);
  const int32_t height = source.between(1, 12);
  list->push_back(draw_call(op_begin_image, width, height));
  std::string pixels = random_bytes(source, static_cast<size_t>(width * height * 3));
  while (!pixels.empty()) {
    const size_t piece = std::min(pixels.size(), static_cast<size_t>(source.between(1, 300)));
    list->push_back(bytes_call(pixels.substr(0, piece)));
    pixels.erase(0, piece);
  }
  list->push_back(draw_call(op_end_image, 0, 0));
  list->push_back(draw_call(op_translate, coordinate(source, 0), coordinate(source, 0)));
  if (source.one_in(2)) list->push_back(draw_call(op_rotate, 0, 0));
  list->push_back(draw_call(op_place, coordinate(source, 0), coordinate(source, 0)));
}

void add_page(RandomKind kind, std::vector<Call> *list) {
  if (kind == RandomKind::viewable) list->push_back(draw_call(op_clip, 1, 0));
  list->push_back(draw_call(op_page, 0, 0));
}

// An operation of qqpdf2 other than the end, a new page, and those of images.
Call state_call(Source &source, RandomKind kind, const Call &last) {
  const double x = coordinate(source, last.numbers[0]);
  const double y = coordinate(source, last.numbers[1]);
  if (source.one_in(40)) return draw_call(source.between(19, 30), x, y);
  const int32_t ops[] = {op_fill,   op_width,     op_join,    op_cap,  op_miter,
                         op_mask,   op_corner1,   op_corner2, op_clip, op_clip,
                         op_rotate, op_translate, op_place};
  // Placing no image closes what was not opened.
  const int32_t op = ops[source.below(kind == RandomKind::viewable ? 12 : 13)];
  const bool is_switch = op == op_clip || op == op_mask;
  return draw_call(op, is_switch ? source.between(-3, 3) / 2.0 : x, y);
}

void add_calls(Source &source, RandomKind kind, std::vector<Call> *list) {
  const Call last = list->empty() ? draw_call(op_move, 0, 0) : list->back();
  const uint32_t choice = source.below(100);
  if (choice < 40) {
    const int32_t op = source.one_in(4) ? op_move : op_line;
    const double x = coordinate(source, last.numbers[0]);
    const double y = source.one_in(4) ? last.numbers[1] : coordinate(source, last.numbers[1]);
    list->push_back(draw_call(op, x, y));
  } else if (choice < 55) {
    list->push_back(character_call(source));
  } else if (choice < 63) {
    list->push_back(colour_call(source));
  } else if (choice < 70) {
    list->push_back(rectangle_call(source));
  } else if (choice < 73) {
    list->push_back(form_call(source, kind));
  } else if (choice < 77) {
    list->push_back(outline_call(source));
  } else if (choice < 82) {
    list->push_back(random_bytes_call(source, kind));
  } else if (choice < 86) {
    add_image(source, list);
  } else if (kind == RandomKind::disorderly && choice < 92) {
    const int32_t op = source.one_in(2) ? op_begin_image : op_end_image;
    list->push_back(draw_call(op, source.between(0, 4), source.between(0, 4)));
  } else if (source.one_in(60)) {
    add_page(kind, list);
  } else {
    list->push_back(state_call(source, kind, last));
  }
}

}  // namespace

Calls random_calls(uint32_t seed, RandomKind kind) {
  Source source(seed);
  Calls calls = {source.between(0, 3),
                 source.between(0, 2000),
                 source.between(0, 2000),
                 source.one_in(2) ? 0 : source.between(-3, 300),
                 {}};
  const uint32_t count =
      kind == RandomKind::long_drawing ? 4000 + source.below(4000) : source.below(80);
  while (calls.list.size() < count)
    add_calls(source, kind, &calls.list);
  return calls;
}

namespace {

std::vector<double> rectangle_of(const Call &call) {
  return {call.numbers, call.numbers + 4};
}

void append(std::vector<double> *answers, const std::vector<double> &more) {
  answers->insert(answers->end(), more.begin(), more.end());
}

// ---- the model

void call_model(literal::LiteralDocument &document, const Call &call,
                std::vector<double> *answers) {
  const int32_t *const i = call.integers;
  const double *const n = call.numbers;
  std::vector<double> box = rectangle_of(call);
  switch (call.operation) {
    case Call::Operation::draw:
      qqpdf2(document, n[0], n[1], i[0]);
      break;
    case Call::Operation::colour:
      qqpdf3(document, i[0], i[1], i[2], i[3]);
      break;
    case Call::Operation::rectangle:
      qqpdf4(document, &box[0], &box[1], &box[2], &box[3]);
      append(answers, box);
      break;
    case Call::Operation::character:
      qqpdf5(document, i[0], n, i[1], i[2], i[3]);
      break;
    case Call::Operation::bytes:
      qqpdf7(document, call.text);
      break;
    case Call::Operation::form:
      qqpdf8(document, call.form_call);
      answers->push_back(0);
      break;
    case Call::Operation::outline:
      answers->push_back(qqpdf9(document, call.text, i[0]));
      break;
  }
}

// ---- the library

void call_library(const Call &call, std::vector<double> *answers) {
  const int32_t *const i = call.integers;
  std::vector<double> box = rectangle_of(call);
  switch (call.operation) {
    case Call::Operation::draw:
      draw(i[0], call.numbers[0], call.numbers[1]);
      break;
    case Call::Operation::colour:
      colour(i[0], i[1], i[2], i[3]);
      break;
    case Call::Operation::rectangle:
      qqpdf4(&box[0], &box[1], &box[2], &box[3]);
      append(answers, box);
      break;
    case Call::Operation::character:
      qqpdf5(i[0], call.numbers, i[1], i[2], i[3]);
      break;
    case Call::Operation::bytes:
      send(call.text);
      break;
    case Call::Operation::form:
      answers->push_back(form(call.form_call));
      break;
    case Call::Operation::outline:
      answers->push_back(outline(call.text, i[0]));
      break;
  }
}

}  // namespace

Drawn draw_with_model(const Calls &calls) {
  literal::LiteralDocument document =
      literal::qqpdf1(calls.width, calls.height, calls.mode % 2 != 0, (calls.rotate & 255) != 0);
  Drawn drawn;
  for (const Call &call : calls.list)
    call_model(document, call, &drawn.answers);
  literal::qqpdf2(document, 0, 0, op_end);
  drawn.document = document.output;
  return drawn;
}

Drawn draw_with_library(const Calls &calls, const MemoryFiles &files) {
  Drawn drawn;
  if (begin_document(calls.mode, calls.width, calls.height, calls.rotate) != 0) return drawn;
  for (const Call &call : calls.list)
    call_library(call, &drawn.answers);
  draw(op_end);
  if (calls.mode >= plain_memory) {
    drawn.document = finished_memory_document();
  } else {
    const std::vector<uint8_t> &bytes = files.bytes("out");
    drawn.document = mask_date(std::string(bytes.begin(), bytes.end()));
  }
  return drawn;
}

bool draw_into_file(const Calls &calls, const std::string &name) {
  if (begin_document(calls.mode, calls.width, calls.height, calls.rotate, name) != 0) return false;
  std::vector<double> answers;
  for (const Call &call : calls.list)
    call_library(call, &answers);
  draw(op_end);
  return true;
}

}  // namespace quorix::testing

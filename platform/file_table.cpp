// SPDX-License-Identifier: MIT
//
// The table of binary files that are known by unit numbers, 0 to 99; any other gives status 1.
//
// A place beyond 2 GiB, which skips can reach, does not fit into a position of 32 bits: it reads
// -1.
#include <climits>

#include "base/file_failures.h"
#include "base/files.h"
#include "quorix/system.h"

namespace quorix {

namespace {

constexpr int32_t unit_count = 100;

// What a unit's mode byte says: the mode that it was opened with, plus 1, in 8 bits. Kept: modes
// other than 0 to 2 open a file for reading, but only those that give 1 here may be read.
enum UnitMode : uint8_t { unit_free = 0, unit_reads = 1, unit_writes_from = 2 };
enum OpenMode : int32_t { open_to_write = 1, open_to_append = 2 };

enum OpenStatus : int32_t { opened = 0, not_opened = 1, in_use = 2 };
enum CloseStatus : int32_t { closed = 0, not_open = 1 };
constexpr int32_t failed = -1;

struct Unit {
  std::FILE *file;  // owned while the mode is not unit_free
  uint8_t mode;     // UnitMode
  char name[failure_name_size];
};

Unit units[unit_count] = {};

// Null for a number outside the table.
Unit *find_unit(int32_t number) {
  return number >= 0 && number < unit_count ? &units[number] : nullptr;
}

Unit *find_open_unit(int32_t number) {
  Unit *const unit = find_unit(number);
  return unit != nullptr && unit->mode != unit_free ? unit : nullptr;
}

OwnedFile open_stream(const char *name, int32_t mode) {
  if (mode != open_to_write && mode != open_to_append) return open_file(name, "rb");
  const FileWork work("c_openfl", name);
  return open_file(name, mode == open_to_write ? "wb" : "ab");
}

OpenStatus open_unit(const char *name, int32_t number, int32_t mode) {
  Unit *const unit = find_unit(number);
  if (unit == nullptr) return not_opened;
  if (unit->mode != unit_free) return in_use;
  const auto mode_byte = static_cast<uint8_t>((static_cast<uint32_t>(mode) + 1) & 255U);
  if (mode_byte == unit_free) return not_opened;  // it would be open and free at once
  OwnedFile file = open_stream(name, mode);
  if (file == nullptr) return not_opened;
  unit->file = file.release();
  unit->mode = mode_byte;
  copy_failure_name(unit->name, name);
  return opened;
}

void close_unit(Unit *unit) {
  if (unit->mode == unit_reads) {
    close_file(unit->file);
  } else {
    const FileWork work("c_closfl", unit->name);
    close_file(unit->file);
  }
  unit->file = nullptr;
  unit->mode = unit_free;
}

int32_t write_unit(const Unit &unit, const uint8_t *bytes, size_t count) {
  const FileWork work("c_writfl", unit.name);
  return static_cast<int32_t>(write_file(unit.file, bytes, count));
}

int32_t move_unit(int32_t number, int32_t offset, int origin) {
  const Unit *const unit = find_open_unit(number);
  return unit == nullptr ? failed : file_gate.seek(unit->file, offset, origin);
}

int32_t unit_position(int32_t number) {
  const Unit *const unit = find_open_unit(number);
  if (unit == nullptr) return failed;
  const int64_t position = file_gate.tell(unit->file);
  return position >= 0 && position <= INT32_MAX ? static_cast<int32_t>(position) : failed;
}

}  // namespace

}  // namespace quorix

extern "C" int32_t c_openfl(const char *name, const int32_t *unit, const int32_t *mode,
                            int32_t *status) {
  *status = quorix::open_unit(name, *unit, *mode);
  return 0;
}

extern "C" int32_t c_closfl(const int32_t *unit, int32_t *status) {
  quorix::Unit *const found = quorix::find_open_unit(*unit);
  *status = found == nullptr ? quorix::not_open : quorix::closed;
  if (found != nullptr) quorix::close_unit(found);
  return 0;
}

extern "C" int32_t c_readfl(const int32_t *unit, uint8_t *buffer, const int32_t *count,
                            int32_t *result) {
  const quorix::Unit *const found = quorix::find_open_unit(*unit);
  *result = quorix::failed;
  if (found == nullptr || found->mode != quorix::unit_reads || *count < 0) return 0;
  *result = *count == 0 ? 0
                        : static_cast<int32_t>(
                              quorix::read_file(found->file, buffer, static_cast<size_t>(*count)));
  return 0;
}

extern "C" int32_t c_writfl(const int32_t *unit, const uint8_t *buffer, const int32_t *count,
                            int32_t *result) {
  const quorix::Unit *const found = quorix::find_open_unit(*unit);
  *result = quorix::failed;
  if (found == nullptr || found->mode < quorix::unit_writes_from || *count < 0) return 0;
  *result = *count == 0 ? 0 : quorix::write_unit(*found, buffer, static_cast<size_t>(*count));
  return 0;
}

extern "C" int32_t c_skipfl(const int32_t *unit, const int32_t *offset, int32_t *result) {
  *result = quorix::move_unit(*unit, *offset, SEEK_CUR);
  return 0;
}

extern "C" int32_t c_posifl(const int32_t *unit, const int32_t *position, int32_t *result) {
  *result = quorix::move_unit(*unit, *position, SEEK_SET);
  return 0;
}

extern "C" int32_t c_tellfl(const int32_t *unit, int32_t *result) {
  *result = quorix::unit_position(*unit);
  return 0;
}

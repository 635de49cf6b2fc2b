// SPDX-License-Identifier: MIT
//
// Where all readers of files get their bytes: a file or a block of memory, read from front to back
// with jumps, in numbers of either byte order.
//
//   ByteSource source;
//   if (!open_source(&source, name)) return status_no_file;
//   const uint32_t count = read_u32_le(&source);
//   if (!fits(source, count, sizeof(Entry))) return status_bad_file;
//   for (uint32_t i = 0; i < count; ++i) read_entry(&source, &entries[i]);
//   if (source.failed) return status_bad_file;      // once, at the end of a section
//
// Failure is sticky. The first read beyond the end, jump beyond the end or refusal by the system
// sets `failed`; from then on every number is 0, no byte moves, nothing is left, the source is at
// its end and fits nothing. So a reader checks once a section, and its loops end; but it must not
// trust a size before `fits` has held it against the bytes that are left, and it must look at
// `failed` before it believes what it read.
//
// Positions and sizes have 64 bits. A file's size is taken when it is opened; files without a
// known size (pipes) are refused. The source owns its file and closes it with itself, and
// borrows a memory block, which must live as long. It asks for no memory: the buffer is part of the
// record. Reads of a few bytes cost what they cost from memory, those beyond the buffer's size go
// straight to their destination.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/files.h"

namespace quorix {

inline constexpr size_t source_buffer_size = 8192;

struct ByteSource {
  bool failed = false;
  uint64_t size = 0;  // of the whole

  // The rest is the implementation's. Bytes from `next` to `end` are at hand; `window` is the first
  // byte at hand ever since, and stands at window_position in the source.
  const uint8_t *next = nullptr;
  const uint8_t *end = nullptr;
  const uint8_t *window = nullptr;
  uint64_t window_position = 0;
  uint64_t file_position = 0;  // where the stream stands
  OwnedFile file;              // empty: a memory block
  uint8_t buffer[source_buffer_size];

  ByteSource() = default;
  ByteSource(const ByteSource &) = delete;  // `next` points into the buffer
  ByteSource &operator=(const ByteSource &) = delete;
};

// ---- opening ----

// Starts a source at the first byte of a file. False if it cannot be opened or has no
// known size; the source has failed then. A source that was in use is closed first.
bool open_source(ByteSource *source, const char *name);

// The same for a stream that is open already, which it owns from now on, whatever comes back.
bool open_source(ByteSource *source, OwnedFile file);

void open_memory_source(ByteSource *source, const void *bytes, size_t size);

// Closes the file, if any. The source is empty from then on, and has not failed.
void close_source(ByteSource *source);

// ---- where it stands ----

uint64_t source_position(const ByteSource &source);
uint64_t bytes_left(const ByteSource &source);
bool source_at_end(const ByteSource &source);

// Whether so many entries of so many bytes can still follow. To be asked before memory is requested
// or a loop is started by a number that the file gave.
bool fits(const ByteSource &source, uint64_t count, uint64_t entry_size);

// ---- moving ----

// Both fail beyond the end; the end itself is a place to stand.
void seek_source(ByteSource *source, uint64_t position);
void skip_bytes(ByteSource *source, uint64_t count);

// ---- bytes ----

// Reads all of `count` bytes or fails. Returns how many there were; the others become 0.
size_t read_bytes(ByteSource *source, void *destination, size_t count);

// Reads up to `count` bytes and stops at the end without a failure. Returns how many there were;
// the destination keeps what it held beyond them.
size_t read_available(ByteSource *source, void *destination, size_t count);

// ---- numbers ----

enum class ByteOrder : uint8_t { little, big };

uint8_t read_u8_slowly(ByteSource *source);

inline uint8_t read_u8(ByteSource *source) {
  return source->next != source->end ? *source->next++ : read_u8_slowly(source);
}

uint16_t read_u16(ByteSource *source, ByteOrder order);
uint32_t read_u32(ByteSource *source, ByteOrder order);

inline uint16_t read_u16_le(ByteSource *source) {
  return read_u16(source, ByteOrder::little);
}
inline uint16_t read_u16_be(ByteSource *source) {
  return read_u16(source, ByteOrder::big);
}
inline uint32_t read_u32_le(ByteSource *source) {
  return read_u32(source, ByteOrder::little);
}
inline uint32_t read_u32_be(ByteSource *source) {
  return read_u32(source, ByteOrder::big);
}

// Two's complement.
inline int8_t read_i8(ByteSource *source) {
  return static_cast<int8_t>(read_u8(source));
}
inline int16_t read_i16_le(ByteSource *source) {
  return static_cast<int16_t>(read_u16_le(source));
}
inline int16_t read_i16_be(ByteSource *source) {
  return static_cast<int16_t>(read_u16_be(source));
}
inline int32_t read_i32_le(ByteSource *source) {
  return static_cast<int32_t>(read_u32_le(source));
}
inline int32_t read_i32_be(ByteSource *source) {
  return static_cast<int32_t>(read_u32_be(source));
}

}  // namespace quorix

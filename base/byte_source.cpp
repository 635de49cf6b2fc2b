// SPDX-License-Identifier: MIT
//
// The window onto a file, and the readers that fill and move it. A memory block is a source that is
// all window, so readers need not know which of the two they have.
#include "base/byte_source.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace quorix {

namespace {

size_t bytes_at_hand(const ByteSource &source) {
  return static_cast<size_t>(source.end - source.next);
}

// Empties the window, so that the inline reader of single bytes finds nothing either.
void fail(ByteSource *source) {
  source->failed = true;
  source->next = source->end = source->window;
}

// An empty window at a position of the file, to be filled by the next read.
void move_window(ByteSource *source, uint64_t position) {
  source->window = source->next = source->end = source->buffer;
  source->window_position = position;
}

// Reads file bytes from the current position on, with nothing at hand and some bytes left. The
// system may bring fewer than wanted, but none means that it cannot.
size_t read_from_file(ByteSource *source, void *destination, size_t wanted) {
  const uint64_t position = source_position(*source);
  if (source->file_position != position) {
    if (file_gate.seek(source->file.get(), static_cast<int64_t>(position), SEEK_SET) != 0) return 0;
    source->file_position = position;
  }
  const size_t count = static_cast<size_t>(std::min<uint64_t>(wanted, bytes_left(*source)));
  const size_t read = read_file(source->file.get(), destination, count);
  source->file_position += read;
  return read;
}

// Puts bytes at hand where there are none; false at the end and after a failure.
bool fill_window(ByteSource *source) {
  if (source_at_end(*source)) return false;
  const uint64_t position = source_position(*source);
  const size_t read = read_from_file(source, source->buffer, source_buffer_size);
  move_window(source, position);
  source->end = source->buffer + read;
  if (read == 0) fail(source);
  return read != 0;
}

// The same, straight into a destination that is larger than the buffer.
size_t read_past_window(ByteSource *source, uint8_t *destination, size_t count) {
  const uint64_t position = source_position(*source);
  const size_t read = read_from_file(source, destination, count);
  move_window(source, position + read);
  if (read == 0) fail(source);
  return read;
}

// `count` bytes of a number at hand, in the window or else in `scratch`, which holds zeros where
// the source fails.
const uint8_t *take(ByteSource *source, uint8_t *scratch, size_t count) {
  if (bytes_at_hand(*source) >= count) {
    source->next += count;
    return source->next - count;
  }
  if (read_bytes(source, scratch, count) < count) std::memset(scratch, 0, count);
  return scratch;
}

bool find_size(ByteSource *source) {
  std::FILE *stream = source->file.get();
  if (file_gate.seek(stream, 0, SEEK_END) != 0) return false;
  const int64_t size = file_gate.tell(stream);
  if (size < 0) return false;
  source->size = source->file_position = static_cast<uint64_t>(size);
  return true;
}

}  // namespace

bool open_source(ByteSource *source, const char *name) {
  return open_source(source, open_file(name, "rb"));
}

bool open_source(ByteSource *source, OwnedFile file) {
  close_source(source);
  source->file = std::move(file);
  move_window(source, 0);
  if (source->file != nullptr && find_size(source)) return true;
  source->file.reset();
  fail(source);
  return false;
}

void open_memory_source(ByteSource *source, const void *bytes, size_t size) {
  close_source(source);
  source->size = size;
  source->window = source->next = static_cast<const uint8_t *>(bytes);
  source->end = source->next + size;
}

void close_source(ByteSource *source) {
  source->file.reset();
  source->failed = false;
  source->size = 0;
  source->file_position = 0;
  move_window(source, 0);
}

uint64_t source_position(const ByteSource &source) {
  return source.window_position + static_cast<uint64_t>(source.next - source.window);
}

uint64_t bytes_left(const ByteSource &source) {
  return source.failed ? 0 : source.size - source_position(source);
}

bool source_at_end(const ByteSource &source) {
  return bytes_left(source) == 0;
}

bool fits(const ByteSource &source, uint64_t count, uint64_t entry_size) {
  if (source.failed) return false;
  return entry_size == 0 || count <= bytes_left(source) / entry_size;
}

void seek_source(ByteSource *source, uint64_t position) {
  if (source->failed) return;
  if (position > source->size) return fail(source);
  const uint64_t window_size = static_cast<uint64_t>(source->end - source->window);
  const bool in_window =
      position >= source->window_position && position - source->window_position <= window_size;
  if (in_window) {
    source->next = source->window + (position - source->window_position);
  } else {
    move_window(source, position);  // never a memory block: that is all window
  }
}

void skip_bytes(ByteSource *source, uint64_t count) {
  if (source->failed) return;
  if (count > bytes_left(*source)) return fail(source);
  seek_source(source, source_position(*source) + count);
}

size_t read_available(ByteSource *source, void *destination, size_t count) {
  uint8_t *place = static_cast<uint8_t *>(destination);
  size_t done = 0;
  while (done < count && !source_at_end(*source)) {
    const size_t at_hand = std::min(bytes_at_hand(*source), count - done);
    if (at_hand != 0) {
      std::memcpy(place + done, source->next, at_hand);
      source->next += at_hand;
      done += at_hand;
    } else if (count - done >= source_buffer_size) {
      done += read_past_window(source, place + done, count - done);
    } else {
      fill_window(source);
    }
  }
  return done;
}

size_t read_bytes(ByteSource *source, void *destination, size_t count) {
  const size_t done = read_available(source, destination, count);
  if (done == count) return done;
  std::memset(static_cast<uint8_t *>(destination) + done, 0, count - done);
  fail(source);
  return done;
}

uint8_t read_u8_slowly(ByteSource *source) {
  if (!fill_window(source)) {
    fail(source);
    return 0;
  }
  return *source->next++;
}

uint16_t read_u16(ByteSource *source, ByteOrder order) {
  uint8_t scratch[2];
  const uint8_t *bytes = take(source, scratch, sizeof scratch);
  const int high = order == ByteOrder::big ? 0 : 1;
  return static_cast<uint16_t>(bytes[high] << 8 | bytes[1 - high]);
}

uint32_t read_u32(ByteSource *source, ByteOrder order) {
  uint8_t scratch[4];
  const uint8_t *bytes = take(source, scratch, sizeof scratch);
  uint32_t number = 0;
  for (size_t i = 0; i < sizeof scratch; ++i) {
    number = number << 8 | bytes[order == ByteOrder::big ? i : 3 - i];
  }
  return number;
}

}  // namespace quorix

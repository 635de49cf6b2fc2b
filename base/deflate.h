// SPDX-License-Identifier: MIT
//
// The one gate through which the library makes zlib streams.
//
//   if (!deflate_room(count, &room)) return ...;
//   DeflateRun run;
//   DeflateStatus status = start_deflate(&run, output, room);
//   if (status == DeflateStatus::done) status = feed_deflate(&run, bytes, count, last);  // repeat
//   status = finish_deflate(&run, status);
//   // run.written bytes of output are the stream
//
// All streams have zlib's default level, window, memory and strategy. The input comes in pieces of
// any size; the stream is the same as if one call had taken it all, so nobody has to hold the whole
// input in memory. zlib's own memory comes through the memory gate. A test replaces `deflate_gate`
// to see what follows when the compressor fails.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>

namespace quorix {

struct DeflateGate {
  int (*start)(z_stream *stream);  // Z_OK, or an error
  int (*run)(z_stream *stream, int flush);
  int (*end)(z_stream *stream);
};

extern DeflateGate deflate_gate;

enum class DeflateStatus {
  done,
  not_started,   // mostly for want of memory
  not_finished,  // the output has no room for the stream
  not_ended,
};

struct DeflateRun {
  z_stream stream;
  size_t room_left;  // beyond what `stream` knows of, which counts in 32 bits
  size_t written;
  bool started;
};

// Room for the stream of any `bytes` bytes; false if no size can hold the number.
bool deflate_room(size_t bytes, size_t *room);

// The stream goes into `room` bytes at `output`.
DeflateStatus start_deflate(DeflateRun *run, uint8_t *output, size_t room);

// Compresses the next piece of the input; `last` closes the stream. `bytes` may be null where count
// is 0. To be called only while all went well.
DeflateStatus feed_deflate(DeflateRun *run, const uint8_t *bytes, size_t count, bool last);

// Releases what the run holds, in every case. Answers `status`, what became of it until now, or
// whether it ended well.
DeflateStatus finish_deflate(DeflateRun *run, DeflateStatus status);

}  // namespace quorix

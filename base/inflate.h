// SPDX-License-Identifier: MIT
//
// The one gate through which the library reads zlib streams.
//
//   InflateRun run;
//   if (!start_inflate(&run, stream, count)) return ...;
//   while (run.state == InflateState::more) {
//     const size_t got = run_inflate(&run, buffer, room);
//     ...                                         // less than `room` only if nothing follows
//   }
//   if (!end_inflate(&run)) ...
//
// The stream lies in memory and is borrowed. zlib's own memory comes through the memory gate. A
// test replaces `inflate_gate` to see what follows when the decompressor fails.
#pragma once

#include <zlib.h>

#include <cstddef>
#include <cstdint>

namespace quorix {

struct InflateGate {
  int (*start)(z_stream *stream);  // Z_OK, or an error
  int (*run)(z_stream *stream, int flush);
  int (*end)(z_stream *stream);
};

extern InflateGate inflate_gate;

enum class InflateState : uint8_t {
  more,       // the room was filled, and the stream has not ended
  ended,      // the stream ended, perhaps without filling the room
  exhausted,  // the input ended before the stream
  damaged,    // the stream is none, or there is no memory to go on
};

struct InflateRun {
  z_stream stream;
  size_t input_left;  // beyond what `stream` knows of, which counts in 32 bits
  InflateState state;
  bool started;
};

// False if the decompressor cannot be started, mostly for want of memory.
bool start_inflate(InflateRun *run, const uint8_t *bytes, size_t count);

// Fills up to `room` bytes and returns how many are good. To be called only in the state `more`.
size_t run_inflate(InflateRun *run, uint8_t *output, size_t room);

// Releases what the run holds; false if that goes wrong. A run that was not started is fine.
bool end_inflate(InflateRun *run);

// All of a bare deflate stream (RFC 1951) that unpacks to exactly `size` bytes. False if it does
// not, or for want of memory.
bool inflate_block(const uint8_t *bytes, size_t count, uint8_t *output, size_t size);

}  // namespace quorix

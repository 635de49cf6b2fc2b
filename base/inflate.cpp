// SPDX-License-Identifier: MIT
//
// zlib's decompressor in steps of any size, though its own counts have 32 bits.
#include "base/inflate.h"

#include <algorithm>
#include <climits>

#include "base/zlib_memory.h"

namespace quorix {

namespace {

int plain_start(z_stream *stream) {
  return inflateInit(stream);
}

int plain_run(z_stream *stream, int flush) {
  return inflate(stream, flush);
}

int plain_end(z_stream *stream) {
  return inflateEnd(stream);
}

constexpr size_t most_at_once = UINT_MAX;

// Hands the stream more of the input once it has used up what it knew of.
void give_input(InflateRun *run) {
  if (run->stream.avail_in != 0) return;
  const size_t piece = std::min(run->input_left, most_at_once);
  run->stream.avail_in = static_cast<uInt>(piece);
  run->input_left -= piece;
}

bool is_damage(int result) {
  return result == Z_MEM_ERROR || result == Z_DATA_ERROR || result == Z_NEED_DICT;
}

// One call of zlib; returns the bytes it wrote.
size_t step(InflateRun *run, uint8_t *output, size_t room) {
  give_input(run);
  const auto piece = static_cast<uInt>(std::min(room, most_at_once));
  run->stream.next_out = output;
  run->stream.avail_out = piece;
  const int result = inflate_gate.run(&run->stream, Z_NO_FLUSH);
  const size_t written = piece - run->stream.avail_out;
  if (is_damage(result)) {
    run->state = InflateState::damaged;
  } else if (result == Z_STREAM_END) {
    run->state = InflateState::ended;
  } else if (run->stream.avail_out != 0 && (run->input_left == 0 || result != Z_OK)) {
    run->state = InflateState::exhausted;
  }
  return written;
}

}  // namespace

InflateGate inflate_gate = {plain_start, plain_run, plain_end};

bool start_inflate(InflateRun *run, const uint8_t *bytes, size_t count) {
  *run = {};
  use_memory_gate(&run->stream);
  run->stream.next_in = const_cast<uint8_t *>(bytes);  // zlib does not write to it
  run->input_left = count;
  run->state = InflateState::more;
  run->started = inflate_gate.start(&run->stream) == Z_OK;
  return run->started;
}

size_t run_inflate(InflateRun *run, uint8_t *output, size_t room) {
  size_t done = 0;
  while (done < room && run->state == InflateState::more) {
    done += step(run, output + done, room - done);
  }
  return done;
}

bool end_inflate(InflateRun *run) {
  const bool ended = !run->started || inflate_gate.end(&run->stream) == Z_OK;
  run->started = false;
  return ended;
}

// Not by a run: the stream has no header, which zlib has to know at the start.
bool inflate_block(const uint8_t *bytes, size_t count, uint8_t *output, size_t size) {
  if (count > most_at_once || size > most_at_once) return false;
  z_stream stream = {};
  use_memory_gate(&stream);
  stream.next_in = const_cast<uint8_t *>(bytes);  // zlib does not write to it
  stream.avail_in = static_cast<uInt>(count);
  stream.next_out = output;
  stream.avail_out = static_cast<uInt>(size);
  if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) return false;
  const int result = inflate(&stream, Z_FINISH);
  inflateEnd(&stream);
  return result == Z_STREAM_END && stream.avail_out == 0;
}

}  // namespace quorix

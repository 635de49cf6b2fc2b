// SPDX-License-Identifier: MIT
//
// zlib's compressor in steps of any size, though its own counts have 32 bits.
#include "base/deflate.h"

#include <algorithm>
#include <climits>

#include "base/zlib_memory.h"

namespace quorix {

namespace {

int plain_start(z_stream *stream) {
  return deflateInit(stream, Z_DEFAULT_COMPRESSION);
}

int plain_run(z_stream *stream, int flush) {
  return deflate(stream, flush);
}

int plain_end(z_stream *stream) {
  return deflateEnd(stream);
}

constexpr size_t most_at_once = UINT_MAX;

// Hands the stream more of the output once it has used up what it knew of.
void give_room(DeflateRun *run) {
  if (run->stream.avail_out != 0) return;
  const size_t room = std::min(run->room_left, most_at_once);
  run->stream.avail_out = static_cast<uInt>(room);
  run->room_left -= room;
}

// One call of zlib; counts what it wrote.
int step(DeflateRun *run, int flush) {
  give_room(run);
  const uInt before = run->stream.avail_out;
  const int result = deflate_gate.run(&run->stream, flush);
  run->written += before - run->stream.avail_out;
  return result;
}

// Z_OK promises progress and no more, so this asks again where more output was wanted.
DeflateStatus run_to_the_end_of_the_input(DeflateRun *run, int flush) {
  const int wanted = flush == Z_FINISH ? Z_STREAM_END : Z_OK;
  for (;;) {
    const int result = step(run, flush);
    const bool room_wanted = run->stream.avail_out == 0 && run->room_left != 0;
    if (result == wanted && run->stream.avail_in == 0) return DeflateStatus::done;
    if (result != Z_OK || !room_wanted) return DeflateStatus::not_finished;
  }
}

}  // namespace

DeflateGate deflate_gate = {plain_start, plain_run, plain_end};

// Kept: a hundredth and 13 bytes more, which is more than zlib ever needs at its default level; a
// stream that does not fit is a failure.
bool deflate_room(size_t bytes, size_t *room) {
  if (bytes > SIZE_MAX / 2) return false;
  *room = bytes + bytes / 100 + 13;
  return true;
}

DeflateStatus start_deflate(DeflateRun *run, uint8_t *output, size_t room) {
  *run = {};
  use_memory_gate(&run->stream);
  run->stream.next_out = output;
  run->room_left = room;
  run->started = deflate_gate.start(&run->stream) == Z_OK;
  return run->started ? DeflateStatus::done : DeflateStatus::not_started;
}

DeflateStatus feed_deflate(DeflateRun *run, const uint8_t *bytes, size_t count, bool last) {
  if (count == 0 && !last) return DeflateStatus::done;
  // zlib's type is that of memory it might write to; it does not.
  run->stream.next_in = const_cast<uint8_t *>(bytes);
  do {
    const size_t piece = std::min(count, most_at_once);
    count -= piece;
    run->stream.avail_in = static_cast<uInt>(piece);
    const int flush = last && count == 0 ? Z_FINISH : Z_NO_FLUSH;
    const DeflateStatus status = run_to_the_end_of_the_input(run, flush);
    if (status != DeflateStatus::done) return status;
  } while (count != 0);
  return DeflateStatus::done;
}

DeflateStatus finish_deflate(DeflateRun *run, DeflateStatus status) {
  const bool ended = !run->started || deflate_gate.end(&run->stream) == Z_OK;
  run->started = false;
  if (status != DeflateStatus::done) return status;
  return ended ? DeflateStatus::done : DeflateStatus::not_ended;
}

}  // namespace quorix

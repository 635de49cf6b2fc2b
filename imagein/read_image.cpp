// SPDX-License-Identifier: MIT
//
// What every reading operation does around its decoder.
#include "imagein/imagein.h"

namespace quorix {

namespace {

// A picture that was built to be shown is shown now, and not held after that. What a failed reading
// has built is not held either.
void finish_picture(RowSink *sink, bool delivered) {
  Picture *const built = sink->picture;
  if (built == nullptr || (delivered && sink->device == nullptr)) return;
  sink->picture = nullptr;
  if (delivered) show_picture(sink, built);
  hold_picture({});
}

int32_t read_file_into(RowSink *sink, const char *file, Decoder decode) {
  ByteSource source;
  if (!open_source(&source, file)) return reader_no_file;
  const int32_t status = decode(&source, sink);
  close_source(&source);
  finish_picture(sink, status == reader_done || status == reader_bad_index);
  return status;
}

}  // namespace

int32_t read_image(OutputContext *context, const char *file, const ReaderTarget &target,
                   int32_t *status, Decoder decode) {
  RowSink sink;
  const ReaderStatus found = open_sink(&sink, context, target);
  *status = found == reader_done ? read_file_into(&sink, file, decode) : found;
  return 0;
}

}  // namespace quorix

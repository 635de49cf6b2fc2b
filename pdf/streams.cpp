// SPDX-License-Identifier: MIT
//
// Content streams and images, and pdf_write, the way of all bytes.
//
// Where compression is asked for, a stream is gathered and compressed when it is closed. A piece
// that does not fit any more ends the stream and begins the next, so streams are split between
// pieces; a viewer reads the streams of a page as one. An image is never split: its buffer has the
// size of its pixels, and what a caller sends beyond them is dropped, buffered or not.
#include <algorithm>
#include <cstring>

#include "base/deflate.h"
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"

namespace quorix {

namespace {

// False without memory. A buffer that is too small is given up first.
bool have_buffer(PdfStream *stream, size_t size) {
  if (stream->buffer != nullptr && stream->buffer_size >= size) return true;
  stream->buffer.reset();
  stream->buffer = allocate_array<uint8_t>(size);
  stream->buffer_size = size;
  return stream->buffer != nullptr;
}

// An image's buffer is not kept: it may be many times as large as others.
void give_back_buffer(PdfStream *stream) {
  if (stream->buffer_size > stream_buffer_size) stream->buffer.reset();
}

// Forgets what an earlier stream was, and asks for a buffer of `limit` bytes unless that is 0.
void prepare_stream(PdfStream *stream, size_t limit) {
  stream->fill = 0;
  stream->limit = limit;
  stream->buffered = limit != 0 && have_buffer(stream, limit);
  stream->image = false;
}

void open_content_of(PdfDocument *document, size_t limit) {
  PdfStream *const stream = &document->stream;
  prepare_stream(stream, document->compress ? limit : 0);
  new_object(document, object_content);
  if (!stream->buffered) {
    TextLine line;
    add(&line, "<< /Length");
    add_int(&line, document->objects.next);
    add(&line, " 0 R >>\nstream\n");
    write_line(document, line);
  }
  stream->start = document->output.written;
  stream->open = true;
}

void add_to_buffer(PdfDocument *document, const void *data, size_t count) {
  PdfStream *const stream = &document->stream;
  if (count > stream->limit - stream->fill) {
    close_stream(document, StreamKind::content);
    open_content_of(document, std::max(stream_buffer_size, count));
    if (!stream->buffered) {
      put_output(&document->output, data, count);
      return;
    }
  }
  if (count != 0) std::memcpy(stream->buffer.get() + stream->fill, data, count);
  stream->fill += count;
}

// The end of the dictionary and the data. The keys of an image follow others, indented.
void write_gathered(PdfDocument *document, StreamKind kind) {
  const PdfStream &stream = document->stream;
  const bool image = kind == StreamKind::image;
  size_t count = 0;
  const OwnedArray<uint8_t> compressed = compress_bytes(stream.buffer.get(), stream.fill, &count);
  const bool packed = compressed != nullptr;
  if (!packed) count = stream.fill;
  TextLine line;
  if (image) {
    add(&line, "   /Length");
  } else {
    add(&line, "<< /Length");
  }
  add_size(&line, static_cast<int64_t>(count));
  if (packed && image) {
    add(&line, "\n   /Filter /FlateDecode\n>>\nstream\n");
  } else if (packed) {
    add(&line, "\n/Filter /FlateDecode\n>>\nstream\n");
  } else {
    add(&line, " >>\nstream\n");
  }
  write_line(document, line);
  pdf_write(document, packed ? compressed.get() : stream.buffer.get(), count);
}

void write_length_object(PdfDocument *document, int64_t length) {
  new_object(document, object_other);
  TextLine line;
  add_size(&line, length);
  add(&line, "\nendobj\n");
  write_line(document, line);
}

// The product of sizes as the dictionary has it; 0 if it does not fit, which no picture reaches.
int64_t image_bytes(int32_t width, int32_t height) {
  int64_t bytes = 0;
  const int64_t pixels = int64_t{width} * height;
  return __builtin_mul_overflow(pixels, 3, &bytes) ? 0 : bytes;
}

bool is_image_size(int32_t width, int32_t height, int64_t bytes) {
  return width > 0 && height > 0 && static_cast<uint64_t>(bytes) <= SIZE_MAX;
}

}  // namespace

OwnedArray<uint8_t> compress_bytes(const uint8_t *data, size_t count, size_t *compressed) {
  size_t room = 0;
  if (!deflate_room(count, &room)) return {};
  OwnedArray<uint8_t> output = allocate_array<uint8_t>(room);
  if (output == nullptr) return {};
  DeflateRun run;
  DeflateStatus status = start_deflate(&run, output.get(), room);
  if (status == DeflateStatus::done) status = feed_deflate(&run, data, count, true);
  status = finish_deflate(&run, status);
  *compressed = run.written;
  if (status != DeflateStatus::done) output.reset();
  return output;
}

void pdf_write(PdfDocument *document, const void *data, size_t count) {
  PdfStream *const stream = &document->stream;
  if (stream->open && stream->image) {
    count = static_cast<size_t>(std::min<uint64_t>(count, stream->image_left));
    stream->image_left -= count;
  }
  if (stream->open && stream->buffered) {
    add_to_buffer(document, data, count);
  } else {
    put_output(&document->output, data, count);
  }
}

void pdf_write_text(PdfDocument *document, const char *text) {
  pdf_write(document, text, std::strlen(text));
}

void open_content(PdfDocument *document) {
  open_content_of(document, stream_buffer_size);
}

void open_image(PdfDocument *document, int32_t width, int32_t height) {
  PdfStream *const stream = &document->stream;
  const int64_t bytes = image_bytes(width, height);
  const bool has_pixels = is_image_size(width, height, bytes);
  prepare_stream(stream, document->compress && has_pixels ? static_cast<size_t>(bytes) : 0);
  new_object(document, object_image);
  ++document->images;
  pdf_write_text(document, "<< /Type /XObject /Subtype /Image\n   /ColorSpace /DeviceRGB\n");
  if (document->page.mask_white) pdf_write_text(document, "   /Mask [255 255 255 255 255 255]\n");
  TextLine line;
  add(&line, "   /Width");
  add_int(&line, width);
  add(&line, " /Height");
  add_int(&line, height);
  add(&line, " /BitsPerComponent 8\n");
  if (!stream->buffered) {
    add(&line, "   /Length");
    add_size(&line, bytes);
    add(&line, "\n>>\nstream\n");
  }
  write_line(document, line);
  stream->start = document->output.written;
  stream->image = true;
  stream->image_left = has_pixels ? static_cast<uint64_t>(bytes) : 0;
  stream->open = true;
}

// Kept: the keys are those of `kind` even if the other kind of stream is open, which only calls in
// an order that makes no sense bring about.
void close_stream(PdfDocument *document, StreamKind kind) {
  PdfStream *const stream = &document->stream;
  const int64_t length = document->output.written - stream->start;
  stream->open = false;
  if (stream->buffered) write_gathered(document, kind);
  give_back_buffer(stream);
  pdf_write_text(document, "endstream\nendobj\n");
  if (!stream->buffered && kind == StreamKind::content) write_length_object(document, length);
}

}  // namespace quorix

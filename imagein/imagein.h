// SPDX-License-Identifier: MIT
//
// What the image readers share, grouped by file.
//
// A reader is a function that decodes one format, from a source of bytes into a sink of rows:
//
//   int32_t decode_abc(ByteSource *source, RowSink *sink) {
//     ... header: sizes held against the file and against 32 bits ...
//     if (!start_picture(sink, {width, height, alpha})) return reader_no_memory;
//     ... for each row, or part of one: put_row(sink, rgb, alpha, column, row, count); ...
//     return reader_done;
//   }
//
//   extern "C" int32_t qqpiabc(...) {
//     return quorix::read_image(quorix::output_context, file,
//                               {*device, *device_width, *device_height, *x, *y}, status,
//                               quorix::decode_abc);
//   }
//
// `read_image` finds the device, opens the file, closes it, shows a picture that had to be complete
// first, and after a failure gives back what was built. A decoder owns only its own buffers.
//
// Decisions. With a device, the record and the device are looked for before the file is touched:
// -1 without a record, -9 without the device. The held picture goes when the new one begins, so a
// file that fails before that leaves it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/byte_source.h"
#include "base/memory.h"
#include "core/device.h"
#include "core/output_context.h"

namespace quorix {

enum ReaderStatus : int32_t {
  reader_done = 0,
  reader_no_file = -1,  // also where a device is named and nothing was ever drawn
  reader_no_memory = -2,
  reader_bad_format = -3,
  reader_bad_index = -5,  // of a palette; a warning: the picture is delivered
  reader_no_device = -9,
};

inline constexpr size_t rgb_bytes = 3;

// ---- held_picture.cpp

// A picture in memory, which goes with release_picture. Sizes are never negative.
struct Picture {
  uint8_t *pixels;  // width * height RGB triples, rows from the top
  uint8_t *alpha;   // width * height bytes, or null
  int32_t width, height;
  int32_t device_width, device_height;  // what qqpiscl cuts rows at
  bool background_done;                 // alpha went into the pixels already and means nothing now
};

// The one that is held between calls, or null; hold_picture alone changes it.
extern Picture *held_picture;

// Bytes behind `pixels` and `alpha` that are there, though they belong to no pixel: so a pixel can
// be loaded as a whole word.
inline constexpr size_t pixel_slack = 16;

void release_picture(Picture *picture);

struct ReleasePicture {
  void operator()(Picture *picture) const { release_picture(picture); }
};

using OwnedPicture = std::unique_ptr<Picture, ReleasePicture>;

// A picture of zeros with room for `extra` pixels more behind its last; empty without memory or
// where a size is negative. The colours of an uncleared picture are not set.
OwnedPicture make_picture(int32_t width, int32_t height, bool with_alpha, size_t extra = 0,
                          bool cleared = true);

// Holds another picture, or none, and gives back the one that was held.
void hold_picture(OwnedPicture picture);

// The alpha that still has to be applied, or null.
inline uint8_t *open_alpha(const Picture &picture) {
  return picture.background_done ? nullptr : picture.alpha;
}

// ---- row_sink.cpp

// The arguments that all readers have.
struct ReaderTarget {
  int32_t device;  // 0: hold the picture
  int32_t device_width, device_height;
  int32_t x, y;
};

// Where rows go: into `picture` where there is one, onto `device` otherwise.
struct RowSink {
  ReaderTarget target;
  OutputContext *context;
  const Device *device;  // null: the picture is held
  Picture *picture;      // held_picture while a picture is built, else null
};

// A sink for these arguments. Without a device number always reader_done; otherwise reader_no_file
// where there is no drawing record (`context` is null) and reader_no_device where no device
// answers.
ReaderStatus open_sink(RowSink *sink, OutputContext *context, const ReaderTarget &target);

// What a decoder says before the first row.
struct PictureForm {
  int32_t width, height;  // a height below 0 counts as 0, a width below 0 too
  bool alpha = false;     // rows come with alpha
  bool background_done = false;
  // Rows come in an order that nobody should see: the picture is built in memory (`sink->picture`
  // is then never null and may be written to directly) and shown when it is complete.
  bool complete_first = false;
  // The decoder sets every pixel that it does not deliver itself, so that the picture need not be
  // cleared before.
  bool sets_all = false;
};

// To be called once, before the first row. Where the picture is built in memory it takes the place
// of the one that is held. False without memory.
bool start_picture(RowSink *sink, const PictureForm &form);

// `count` pixels (RGB triples) for columns from `column` of a row, counted from the top left corner
// of the picture. Any numbers do: what lies outside picture or device is dropped. `alpha` is null
// or has `count` bytes; what is shown is then blended with what the device has there, in place in
// `rgb`.
void put_row(RowSink *sink, uint8_t *rgb, const uint8_t *alpha, int64_t column, int64_t row,
             int64_t count);

// Sends all rows of a picture to the sink's device.
void show_picture(RowSink *sink, Picture *picture);

// trunc(c * a + (1 - a) * under + 0.5) with a = alpha / 255, in whole numbers: the value that is
// truncated is never nearer than 1/510 to a whole number, so rounding errors cannot matter.
inline uint8_t blend_component(uint32_t colour, uint32_t alpha, uint32_t under) {
  return static_cast<uint8_t>((colour * alpha + under * (255 - alpha) + 127) / 255);
}

// ---- read_image.cpp

// Decodes the file, which stands open at its first byte. Answers reader_done, reader_bad_index
// (which delivers the picture all the same) or a failure.
using Decoder = int32_t (*)(ByteSource *source, RowSink *sink);

// The whole of a reading operation, which returns what this returns.
int32_t read_image(OutputContext *context, const char *file, const ReaderTarget &target,
                   int32_t *status, Decoder decode);

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// What the files of the PDF family share, grouped by file.
//
// A document is one record. Bytes take one way: an operation composes a line (pdf_line.h) and gives
// it to pdf_write, which puts it into the open stream's buffer or hands it to the output, a file or
// a block of memory. Objects are written as they come; the tables of the record know where each
// stands and what it is, and the end of the file is made from them. Objects 1 (catalogue) and 2
// (page tree) are reserved at the start and written last.
//
// Nothing here can fail but the start of a document: without memory a stream is not buffered and
// thereby not compressed, and table entries that could not be stored are left out.
//
// The family knows no drawing record. `imageout/` makes one-page pictures of a record of its own.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/file_failures.h"
#include "base/files.h"
#include "base/memory.h"

namespace quorix {

enum PdfStatus : int32_t { pdf_done = 0, pdf_no_file = -1, pdf_no_memory = -2 };

// ---- output.cpp: where the document goes

inline constexpr size_t pdf_block_size = 65536;

struct PdfOutput {
  int64_t written;  // by all writes, lost bytes too: the offset of the next byte
  bool to_memory;
  OwnedFile file;
  char name[failure_name_size];
  const char *operation;  // that writes now; lasts for ever
  FileFailure failure;    // the first of the document in the file, reported once more at its end
  size_t block_fill;      // bytes for the file, gathered in `block`
  // Of the last document that went to memory; a document in a file leaves them alone.
  OwnedArray<uint8_t> memory;
  size_t memory_capacity;
  int64_t memory_written;  // lost bytes included
  bool memory_overflow;    // some were lost
  uint8_t block[pdf_block_size];
};

// Readies the output for a new document; what was in use is closed. `file` is not read for memory.
PdfStatus open_output(PdfOutput *output, const char *file, bool to_memory);
void close_output(PdfOutput *output);
void put_output(PdfOutput *output, const void *data, size_t count);

// The operation qqpdf6.
int32_t take_memory_output(PdfOutput *output, uint8_t *buffer, int32_t size);

// ---- objects.cpp: the table of objects

enum ObjectKind : uint8_t {
  object_other = 0,  // lengths of streams, /Info, catalogue, page tree
  object_content = 1,
  object_page = 2,
  object_image = 3,
  object_form = 4,
  object_outline = 5,
  object_first_font = 10,  // plus the font's index
};

struct ObjectEntry {
  int64_t offset;
  ObjectKind kind;
};

struct ObjectTable {
  OwnedArray<ObjectEntry> entries;  // by object number
  int32_t capacity;
  int32_t next;  // the next object's number
};

bool start_objects(ObjectTable *objects);

struct PdfDocument;

// Begins the next object and returns its number.
int32_t new_object(PdfDocument *document, ObjectKind kind);
// The same for one of the two reserved numbers.
void begin_reserved_object(PdfDocument *document, int32_t number);
// What is known of an object, also of one that found no place in the table.
ObjectEntry object_entry(const ObjectTable &objects, int32_t number);

// ---- streams.cpp: content streams and images

inline constexpr size_t stream_buffer_size = 300000;

enum class StreamKind : uint8_t { content, image };

struct PdfStream {
  bool open;
  bool buffered;  // gathered in `buffer`, to be compressed when it is closed
  size_t fill, limit;
  // Kept from stream to stream unless an image has made it larger.
  OwnedArray<uint8_t> buffer;
  size_t buffer_size;
  int64_t start;        // where the data of an unbuffered stream began
  bool image;           // the open stream takes pixels,
  uint64_t image_left;  // and so many bytes of them
};

// ---- outlines.cpp: bookmarks

inline constexpr int32_t outline_levels = 5;

struct OutlineEntry {
  int32_t level;
  int32_t page;         // from 1
  char *title;          // owned
  size_t title_length;  // without terminator
};

struct Outlines {
  OwnedArray<OutlineEntry> entries;
  int32_t count, capacity;
  bool level_used[outline_levels];
};

// ---- the document

inline constexpr int32_t font_count = 35;

enum class FontState : uint8_t { unused, used, written };

struct PdfColour {
  int32_t red, green, blue;
};

// What the operators of a page need to know of each other.
struct PageState {
  int32_t font, font_size;  // of the open text
  PdfColour line_colour;    // what a clip that replaces another sets again
  bool mask_white;
  float clip_low[2], clip_high[2];
  float current[2];
  bool path_open, text_open;
  bool clip_active;
  bool after_line;  // the last operator of the path drew a line, it did not move
};

struct PdfDocument {
  bool open;  // between start and end; drawing operations do nothing otherwise
  bool compress;
  bool rotate_pages;
  int32_t page_width, page_height;
  PdfOutput output;
  ObjectTable objects;
  PdfStream stream;
  Outlines outlines;

  int32_t page_number;                    // from 1
  int32_t page_first;                     // the page's first object
  int32_t page_streams;                   // its content streams so far
  int32_t page_stream;                    // the last of them
  int32_t images, forms;                  // in the document so far
  int32_t earlier_images, earlier_forms;  // of them, on earlier pages
  bool page_has_text;                     // kept: true for all pages after the first with text
  FontState fonts[font_count];
  int32_t font_objects[font_count];   // in the order in which they were written,
  int32_t written_fonts[font_count];  // and which fonts they are
  int32_t written_font_count;

  PageState page;
};

// The process-wide document: null before the first qqpdf1 and after qqpfree.
extern PdfDocument *pdf_document;

// What a drawing operation works on: null unless a document is open.
inline PdfDocument *open_document(const char *operation) {
  if (pdf_document == nullptr || !pdf_document->open) return nullptr;
  pdf_document->output.operation = operation;
  return pdf_document;
}

// ---- document.cpp: life cycle

struct PdfSettings {
  int32_t page_width, page_height;
  bool compress, to_memory, rotate_pages;
};

PdfDocument *make_document();  // null without memory
void release_document(PdfDocument *document);

// Starts a document in the record and opens its first page. Whatever was open in it is closed; on
// failure nothing is open.
PdfStatus start_document(PdfDocument *document, const char *file, const PdfSettings &settings);
// Writes the page, the closing structures, and closes the output.
void end_document(PdfDocument *document);

// ---- streams.cpp

// The way of all bytes. `count` may be 0.
void pdf_write(PdfDocument *document, const void *data, size_t count);
void pdf_write_text(PdfDocument *document, const char *text);

void open_content(PdfDocument *document);
// An image of the document's next image number. Its pixels go through pdf_write.
void open_image(PdfDocument *document, int32_t width, int32_t height);
// Closes the open stream with the keys of a content stream or of an image, whichever it is.
void close_stream(PdfDocument *document, StreamKind kind);

// A zlib stream of all bytes; empty if it failed, for whatever reason.
OwnedArray<uint8_t> compress_bytes(const uint8_t *data, size_t count, size_t *compressed);

// ---- pages.cpp: fonts and page objects

// Ends the open page: its stream, new fonts, the page object.
void end_page(PdfDocument *document);
void start_page(PdfDocument *document);

// ---- closing.cpp: page tree, catalogue, /Info, cross-reference table

void write_closing_structures(PdfDocument *document);

// ---- outlines.cpp

// Writes the bookmarks and returns the number of their root, or 0 if there are none.
int32_t write_outlines(PdfDocument *document);
void release_outlines(Outlines *outlines);

// ---- page_content.cpp: what several operations begin with

void close_text(PdfDocument *document);
// Strokes an open path.
void close_path(PdfDocument *document);
// The colour operands and their operator: "rg" for areas, "RG" for lines.
void write_colour(PdfDocument *document, const PdfColour &colour, const char *operator_line);

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// Bookmarks: gathered by qqpdf9, written at the end in one pass.
//
// Each entry is linked with its parent, its neighbours and the entries below it. Searches forward
// end at the first entry that is not below, so that each entry is passed at most once for each
// level; what searches backward would find is kept per level.
#include <algorithm>
#include <cstring>

#include "base/grow.h"
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"
#include "quorix/pdf.h"

namespace quorix {

namespace {

enum BookmarkStatus : int32_t {
  bookmark_done = 0,
  bookmark_no_level = 1,
  bookmark_no_parent = 2,
  bookmark_no_table = 3,
  bookmark_no_title = 4,
};

constexpr int32_t start_capacity = 50;

bool enlarge(Outlines *outlines) {
  const int32_t capacity = grown_room(outlines->capacity, start_capacity);
  if (!grow_array(&outlines->entries, outlines->count, capacity)) return false;
  outlines->capacity = capacity;
  return true;
}

BookmarkStatus add_bookmark(PdfDocument *document, const char *title, int32_t level) {
  Outlines *const outlines = &document->outlines;
  if (level < 0 || level >= outline_levels) return bookmark_no_level;
  for (int32_t lower = 0; lower < level; ++lower)
    if (!outlines->level_used[lower]) return bookmark_no_parent;
  if (outlines->count == outlines->capacity && !enlarge(outlines)) return bookmark_no_table;
  const size_t length = std::strlen(title);
  OwnedArray<char> copy = allocate_array<char>(length);
  if (copy == nullptr) return bookmark_no_title;
  if (length != 0) std::memcpy(copy.get(), title, length);
  OutlineEntry *const entry = &outlines->entries[static_cast<size_t>(outlines->count)];
  *entry = {level, document->page_number, copy.release(), length};
  ++outlines->count;
  outlines->level_used[level] = true;
  return bookmark_done;
}

// ---- writing

// Goes through the pages while the entries, whose pages only rise, are written.
struct PageWalk {
  int32_t object;  // the page's object
  int32_t page;    // its number, from 1; 0 before the first
};

// The object of a page, or 0.
int32_t find_page(const ObjectTable &objects, PageWalk *walk, int32_t page) {
  while (walk->page < page) {
    do {
      if (++walk->object >= objects.next) return 0;
    } while (object_entry(objects, walk->object).kind != object_page);
    ++walk->page;
  }
  return walk->object;
}

struct OutlineWriter {
  PdfDocument *document;
  int32_t root;                    // its object; that of entry i is root + 1 + i
  int32_t latest[outline_levels];  // the last entry of each level before this one, or -1
  PageWalk walk;
};

// A line "   /Key number 0 R".
template <size_t size>
void write_link(const OutlineWriter &writer, const char (&key)[size], int32_t number) {
  TextLine line;
  add(&line, key);
  add_reference(&line, number);
  write_line(writer.document, line);
}

void write_links_back(const OutlineWriter &writer, int32_t level) {
  int32_t parent = -1;
  for (int32_t lower = 0; lower < level; ++lower)
    parent = std::max(parent, writer.latest[lower]);
  write_link(writer, "   /Parent", writer.root + 1 + parent);  // the root is what stands before 0
  const int32_t previous = writer.latest[level];
  if (previous > parent) write_link(writer, "   /Prev", writer.root + 1 + previous);
}

// Kept: the last of the entries below is the last of all of them, not the last child, and their
// number counts them all.
void write_links_forward(const OutlineWriter &writer, int32_t index, int32_t level) {
  const Outlines &outlines = writer.document->outlines;
  const auto level_of = [&](int32_t i) { return outlines.entries[static_cast<size_t>(i)].level; };
  int32_t end = index + 1;
  while (end < outlines.count && level_of(end) > level)
    ++end;
  const int32_t children = end - index - 1;
  const int32_t object = writer.root + 1 + index;
  if (end < outlines.count && level_of(end) == level)
    write_link(writer, "   /Next", object + children + 1);
  if (children == 0) return;
  write_link(writer, "   /First", object + 1);
  write_link(writer, "   /Last", object + children);
  TextLine line;
  add(&line, "   /Count");
  add_int(&line, children);
  add(&line, "\n");
  write_line(writer.document, line);
}

void write_destination(OutlineWriter *writer, int32_t page) {
  PdfDocument *const document = writer->document;
  const int32_t object = find_page(document->objects, &writer->walk, page);
  if (object == 0) return;
  TextLine line;
  add(&line, "   /Dest [");
  add_int(&line, object);
  add(&line, " 0 R /XYZ 0");
  add_int(&line, document->page_height);
  add(&line, " 0]\n");
  write_line(document, line);
}

void write_entry(OutlineWriter *writer, int32_t index) {
  PdfDocument *const document = writer->document;
  const OutlineEntry entry = document->outlines.entries[static_cast<size_t>(index)];
  new_object(document, object_outline);
  pdf_write_text(document, "<< /Title (");
  pdf_write(document, entry.title, entry.title_length);
  pdf_write_text(document, ")\n");
  write_links_back(*writer, entry.level);
  write_links_forward(*writer, index, entry.level);
  write_destination(writer, entry.page);
  pdf_write_text(document, ">>\nendobj\n");
  writer->latest[entry.level] = index;
}

void write_root(const OutlineWriter &writer) {
  PdfDocument *const document = writer.document;
  const int32_t count = document->outlines.count;
  new_object(document, object_outline);
  pdf_write_text(document, "<< /Type /Outlines\n");
  write_link(writer, "   /First", writer.root + 1);
  write_link(writer, "   /Last", writer.root + count);
  TextLine line;
  add(&line, "   /Count");
  add_int(&line, count);
  add(&line, "\n>>\nendobj\n");
  write_line(document, line);
}

}  // namespace

int32_t write_outlines(PdfDocument *document) {
  if (document->outlines.count == 0) return 0;
  OutlineWriter writer = {document, document->objects.next, {-1, -1, -1, -1, -1}, {0, 0}};
  write_root(writer);
  for (int32_t i = 0; i < document->outlines.count; ++i)
    write_entry(&writer, i);
  return writer.root;
}

void release_outlines(Outlines *outlines) {
  for (int32_t i = 0; i < outlines->count; ++i)
    release_bytes(outlines->entries[static_cast<size_t>(i)].title);
  *outlines = {};
}

}  // namespace quorix

extern "C" int32_t qqpdf9(const char *title, const int32_t *level, int32_t *status) {
  quorix::PdfDocument *const document = quorix::open_document("qqpdf9");
  *status = document == nullptr ? quorix::bookmark_no_level
                                : quorix::add_bookmark(document, title, *level);
  return 0;
}

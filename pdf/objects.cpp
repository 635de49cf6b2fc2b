// SPDX-License-Identifier: MIT
//
// Where each object stands in the output, and what it is.
//
// The table is enlarged while there are still entries in reserve, so that a request for memory may
// fail and be met later without a loss. If memory stays short for long, objects beyond the table
// are written but not known of: they stand in the file with an offset of 0.
#include "base/grow.h"
#include "pdf/pdf.h"
#include "pdf/pdf_line.h"

namespace quorix {

namespace {

constexpr int32_t first_free_object = 3;  // 0 is never used, 1 and 2 are reserved
constexpr int32_t start_capacity = 200;
constexpr int32_t reserve = 100;  // entries left when the table is to be enlarged

void enlarge(ObjectTable *objects) {
  const int32_t capacity = grown_room(objects->capacity, start_capacity);
  if (grow_array(&objects->entries, objects->capacity, capacity, NewValues::zero))
    objects->capacity = capacity;
}

void store(ObjectTable *objects, int32_t number, ObjectEntry entry) {
  if (number >= objects->capacity - reserve) enlarge(objects);
  if (number < objects->capacity) objects->entries[static_cast<size_t>(number)] = entry;
}

void write_number(PdfDocument *document, int32_t number) {
  TextLine line;
  add_int(&line, number);
  add(&line, " 0 obj\n");
  write_line(document, line);
}

}  // namespace

bool start_objects(ObjectTable *objects) {
  objects->entries = allocate_zeroed_array<ObjectEntry>(start_capacity);
  objects->capacity = objects->entries == nullptr ? 0 : start_capacity;
  objects->next = first_free_object;
  return objects->entries != nullptr;
}

int32_t new_object(PdfDocument *document, ObjectKind kind) {
  const int32_t number = document->objects.next;
  store(&document->objects, number, {document->output.written, kind});
  if (kind == object_content) {
    ++document->page_streams;
    document->page_stream = number;
  }
  write_number(document, number);
  ++document->objects.next;
  return number;
}

void begin_reserved_object(PdfDocument *document, int32_t number) {
  store(&document->objects, number, {document->output.written, object_other});
  write_number(document, number);
}

ObjectEntry object_entry(const ObjectTable &objects, int32_t number) {
  if (number >= objects.capacity) return {0, object_other};
  return objects.entries[static_cast<size_t>(number)];
}

}  // namespace quorix

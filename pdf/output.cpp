// SPDX-License-Identifier: MIT
//
// The end of the way of all bytes: a file, written in large blocks, or a block of memory that
// grows. What finds no place in memory is lost and counted. A file that cannot be written goes on
// as if it could: what failed is remembered, and noted again when the document ends.
#include <algorithm>
#include <cstring>

#include "base/grow.h"
#include "pdf/pdf.h"

namespace quorix {

namespace {

constexpr size_t memory_step = 512000;     // the first size, and the least growth
constexpr size_t most_memory = INT32_MAX;  // qqpdf6 counts in 32 bits

enum TakeStatus : int32_t { take_overflow = -1, take_nothing = -2, take_no_room = -3 };

void remember_failure(PdfOutput *output, const FileWork &work) {
  if (work.failed && output->failure.step == FileStep::none) output->failure = last_file_failure;
}

void write_now(PdfOutput *output, const void *data, size_t count) {
  const FileWork work(output->operation, output->name);
  write_file(output->file.get(), data, count);
  remember_failure(output, work);
}

void flush_block(PdfOutput *output) {
  if (output->block_fill != 0) write_now(output, output->block, output->block_fill);
  output->block_fill = 0;
}

void put_file(PdfOutput *output, const void *data, size_t count) {
  if (output->file == nullptr) return;
  if (count > pdf_block_size - output->block_fill) flush_block(output);
  if (count >= pdf_block_size) {
    write_now(output, data, count);
    return;
  }
  std::memcpy(output->block + output->block_fill, data, count);
  output->block_fill += count;
}

bool open_document_file(PdfOutput *output, const char *name) {
  output->failure = {};
  const FileWork work(output->operation, name);
  output->file = open_file(name, "wb");
  if (output->file == nullptr) return false;
  copy_failure_name(output->name, name);
  return true;
}

bool resize_memory(PdfOutput *output, size_t capacity) {
  const auto used = static_cast<size_t>(output->memory_written);
  if (!grow_array(&output->memory, used, capacity)) return false;
  output->memory_capacity = capacity;
  return true;
}

// Twice the size, so that copying stays in proportion; if that cannot be had, what is needed.
bool grow_memory(PdfOutput *output, size_t needed) {
  if (needed > most_memory) return false;
  const size_t least = std::min(needed + memory_step, most_memory);
  const size_t grown = std::min(grown_room(output->memory_capacity, least), most_memory);
  return resize_memory(output, grown) || (grown != least && resize_memory(output, least));
}

bool fits_in_memory(PdfOutput *output, size_t count) {
  const auto used = static_cast<size_t>(output->memory_written);
  if (count <= output->memory_capacity - used) return true;
  return count <= most_memory && grow_memory(output, used + count);
}

// Once bytes were lost, and after the memory was handed over, all are lost and only counted.
void put_memory(PdfOutput *output, const void *data, size_t count) {
  if (output->memory != nullptr && !output->memory_overflow) {
    if (fits_in_memory(output, count)) {
      std::memcpy(output->memory.get() + output->memory_written, data, count);
    } else {
      output->memory_overflow = true;
    }
  }
  output->memory_written += static_cast<int64_t>(count);
}

void release_memory_output(PdfOutput *output) {
  output->memory.reset();
  output->memory_capacity = 0;
}

}  // namespace

PdfStatus open_output(PdfOutput *output, const char *file, bool to_memory) {
  close_output(output);
  output->to_memory = to_memory;
  output->written = 0;
  if (!to_memory) {
    return open_document_file(output, file) ? pdf_done : pdf_no_file;
  }
  release_memory_output(output);
  output->memory_written = 0;
  output->memory_overflow = false;
  output->memory = allocate_array<uint8_t>(memory_step);
  if (output->memory == nullptr) return pdf_no_memory;
  output->memory_capacity = memory_step;
  return pdf_done;
}

void close_output(PdfOutput *output) {
  if (output->file == nullptr) return;
  flush_block(output);
  const FileWork work(output->operation, output->name);
  output->file.reset();
  remember_failure(output, work);
  if (output->failure.step != FileStep::none) last_file_failure = output->failure;
}

void put_output(PdfOutput *output, const void *data, size_t count) {
  if (count == 0) return;
  output->written += static_cast<int64_t>(count);
  if (output->to_memory) {
    put_memory(output, data, count);
  } else {
    put_file(output, data, count);
  }
}

int32_t take_memory_output(PdfOutput *output, uint8_t *buffer, int32_t size) {
  const int64_t count = output->memory_written;
  if (size == 0) return static_cast<int32_t>(std::min<int64_t>(count, INT32_MAX));
  if (output->memory_overflow) return take_overflow;
  if (output->memory == nullptr || count == 0) return take_nothing;
  if (count > size) return take_no_room;
  std::memcpy(buffer, output->memory.get(), static_cast<size_t>(count));
  release_memory_output(output);
  return static_cast<int32_t>(count);
}

}  // namespace quorix

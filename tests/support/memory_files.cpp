// SPDX-License-Identifier: MIT
#include "tests/support/memory_files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <set>

#include "base/files.h"

namespace quorix::testing {

namespace {

using Bytes = std::vector<uint8_t>;

struct Stream {
  Bytes *bytes;
  int64_t position;
  bool writable;
};

struct Disk {
  FileGate before;
  std::map<std::string, Bytes> files;
  std::set<Stream *> open;
};

Disk *disk = nullptr;

// The gate speaks of C streams; inside, such a pointer is one of ours under another type.
Stream *stream_of(std::FILE *file) {
  auto *stream = reinterpret_cast<Stream *>(file);
  if (disk->open.count(stream) == 0) {
    std::fputs("MemoryFiles: a stream that is not open\n", stderr);
    std::abort();
  }
  return stream;
}

std::FILE *memory_open(const char *name, const char *mode) {
  const bool writing = mode[0] == 'w';
  if (!writing && disk->files.count(name) == 0) return nullptr;
  Bytes *bytes = &disk->files[name];
  if (writing) bytes->clear();
  auto *stream = new Stream{bytes, 0, writing || std::strchr(mode, '+') != nullptr};
  disk->open.insert(stream);
  return reinterpret_cast<std::FILE *>(stream);
}

size_t memory_read(void *buffer, size_t bytes, std::FILE *file) {
  Stream *stream = stream_of(file);
  const auto size = static_cast<int64_t>(stream->bytes->size());
  const auto left = static_cast<size_t>(std::max<int64_t>(size - stream->position, 0));
  const size_t count = std::min(bytes, left);
  if (count > 0) std::memcpy(buffer, stream->bytes->data() + stream->position, count);
  stream->position += static_cast<int64_t>(count);
  return count;
}

size_t memory_write(const void *buffer, size_t bytes, std::FILE *file) {
  Stream *stream = stream_of(file);
  if (!stream->writable || bytes == 0) return 0;
  const size_t start = static_cast<size_t>(stream->position);
  if (stream->bytes->size() < start + bytes) stream->bytes->resize(start + bytes);
  std::memcpy(stream->bytes->data() + start, buffer, bytes);
  stream->position += static_cast<int64_t>(bytes);
  return bytes;
}

int memory_seek(std::FILE *file, int64_t offset, int origin) {
  Stream *stream = stream_of(file);
  const auto size = static_cast<int64_t>(stream->bytes->size());
  const int64_t from = origin == SEEK_SET ? 0 : origin == SEEK_CUR ? stream->position : size;
  int64_t position = 0;
  if (__builtin_add_overflow(from, offset, &position) || position < 0) return -1;
  stream->position = position;
  return 0;
}

int64_t memory_tell(std::FILE *file) {
  return stream_of(file)->position;
}

int memory_close(std::FILE *file) {
  Stream *stream = stream_of(file);
  disk->open.erase(stream);
  delete stream;
  return 0;
}

// What was written can be looked at already.
int memory_flush(std::FILE *file) {
  stream_of(file);
  return 0;
}

}  // namespace

MemoryFiles::MemoryFiles() {
  if (disk != nullptr) {
    std::fputs("MemoryFiles: one at a time\n", stderr);
    std::abort();
  }
  disk = new Disk{file_gate, {}, {}};
  file_gate = {memory_open, memory_read,  memory_write, memory_seek,
               memory_tell, memory_close, memory_flush};
}

MemoryFiles::~MemoryFiles() {
  file_gate = disk->before;
  for (Stream *stream : disk->open)
    delete stream;
  delete disk;
  disk = nullptr;
}

void MemoryFiles::put(const std::string &name, Bytes bytes) {
  disk->files[name] = std::move(bytes);
}

bool MemoryFiles::exists(const std::string &name) const {
  return disk->files.count(name) != 0;
}

const Bytes &MemoryFiles::bytes(const std::string &name) const {
  return disk->files.at(name);
}

size_t MemoryFiles::open_files() const {
  return disk->open.size();
}

}  // namespace quorix::testing

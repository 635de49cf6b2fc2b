// SPDX-License-Identifier: MIT
#include "tests/support/failing_files.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <set>

#include "base/files.h"

namespace quorix::testing {

namespace {

struct Watch {
  FileGate before;
  size_t fail_at;
  unsigned which;
  uint64_t writable = UINT64_MAX;
  size_t read_limit = SIZE_MAX;
  bool failed = false;
  size_t calls = 0;
  std::set<std::FILE *> open = {};
};

Watch *watch = nullptr;

bool refuse(FileCall call) {
  if ((watch->which & call) == 0) return false;
  const bool hit = ++watch->calls == watch->fail_at;
  watch->failed = watch->failed || hit;
  return hit;
}

std::FILE *watched_open(const char *name, const char *mode) {
  if (refuse(file_open)) return nullptr;
  std::FILE *file = watch->before.open(name, mode);
  if (file != nullptr) watch->open.insert(file);
  return file;
}

size_t watched_read(void *buffer, size_t bytes, std::FILE *file) {
  if (refuse(file_read)) return 0;
  if (bytes > watch->read_limit) watch->failed = true;
  return watch->before.read(buffer, std::min(bytes, watch->read_limit), file);
}

size_t watched_write(const void *buffer, size_t bytes, std::FILE *file) {
  if (refuse(file_write)) return 0;
  if (bytes > watch->writable) watch->failed = true;
  const size_t room = static_cast<size_t>(std::min<uint64_t>(bytes, watch->writable));
  const size_t written = room == 0 ? 0 : watch->before.write(buffer, room, file);
  watch->writable -= written;
  return written;
}

int watched_seek(std::FILE *file, int64_t offset, int origin) {
  return refuse(file_seek) ? -1 : watch->before.seek(file, offset, origin);
}

int64_t watched_tell(std::FILE *file) {
  return refuse(file_tell) ? -1 : watch->before.tell(file);
}

int watched_close(std::FILE *file) {
  const bool refused = refuse(file_close);
  watch->open.erase(file);
  const int result = watch->before.close(file);
  return refused ? EOF : result;
}

int watched_flush(std::FILE *file) {
  return refuse(file_flush) ? EOF : watch->before.flush(file);
}

}  // namespace

FailingFiles::FailingFiles(size_t fail_at, unsigned which) {
  if (watch != nullptr) {
    std::fputs("FailingFiles: one at a time\n", stderr);
    std::abort();
  }
  watch = new Watch{file_gate, fail_at, which};
  file_gate = {watched_open, watched_read,  watched_write, watched_seek,
               watched_tell, watched_close, watched_flush};
}

FailingFiles::~FailingFiles() {
  file_gate = watch->before;
  delete watch;
  watch = nullptr;
}

void FailingFiles::limit_written_bytes(uint64_t bytes) {
  watch->writable = bytes;
}
void FailingFiles::limit_bytes_of_a_read(size_t bytes) {
  watch->read_limit = bytes;
}
bool FailingFiles::failed() const {
  return watch->failed;
}
size_t FailingFiles::calls() const {
  return watch->calls;
}
size_t FailingFiles::open_files() const {
  return watch->open.size();
}

}  // namespace quorix::testing

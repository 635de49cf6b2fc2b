// SPDX-License-Identifier: MIT
//
// The file gate as it is outside tests: C streams with 64-bit positions.
#include "base/files.h"

#include <cerrno>

#include "base/file_failures.h"
#include "base/file_names.h"

namespace quorix {

namespace {

std::FILE *plain_open(const char *name, const char *mode) {
#ifdef _WIN32
  if (is_wide_name(name)) {
    const OwnedArray<wchar_t> wide = wide_name(name);
    const wchar_t wide_mode[] = {static_cast<wchar_t>(mode[0]), static_cast<wchar_t>(mode[1]), 0};
    return wide == nullptr ? nullptr : _wfopen(wide.get(), wide_mode);
  }
#endif
  return std::fopen(name, mode);
}

size_t plain_read(void *buffer, size_t bytes, std::FILE *file) {
  return std::fread(buffer, 1, bytes, file);
}

size_t plain_write(const void *buffer, size_t bytes, std::FILE *file) {
  return std::fwrite(buffer, 1, bytes, file);
}

// `long` has 32 bits on Windows, so the plain C calls would end at 2 GiB there.
int plain_seek(std::FILE *file, int64_t offset, int origin) {
#ifdef _WIN32
  return _fseeki64(file, offset, origin);
#else
  return fseeko(file, static_cast<off_t>(offset), origin);
#endif
}

int64_t plain_tell(std::FILE *file) {
#ifdef _WIN32
  return _ftelli64(file);
#else
  return static_cast<int64_t>(ftello(file));
#endif
}

int plain_close(std::FILE *file) {
  return std::fclose(file);
}

int plain_flush(std::FILE *file) {
  return std::fflush(file);
}

}  // namespace

FileGate file_gate = {plain_open, plain_read,  plain_write, plain_seek,
                      plain_tell, plain_close, plain_flush};

// A call that fails without a word of the system's leaves 0 in errno.
OwnedFile open_file(const char *name, const char *mode) {
  errno = 0;
  const bool named = name != nullptr && name[0] != '\0';
  OwnedFile file(named ? file_gate.open(name, mode) : nullptr);
  if (file == nullptr) note_file_failure(FileStep::open, named ? errno : ENOENT);
  return file;
}

size_t read_file(std::FILE *file, void *buffer, size_t bytes) {
  return file_gate.read(buffer, bytes, file);
}

size_t write_file(std::FILE *file, const void *buffer, size_t bytes) {
  errno = 0;
  const size_t written = file_gate.write(buffer, bytes, file);
  if (written != bytes) note_file_failure(FileStep::write, errno);
  return written;
}

bool flush_file(std::FILE *file) {
  errno = 0;
  const bool flushed = file_gate.flush(file) == 0;
  if (!flushed) note_file_failure(FileStep::flush, errno);
  return flushed;
}

bool close_file(std::FILE *file) {
  errno = 0;
  const bool closed = file_gate.close(file) == 0;
  if (!closed) note_file_failure(FileStep::close, errno);
  return closed;
}

}  // namespace quorix

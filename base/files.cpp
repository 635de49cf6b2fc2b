// SPDX-License-Identifier: MIT
#include "base/files.h"

namespace quorix {

namespace {

std::FILE *plain_open(const char *name, const char *mode) {
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

OwnedFile open_file(const char *name, const char *mode) {
  if (name == nullptr || name[0] == '\0') return {};
  return OwnedFile(file_gate.open(name, mode));
}

size_t read_file(std::FILE *file, void *buffer, size_t bytes) {
  return file_gate.read(buffer, bytes, file);
}

size_t write_file(std::FILE *file, const void *buffer, size_t bytes) {
  return file_gate.write(buffer, bytes, file);
}

}  // namespace quorix

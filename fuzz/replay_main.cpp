// SPDX-License-Identifier: MIT
//
// Runs a fuzz target over stored inputs, in any build: replay ARCHIVE|FOLDER... An archive is a tar
// file of plain files (corpus.sh packs it), and must be whole. Folders that are missing are
// skipped, but some input there must be.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/target.h"

namespace {

using Bytes = std::vector<uint8_t>;

Bytes read_file(const std::filesystem::path &path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

void replay(const char *name, const uint8_t *data, size_t size) {
  // Named first, so that a crash tells which input it was.
  std::printf("%s\n", name);
  std::fflush(stdout);
  // A copy of its own, so that a sanitizer sees where it ends.
  const Bytes input(data, data + size);
  LLVMFuzzerTestOneInput(input.data(), input.size());
}

// What a tar file holds: blocks of 512 bytes, of which each file has one with its name, size (in
// octal digits), kind and a sum over all of it, then as many as it fills. A block of zeros ends it.
constexpr size_t block_size = 512;
constexpr size_t name_length = 100, size_place = 124, sum_place = 148, sum_length = 8,
                 kind_place = 156;

size_t octal_number(const uint8_t *digits) {
  return std::strtoull(reinterpret_cast<const char *>(digits), nullptr, 8);
}

// The sum counts its own digits as blanks.
bool sum_is_right(const uint8_t *header) {
  size_t sum = sum_length * ' ';
  for (size_t i = 0; i < block_size; ++i) {
    if (i < sum_place || i >= sum_place + sum_length) sum += header[i];
  }
  return sum == octal_number(header + sum_place);
}

// The number of inputs, or -1 if the archive is damaged.
int replay_archive(const Bytes &archive) {
  int count = 0;
  size_t at = 0;
  while (at + block_size <= archive.size()) {
    const uint8_t *const header = archive.data() + at;
    if (header[0] == 0) return count;
    at += block_size;
    const size_t size = octal_number(header + size_place);
    const bool whole = sum_is_right(header) && size <= archive.size() - at;
    if (!whole || header[kind_place] != '0' || header[name_length - 1] != 0) return -1;
    replay(reinterpret_cast<const char *>(header), archive.data() + at, size);
    at += (size + block_size - 1) / block_size * block_size;
    ++count;
  }
  return -1;
}

int replay_folder(const char *folder) {
  std::error_code missing;
  int count = 0;
  for (const auto &entry : std::filesystem::directory_iterator(folder, missing)) {
    if (!entry.is_regular_file()) continue;
    const Bytes input = read_file(entry.path());
    replay(entry.path().filename().string().c_str(), input.data(), input.size());
    ++count;
  }
  return count;
}

}  // namespace

int main(int argc, char **argv) {
  int total = 0;
  for (int i = 1; i < argc; ++i) {
    const bool is_archive = std::filesystem::path(argv[i]).extension() == ".tar";
    const int count = is_archive ? replay_archive(read_file(argv[i])) : replay_folder(argv[i]);
    if (count < 0) {
      std::printf("%s: missing or damaged\n", argv[i]);
      return 1;
    }
    total += count;
  }
  std::printf("%d inputs replayed\n", total);
  return total > 0 ? 0 : 1;
}

// SPDX-License-Identifier: MIT
//
// Runs a fuzz target over stored inputs, in any build: replay FOLDER... Folders that are missing
// are skipped, but some input there must be.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/target.h"

namespace {

std::vector<uint8_t> read_input(const std::filesystem::path &path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

int replay_folder(const char *folder) {
  std::error_code missing;
  int count = 0;
  for (const auto &entry : std::filesystem::directory_iterator(folder, missing)) {
    if (!entry.is_regular_file()) continue;
    // Named first, so that a crash tells which input it was.
    std::printf("%s\n", entry.path().filename().string().c_str());
    std::fflush(stdout);
    const std::vector<uint8_t> input = read_input(entry.path());
    LLVMFuzzerTestOneInput(input.data(), input.size());
    ++count;
  }
  return count;
}

}  // namespace

int main(int argc, char **argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i)
    count += replay_folder(argv[i]);
  std::printf("%d inputs replayed\n", count);
  return count > 0 ? 0 : 1;
}

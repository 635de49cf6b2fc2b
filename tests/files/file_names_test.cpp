// SPDX-License-Identifier: MIT
//
// Names of files beyond ASCII, in every operation that takes one. What lies on the disk is looked
// at by the names that the system itself uses: bytes, or on Windows 16-bit units.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "quorix/quorix.h"
#include "tests/files/file_operations.h"
#include "tests/support/environment_variable.h"
#include "tests/support/temporary_folder.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace quorix::testing {
namespace {

namespace fs = std::filesystem;

struct FileName {
  std::string bytes;
  std::wstring wide;  // as Windows shows it
};

// Letters of a Western code page, of another one, of none, and beyond 16 bits.
const FileName names[] = {
    {"Gr\xC3\xB6\xC3\x9F"
     "e",
     L"Gr\u00F6\u00DFe"},
    {"\xCE\xBC\xCE\xAD\xCF\x84\xCF\x81\xCE\xB7\xCF\x83\xCE\xB7",
     L"\u03BC\u03AD\u03C4\u03C1\u03B7\u03C3\u03B7"},
    {"\xE6\xB8\xAC\xE5\xAE\x9A", L"\u6E2C\u5B9A"},
    {"\xF0\x9F\x93\x88 plot", L"\U0001F4C8 plot"},
};

#ifdef _WIN32
fs::path on_disk(const FileName &name) {
  return fs::path(name.wide);
}
#else
fs::path on_disk(const FileName &name) {
  return fs::path(name.bytes);
}
#endif

class FileNames : public ::testing::Test {
 protected:
  void TearDown() override {
    qqwfree();
    qqpfree();
    take_failure();
  }
  // As the operations take it, and as the system has it.
  std::string given(const FileName &name) const { return folder_.file("") + name.bytes; }
  fs::path there(const FileName &name) const { return fs::path(folder_.file("")) / on_disk(name); }

  TemporaryFolder folder_;
};

TEST_F(FileNames, BeyondAsciiAreThoseOfTheFilesWritten) {
  show_noise(5, 4);
  for (const FileWriterCall &writer : file_writers) {
    for (const FileName &name : names) {
      EXPECT_EQ(writer.run(given(name)), 0) << writer.operation << " " << name.bytes;
      EXPECT_FALSE(take_failure().any) << writer.operation << " " << name.bytes;
      EXPECT_TRUE(fs::exists(there(name))) << writer.operation << " " << name.bytes;
      EXPECT_GT(fs::file_size(there(name)), 30U) << writer.operation << " " << name.bytes;
      std::error_code ignored;  // a stream that stays open keeps its file on Windows
      fs::remove(there(name), ignored);
    }
  }
}

TEST_F(FileNames, BeyondAsciiAreThoseOfTheFilesRead) {
  for (const FileReaderCall &reader : file_readers) {
    const std::string plain = folder_.file("plain");
    reader.make(plain);
    for (const FileName &name : names) {
      EXPECT_EQ(reader.run(given(name)), reader.no_file) << reader.operation << " " << name.bytes;
      fs::copy_file(plain, there(name));
      EXPECT_EQ(reader.run(given(name)), 0) << reader.operation << " " << name.bytes;
      fs::remove(there(name));
    }
  }
}

TEST_F(FileNames, BeyondAsciiAreThoseOfTheFilesRemoved) {
  for (const FileName &name : names) {
    std::ofstream(there(name)) << "word";
    ASSERT_TRUE(fs::exists(there(name)));
    qqrmfl(given(name).c_str());
    EXPECT_FALSE(fs::exists(there(name))) << name.bytes;
  }
}

// A font of two glyphs, whose widths no font of the library has.
constexpr char odd_font[] =
    "STARTFONT 2.1\nFONT odd\nSIZE 10 75 75\nFONTBOUNDINGBOX 8 8 0 0\nCHARS 1\n"
    "STARTCHAR A\nENCODING 65\nDWIDTH 77 0\nBBX 8 1 0 0\nBITMAP\nFF\nENDCHAR\nENDFONT\n";

TEST_F(FileNames, BeyondAsciiAreThoseOfFoldersOfFonts) {
  const EnvironmentVariable variable("QUORIX", nullptr);
  for (const FileName &name : names) {
    show_noise(5, 4);  // each time a new record, which has read no font
    fs::create_directories(there(name) / "fonts");
    std::ofstream(there(name) / "fonts" / "helve10.bdf") << odd_font;
    const int32_t use_directory = 1, family = 3, size = 10;
    int32_t status = 12345, widths[233] = {};
    qqbdf1n(given(name).c_str(), &use_directory, &family, &size, widths, &status);
    EXPECT_EQ(status, 0) << name.bytes;
    EXPECT_EQ(widths['A' - 32], 770) << name.bytes;
    qqwfree();
  }
}

#ifdef _WIN32

// Bytes that are no UTF-8 mean what the system's code page makes of them.
TEST_F(FileNames, ThatAreNoUtf8AreOfTheCodePage) {
  const char name[] = "m\xF6nch\xE4";
  wchar_t wide[16] = L"";
  ASSERT_GT(MultiByteToWideChar(CP_ACP, 0, name, -1, wide, 16), 0);
  show_noise(5, 4);
  for (const FileWriterCall &writer : file_writers) {
    const fs::path there = fs::path(folder_.file("")) / wide;
    EXPECT_EQ(writer.run(folder_.file("") + name), 0) << writer.operation;
    EXPECT_TRUE(fs::exists(there)) << writer.operation;
    std::error_code ignored;
    fs::remove(there, ignored);
  }
}

#else

TEST_F(FileNames, ThatAreNoUtf8AreTakenAsTheyAre) {
  show_noise(5, 4);
  const FileName name = {"m\xF6nch\xE4", L""};
  for (const FileWriterCall &writer : file_writers) {
    EXPECT_EQ(writer.run(given(name)), 0) << writer.operation;
    EXPECT_TRUE(fs::exists(there(name))) << writer.operation;
    fs::remove(there(name));
  }
}

#endif

}  // namespace
}  // namespace quorix::testing

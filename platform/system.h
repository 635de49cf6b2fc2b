// SPDX-License-Identifier: MIT
//
// What the library asks of the operating system besides memory, files and messages. Each system has
// a file of its own behind it.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quorix {

// ---- environment.cpp

// The value of an environment variable as its users ask for it, with the install directory as the
// last resort for the variable that names it; 256 cells with the terminator. Gives its length, or 0
// where there is none; the buffer stays as it was then.
int32_t environment_text(const char *name, char *buffer);

// ---- environment_posix.cpp, environment_windows.cpp

// The value of an environment variable, cut to `size` cells with its terminator. False where there
// is no such variable; the buffer stays as it was then.
bool environment_value(const char *name, char *buffer, size_t size);

// The directory that holds the library's own files. On Windows the registry names it; elsewhere it
// is the data directory of the installation that the library was loaded from, if that exists, so
// that an installed tree can be moved. False where there is none; the buffer stays as it was then.
bool find_install_directory(char *buffer, size_t size);

// The folder of the file that this library was loaded from, and that of the program; of the static
// library both are the program's. Whole paths without a separator at their end, in UTF-8 on Windows
// (base/file_names.h). False where the system does not tell, or `size` cells are too few; the
// buffer stays as it was then.
bool folder_of_library(char *buffer, size_t size);
bool folder_of_program(char *buffer, size_t size);

// ---- system_posix.cpp, system_windows.cpp

// Hands the messages that wait for this thread's windows to them.
void dispatch_waiting_messages();

// Removes a file, and never a directory.
void remove_plain_file(const char *name);

}  // namespace quorix

// SPDX-License-Identifier: MIT
//
// Files to be removed, commands, the clock, messages to the user and from the window system.
#include <cstdlib>
#include <ctime>

#include "base/files.h"
#include "platform/message.h"
#include "platform/system.h"
#include "quorix/system.h"

namespace quorix {

namespace {

constexpr int first_year = 1900;

}  // namespace

}  // namespace quorix

// What cannot be read is not removed.
extern "C" int32_t qqrmfl(const char *name) {
  quorix::OwnedFile file = quorix::open_file(name, "r");
  if (file == nullptr) return 0;
  file.reset();  // Windows removes no open file
  quorix::remove_plain_file(name);
  return 0;
}

extern "C" int32_t qqsyst(const char *command) {
  if (command == nullptr) return 0;
  const int ignored = std::system(command);
  (void)ignored;
  return 0;
}

extern "C" int32_t qqtime(int32_t *day, int32_t *month, int32_t *year, int32_t *hour,
                          int32_t *minute, int32_t *second) {
  const std::time_t now = std::time(nullptr);
  const std::tm *const local = std::localtime(&now);
  if (local == nullptr) return 0;
  *day = local->tm_mday;
  *month = local->tm_mon + 1;
  *year = local->tm_year + quorix::first_year;
  *hour = local->tm_hour;
  *minute = local->tm_min;
  *second = local->tm_sec;
  return 0;
}

extern "C" int32_t qqwmsg(const char *text, const char *caption) {
  quorix::show_message(text == nullptr ? "" : text, caption == nullptr ? "" : caption);
  return 0;
}

extern "C" int32_t qqwque(void) {
  quorix::dispatch_waiting_messages();
  return 0;
}

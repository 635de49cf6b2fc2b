// SPDX-License-Identifier: MIT
//
// Size and place of a window from the page, the screen and the frame: arithmetic alone. Where there
// are tables, the first case that holds decides.
#include "window/placement.h"

#include <algorithm>

#include "base/numbers.h"

namespace quorix {

namespace {

// Screens and frames of a size, and what is computed from them.
struct Room {
  int64_t screen_width, screen_height;
  int64_t frame_width, frame_height, caption;

  int64_t widest() const { return screen_width - 2 * frame_width; }
  int64_t highest() const { return screen_height - 2 * frame_height - caption; }
};

Room room_of(const ScreenInfo &screen, const FrameMetrics &frame) {
  return {screen.width, screen.height, frame.frame_width, frame.frame_height, frame.caption_height};
}

int32_t within_int32(int64_t value) {
  return static_cast<int32_t>(
      std::clamp<int64_t>(value, std::int64_t{INT32_MIN}, std::int64_t{INT32_MAX}));
}

// One side of the window fills two thirds of the screen, or all that a frame leaves of it; the
// other one follows from the page.
WindowPlacement computed_size(const WindowRequest &request, const Room &room) {
  const double aspect =
      static_cast<double>(request.page_width) / static_cast<double>(request.page_height);
  const bool full = request.device == full_size_device;
  WindowPlacement size = {};
  if (request.page_width <= request.page_height) {
    size.height = within_int32(full ? room.highest() : 2 * room.screen_height / 3);
    size.width = round_to_int32(size.height * aspect);
  } else {
    size.width = within_int32(full ? room.widest() : 2 * room.screen_width / 3);
    size.height = round_to_int32(size.width / aspect);
  }
  return size;
}

WindowPlacement size_of(const WindowRequest &request, const Room &room) {
  WindowPlacement size = {0, 0, request.width, request.height};
  if (request.placement == compute_size_and_place) {
    size = computed_size(request, room);
  } else {
    size.width = within_int32(std::min<int64_t>(size.width, room.widest()));
    size.height = within_int32(std::min<int64_t>(size.height, room.highest()));
  }
  size.width = std::max(size.width, 1);
  size.height = std::max(size.height, 1);
  return size;
}

// Where the number of the device decides: 72 to 76 in the corners and the centre, 77 to 79 down a
// diagonal, the full-size ones as 72.
bool first_or_full(int32_t device) {
  return device == first_window_device || device == full_size_device ||
         device == full_size_gl_device;
}

constexpr int32_t upper_right_device = 73;
constexpr int32_t lower_left_device = 75;
constexpr int32_t centre_device = 76;
constexpr int32_t diagonal_steps = 16;

// Kept: the first case that holds counts, so 80 and 81 are not on the diagonal.
int64_t computed_x(int32_t device, int32_t mode, const Room &room, int64_t width) {
  const bool by_device = mode == position_by_device;
  const int64_t right = room.widest() - width;
  const int64_t centre = (room.screen_width - width) / 2 - room.frame_width;
  if (by_device && (first_or_full(device) || device == upper_right_device)) return right;
  if (mode == position_lower_right || mode == position_upper_right) return right;
  if (by_device && device == centre_device) return centre;
  if (mode == position_centre) return centre;
  if (by_device && device > centre_device) {
    return room.frame_width + (device - centre_device) * room.screen_width / diagonal_steps;
  }
  return 0;
}

int64_t computed_y(int32_t device, int32_t mode, const Room &room, int64_t height) {
  const bool by_device = mode == position_by_device;
  const int64_t bottom = room.highest() - height;
  const int64_t centre = (room.screen_height - height) / 2 - room.frame_height - room.caption / 2;
  if (by_device && (first_or_full(device) || device == lower_left_device)) return bottom;
  if (mode == position_lower_right || mode == position_lower_left) return bottom;
  if (by_device && device == centre_device) return centre;
  if (mode == position_centre) return centre;
  if (by_device && device > centre_device) {
    return room.caption + room.frame_height +
           (device - centre_device) * room.screen_height / diagonal_steps - 1;
  }
  return 0;
}

}  // namespace

FrameMetrics frame_in_use(const FrameMetrics &frame, bool bordered) {
  constexpr int32_t odd_caption = 23;
  if (!bordered) return {};
  FrameMetrics result = frame;
  if (result.caption_height == odd_caption) --result.caption_height;
  return result;
}

WindowPlacement place_window(const WindowRequest &request, const ScreenInfo &screen,
                             const FrameMetrics &frame, int32_t position_mode) {
  const Room room = room_of(screen, frame);
  WindowPlacement result = size_of(request, room);
  if (request.placement == keep_size_and_place) {
    result.x = request.x;
    result.y = request.y;
    return result;
  }
  const int32_t device = request.device;
  result.x =
      within_int32(std::max<int64_t>(computed_x(device, position_mode, room, result.width), 0));
  result.y =
      within_int32(std::max<int64_t>(computed_y(device, position_mode, room, result.height), 0));
  return result;
}

}  // namespace quorix

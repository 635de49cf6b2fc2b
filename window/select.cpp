// SPDX-License-Identifier: MIT
//
// Moving between windows (qqwsel), hiding them (qqwhid), asking for their state (qqwsta), and the
// icon of all (qqwico).
#include "quorix/window.h"
#include "window/ask.h"
#include "window/direct_bitmap.h"
#include "window/window.h"

namespace quorix {

namespace {

// What is the window's own becomes what drawing goes by.
void take_over(OutputContext *context, const WindowSlot &slot) {
  WindowSet *set = context->window.window_set;
  set->window = slot.window;
  set->draw_canvas = slot.canvas;
  context->window.opengl_on = slot.has_gl ? 1 : 0;
  set->client_width = slot.client_width;
  set->client_height = slot.client_height;
  context->page.width = slot.width;
  context->page.height = slot.height;
  context->page.clip_x1 = slot.clip_x1;
  context->page.clip_y1 = slot.clip_y1;
  context->page.clip_x2 = slot.clip_x2;
  context->page.clip_y2 = slot.clip_y2;
}

}  // namespace

bool is_open_number(int32_t number) {
  const WindowSet *set = current_window_set();
  return set != nullptr && number >= 1 && number <= window_slot_count &&
         set->slots[number - 1].open;
}

void make_gl_current(OutputContext *context) {
  const WindowSet *set = context->window.window_set;
  const WindowSlot &slot = set->slots[set->current_slot];
  if (!slot.has_gl) return;
  const GlSystem *gl = window_system()->gl;
  gl->make_current(slot.window);
  // Outlines belong to a context.
  if (set->font_selected) gl->select_font(slot.window, set->font);
}

void select_window(OutputContext *context, int32_t number) {
  WindowSet *set = context->window.window_set;
  if (number == set->current_slot || !set->slots[number].open) return;
  flush_window(context);
  end_direct_access(context);
  const int32_t earlier = set->current_slot;
  set->previous_slot = earlier;
  set->current_slot = number;
  take_over(context, set->slots[number]);
  if (set->slots[earlier].open) write_own_title(context, earlier, "");
  write_own_title(context, number, title_working);
  if (set->draw_canvas != nullptr) select_drawing_tools(context, set->draw_canvas);
  make_gl_current(context);
}

}  // namespace quorix

using namespace quorix;

extern "C" int32_t qqwsel(int32_t number) {
  if (is_open_number(number)) select_window(output_context, number - 1);
  return 0;
}

extern "C" int32_t qqwhid(int32_t number, int32_t hide) {
  if (!is_open_number(number)) return 0;
  WindowSlot &slot = current_window_set()->slots[number - 1];
  if (slot.hidden == (hide != 0)) return 0;
  ask(window_system()->show, slot.window, hide == 0);
  slot.hidden = hide != 0;
  return 0;
}

extern "C" int32_t qqwsta(int32_t number, int32_t *state) {
  const bool drawn = is_open_number(number) && !current_window_set()->slots[number - 1].finished;
  *state = number == 0 || drawn ? 1 : 0;
  return 0;
}

extern "C" int32_t qqwico(const char *filename, int32_t *status) {
  const WindowSet *set = current_window_set();
  *status = 1;
  if (set == nullptr || set->window == no_window || filename == nullptr) return 0;
  if (ask(window_system()->set_icon, set->window, filename)) *status = 0;
  return 0;
}

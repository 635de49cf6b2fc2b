// SPDX-License-Identifier: MIT
//
// Documents whose looks are known: judge.py holds the colours at certain places of their pages and
// the words on them. Each is drawn into the document that is open.
#pragma once

namespace quorix::testing {

void draw_areas();    // rectangles, polygons, lines, dots, clip rectangles
void draw_objects();  // images, with and without the white mask, turned; forms
void draw_words();    // text in several fonts and directions, with bookmarks
void draw_much();     // so much that a page has several streams

}  // namespace quorix::testing

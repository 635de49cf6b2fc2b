// SPDX-License-Identifier: MIT
//
// Takes a finished document apart, as far as the writer's own forms go, and finds what is wrong
// with it: every byte must belong to the header, to one object that the cross-reference table
// knows, or to the end; every length must be right, every stream whole.
#pragma once

#include <string>
#include <vector>

namespace quorix::testing {

struct PdfObject {
  std::string text;  // between "N 0 obj\n" and the stream or "endobj\n"
  bool has_stream;
  std::string data;  // of the stream, inflated
  bool was_compressed;
};

struct PdfParts {
  std::string problem;             // empty: none
  std::vector<PdfObject> objects;  // by number; 0 is empty
  std::vector<size_t> offsets;     // by number
  std::vector<size_t> pages;       // numbers of the page objects, in the order of the page tree
};

PdfParts take_apart(const std::string &document);

// The object that `key` refers to ("/Parent 2 0 R" in the text is 2); 0 if there is none.
size_t reference_in(const std::string &text, const std::string &key);

// Numbers of the content streams of a page, and what they hold one after the other.
std::vector<size_t> streams_of_page(const PdfParts &parts, size_t page);
std::string content_of_page(const PdfParts &parts, size_t page);

// The whole stream back from its compressed form; the test fails unless it is one whole stream.
std::string inflated(const std::string &data);

}  // namespace quorix::testing

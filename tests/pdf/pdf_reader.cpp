// SPDX-License-Identifier: MIT
//
// Takes a document apart by its cross-reference table, and complains where it does not fit
// together.
#include "tests/pdf/pdf_reader.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>

namespace quorix::testing {

namespace {

constexpr char header[] = "%PDF-1.3\n";

bool stands_at(const std::string &text, size_t place, const std::string &wanted) {
  return place <= text.size() && text.compare(place, wanted.size(), wanted) == 0;
}

// The digits at `*place`, which moves behind them; -1 if there are none.
long long take_number(const std::string &text, size_t *place) {
  const size_t start = *place;
  while (*place < text.size() && text[*place] >= '0' && text[*place] <= '9')
    ++*place;
  return *place == start ? -1 : std::atoll(text.substr(start, *place - start).c_str());
}

bool inflate_whole(const std::string &data, std::string *out) {
  z_stream stream = {};
  if (inflateInit(&stream) != Z_OK) return false;
  stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.data()));
  stream.avail_in = static_cast<uInt>(data.size());
  int result = Z_OK;
  std::string room(1 << 16, '\0');
  while (result == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef *>(room.data());
    stream.avail_out = static_cast<uInt>(room.size());
    result = inflate(&stream, Z_NO_FLUSH);
    out->append(room.data(), room.size() - stream.avail_out);
  }
  inflateEnd(&stream);
  return result == Z_STREAM_END && stream.avail_in == 0;
}

size_t astray(PdfParts *parts, const char *problem) {
  parts->problem = problem;
  return std::string::npos;
}

// Reads the table and gives where it starts, npos on a problem.
size_t read_table(const std::string &document, PdfParts *parts) {
  const size_t tail = document.rfind("startxref\n");
  if (tail == std::string::npos) return astray(parts, "no startxref");
  size_t place = tail + 10;
  const auto start = static_cast<size_t>(take_number(document, &place));
  if (document.substr(place) != "\n%%EOF\n" || !stands_at(document, start, "xref\n0 "))
    return astray(parts, "startxref leads astray");
  place = start + 7;
  const auto count = static_cast<size_t>(take_number(document, &place));
  if (!stands_at(document, place, "\n0000000000 65535 f \n"))
    return astray(parts, "bad start of the table");
  place += 21;
  parts->offsets = {0};
  for (size_t i = 1; i < count; ++i, place += 20) {
    if (place + 20 > tail || !stands_at(document, place + 10, " 00000 n \n"))
      return astray(parts, "bad line in the table");
    parts->offsets.push_back(static_cast<size_t>(std::atoll(document.substr(place, 10).c_str())));
  }
  const std::string size = "trailer\n<< /Size " + std::to_string(count) + " /Root 1 0 R /Info ";
  if (!stands_at(document, place, size)) return astray(parts, "trailer");
  place += size.size();
  const long long info = take_number(document, &place);
  if (info < 3 || info >= static_cast<long long>(count) ||
      document.substr(place, tail - place) != " 0 R\n>>\n")
    return astray(parts, "bad end of the trailer");
  return start;
}

// The value of a stream's length, followed through its object.
long long length_of(const std::string &document, const PdfParts &parts, const std::string &text) {
  const size_t key = text.rfind("/Length ");
  if (key == std::string::npos) return -1;
  size_t place = key + 8;
  const long long value = take_number(text, &place);
  if (!stands_at(text, place, " 0 R")) return value;
  if (value < 0 || value >= static_cast<long long>(parts.offsets.size())) return -1;
  place = parts.offsets[static_cast<size_t>(value)];
  const std::string start = std::to_string(value) + " 0 obj\n";
  if (!stands_at(document, place, start)) return -1;
  place += start.size();
  return take_number(document, &place);
}

std::string read_object(const std::string &document, PdfParts *parts, size_t number, size_t end) {
  PdfObject &object = parts->objects[number];
  const std::string start = std::to_string(number) + " 0 obj\n";
  const size_t at = parts->offsets[number];
  if (!stands_at(document, at, start)) return "does not stand at its offset";
  const size_t body = at + start.size();
  const size_t stream = document.find("\nstream\n", body);
  const size_t stop = document.find("endobj\n", body);
  object.has_stream = stream != std::string::npos && stream < stop && stream < end;
  if (!object.has_stream) {
    object.text = document.substr(body, stop - body);
    return stop + 7 == end ? "" : "has bytes behind it";
  }
  object.text = document.substr(body, stream + 1 - body);
  const size_t data = stream + 8;
  const long long length = length_of(document, *parts, object.text);
  if (length < 0 || static_cast<size_t>(length) > end - data) return "has no good length";
  const size_t behind = data + static_cast<size_t>(length);
  if (!stands_at(document, behind, "endstream\nendobj\n") || behind + 17 != end)
    return "does not end where its length says";
  object.data = document.substr(data, behind - data);
  object.was_compressed = object.text.find("/FlateDecode") != std::string::npos;
  if (!object.was_compressed) return "";
  std::string out;
  if (!inflate_whole(object.data, &out)) return "is no whole compressed stream";
  object.data = out;
  return "";
}

void read_pages(PdfParts *parts) {
  const std::string &tree = parts->objects[2].text;
  size_t place = tree.find("/Kids [\n");
  if (place == std::string::npos) {
    parts->problem = "no page tree";
    return;
  }
  place += 8;
  for (;;) {
    const long long page = take_number(tree, &place);
    if (page < 0) break;
    parts->pages.push_back(static_cast<size_t>(page));
    place += 5;
  }
  if (!stands_at(tree, place, "] /Count " + std::to_string(parts->pages.size()) + "\n>>\n"))
    parts->problem = "wrong count of pages";
}

}  // namespace

PdfParts take_apart(const std::string &document) {
  PdfParts parts;
  const size_t table = read_table(document, &parts);
  if (table == std::string::npos) return parts;
  const size_t count = parts.offsets.size();
  parts.objects.resize(count);
  std::vector<size_t> order = parts.offsets;
  order[0] = table;
  std::sort(order.begin(), order.end());
  if (count < 3 || !stands_at(document, 0, header) || order[0] != sizeof header - 1) {
    parts.problem = "the header is not followed by an object";
    return parts;
  }
  for (size_t i = 1; i < count; ++i) {
    const size_t end = *std::upper_bound(order.begin(), order.end(), parts.offsets[i]);
    const std::string problem = read_object(document, &parts, i, end);
    if (!problem.empty()) {
      parts.problem = "object " + std::to_string(i) + " " + problem;
      return parts;
    }
  }
  read_pages(&parts);
  return parts;
}

size_t reference_in(const std::string &text, const std::string &key) {
  size_t place = text.find(key + " ");
  if (place == std::string::npos) return 0;
  place += key.size() + 1;
  const long long number = take_number(text, &place);
  return number > 0 && stands_at(text, place, " 0 R") ? static_cast<size_t>(number) : 0;
}

std::vector<size_t> streams_of_page(const PdfParts &parts, size_t page) {
  const std::string &text = parts.objects.at(page).text;
  const size_t single = reference_in(text, "/Contents");
  if (single != 0) return {single};
  std::vector<size_t> streams;
  size_t place = text.find("/Contents [\n");
  if (place == std::string::npos) return streams;
  place += 12;
  for (long long number = 0; (number = take_number(text, &place)) >= 0; place += 5)
    streams.push_back(static_cast<size_t>(number));
  return streams;
}

std::string content_of_page(const PdfParts &parts, size_t page) {
  std::string content;
  for (const size_t stream : streams_of_page(parts, page))
    content += parts.objects.at(stream).data;
  return content;
}

std::string inflated(const std::string &data) {
  std::string out;
  return inflate_whole(data, &out) ? out : "no whole compressed stream";
}

}  // namespace quorix::testing

// SPDX-License-Identifier: MIT
//
// Objects, streams, pages and the end of the document.
#include "tests/pdf/literal_document.h"

#include <zlib.h>

#include <algorithm>
#include <cstdlib>

#include "tests/pdf/literal_numbers.h"

namespace quorix::literal {

namespace {

constexpr size_t stream_room = 300000;

enum Kind : int32_t {
  other_kind = 0,
  stream_kind = 1,
  page_kind = 2,
  image_kind = 3,
  form_kind = 4,
  outline_kind = 5,
  first_font_kind = 10,
};

const char *const font_names[35] = {"Times-Roman",
                                    "Times-Bold",
                                    "Times-Italic",
                                    "Times-BoldItalic",
                                    "Helvetica",
                                    "Helvetica-Bold",
                                    "Helvetica-Oblique",
                                    "Helvetica-BoldOblique",
                                    "Helvetica-Narrow",
                                    "Helvetica-Narrow-Bold",
                                    "Helvetica-Narrow-Oblique",
                                    "Helvetica-Narrow-BoldOblique",
                                    "NewCenturySchlbk-Roman",
                                    "NewCenturySchlbk-Italic",
                                    "NewCenturySchlbk-Bold",
                                    "NewCenturySchlbk-BoldItalic",
                                    "ZapfChancery-MediumItalic",
                                    "ZapfDingbats",
                                    "Courier",
                                    "Courier-Bold",
                                    "Courier-Oblique",
                                    "Courier-BoldOblique",
                                    "AvantGarde-Book",
                                    "AvantGarde-Demi",
                                    "AvantGarde-BookOblique",
                                    "AvantGarde-DemiOblique",
                                    "Bookman-Light",
                                    "Bookman-LightItalic",
                                    "Bookman-Demi",
                                    "Bookman-DemiItalic",
                                    "Palatino-Roman",
                                    "Palatino-Italic",
                                    "Palatino-Bold",
                                    "Palatino-BoldItalic",
                                    "Symbol"};
constexpr int32_t dingbats = 17;
constexpr int32_t symbol = 34;

std::string number(size_t value) {
  return integer(static_cast<int32_t>(value));
}

std::string reference(size_t object) {
  return number(object) + " 0 R\n";
}

size_t next_object(const LiteralDocument &document) {
  return document.kinds.size();
}

std::vector<size_t> objects_of_kind(const LiteralDocument &document, int32_t kind, size_t from) {
  std::vector<size_t> found;
  for (size_t i = from; i < next_object(document); ++i)
    if (document.kinds[i] == kind) found.push_back(i);
  return found;
}

// ---- the page

void write_fonts(LiteralDocument &document) {
  for (int32_t i = 0; i < 35; ++i) {
    if (document.font_state[i] != 1) continue;
    document.font_state[i] = 2;
    new_object(document, first_font_kind + i);
    write(document, "<< /Type /Font\n");
    write(document, "/Subtype /Type1\n");
    write(document, "/BaseFont /" + std::string(font_names[i]) + "\n");
    if (i != dingbats && i != symbol) write(document, "/Encoding /WinAnsiEncoding\n");
    write(document, ">>\n");
    write(document, "endobj\n");
  }
}

void write_font_list(LiteralDocument &document) {
  write(document, "/Font <<\n");
  for (size_t i = 3; i < next_object(document); ++i) {
    const int32_t font = document.kinds[i] - first_font_kind;
    if (font >= 0) write(document, "/F" + integer(font + 1) + " " + reference(i));
  }
  write(document, ">>\n");
}

void write_object_list(LiteralDocument &document) {
  write(document, "/XObject <<\n");
  int32_t images = 0;
  int32_t forms = 0;
  for (size_t i = 3; i < next_object(document); ++i) {
    const int32_t kind = document.kinds[i];
    std::string name;
    if (kind == image_kind) name = "/Image" + integer(++images);
    if (kind == form_kind) name = "/Form" + integer(++forms);
    if (i >= document.page_first && !name.empty()) write(document, name + " " + reference(i));
  }
  write(document, ">>\n");
}

void write_contents(LiteralDocument &document) {
  const std::vector<size_t> streams = objects_of_kind(document, stream_kind, document.page_first);
  if (streams.size() == 1) {
    write(document, "/Contents " + reference(streams[0]));
    return;
  }
  write(document, "/Contents [\n");
  for (const size_t stream : streams)
    write(document, reference(stream));
  write(document, "]\n");
}

// ---- the outlines

using Entries = std::vector<OutlineEntry>;
constexpr size_t none = static_cast<size_t>(-1);

size_t parent_of(const Entries &entries, size_t i) {
  for (size_t k = i; k-- > 0;)
    if (entries[k].level < entries[i].level) return k;
  return none;
}

size_t previous_of(const Entries &entries, size_t i) {
  for (size_t k = i; k-- > 0;) {
    if (entries[k].level == entries[i].level) return k;
    if (entries[k].level < entries[i].level) return none;
  }
  return none;
}

size_t next_of(const Entries &entries, size_t i) {
  for (size_t k = i + 1; k < entries.size(); ++k) {
    if (entries[k].level == entries[i].level) return k;
    if (entries[k].level < entries[i].level) return none;
  }
  return none;
}

size_t descendants_of(const Entries &entries, size_t i) {
  size_t count = 0;
  while (i + 1 + count < entries.size() && entries[i + 1 + count].level > entries[i].level)
    ++count;
  return count;
}

void write_entry(LiteralDocument &document, size_t root, size_t i) {
  const Entries &entries = document.outlines;
  const auto object = [&](size_t entry) { return root + 1 + entry; };
  const auto link = [&](const char *key, size_t entry) {
    if (entry != none) write(document, key + std::string(" ") + reference(object(entry)));
  };
  new_object(document, outline_kind);
  write(document, "<< /Title (" + entries[i].title + ")\n");
  const size_t parent = parent_of(entries, i);
  write(document, "   /Parent " + reference(parent == none ? root : object(parent)));
  link("   /Prev", previous_of(entries, i));
  link("   /Next", next_of(entries, i));
  const size_t descendants = descendants_of(entries, i);
  if (descendants > 0) {
    link("   /First", i + 1);
    link("   /Last", i + descendants);
    write(document, "   /Count " + number(descendants) + "\n");
  }
  const std::vector<size_t> pages = objects_of_kind(document, page_kind, 3);
  const auto page = static_cast<size_t>(entries[i].page_number);
  if (page <= pages.size())
    write(document, "   /Dest [ " + number(pages[page - 1]) + " 0 R /XYZ 0 " +
                        integer(document.page_height) + " 0]\n");
  write(document, ">>\n");
  write(document, "endobj\n");
}

void write_outlines(LiteralDocument &document) {
  const size_t root = next_object(document);
  const size_t count = document.outlines.size();
  new_object(document, outline_kind);
  write(document, "<< /Type /Outlines\n");
  write(document, "   /First " + reference(root + 1));
  write(document, "   /Last " + reference(root + count));
  write(document, "   /Count " + number(count) + "\n");
  write(document, ">>\n");
  write(document, "endobj\n");
  for (size_t i = 0; i < count; ++i)
    write_entry(document, root, i);
}

// ---- the end

void write_page_tree(LiteralDocument &document) {
  document.offsets[2] = document.output.size();
  write(document, "2 0 obj\n");
  write(document, "<< /Type /Pages /Kids [\n");
  const std::vector<size_t> pages = objects_of_kind(document, page_kind, 3);
  for (const size_t page : pages)
    write(document, reference(page));
  write(document, "] /Count " + number(pages.size()) + "\n");
  write(document, ">>\n");
  write(document, "endobj\n");
}

void write_catalogue(LiteralDocument &document, size_t outline_root) {
  document.offsets[1] = document.output.size();
  write(document, "1 0 obj\n");
  write(document, "<< /Type /Catalog /Pages 2 0 R\n");
  if (!document.outlines.empty()) {
    write(document, "   /Outlines " + reference(outline_root));
    write(document, "   /PageMode /UseOutlines\n");
  }
  write(document, ">>\n");
  write(document, "endobj\n");
}

void write_references(LiteralDocument &document, size_t info) {
  const size_t start = document.output.size();
  write(document, "xref\n");
  write(document, "0 " + number(next_object(document)) + "\n");
  write(document, "0000000000 65535 f \n");
  for (size_t i = 1; i < next_object(document); ++i) {
    std::string offset = number(document.offsets[i]);
    offset.insert(0, 10 - offset.size(), '0');
    write(document, offset + " 00000 n \n");
  }
  write(document, "trailer\n");
  write(document,
        "<< /Size " + number(next_object(document)) + " /Root 1 0 R /Info " + reference(info));
  write(document, ">>\n");
  write(document, "startxref\n");
  write(document, number(start) + "\n");
  write(document, "%%EOF\n");
}

}  // namespace

// ---- output, objects, streams

std::string compressed(const std::string &data) {
  std::string room(data.size() + data.size() / 100 + 13, '\0');
  z_stream stream = {};
  stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data.data()));
  stream.avail_in = static_cast<uInt>(data.size());
  stream.next_out = reinterpret_cast<Bytef *>(room.data());
  stream.avail_out = static_cast<uInt>(room.size());
  if (deflateInit(&stream, Z_DEFAULT_COMPRESSION) != Z_OK) std::abort();
  if (deflate(&stream, Z_FINISH) != Z_STREAM_END) std::abort();
  room.resize(stream.total_out);
  deflateEnd(&stream);
  return room;
}

void write(LiteralDocument &document, const std::string &data) {
  if (document.in_stream && document.image_open) {
    // The surplus of an image has nowhere to go.
    std::string &target = document.compressing ? document.stream_buffer : document.output;
    const size_t start = document.compressing ? 0 : document.stream_start;
    target += data.substr(0, document.stream_capacity - (target.size() - start));
    return;
  }
  if (!document.in_stream || !document.compressing) {
    document.output += data;
    return;
  }
  if (document.stream_buffer.size() + data.size() > document.stream_capacity) {
    close_stream(document);
    open_stream(document);
    document.stream_capacity = std::max(stream_room, data.size());
  }
  document.stream_buffer += data;
}

void new_object(LiteralDocument &document, int32_t kind) {
  const size_t number_of_object = next_object(document);
  document.offsets.push_back(document.output.size());
  document.kinds.push_back(kind);
  write(document, number(number_of_object) + " 0 obj\n");
}

void open_stream(LiteralDocument &document) {
  document.compressing = document.compression_wanted;
  document.stream_capacity = stream_room;
  document.image_open = false;
  new_object(document, stream_kind);
  if (!document.compressing) {
    write(document, "<< /Length " + number(next_object(document)) + " 0 R >>\n");
    write(document, "stream\n");
  }
  document.stream_start = document.output.size();
  document.in_stream = true;
  document.stream_buffer.clear();
}

void close_stream(LiteralDocument &document) {
  document.in_stream = false;
  document.image_open = false;
  if (document.compressing) {
    const std::string data = compressed(document.stream_buffer);
    write(document, "<< /Length " + number(data.size()) + "\n");
    write(document, "/Filter /FlateDecode\n");
    write(document, ">>\n");
    write(document, "stream\n");
    write(document, data);
  }
  const size_t length = document.output.size() - document.stream_start;
  write(document, "endstream\n");
  write(document, "endobj\n");
  if (document.compressing) return;
  new_object(document, other_kind);
  write(document, number(length) + "\n");
  write(document, "endobj\n");
}

void open_image(LiteralDocument &document, int32_t width, int32_t height) {
  const bool has_pixels = width > 0 && height > 0;
  document.compressing = document.compression_wanted && has_pixels;
  new_object(document, image_kind);
  ++document.images;
  write(document, "<< /Type /XObject /Subtype /Image\n");
  write(document, "   /ColorSpace /DeviceRGB\n");
  if (document.mask_white) write(document, "   /Mask [255 255 255 255 255 255]\n");
  write(document,
        "   /Width " + integer(width) + " /Height " + integer(height) + " /BitsPerComponent 8\n");
  if (!document.compressing) {
    write(document, "   /Length " + integer(width * height * 3) + "\n");
    write(document, ">>\n");
    write(document, "stream\n");
  }
  document.stream_start = document.output.size();
  document.stream_capacity =
      has_pixels ? static_cast<size_t>(width) * static_cast<size_t>(height) * 3 : 0;
  document.in_stream = true;
  document.image_open = true;
  document.stream_buffer.clear();
}

void close_image(LiteralDocument &document) {
  document.in_stream = false;
  document.image_open = false;
  if (document.compressing) {
    const std::string data = compressed(document.stream_buffer);
    write(document, "   /Length " + number(data.size()) + "\n");
    write(document, "   /Filter /FlateDecode\n");
    write(document, ">>\n");
    write(document, "stream\n");
    write(document, data);
  }
  write(document, "endstream\n");
  write(document, "endobj\n");
}

void end_page(LiteralDocument &document) {
  close_stream(document);
  write_fonts(document);
  const bool has_images = !objects_of_kind(document, image_kind, document.page_first).empty();
  const bool has_forms = !objects_of_kind(document, form_kind, document.page_first).empty();
  new_object(document, page_kind);
  write(document, "<<\n");
  write(document, "/Type /Page\n");
  write(document, "/MediaBox [0 0 " + integer(document.page_width) + " " +
                      integer(document.page_height) + "]\n");
  write(document, "/Parent 2 0 R\n");
  if (document.rotate_pages) write(document, "/Rotate 90\n");
  write(document, std::string("/Resources << /ProcSet [/PDF") +
                      (document.page_has_text ? " /Text" : "") + (has_images ? " /ImageC" : "") +
                      "]\n");
  if (document.page_has_text) write_font_list(document);
  if (has_images || has_forms) write_object_list(document);
  write(document, ">>\n");
  write_contents(document);
  write(document, ">>\n");
  write(document, "endobj\n");
}

void end_document(LiteralDocument &document) {
  end_page(document);
  write_page_tree(document);
  const size_t outline_root = next_object(document);
  if (!document.outlines.empty()) write_outlines(document);
  write_catalogue(document, outline_root);
  const size_t info = next_object(document);
  new_object(document, other_kind);
  write(document, "<< /CreationDate (D:" + std::string(masked_date) + ")\n");
  write(document, "/Producer (QUORIX 10.5)\n");
  write(document, ">>\n");
  write(document, "endobj\n");
  write_references(document, info);
  document.ended = true;
}

LiteralDocument qqpdf1(int32_t page_width, int32_t page_height, bool compress, bool rotate) {
  LiteralDocument document;
  document.page_width = page_width;
  document.page_height = page_height;
  document.compression_wanted = compress;
  document.rotate_pages = rotate;
  write(document, "%PDF-1.3\n");
  open_stream(document);
  write(document, "0.709 w\n");
  write(document, "2 J\n");
  write(document, "2 j\n");
  return document;
}

void qqpdf7(LiteralDocument &document, const std::string &data) {
  if (!document.ended) write(document, data);
}

int32_t qqpdf9(LiteralDocument &document, const std::string &title, int32_t level) {
  if (document.ended || level < 0 || level > 4) return 1;
  for (int32_t lower = 0; lower < level; ++lower) {
    bool found = false;
    for (const OutlineEntry &entry : document.outlines)
      found = found || entry.level == lower;
    if (!found) return 2;
  }
  document.outlines.push_back({level, document.page_number, title});
  return 0;
}

}  // namespace quorix::literal

// SPDX-License-Identifier: MIT
//
// One statement per field of each file.
#include "tests/imageout/literal_files.h"

#include <cstdlib>

#include "tests/imageout/literal_quantiser.h"

namespace quorix::testing {

namespace {

// ---- words, low byte first unless they are turned

void put(Bytes *file, uint32_t value, int bytes, bool turned) {
  for (int i = 0; i < bytes; ++i) {
    const int shift = 8 * (turned ? bytes - 1 - i : i);
    file->push_back(static_cast<uint8_t>(value >> shift & 255));
  }
}

void put_bytes(Bytes *file, const Bytes &bytes) {
  file->insert(file->end(), bytes.begin(), bytes.end());
}

// ---- colours and pixels of an indexed file

struct Indexed {
  Bytes indices;
  uint8_t red[256] = {}, green[256] = {}, blue[256] = {};
};

Indexed by_palette(const Bytes &indices, const uint32_t *palette, size_t entries) {
  Indexed picture;
  picture.indices = indices;
  for (size_t i = 0; i < entries; ++i) {
    picture.red[i] = static_cast<uint8_t>(palette[i] >> 16 & 255);
    picture.green[i] = static_cast<uint8_t>(palette[i] >> 8 & 255);
    picture.blue[i] = static_cast<uint8_t>(palette[i] & 255);
  }
  return picture;
}

Indexed by_quantiser(const KnownArea &area, const Bytes &rgb) {
  Indexed picture;
  const auto width = static_cast<size_t>(area.width);
  const auto height = static_cast<size_t>(area.height);
  picture.indices.resize(width * height);
  literal_quantise(rgb.data(), width, height, picture.indices.data(), picture.red, picture.green,
                   picture.blue);
  return picture;
}

// ---- GIF

class CodeWriter {
 public:
  explicit CodeWriter(Bytes *file) : file_(file) {}

  void emit(uint32_t code, int size) {
    for (int bit = 0; bit < size; ++bit) {
      if ((code >> bit & 1) != 0) buffer_[position_] |= static_cast<uint8_t>(1U << (8 - free_));
      if (--free_ == 0) {
        ++position_;
        free_ = 8;
      }
    }
    if (position_ < 255) return;
    file_->push_back(255);
    file_->insert(file_->end(), buffer_, buffer_ + 255);
    for (size_t i = 0; i < sizeof buffer_; ++i)
      buffer_[i] = i + 255 < sizeof buffer_ ? buffer_[i + 255] : uint8_t{0};
    position_ -= 255;
  }

  void flush() {
    file_->push_back(static_cast<uint8_t>(position_ + 1));
    file_->insert(file_->end(), buffer_, buffer_ + position_ + 1);
  }

 private:
  Bytes *file_;
  uint8_t buffer_[260] = {};
  size_t position_ = 0;
  int free_ = 8;  // bits of the byte in progress
};

constexpr int32_t slots = 5021;
constexpr int32_t free_slot = 65535;
constexpr uint32_t clear_code = 256;
constexpr uint32_t end_code = 257;

struct CodeTable {
  int32_t codes[slots];
  uint32_t prefixes[slots];
  uint8_t suffixes[slots];

  void clear() {
    for (int32_t &code : codes)
      code = free_slot;
  }
  // The slot that holds the pair, or the free one where it belongs.
  int32_t find(uint32_t prefix, uint8_t suffix) const {
    int32_t slot = static_cast<int32_t>((suffix * 16U) ^ prefix);
    const int32_t step = slot == 0 ? 1 : slots - slot;
    while (codes[slot] != free_slot && (prefixes[slot] != prefix || suffixes[slot] != suffix)) {
      slot -= step;
      if (slot < 0) slot += slots;
    }
    return slot;
  }
};

void encode(Bytes *file, const Bytes &pixels) {
  CodeWriter writer(file);
  static CodeTable table;
  table.clear();
  int size = 9;
  uint32_t next = 258;
  writer.emit(clear_code, size);
  uint32_t prefix = pixels.empty() ? 0 : pixels[0];
  for (size_t i = 1; i < pixels.size(); ++i) {
    const uint8_t pixel = pixels[i];
    const int32_t slot = table.find(prefix, pixel);
    if (table.codes[slot] != free_slot) {
      prefix = static_cast<uint32_t>(table.codes[slot]);
      continue;
    }
    table.codes[slot] = static_cast<int32_t>(next);
    table.prefixes[slot] = prefix;
    table.suffixes[slot] = pixel;
    writer.emit(prefix, size);
    prefix = pixel;
    if (next == 1U << size) ++size;
    if (++next == 4095) {
      writer.emit(clear_code, size);
      next = 258;
      size = 9;
      table.clear();
    }
  }
  if (!pixels.empty()) writer.emit(prefix, size);
  writer.emit(end_code, size);
  writer.flush();
}

Indexed gif_pixels(const WriterCall &call, const KnownArea &area) {
  const bool raster = std::abs(call.device) > 100;
  const bool quantised = raster ? call.device < 0 : call.height < 0;
  Bytes buffer = call.height < 0 ? area.rgb : area.indices;
  const size_t pixels = area.indices.size();
  if (quantised) {
    buffer.resize(3 * pixels);
    return by_quantiser(area, buffer);
  }
  buffer.resize(pixels);
  return by_palette(buffer, call.palette, 256);
}

// ---- TIFF

constexpr uint32_t type_short = 3;
constexpr uint32_t type_long = 4;
constexpr uint32_t type_rational = 5;

struct TiffForm {
  bool bilevel, rgb, palette;
  uint32_t strip_bytes;
  uint32_t table_bytes;
};

TiffForm tiff_form(const WriterCall &call, const KnownArea &area) {
  TiffForm form = {};
  form.bilevel = call.form < 0;
  form.rgb = !form.bilevel && call.device < 0;
  form.palette = !form.bilevel && !form.rgb;
  const auto width = static_cast<uint32_t>(area.width);
  form.strip_bytes = form.bilevel ? (width + 7) / 8 : form.rgb ? 3 * width : width;
  form.table_bytes = form.bilevel ? 0 : form.rgb ? 6 : 1536;
  return form;
}

class TiffFile {
 public:
  TiffFile(const WriterCall &call, const KnownArea &area)
      : call_(call), area_(area), form_(tiff_form(call, area)), turned_(call.order == 0) {}

  Bytes write() {
    const auto rows = static_cast<uint32_t>(area_.height);
    const uint32_t entries = form_.palette ? 14 : 13;
    offsets_ = 14 + 12 * entries;
    counts_ = offsets_ + 4 * rows;
    resolution_ = counts_ + 4 * rows;
    table_ = resolution_ + 16;
    strips_ = table_ + form_.table_bytes;
    word(0x4949, 2);
    word(42, 2);
    word(8, 4);
    word(entries, 2);
    write_entries(rows);
    word(0, 4);
    for (uint32_t row = 0; row < rows; ++row)
      word(strips_ + row * form_.strip_bytes, 4);
    for (uint32_t row = 0; row < rows; ++row)
      word(form_.strip_bytes, 4);
    const int32_t asked = call_.resolution;
    for (int i = 0; i < 2; ++i) {
      word(asked == 0 ? 100 : static_cast<uint32_t>(std::abs(asked)), 4);
      word(1, 4);
    }
    if (form_.bilevel) {
      write_bits();
    } else if (form_.rgb) {
      for (int i = 0; i < 3; ++i)
        word(8, 2);
      put_bytes(&file_, area_.rgb);
    } else {
      write_palette_form();
    }
    return file_;
  }

 private:
  void word(uint32_t value, int bytes) { put(&file_, value, bytes, turned_); }

  void entry(uint32_t tag, uint32_t type, uint32_t count, uint32_t value) {
    word(tag, 2);
    word(type, 2);
    word(count, 4);
    const bool in_place = type == type_short && count == 1;
    word(value, in_place ? 2 : 4);
    if (in_place) word(0, 2);
  }

  void write_entries(uint32_t rows) {
    const bool one_row = rows == 1;  // then the value stands in the entry
    entry(254, type_long, 1, 0);
    entry(256, type_long, 1, static_cast<uint32_t>(area_.width));
    entry(257, type_long, 1, rows);
    if (form_.rgb) {
      entry(258, type_short, 3, table_);
    } else {
      entry(258, type_short, 1, form_.bilevel ? 1 : 8);
    }
    entry(259, type_short, 1, 1);
    entry(262, type_short, 1, form_.palette ? 3 : form_.rgb ? 2 : 1);
    entry(273, type_long, rows, one_row ? strips_ : offsets_);
    entry(277, type_short, 1, form_.rgb ? 3 : 1);
    entry(278, type_short, 1, 1);
    entry(279, type_long, rows, one_row ? form_.strip_bytes : counts_);
    entry(282, type_rational, 1, resolution_);
    entry(283, type_rational, 1, resolution_ + 8);
    entry(296, type_short, 1, call_.resolution < 0 ? 3 : 2);
    if (form_.palette) entry(320, type_short, 768, table_);
  }

  void write_palette_form() {
    const Indexed picture = call_.height < 0 ? by_quantiser(area_, area_.rgb)
                                             : by_palette(area_.indices, call_.palette, 256);
    for (const uint8_t *plane : {picture.red, picture.green, picture.blue})
      for (int i = 0; i < 256; ++i)
        word(plane[i] * 257U, 2);
    put_bytes(&file_, picture.indices);
  }

  // 1 or 0 for the pixel.
  unsigned bit_of(size_t pixel) const {
    uint32_t colour = 0;
    if (call_.height < 0) {
      for (size_t k = 0; k < 3; ++k)
        colour = colour << 8 | area_.rgb[3 * pixel + k];
    } else {
      colour = call_.palette[area_.indices[pixel]] & 0xFFFFFFU;
    }
    if (call_.width < 0) return colour == 0xFFFFFFU ? 1 : 0;
    return colour == 0 ? 0 : 1;
  }

  void write_bits() {
    size_t pixel = 0;
    for (int32_t row = 0; row < area_.height; ++row) {
      Bytes strip(form_.strip_bytes);
      for (size_t x = 0; x < static_cast<size_t>(area_.width); ++x, ++pixel)
        strip[x / 8] |= static_cast<uint8_t>(bit_of(pixel) << (7 - x % 8));
      put_bytes(&file_, strip);
    }
  }

  const WriterCall &call_;
  const KnownArea &area_;
  const TiffForm form_;
  const bool turned_;
  uint32_t offsets_ = 0, counts_ = 0, resolution_ = 0, table_ = 0, strips_ = 0;
  Bytes file_;
};

}  // namespace

KnownArea whole_area(const DrawnPicture &picture) {
  return {picture.width, picture.height, picture.indices, picture.rgb};
}

Bytes literal_gif(const WriterCall &call, const KnownArea &area) {
  const bool turned = call.order == 0;
  const Indexed picture = gif_pixels(call, area);
  const auto width = static_cast<uint32_t>(area.width);
  const auto height = static_cast<uint32_t>(area.height);
  Bytes file = {'G', 'I', 'F', '8', call.transparent == 1 ? uint8_t{'9'} : uint8_t{'7'}, 'a'};
  put(&file, width, 2, turned);
  put(&file, height, 2, turned);
  put_bytes(&file, {0xF7, call.background, 0});
  for (int i = 0; i < 256; ++i)
    put_bytes(&file, {picture.red[i], picture.green[i], picture.blue[i]});
  if (call.transparent == 1) put_bytes(&file, {0x21, 0xF9, 4, 1, 0, 0, call.background, 0});
  put_bytes(&file, {0x2C, 0, 0, 0, 0});
  put(&file, width, 2, turned);
  put(&file, height, 2, turned);
  put_bytes(&file, {0, 8});
  encode(&file, picture.indices);
  put_bytes(&file, {0, 0x3B});
  return file;
}

Bytes literal_tiff(const WriterCall &call, const KnownArea &area) {
  return TiffFile(call, area).write();
}

Bytes literal_bmp(const WriterCall &call, const KnownArea &area) {
  const bool true_colour = call.device < 0;
  const bool turned = call.order <= 0;
  const bool flag_alone = call.order == 0 || call.order == 1;
  const auto resolution = flag_alone ? 2500 : static_cast<uint32_t>(std::abs(call.order));
  const auto width = static_cast<uint32_t>(area.width);
  const auto height = static_cast<uint32_t>(area.height);
  const uint32_t row_bytes = true_colour ? 3 * width : width;
  const uint32_t stride = (row_bytes + 3) / 4 * 4;
  const uint32_t colours = true_colour ? 0 : static_cast<uint32_t>(call.colours);
  Bytes file = {'B', 'M'};
  const auto word = [&](uint32_t value, int bytes) { put(&file, value, bytes, turned); };
  word(54 + stride * height + 4 * colours, 4);
  word(0, 4);
  word(54 + 4 * colours, 4);
  word(40, 4);
  word(width, 4);
  word(height, 4);
  word(1, 2);
  word(true_colour ? 24 : 8, 2);
  word(0, 4);
  word(stride * height, 4);
  word(resolution, 4);
  word(resolution, 4);
  word(colours, 4);
  word(colours, 4);
  Bytes pixels = area.rgb;
  if (true_colour) {
    for (size_t i = 0; i < pixels.size(); i += 3)
      std::swap(pixels[i], pixels[i + 2]);
  } else {
    const Indexed picture = call.height < 0 ? by_quantiser(area, area.rgb)
                                            : by_palette(area.indices, call.palette, colours);
    for (uint32_t i = 0; i < colours; ++i)
      put_bytes(&file, {picture.blue[i], picture.green[i], picture.red[i], 0});
    pixels = picture.indices;
  }
  for (uint32_t row = height; row-- > 0;) {
    const auto from = pixels.begin() + static_cast<ptrdiff_t>(row) * row_bytes;
    file.insert(file.end(), from, from + row_bytes);
    file.insert(file.end(), stride - row_bytes, 0);
  }
  return file;
}

}  // namespace quorix::testing

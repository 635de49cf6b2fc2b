# SPDX-License-Identifier: MIT
# Writes the bitmap fonts as a C++ source, each compressed: cmake -DFONTS=a.bdf;b.bdf -DOUTPUT=x.cpp
# -P built_in_fonts.cmake. CMake does it all by itself, so a cross build needs no program of the host.

# What stands around the bare deflate stream of a gzip file, in hexadecimal digits: a header without
# a name, checksum and size.
set(header_digits 20)
set(trailer_digits 16)

set(arrays)
set(entries)
foreach(font IN LISTS FONTS)
  cmake_path(GET font STEM name)
  set(packed ${OUTPUT}.gz)
  file(ARCHIVE_CREATE OUTPUT ${packed} PATHS ${font} FORMAT raw COMPRESSION GZip
    COMPRESSION_LEVEL 9)
  file(READ ${packed} digits HEX)
  file(REMOVE ${packed})
  if(NOT digits MATCHES "^1f8b0800")
    message(FATAL_ERROR "${font}: another header of the compressed file than expected")
  endif()
  file(SIZE ${font} size)
  string(LENGTH ${digits} count)
  math(EXPR count "${count} - ${header_digits} - ${trailer_digits}")
  string(SUBSTRING ${digits} ${header_digits} ${count} digits)
  math(EXPR count "${count} / 2")
  string(REGEX REPLACE "(................................)" "\\1\n" digits ${digits})
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," digits ${digits})
  string(APPEND arrays "const uint8_t ${name}[] = {\n${digits}};\n")
  string(APPEND entries "    {\"${name}\", ${name}, ${count}, ${size}},\n")
endforeach()

file(WRITE ${OUTPUT} "// Made by cmake/built_in_fonts.cmake.
#include \"formats/built_in_fonts.h\"

namespace quorix {

namespace {

${arrays}
}  // namespace

const BuiltInFont built_in_fonts[] = {
${entries}    {nullptr, nullptr, 0, 0},
};

}  // namespace quorix
")

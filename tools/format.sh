#!/bin/bash
# SPDX-License-Identifier: MIT
# Formats all C and C++ sources in place.
cd "$(dirname "$(readlink -f "$0")")/.." || exit 1
find . \( -name .git -o -name build \) -prune -o \( -name '*.c' -o -name '*.cpp' -o -name '*.h' \) -print0 |
  xargs -0 clang-format -i

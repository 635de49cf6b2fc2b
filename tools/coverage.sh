#!/bin/bash
# SPDX-License-Identifier: MIT
# Shows how much of the library the tests reach: lines and branches of each folder and in all.
#
#   tools/coverage.sh [--files] [--missing PATTERN] [--least PERCENT]     see tools/coverage.py
#
# It builds the preset `coverage`, runs all tests and leaves the counts in build/coverage.
set -eu
cd "$(dirname "$(readlink -f "$0")")/.."

tools/setup.sh build test
mkdir -p build
cmake --preset coverage >build/configure.log 2>&1 || { cat build/configure.log >&2; exit 1; }
cmake --build --preset coverage -j "${JOBS:-$(nproc)}" -- --quiet
find build/coverage -name '*.gcda' -delete
mkdir -p build/coverage/results
ctest --preset coverage --no-tests=error >build/coverage/results/log 2>&1 ||
  { tail -n 40 build/coverage/results/log >&2; echo "coverage: tests failed" >&2; exit 1; }
python3 -B tools/coverage.py "$@" build/coverage

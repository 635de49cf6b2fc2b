#!/bin/bash
# SPDX-License-Identifier: MIT
# The stored inputs of the fuzz targets, one archive corpus/TARGET.tar each, as folders and back.
#
#   fuzz/corpus.sh unpack TARGET...   into build/corpus/TARGET
#   fuzz/corpus.sh pack TARGET...     from build/corpus/TARGET, whose files are the whole archive
#
# `all` stands for all targets. The same files give the same archive, byte for byte.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")/.."

usage() { sed -n '3,8s/^# \?//p' "$0" >&2; exit 2; }

unpack() {
  mkdir -p "build/corpus/$1"
  tar -xf "fuzz/corpus/$1.tar" -C "build/corpus/$1"
}

# The plain format, without anything of this machine; replay_main.cpp reads it.
pack() {
  local folder=build/corpus/$1 archive=fuzz/corpus/$1.tar
  find "$folder" -maxdepth 1 -type f -printf '%P\0' | LC_ALL=C sort -z |
    tar --create --file "$archive.new" --directory "$folder" --format=ustar --blocking-factor=1 \
      --owner=0 --group=0 --numeric-owner --mtime=@0 --mode=644 \
      --null --verbatim-files-from --files-from -
  mv "$archive.new" "$archive"
  echo "$archive: $(tar -tf "$archive" | wc -l) inputs, $(stat -c %s "$archive") bytes"
}

[[ $# -gt 1 && ($1 == pack || $1 == unpack) ]] || usage
action=$1
shift
targets=("$@")
if [[ $1 == all ]]; then
  mapfile -t targets < <(find fuzz/corpus -name '*.tar' -printf '%f\n' | sed 's/\.tar$//' | sort)
fi
for target in "${targets[@]}"; do
  "$action" "$target"
done

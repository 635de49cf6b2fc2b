#!/bin/bash
# SPDX-License-Identifier: MIT
# Installs the Debian packages that are missing, and says nothing if none is.
#
#   tools/setup.sh GROUP...     groups: build gallery windows arm64 test tidy fuzz bench
#
# Root or sudo is needed only when something is missing.
set -u
here=$(dirname "$(readlink -f "$0")")

packages_of() {
  case $1 in
    # The library, the examples and the gallery.
    build) echo cmake ninja-build g++ zlib1g-dev python3 ;;
    # Pictures of the gallery's PDF and PostScript files.
    gallery) echo ghostscript fonts-urw-base35 ;;
    # The DLL, and Wine with an invisible screen to run it.
    windows)
      echo g++-mingw-w64-x86-64-posix libz-mingw-w64-dev
      echo wine wine64 xvfb fonts-liberation fonts-wine libgl1 libgl1-mesa-dri libglx-mesa0
      ;;
    # The cross compiler, and what runs its programs; zlib is unpacked below.
    arm64) echo g++-aarch64-linux-gnu libc6-arm64-cross libstdc++6-arm64-cross qemu-user ;;
    # GoogleTest, and the independent programs and libraries that judge what was written.
    test)
      echo googletest clang-format pkgconf libpng-dev libqhull-dev netpbm imagemagick pngcheck
      echo libgif-dev giflib-tools libtiff-dev libtiff-tools
      echo qpdf poppler-utils mupdf-tools ghostscript fonts-urw-base35
      echo libfreetype-dev fonts-dejavu-core fonts-liberation libcfitsio-dev
      ;;
    tidy) echo clang-tidy ;;
    fuzz) echo clang libclang-rt-14-dev ;;
    # What the benchmarks compare with.
    bench)
      echo libbenchmark-dev pkgconf libagg-dev libcairo2-dev libimlib2-dev libgd-dev libpixman-1-dev libpng-dev
      echo libspng-dev libimagequant-dev qt6-base-dev libopencv-core-dev libopencv-imgproc-dev
      echo libqhull-dev libcgal-dev libnanoflann-dev libosmesa6-dev
      echo libhpdf-dev libgif-dev libtiff-dev libstb-dev libfreetype-dev fonts-dejavu-core libcfitsio-dev
      ;;
    *) return 1 ;;
  esac
}

fail() { echo "setup: $*" >&2; exit 1; }

installed() {
  [[ $(dpkg-query -W -f='${Status}' "$1" 2>/dev/null) == *" installed" ]]
}

# apt-get as on an arm64 machine, with lists and files of its own below the current folder.
apt_get_of_arm64() {
  mkdir -p lists/partial cache/archives/partial
  apt-get -q -o APT::Architecture=arm64 -o APT::Architectures=arm64 -o APT::Sandbox::User= \
    -o Dir::State::lists="$PWD/lists/" -o Dir::Cache="$PWD/cache" -o Acquire::Retries=3 \
    "$@" </dev/null >>log 2>&1
}

# zlib for arm64, unpacked where cmake/linux-aarch64.cmake looks for it. It is not installed, since
# packages of a second architecture must match those of the first to the version.
unpack_zlib_of_arm64() {
  local root=$here/../build/arm64-packages
  [[ -e $root/complete ]] && return
  echo "setup: unpacking zlib for arm64"
  scratch=$(mktemp -d) || fail "no room for a temporary folder"
  trap 'rm -rf "$log" "$scratch"' EXIT
  mkdir -p "$root" && root=$(readlink -f "$root") && cd "$scratch" || fail "no folder $root"
  # A list that cannot be renewed shows when the packages are missing.
  apt_get_of_arm64 update
  {
    apt_get_of_arm64 download zlib1g zlib1g-dev &&
      dpkg -x zlib1g_*.deb "$root" && dpkg -x zlib1g-dev_*.deb "$root" &&
      # The link that the linker looks for names a place of the system's.
      mv "$root"/lib/aarch64-linux-gnu/libz.so.1* "$root/usr/lib/aarch64-linux-gnu" &&
      ln -sf libz.so.1 "$root/usr/lib/aarch64-linux-gnu/libz.so" &&
      touch "$root/complete"
  } || {
    tail -n 40 log >&2
    fail "could not unpack zlib for arm64"
  }
}

command -v dpkg-query >/dev/null || fail "this is not a Debian system; see CONTRIBUTING.md"
missing=()
log=
for group in "$@"; do
  wanted=$(packages_of "$group") || fail "no such group: $group"
  for package in $wanted; do
    installed "$package" || missing+=("$package")
  done
done

if [[ ${#missing[@]} -gt 0 ]]; then
  as_root=()
  if [[ $(id -u) -ne 0 ]]; then
    command -v sudo >/dev/null ||
      fail "missing packages: ${missing[*]} (neither root nor sudo here, install them yourself)"
    as_root=(sudo)
  fi

  echo "setup: installing ${missing[*]}"
  log=$(mktemp) || fail "no room for a temporary file"
  trap 'rm -f "$log"' EXIT
  apt_get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 \
      apt-get -q -y -o Acquire::Retries=3 -o DPkg::Lock::Timeout=600 "$@" </dev/null >>"$log" 2>&1
  }
  # A stale list of packages names versions that are gone, so it is always renewed first.
  apt_get update && apt_get install --no-install-recommends "${missing[@]}" || {
    tail -n 40 "$log" >&2
    fail "could not install ${missing[*]}"
  }
fi

[[ " $* " != *" arm64 "* ]] || unpack_zlib_of_arm64

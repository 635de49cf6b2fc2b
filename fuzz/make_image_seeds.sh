#!/bin/bash
# SPDX-License-Identifier: MIT
# Writes the seeds of the image readers with programs of other people: ImageMagick, netpbm and the
# tools of libtiff (tools/setup.sh test), into build/corpus; corpus.sh makes archives of that.
set -euo pipefail
corpus=$(dirname "$(readlink -f "$0")")/../build/corpus
mkdir -p "$corpus" && cd "$corpus"
mkdir -p bmp_reader gif_reader png_reader tiff_reader
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A picture with flat parts, a gradient and noise, and one with transparent parts.
convert -size 11x9 gradient:red-blue -fill white -draw 'rectangle 2,2 6,5' \
  \( -size 3x3 -seed 7 plasma: \) -geometry +7+5 -composite -depth 8 "$work/rgb.ppm"
convert "$work/rgb.ppm" -colors 4 "$work/four.ppm"
convert "$work/rgb.ppm" -threshold 50% "$work/bits.pbm"
convert "$work/rgb.ppm" -colorspace gray -depth 8 "$work/grey.pgm"
convert "$work/rgb.ppm" -alpha set -channel A -fx 'i/w' +channel "$work/alpha.png"

# ---- BMP
for name in rgb four; do
  convert "$work/$name.ppm" -type TrueColor "BMP3:bmp_reader/${name}_24"
  convert "$work/$name.ppm" -type Palette -compress none "BMP3:bmp_reader/${name}_indexed"
  convert "$work/$name.ppm" -type Palette -compress RLE "BMP3:bmp_reader/${name}_rle8"
done
convert "$work/bits.pbm" "BMP3:bmp_reader/bits"
convert "$work/alpha.png" "BMP3:bmp_reader/rgba_32"
# Four bits with run lengths, which no program here writes: two rows of runs, a literal, a jump.
{
  printf 'BM\x86\0\0\0\0\0\0\0\x76\0\0\0\x28\0\0\0\x07\0\0\0\x03\0\0\0\x01\0\x04\0\x02\0\0\0'
  printf '\x10\0\0\0\0\0\0\0\0\0\0\0\x03\0\0\0\0\0\0\0\x10\x20\x30\0\x40\x50\x60\0\x70\x80\x90\0'
  printf '\x07\x12\0\0\0\x05\x01\x20\x10\0\x02\x01\0\0\0\x02\x01\x01\x03\x21\0\x01'
} > bmp_reader/four_rle4

# ---- GIF
for name in rgb four; do
  convert "$work/$name.ppm" "GIF:gif_reader/$name"
  convert "$work/$name.ppm" -interlace GIF "GIF:gif_reader/${name}_interlaced"
  convert "$work/$name.ppm" "GIF87:gif_reader/${name}_87"
done
convert "$work/bits.pbm" "GIF:gif_reader/bits"
convert "$work/alpha.png" "GIF:gif_reader/transparent"
convert "$work/four.ppm" -repage 14x12+2+1 "GIF:gif_reader/smaller_than_the_screen"
convert -size 300x40 xc:gray "GIF:gif_reader/flat"
convert "$work/rgb.ppm" "$work/four.ppm" "GIF:gif_reader/local_tables"

# ---- PNG: once as it comes, once with streams of plain bytes, which a fuzzer can change
png() {
  local name=$1
  shift
  convert "$@" -define png:exclude-chunk=date,time -define png:compression-level=9 \
    "PNG:png_reader/$name"
  convert "$@" -define png:exclude-chunk=date,time -define png:compression-level=0 \
    -define png:compression-filter=5 \
    "PNG:png_reader/${name}_plain"
}
png rgb "$work/rgb.ppm" -define png:color-type=2 -define png:bit-depth=8
png rgb_16 "$work/rgb.ppm" -define png:color-type=2 -define png:bit-depth=16
png palette "$work/rgb.ppm" -define png:color-type=3
png grey "$work/grey.pgm" -define png:color-type=0 -define png:bit-depth=8
png grey_16 "$work/grey.pgm" -define png:color-type=0 -define png:bit-depth=16
png bits "$work/bits.pbm" -define png:color-type=0 -define png:bit-depth=1
png rgba "$work/alpha.png" -define png:color-type=6 -define png:bit-depth=8
png rgba_16 "$work/alpha.png" -define png:color-type=6 -define png:bit-depth=16
png rgba_background "$work/alpha.png" -background red -define png:color-type=6 \
  -define png:include-chunk=bkgd
png grey_alpha "$work/alpha.png" -colorspace gray -define png:color-type=4
png rgb_interlaced "$work/rgb.ppm" -interlace PNG -define png:color-type=2
png rgba_interlaced "$work/alpha.png" -interlace PNG -define png:color-type=6
png palette_interlaced "$work/four.ppm" -interlace PNG -define png:color-type=3
pnmtopng "$work/four.ppm" > png_reader/palette_2
pnmtopng -force -transparent white "$work/four.ppm" > png_reader/palette_transparent
pnmtopng -transparent =white "$work/rgb.ppm" > png_reader/rgb_transparent 2> "$work/log"
pnmtopng -transparent white "$work/bits.pbm" > png_reader/bits_transparent
pnmtopng -interlace -transparent white "$work/bits.pbm" > png_reader/bits_transparent_interlaced
pnmtopng -background black "$work/four.ppm" > png_reader/palette_background

# ---- TIFF
tiff() {
  local name=$1
  shift
  convert -compress none "$@" "TIFF:$work/$name"
  local form
  for form in none lzw packbits lzw:2; do
    tiffcp -c "$form" -r 4 -L "$work/$name" "tiff_reader/${name}_strips_${form/:/_}" || true
    tiffcp -c "$form" -t -w 16 -l 16 -B "$work/$name" "tiff_reader/${name}_tiles_${form/:/_}" || true
  done 2> "$work/log"
}
tiff rgb "$work/rgb.ppm" -type TrueColor
tiff rgb_16 "$work/rgb.ppm" -type TrueColor -depth 16
tiff palette "$work/rgb.ppm" -type Palette
tiff palette_4 "$work/four.ppm" -type Palette
tiff grey "$work/grey.pgm" -type Grayscale
tiff grey_4 "$work/grey.pgm" -type Grayscale -depth 4
tiff grey_2 "$work/grey.pgm" -type Grayscale -depth 2
tiff bits "$work/bits.pbm" -type Bilevel
tiff floats "$work/grey.pgm" -type Grayscale -define quantum:format=floating-point -depth 32 \
  -compress LZW
find tiff_reader -size 0 -delete
# Five values of 16 bits a pixel: 6 by 4 pixels, in one strip and in strips of one row.
head -c 240 "$work/rgb.ppm" > "$work/values"
raw2tiff -w 6 -l 4 -b 5 -d short -p minisblack -c none "$work/values" tiff_reader/five_values
tiffcp -r 1 -B tiff_reader/five_values tiff_reader/five_values_rows

#!/bin/bash
# demo_test.sh <moxcc_demo>: what a user of the demo counts on, with good and with broken pictures.
set -euo pipefail
demo=$(realpath "$1")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder"

fail() {
    echo "$1" >&2
    exit 1
}

# good <picture>: converts it, and leaves pictures and no unfinished files.
good() {
    "$demo" "$1" >log || fail "$1: exit code $?"
    local name=${1##*/}
    [ -s "demo-out/${name%.*}/source.png" ] || fail "$1: no result"
    [ -z "$(find demo-out -name '*.part')" ] || fail "$1: unfinished files"
}

# bad <picture> <message>: refuses it with that message, and leaves nothing.
bad() {
    rm -rf demo-out
    ! "$demo" "$1" >log 2>errors || fail "$1: taken for good"
    grep -q "^demo: $1: .*$2" errors || fail "$1: $(cat errors)"
    [ -z "$(find demo-out -type f)" ] || fail "$1: results all the same"
}

"$demo" >log
grep -q 'ok  *[0-9]* MPix/s' log || fail "no speed told"
[ -s demo-out/contact-sheet.png ] || fail "no contact sheet"
cp demo-out/scene/sampling-422.png rgb8.png  # a small part
good rgb8.png
cp demo-out/rgb8/gray-16u.png gray16.png
cmp -s rgb8.png demo-out/rgb8/source.png || fail "a PNG does not come back as it was"
good gray16.png
cmp -s gray16.png demo-out/gray16/gray-16u.png || fail "16 bits do not come back as they were"

printf 'P6\n# 1 x 1\n1 1\n255\nabc' >tiny.ppm
printf 'P5 2 3 1023\n\0\1\1\0\2\0\3\0\3\377\0\0' >wide.pgm
printf 'Pf\n1 2\n-1.0\n\0\0\200\77\0\0\0\0' >float.pfm
good tiny.ppm
good wide.pgm
good float.pfm
rm -rf demo-out
! "$demo" tiny.ppm missing.ppm >log 2>errors || fail "a missing picture among others went unnoticed"
[ -s demo-out/tiny/source.png ] || fail "a missing picture spoiled the others"

# Video of 4 by 2 pixels, all red, gives one picture whatever its sampling, layout and chroma position.
bytes() { head -c "$2" /dev/zero | tr '\0' "\\$1"; }  # bytes <octal> <count>
y() { bytes 121 "$1"; }
cb() { bytes 132 "$1"; }
cr() { bytes 360 "$1"; }
y4m() { printf 'YUV4MPEG2 W4 H2 F25:1 C%s\nFRAME\n' "$1"; y 8; cb "$2"; cr "$2"; }
for colours in 444:8 422:4 420:2 420jpeg:2 420mpeg2:2 420paldv:2 411:2; do y4m ${colours/:/ } >"${colours%:*}.y4m"; done
{ y 8; cb 2; cr 2; } >planes_4x2.yuv
{ y 8; cb 1; cr 1; cb 1; cr 1; } >pairs_4x2.nv12
{ y 8; cr 1; cb 1; cr 1; cb 1; } >swapped_4x2.nv21
for _ in 1 2 3 4; do y 1; cb 1; y 1; cr 1; done >packed_4x2.yuy2
for _ in 1 2 3 4; do cb 1; y 1; cr 1; y 1; done >packed2_4x2.uyvy
for video in *.y4m *_4x2.*; do
    good "$video"
    cmp -s "demo-out/${video%.*}/source.png" demo-out/411/source.png || fail "$video: not red"
done
printf 'P6\n4 2\n255\n' >red.ppm
for _ in 1 2 3 4 5 6 7 8; do bytes 376 1; bytes 0 2; done >>red.ppm
good red.ppm
cmp -s demo-out/red/source.png demo-out/411/source.png || fail "red video is not red"
y4m mono 0 >mono.y4m
good mono.y4m

"$demo" --help | grep -q demo-out || fail "no word of where results go"

head -c 300 rgb8.png >cut.png
head -c 20 rgb8.png >header.png
printf 'P6\n640 480\n255\nabc' >cut.ppm
printf 'P6\n640' >header.ppm
printf 'P6\n0 480\n255\nabc' >zero.ppm
printf 'P6\n99999999 99999999\n255\nabc' >huge.ppm
printf 'PF\n2 2\n-1.0\nabc' >cut.pfm
printf 'A text.\n' >text.png
: >empty.png
mkdir folder.png
y4m 420 0 >cut.y4m
y4m 420p10 16 >deep.y4m
y 12 >sizeless.yuv
bad cut.y4m truncated
bad deep.y4m '8-bit'
bad sizeless.yuv 'size in its name'
bad missing.png 'no such file'
bad cut.png truncated
bad header.png truncated
bad cut.ppm truncated
bad header.ppm truncated
bad cut.pfm truncated
bad zero.ppm 'out of range'
bad huge.ppm 'too large'
bad text.png 'not a picture'
bad empty.png 'empty'
bad folder.png 'not a regular file'

#!/bin/sh
# usage: ./demo.sh [picture ...]
#
# Installs what is missing, builds, converts each picture, or a built-in scene, by all families of functions, and
# writes to demo-out/ in the current folder:
#
#   contact-sheet.png, contact-sheet-2.png ...   all results, labelled, with speeds
#   <picture>/*.png                              each result by itself
#
# Pictures are PNG of any kind, binary PNM (PGM, PPM) of 8 or 16 bits, PFM for floats, and the first frame of 8-bit
# video, taken as BT.601: Y4M, or raw frames whose name tells size and kind, as clip_640x480.yuv (.yuv for three planes
# of 4:2:0, .nv12, .nv21, .yuy2, .uyvy). Convert others first:
#
#   ffmpeg -i photo.jpg photo.png
#   ffmpeg -i clip.mp4 -frames:v 1 -pix_fmt yuv420p clip.y4m
set -eu
case "${1-}" in
    -h | --help)
        sed -n '2,/^set/s/^# \{0,1\}//p' "$0"
        exit
        ;;
esac
start=$(pwd)
cd "$(dirname "$0")"
root=$(pwd)
. tools/packages.sh

need cmake ninja-build gcc g++ libgtest-dev libpng-dev  # the build is the same as that of ./test.sh
cmake --preset release >/dev/null
cmake --build --preset release --target moxcc_demo
cd "$start"
exec "$root/build/release/bin/moxcc_demo" "$@"

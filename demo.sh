#!/bin/sh
# ./demo.sh [picture ...]
# Installs what is missing, builds, and converts the pictures (PNG, PNM, PFM), or a built-in scene, into demo-out/.
set -eu
start=$(pwd)
cd "$(dirname "$0")"
root=$(pwd)
. tools/packages.sh

need cmake ninja-build gcc g++ libgtest-dev libpng-dev  # the build is the same as that of ./test.sh
cmake --preset release >/dev/null
cmake --build --preset release --target moxcc_demo
cd "$start"
exec "$root/build/release/bin/moxcc_demo" "$@"

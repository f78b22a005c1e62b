#!/bin/sh
# ./docs.sh
# Installs Doxygen if it is missing, builds the site from the headers and the pages in docs/ into build/docs/html, and
# tests that it tells all about every export. Any warning is an error.
set -eu
cd "$(dirname "$0")"
. tools/packages.sh

need cmake ninja-build g++ doxygen python3 python3-matplotlib

rm -rf build/docs
mkdir -p build/docs/pages
tools/measurements.py page build/docs/pages
cmake -S . -B build/pages -G Ninja -DMOXCC_TESTS=OFF -DMOXCC_EXAMPLES=OFF -DMOXCC_CATALOGUE=ON >/dev/null
cmake --build build/pages --target moxcc_pages
build/pages/bin/moxcc_pages build/docs/pages
doxygen docs/Doxyfile

tools/documented.py build/docs/xml tests/exports.txt
echo "build/docs/html/index.html"

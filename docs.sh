#!/bin/sh
# ./docs.sh
# Installs Doxygen if it is missing, builds the site from the headers and the pages in docs/ into build/docs/html, and tests
# that every export has a paragraph of its own. Any warning is an error.
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

# The tag file names every documented function. An export whose paragraph is missing, or a paragraph without its export:
sed -n '/<member kind="function">/{n;n;s:.*<name>\(.*\)</name>.*:\1:p}' build/docs/moxcc.tag | sort -u >build/docs/documented
sort tests/exports.txt | diff - build/docs/documented >build/docs/difference || {
    echo "exports without a paragraph (<), paragraphs without an export (>):" >&2
    cat build/docs/difference >&2
    exit 1
}
echo "$(wc -l <build/docs/documented) functions documented: build/docs/html/index.html"

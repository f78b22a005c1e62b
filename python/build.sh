#!/bin/sh
# python/build.sh: installs what is missing, and builds the Python package: build/release/python/moxcc.
set -eu
cd "$(dirname "$0")/.."
. tools/packages.sh
# shellcheck disable=SC2086
need $moxcc_python python3-pil
cmake --preset release -DMOXCC_PYTHON=ON >/dev/null
cmake --build --preset release --target moxcc_python_package

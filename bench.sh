#!/bin/sh
# ./bench.sh [regex] [WIDTHxHEIGHT ...]
# Installs what is missing, builds the benchmarks and prints the table for the rows that match, at 1280x720 by default.
set -eu
cd "$(dirname "$0")"
. tools/packages.sh

need cmake ninja-build gcc g++ libbenchmark-dev libyuv-dev libopencv-core-dev libopencv-imgproc-dev libswscale-dev
cmake --preset bench >/dev/null
cmake --build --preset bench
exec build/bench/bin/moxcc_bench "$@"

#!/bin/sh
# ./bench.sh [--data] [regex] [WIDTHxHEIGHT ...]
# ./bench.sh --python [WIDTHxHEIGHT ...]
# Installs what is missing, builds the benchmarks and prints the table for the rows that match, at 1280x720 by default.
# With --data, at three sizes and as data, of which ./docs.sh makes tables and charts:
#
#   ./bench.sh --data >docs/measurements/amd-epyc.tsv
#   tools/measurements.py readme
#
# With --python, calls from Python beside those of OpenCV and Pillow.
set -eu
cd "$(dirname "$0")"
. tools/packages.sh

if [ "${1:-}" = --python ]; then
    shift
    {
        need python3-opencv
        python/build.sh
    } >&2
    PYTHONPATH=build/release/python exec /usr/bin/python3 bench/python_bench.py "$@"
fi
{
    need cmake ninja-build gcc g++ libbenchmark-dev libyuv-dev libopencv-core-dev libopencv-imgproc-dev libswscale-dev
    cmake --preset bench
    cmake --build --preset bench
} >&2
exec build/bench/bin/moxcc_bench "$@"

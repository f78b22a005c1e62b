#!/bin/bash
# ./test.sh [--all]
# Installs what is missing, builds, and runs all tests on each library file: optimised, and again under the address and
# undefined-behaviour sanitizers. The last line sums both runs up. With --all, tests/more.sh comes before.
set -euo pipefail
cd "$(dirname "$0")"
. tools/packages.sh

# shellcheck disable=SC2086
need $moxcc_python $moxcc_program libgtest-dev python3-pytest python3-av python3-pil python3-dask python3-distributed

jobs=$(nproc)
[ "${1:-}" != --all ] || tests/more.sh
passed=0
failed=0
for preset in release asan; do
    echo "== $preset"
    cmake --preset $preset -DMOXCC_WERROR="${MOXCC_WERROR:-OFF}" >/dev/null
    cmake --build --preset $preset --parallel "$jobs"
    log=build/$preset/ctest.log
    ctest --preset $preset --parallel "$jobs" | tee "$log" || true
    # "100% tests passed, 0 tests failed out of 8"
    read -r bad all < <(sed -n 's/.*tests passed, \([0-9]*\) tests failed out of \([0-9]*\).*/\1 \2/p' "$log") ||
        { echo "no tests were run" >&2; exit 1; }
    failed=$((failed + bad))
    passed=$((passed + all - bad))
done

echo "$passed passed, $failed failed"
[ "$failed" = 0 ]

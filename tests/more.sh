#!/bin/bash
# tests/more.sh: what ./test.sh --all runs beyond ./test.sh: races, the other compiler, AVX-512 and 64-bit ARM on a
# machine that has neither, and fuzzing.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/packages.sh

need clang libclang-rt-dev libsimde-dev g++-aarch64-linux-gnu qemu-user googletest

echo "== threads"
cmake --preset tsan -DMOXCC_WERROR=ON >/dev/null
cmake --build --preset tsan --parallel "$(nproc)"
for test in contract_test:*EightThreads* bands_test:*AC4* reduce_bits_test:*Meanwhile*; do
    # The sanitizer needs its fixed addresses free.
    setarch "$(uname -m)" --addr-no-randomize "build/tsan/bin/${test%:*}" --gtest_filter="${test#*:}" --gtest_brief=1
done

echo "== clang"
cmake --preset clang -DMOXCC_WERROR=ON >/dev/null
cmake --build --preset clang --parallel "$(nproc)"
ctest --preset clang --parallel "$(nproc)"

echo "== AVX-512, as code that runs at AVX2"
cmake --preset emulated512 -DMOXCC_WERROR=ON >/dev/null
cmake --build --preset emulated512 --parallel "$(nproc)"
ctest --preset emulated512 --parallel "$(nproc)"

echo "== 64-bit ARM, beside this machine's results"
cmake --preset aarch64 -DMOXCC_WERROR=ON >/dev/null
cmake --build --preset aarch64 --parallel "$(nproc)"
ctest --preset aarch64 --parallel "$(nproc)"
# All but what follows the approximate reciprocal of the processor at hand.
exact() { grep -Ev 'HLS|HSV|LUV'; }
diff <(build/release/bin/contract_sums | exact) \
    <(qemu-aarch64 -L /usr/aarch64-linux-gnu build/aarch64/bin/contract_sums | exact)

echo "== fuzzing"
cmake --preset fuzz -DMOXCC_WERROR=ON >/dev/null
cmake --build --preset fuzz --parallel "$(nproc)"
fuzz() {
    build/fuzz/bin/"$1" -max_total_time=60 -max_len="$2" -len_control=0 -artifact_prefix=build/fuzz/ 2>&1 |
        grep -Ev '\s(NEW|REDUCE|NEW_FUNC)|# Uses:'  # thousands of lines on the way
}
fuzz contract_fuzz 1024
fuzz pictures_fuzz 4096

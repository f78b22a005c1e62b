#!/bin/bash
# tests/install_test.sh BUILD: installs a build into a new folder, moves it, and builds and runs the examples, and those in
# README.md, against it as a user would, through CMake and through pkg-config.
set -euo pipefail

source=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --install "$build" --prefix "$work/first" >"$work/log"
mv "$work/first" "$work/tree"
for file in lib/{,glibc-hwcaps/x86-64-v{3,4}/}libmoxccq4.so lib/libmoxcore.so include/moxcc/moxcc.h; do
    test -f "$work/tree/$file" || { echo "not installed: $file" >&2; exit 1; }
done

echo "== through CMake"
for example in c cpp; do
    cmake -G Ninja -S "$source/examples/$example" -B "$work/$example" -DCMAKE_PREFIX_PATH="$work/tree" >"$work/log"
    cmake --build "$work/$example" >"$work/log" || { cat "$work/log" >&2; exit 1; }
done
"$work/c/gray"
"$work/cpp/tonemap" "$work/cmake.pgm"

echo "== through pkg-config"
# The two programs in README.md.
for language in c cpp; do
    sed -n "/^\`\`\`$language\$/,/^\`\`\`\$/{/^\`\`\`/d;p}" "$source/README.md" >"$work/readme.$language"
done

export PKG_CONFIG_PATH=$work/tree/lib/pkgconfig
flags=$(pkg-config --cflags --libs moxcc)
rpath=-Wl,-rpath,$(pkg-config --variable=libdir moxcc)
# shellcheck disable=SC2086
{
    ${CC:-cc} -std=c99 "$source/examples/c/gray.c" -o "$work/gray" $flags "$rpath"
    ${CXX:-c++} -std=c++17 "$source/examples/cpp/tonemap.cpp" -o "$work/tonemap" $flags "$rpath"
    ${CC:-cc} -std=c99 -Wall -Wextra -Werror "$work/readme.c" -o "$work/readme_c" $flags "$rpath"
    ${CXX:-c++} -std=c++11 -Wall -Wextra -Werror "$work/readme.cpp" -o "$work/readme_cpp" $flags "$rpath"
}
"$work/gray"
"$work/tonemap" "$work/pkg-config.pgm"
"$work/readme_c"
"$work/readme_cpp"
cmp "$work/cmake.pgm" "$work/pkg-config.pgm"

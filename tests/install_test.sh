#!/bin/bash
# tests/install_test.sh BUILD: installs a build into a new folder, and builds and runs the examples, and those in
# README.md, against it as a user would: through pkg-config, and through CMake after a move; with the shared and with
# the static library; and without what only developers have. Then it sees that moxCC is complete as a part of another
# project.
set -euo pipefail

source=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$1" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

quietly() {
    "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; return 1; }
}

tree=$work/tree
quietly cmake --install "$build" --prefix "$tree"
for file in lib/{,glibc-hwcaps/x86-64-v{3,4}/}libmoxccq4.so{,.2019} lib/libmoxcore.so{,.2019} lib/libmoxcc.a \
    include/moxcc/moxcc.h; do
    test -f "$tree/$file" || { echo "not installed: $file" >&2; exit 1; }
done

python=$(echo "$tree"/lib/python3*/dist-packages)
if [ -d "$python" ]; then
    echo "== from Python"
    PYTHONPATH=$python PYTHONDONTWRITEBYTECODE=1 /usr/bin/python3 -c "
import moxcc, numpy
assert moxcc.library.path.startswith('$tree'), moxcc.library
assert moxcc.RGBToGray(numpy.full((2, 2, 3), 255, 'u1')).min() == 255"
fi

echo "== through pkg-config"
. "$source/tests/programs.sh"
export PKG_CONFIG_PATH=$tree/lib/pkgconfig
# shellcheck disable=SC2046
compile shared $(pkg-config --cflags --libs moxcc) -Wl,-rpath,"$(pkg-config --variable=libdir moxcc)"
# shellcheck disable=SC2046
compile static -static $(pkg-config --cflags --libs moxcc-static)
run shared
run static
cmp "$work/shared/light.pgm" "$work/static/light.pgm"
# shellcheck disable=SC2046
${CC:-cc} "$work/readme.c" -o "$work/small" $(pkg-config --cflags --libs moxcc-static) \
    -Wl,--gc-sections,-z,start-stop-gc
"$work/small"
[ "$(stat -c %s "$work/small")" -lt 200000 ] || { echo "a static program keeps what it does not call" >&2; exit 1; }
if command -v qemu-x86_64 >/dev/null; then
    echo "== on a processor without AVX2"
    run static qemu-x86_64 -cpu Nehalem
    cmp "$work/shared/light.pgm" "$work/static/light.pgm"
fi

echo "== without what only developers have"
mkdir "$work/developers"
mv "$tree/include" "$tree/lib/"{cmake,pkgconfig,libmoxcc.a,libmoxccq4.so,libmoxcore.so} "$work/developers"
run shared
mv "$work/developers/include" "$tree"
mv "$work/developers/"* "$tree/lib"

echo "== through CMake, in another place"
mv "$tree" "$work/moved"
if [ -x "$work/moved/bin/moxcc" ]; then
    [ "$("$work/moved/bin/moxcc" list --names | wc -l)" = 439 ] || { echo "moxcc does not find its library" >&2; exit 1; }
fi
for example in c cpp; do
    quietly cmake -G Ninja -S "$source/examples/$example" -B "$work/$example" -DCMAKE_PREFIX_PATH="$work/moved"
    quietly cmake --build "$work/$example"
done
"$work/c/gray"
"$work/cpp/tonemap" "$work/cmake.pgm"
cmp "$work/cmake.pgm" "$work/shared/light.pgm"
cat >"$work/CMakeLists.txt" <<'END'
cmake_minimum_required(VERSION 3.16)
project(user LANGUAGES C)
find_package(moxcc 2019 REQUIRED)
add_executable(user readme.c)
target_link_libraries(user PRIVATE moxcc::static)
END
quietly cmake -G Ninja -S "$work" -B "$work/user" -DCMAKE_PREFIX_PATH="$work/moved"
quietly cmake --build "$work/user"
"$work/user/user"
if readelf -d "$work/user/user" | grep moxcc; then
    echo "moxcc::static links a shared library" >&2
    exit 1
fi

echo "== as a part of another project"
cat >"$work/CMakeLists.txt" <<END
cmake_minimum_required(VERSION 3.25)
project(user LANGUAGES C)
add_subdirectory("$source" moxcc EXCLUDE_FROM_ALL)
add_executable(user readme.c)
target_link_libraries(user PRIVATE moxcc::moxcc)
END
quietly cmake -G Ninja -S "$work" -B "$work/subproject"
grep -q 'will not be optimised' "$work/log" || { echo "no warning that there is no build type" >&2; exit 1; }
quietly ninja -C "$work/subproject" -t commands user
for level in v3 v4; do
    grep -q -e "-o [^ ]*glibc-hwcaps/x86-64-$level/libmoxccq4" "$work/log" ||
        { echo "a program of another project does not build the file for x86-64-$level" >&2; exit 1; }
done

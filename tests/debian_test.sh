#!/bin/bash
# tests/debian_test.sh [packages ...]: builds the Debian packages in build/debian (or takes those), has lintian look at
# them, installs them into a clean Debian 12, and builds and runs README's programs there; without the development
# package, too.
set -euo pipefail

source=$(cd "$(dirname "$0")/.." && pwd)
. "$source/tools/packages.sh"
packages=("$@")

need debhelper dpkg-dev dh-python help2man cmake ninja-build g++ pkg-config libcli11-dev libmd-dev libpng-dev \
    pybind11-dev python3-dev python3-numpy lintian debootstrap
as_root=
[ "$(id -u)" = 0 ] || as_root=sudo
work=$(mktemp -d)
trap '$as_root rm -rf --one-file-system "$work"' EXIT

if [ ${#packages[@]} = 0 ]; then
    echo "== packages"
    debian=$source/build/debian
    rm -rf "$debian"
    mkdir -p "$debian/moxcc"
    git -C "$source" ls-files -z | tar -C "$source" --null -T - -c | tar -C "$debian/moxcc" -x
    # test.sh has run the tests of the same code.
    (cd "$debian/moxcc" && DEB_BUILD_OPTIONS=nocheck DEB_BUILD_PROFILES=nocheck dpkg-buildpackage -b -us -uc) \
        >"$work/log" 2>&1 || { tail -n 50 "$work/log" >&2; exit 1; }
    lintian --allow-root --fail-on error,warning "$debian/"*.changes
    packages=("$debian/"*.deb)
fi

echo "== a clean system"
root=$work/root
$as_root debootstrap --variant=minbase --include=g++,pkg-config bookworm "$root" >"$work/log" ||
    { tail -n 20 "$work/log" >&2; exit 1; }
$as_root mkdir -p "$root/packages" "$root/moxcc/tests"
$as_root cp "${packages[@]}" "$root/packages"
$as_root cp -r "$source/README.md" "$source/examples" "$root/moxcc"
$as_root cp "$source/tests/programs.sh" "$root/moxcc/tests"
$as_root chroot "$root" bash -euo pipefail -c '
    apt-get install -y -qq --no-install-recommends /packages/*.deb >/dev/null 2>&1
    source=/moxcc work=$(mktemp -d)
    . $source/tests/programs.sh
    compile shared $(pkg-config --cflags --libs moxcc)
    compile static -static $(pkg-config --cflags --libs moxcc-static)
    run shared
    moxcc list nv12 rgb
    python3 -c "import moxcc"
    echo "== without the development package"
    apt-get purge -y -qq libmoxcc-dev >/dev/null 2>&1
    run shared
    run static
    cmp $work/shared/light.pgm $work/static/light.pgm
'

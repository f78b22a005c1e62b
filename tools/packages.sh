# Sourced by the scripts at the top of the tree.

# need <package ...>: installs those Debian packages that are not there, and says so.
need() {
    missing=
    for package; do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    if ! command -v apt-get >/dev/null; then
        echo "Please install the equivalents of these Debian packages first:$missing" >&2
        exit 1
    fi
    as_root=
    [ "$(id -u)" = 0 ] || as_root=sudo
    echo "Installing Debian packages:$missing"
    $as_root apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $as_root apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# What the Python package is built of and runs on.
moxcc_python="cmake ninja-build gcc g++ python3-dev pybind11-dev python3-numpy"

# What the program moxcc is built of.
moxcc_program="libcli11-dev libmd-dev libpng-dev pkg-config help2man"

# Sourced by the tests of an installed library: builds and runs the examples and README.md's programs. $source is the
# project's tree, $work a folder for the results.

# The programs in README.md.
for language in c cpp; do
    sed -n "/^\`\`\`$language\$/,/^\`\`\`\$/{/^\`\`\`/d;p}" "$source/README.md" >"$work/readme.$language"
done

# compile <what it is linked with> <flags ...>: the programs, into the folder of that name
compile() {
    local to=$work/$1
    mkdir "$to"
    ${CC:-cc} -std=c99 "$source/examples/c/gray.c" -o "$to/gray" "${@:2}"
    ${CXX:-c++} -std=c++17 "$source/examples/cpp/tonemap.cpp" -o "$to/tonemap" "${@:2}"
    ${CC:-cc} -std=c99 -Wall -Wextra -Werror "$work/readme.c" -o "$to/readme_c" "${@:2}"
    ${CXX:-c++} -std=c++11 -Wall -Wextra -Werror "$work/readme.cpp" -o "$to/readme_cpp" "${@:2}"
}

# run <what it is linked with> [emulator ...]
run() {
    local from=$work/$1
    "${@:2}" "$from/gray"
    "${@:2}" "$from/tonemap" "$from/light.pgm"
    "${@:2}" "$from/readme_c"
    "${@:2}" "$from/readme_cpp"
}

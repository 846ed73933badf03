#!/usr/bin/env bash
# consume.sh WAY LANGUAGE PREFIX LIBDIR: builds a host against the ediexit installed in PREFIX, and runs it.
#   WAY       pkg-config, find_package or dlopen
#   LANGUAGE  c (C11), cpp (C++17), or readme: the host in C that stands in README.md
#   LIBDIR    where libraries lie under PREFIX
# Takes the compilers from CC and CXX, and the tool that cmake builds with from CMAKE_GENERATOR. Nothing but PREFIX tells
# the host where the library is.
set -euo pipefail
way=$1 language=$2 prefix=$3 libdir=$3/$4
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
warnings=(-Wall -Wextra -Wpedantic -Werror)
case $language in
c) compiler=("$CC" -std=c11 "${warnings[@]}" "$here/consumer.c") ;;
cpp) compiler=("$CXX" -std=c++17 "${warnings[@]}" "$here/consumer.cpp") ;;
readme)
    awk '/^```c$/ { inside = 1; next } /^```$/ { inside = 0 } inside' "$here/../../README.md" >"$work/readme.c"
    compiler=("$CC" -std=c11 "${warnings[@]}" "$work/readme.c")
    ;;
esac

export PKG_CONFIG_PATH=$libdir/pkgconfig
case $way in
pkg-config)
    read -ra flags < <(pkg-config --cflags --libs 'ediexit >= 9.0')
    "${compiler[@]}" "${flags[@]}" -o "$work/host"
    ;;
find_package)
    cmake -S "$here/consumer" -B "$work" -DCMAKE_PREFIX_PATH="$prefix" \
        -DCMAKE_C_COMPILER="$CC" -DCMAKE_CXX_COMPILER="$CXX"
    cmake --build "$work" --target "host-$language"
    mv "$work/host-$language" "$work/host"
    ;;
dlopen)
    read -ra flags < <(pkg-config --cflags ediexit)
    "${compiler[@]}" -DBY_DLOPEN "${flags[@]}" -ldl -o "$work/host"
    ;;
esac
LD_LIBRARY_PATH=$libdir "$work/host"

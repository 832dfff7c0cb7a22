#!/bin/sh
# Installs the library into an empty prefix and links a C program against it, once with the CMake package and once with
# pkg-config, as an integrator would.
# usage: install_test.sh BUILD_DIR CONSUMER_DIR
set -eu
build=$1 consumer=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

quietly() {
    "$@" >"$work/log" 2>&1 || {
        cat "$work/log"
        echo "FAILED: $*"
        exit 1
    }
}

quietly cmake --install "$build" --prefix "$prefix"
quietly cmake -G Ninja -S "$consumer" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix"
quietly cmake --build "$work/build"
quietly "$work/build/consumer"

pc=$(find "$prefix" -name mainControl.pc)
PKG_CONFIG_PATH=$(dirname "$pc")
export PKG_CONFIG_PATH
libdir=$(dirname "$PKG_CONFIG_PATH")
# shellcheck disable=SC2046 # the flags are words
quietly cc -std=c11 -o "$work/consumer" "$consumer/main.c" \
    $(pkg-config --define-variable=prefix="$prefix" --cflags --libs mainControl) -Wl,-rpath,"$libdir"
quietly "$work/consumer"

for link in lib_mainControl.so lib_mainControl.so.0; do
    [ -L "$libdir/$link" ] || { echo "FAILED: no link $link"; exit 1; }
done

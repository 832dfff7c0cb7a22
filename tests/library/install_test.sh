#!/bin/sh
# Installs the library into an empty prefix and links a C program against it, once with the CMake package and once with
# pkg-config, as an integrator would.
# usage: install_test.sh BUILD_DIR CONSUMER_DIR
set -eu
build=$1 consumer=$2
# shellcheck source=tests/support/consumer.sh
. "$(dirname "$0")/../support/consumer.sh"

install_and_build "$build" "$consumer"
quietly "$work/build/consumer"

pc=$(find "$prefix" -name mainControl.pc)
PKG_CONFIG_PATH=$(dirname "$pc")
export PKG_CONFIG_PATH
libdir=$(dirname "$PKG_CONFIG_PATH")
# shellcheck disable=SC2046 # the flags are words
quietly cc -std=c11 -o "$work/consumer" "$consumer/main.c" \
    $(pkg-config --define-variable=prefix="$prefix" --cflags --libs mainControl) -Wl,-rpath,"$libdir"
version=$("$work/consumer")
[ "$version" = "$(pkg-config --modversion mainControl)" ] || { echo "FAILED: the headers are of version $version"; exit 1; }

for link in lib_mainControl.so lib_mainControl.so.0; do
    [ -L "$libdir/$link" ] || { echo "FAILED: no link $link"; exit 1; }
done

#!/bin/sh
# Installs the library into an empty prefix, below another root, and moves it, and each time links a C program against it,
# with the CMake package and with pkg-config, as an integrator would.
# usage: install_test.sh BUILD_DIR CONSUMER_DIR
set -eu
build=$1 consumer=$2
# shellcheck source=tests/support/consumer.sh
. "$(dirname "$0")/../support/consumer.sh"

install_and_build "$build" "$consumer"
quietly "$work/build/consumer"

build_by_pkg_config "$prefix" mainControl "$consumer"
version=$("$work/consumer")
[ "$version" = "$(pkg-config --modversion mainControl)" ] || fail "the headers are of version $version"
for link in lib_mainControl.so lib_mainControl.so.0; do
    [ -L "$libdir/$link" ] || fail "no link $link"
done

mv "$prefix" "$work/elsewhere"
build_by_pkg_config "$work/elsewhere" mainControl "$consumer"
quietly "$work/consumer"

quietly env DESTDIR="$work/stage" cmake --install "$build" --prefix /usr
build_by_pkg_config "$work/stage/usr" mainControl "$consumer"
quietly "$work/consumer"

#!/bin/sh
# Builds the static library, installs it with its libraries outside of the prefix, and links C programs against it without
# a C++ compiler. It shows what the shared library shows.
# usage: static_test.sh SOURCE_DIR CONSUMER_DIR
set -eu
export LC_ALL=C
source=$1 consumer=$2
# shellcheck source=tests/support/consumer.sh
. "$(dirname "$0")/../support/consumer.sh"

quietly cmake -G Ninja -S "$source" -B "$work/static" -DBUILD_SHARED_LIBS=OFF \
    -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR="$work/apart/lib"
quietly cmake --build "$work/static"
quietly cmake --install "$work/static"

sort "$source/mainControl/exports.txt" >"$work/expected"
nm --extern-only --defined-only "$work/apart/lib/lib_mainControl.a" | awk 'NF == 3 { print $3 }' | sort >"$work/shown"
diff -u "$work/expected" "$work/shown" || fail "names that the library shows"

needs_libc_only() { # PROGRAM
    needed=$(readelf --wide --dynamic "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -v '^libc\.so\.') || true
    [ -z "$needed" ] || fail "$1 needs $needed"
}

build_by_cmake "$work/apart" "$consumer"
quietly "$work/build/consumer"
needs_libc_only "$work/build/consumer"

build_by_pkg_config "$work/apart" mainControl "$consumer"
quietly "$work/consumer"
needs_libc_only "$work/consumer"

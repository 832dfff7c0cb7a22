#!/bin/sh
# Installs everything into an empty prefix, links a C program with the library and the three that supply its host's
# functions, and runs it.
# usage: install_test.sh BUILD_DIR CONSUMER_DIR
set -eu
build=$1 consumer=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

quietly() {
    "$@" >"$work/output" 2>&1 || {
        cat "$work/output"
        echo "FAILED: $*"
        exit 1
    }
}

quietly cmake --install "$build" --prefix "$work/prefix"
quietly cmake -G Ninja -S "$consumer" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix"
quietly cmake --build "$work/build"
quietly env KR_AT_SERVER="$work/nobody.sock" KR_LOG_DIR="$work/log" "$work/build/consumer"

grep -q 'KR_startAT-in$' "$work/log/kora_t9lb.log" || { echo "FAILED: nothing was logged"; exit 1; }
if grep -q 48151623 "$work/log/kora_t9lb.log"; then echo "FAILED: the PIN was logged"; exit 1; fi

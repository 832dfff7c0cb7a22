#!/bin/sh
# Installs everything into an empty prefix, links a C program with the library and the three that supply its host's
# functions, and runs it.
# usage: install_test.sh BUILD_DIR CONSUMER_DIR
set -eu
# shellcheck source=tests/support/consumer.sh
. "$(dirname "$0")/../../support/consumer.sh"

install_and_build "$1" "$2"
quietly env KR_AT_SERVER="$work/nobody.sock" KR_LOG_DIR="$work/log" "$work/build/consumer"

grep -q 'KR_startAT-in$' "$work/log/kora_t9lb.log" || { echo "FAILED: nothing was logged"; exit 1; }
if grep -q 48151623 "$work/log/kora_t9lb.log"; then echo "FAILED: the PIN was logged"; exit 1; fi

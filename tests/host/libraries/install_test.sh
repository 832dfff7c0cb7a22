#!/bin/sh
# Installs everything into an empty prefix, links a C program with the library and the three that supply its host's
# functions, with the CMake package and with pkg-config, and runs it. The service finds its program and its settings.
# usage: install_test.sh BUILD_DIR CONSUMER_DIR
set -eu
# shellcheck source=tests/support/consumer.sh
. "$(dirname "$0")/../../support/consumer.sh"

run() { # PROGRAM
    rm -rf "$work/log"
    quietly env KR_AT_SERVER="$work/nobody.sock" KR_LOG_DIR="$work/log" "$1"
    grep -q 'KR_startAT-in$' "$work/log/kora_t9lb.log" || fail "nothing was logged"
    if grep -q 48151623 "$work/log/kora_t9lb.log"; then fail "the PIN was logged"; fi
}

service_finds_its_files() { # ROOT PREFIX SYSCONFDIR
    unit=$1$2/lib/systemd/system/kr-at-server.service
    grep -qx "EnvironmentFile=-$3/default/kr-at-server" "$unit" || fail "settings file of $unit"
    grep -q '^KR_MODEM_DEVICE=' "$1$3/default/kr-at-server" || fail "no settings in $1$3"
    grep -q "^ExecStart=$2/bin/kr-at-server " "$unit" || fail "program of $unit"
    quietly "$1$2/bin/kr-at-server" --version
}

install_and_build "$1" "$2"
run "$work/build/consumer"
build_by_pkg_config "$prefix" mainControl-host "$2"
run "$work/consumer"
service_finds_its_files "" "$prefix" "$prefix/etc"

quietly env DESTDIR="$work/stage" cmake --install "$1" --prefix /usr
service_finds_its_files "$work/stage" /usr /etc
quietly "$work/stage/usr/bin/krctl" --version

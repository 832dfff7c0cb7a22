#!/bin/sh
# Holds the systemd unit to what systemd understands, and to how little a break-in would lay open.
# usage: systemd_test.sh SYSTEMD_ANALYZE UNIT_TEMPLATE PROGRAM
set -eu
export LC_ALL=C
analyze=$1 template=$2 program=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unit=$work/$(basename "$template" .in)

fail() {
    echo "FAILED: $*"
    exit 1
}

sed "s,@CMAKE_INSTALL_FULL_BINDIR@,$(dirname "$program"),; s,@CMAKE_INSTALL_FULL_SYSCONFDIR@,/etc," "$template" >"$unit"
if grep -n '@[A-Z_]*@' "$unit"; then fail "places that are not filled in"; fi

# It tells of settings that it does not know and goes on, so whatever it says counts.
remarks=$("$analyze" verify --man=no "$unit" 2>&1) || fail "verify: $remarks"
[ -z "$remarks" ] || fail "$remarks"

"$analyze" security --offline=true --no-pager --threshold=10 "$unit" >"$work/report" || {
    cat "$work/report"
    fail "more exposed than 1.0"
}
tail -n 1 "$work/report"

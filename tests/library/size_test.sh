#!/bin/sh
# Holds the stripped library to the figures that the README states for x86-64, so that growth is a decision.
# usage: size_test.sh LIBRARY README
set -eu
export LC_ALL=C
library=$1 readme=$2
limit=122880 # 120 KB, whatever the README says

if ! readelf --file-header "$library" | grep -q 'Machine:.*X86-64'; then
    echo "stated for x86-64 only"
    exit 0
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
strip -o "$work/stripped" "$library"

failures=0
hold() { # NAME ACTUAL: to the README's row with that name, give or take a tenth
    stated=$(sed -n "s/^| $1 | *\([0-9,]*\) bytes.*/\1/p" "$readme" | tr -d ,)
    if [ -z "$stated" ]; then
        echo "FAILED: the README states no figure for: $1"
        failures=1
        return
    fi
    echo "$1: $2 bytes, stated $stated"
    if [ "$2" -gt $((stated + stated / 10)) ] || [ "$2" -lt $((stated - stated / 10)) ]; then
        echo "FAILED: $1 is no longer what the README states"
        failures=1
    fi
}

section() { # NAMES...: their size in all
    total=0
    for name in "$@"; do
        size=$(readelf --wide --section-headers "$work/stripped" |
            sed -n "s/.* $name  *[A-Z_]*  *[0-9a-f]* [0-9a-f]* \([0-9a-f]*\) .*/\1/p")
        total=$((total + 0x${size:-0}))
    done
    echo "$total"
}

size=$(wc -c <"$work/stripped")
hold "stripped shared object" "$size"
hold "code" "$(section '\.text')"
hold "constants" "$(section '\.rodata')"
hold "writable data" "$(section '\.data' '\.data\.rel\.ro')"
hold "dynamic symbols" "$(section '\.dynsym' '\.dynstr' '\.gnu\.hash' '\.gnu\.version')"
if [ "$size" -gt "$limit" ]; then
    echo "FAILED: the limit is $limit bytes"
    failures=1
fi
exit "$failures"

#!/bin/sh
# Holds a shared library of the host to what its exports.map states, and to how it is hardened.
# usage: binary_test.sh LIBRARY EXPORTS_MAP
set -eu
export LC_ALL=C
library=$1 map=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*"
    exit 1
}

sed -n 's/^ *\([A-Za-z0-9_]*\);$/\1/p' "$map" | sort >"$work/expected"
[ -s "$work/expected" ] || fail "no names in $map"
nm --dynamic --defined-only "$library" | awk '{ print $3 }' | sort >"$work/exports"
diff -u "$work/expected" "$work/exports" || fail "exported names"

dynamic=$(readelf --wide --dynamic "$library")
segments=$(readelf --wide --segments "$library")
echo "$dynamic" | grep -q "SONAME.*\[$(basename "$library" | sed 's/\.so.*//')\.so\.0\]" || fail "soname"
echo "$dynamic" | grep -q 'BIND_NOW' || fail "symbols are not bound at load"
if echo "$dynamic" | grep -q 'TEXTREL'; then fail "text relocations"; fi
echo "$segments" | grep -q 'GNU_RELRO' || fail "no relro segment"
if echo "$segments" | grep 'GNU_STACK' | grep -q ' RWE '; then fail "executable stack"; fi

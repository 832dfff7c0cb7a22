#!/bin/sh
# Holds the shared object to what a router maker links against: its names, what it needs, and how it is hardened.
# usage: binary_test.sh LIBRARY EXPORTS IMPORTS
set -eu
export LC_ALL=C
library=$1 exports=$2 imports=$3
NM=${NM:-nm} READELF=${READELF:-readelf}
failures=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

same() { # NAME EXPECTED ACTUAL
    if ! diff -u "$2" "$3" >"$work/diff"; then
        fail "$1"
        cat "$work/diff"
    fi
}

dynamic=$("$READELF" --wide --dynamic "$library")
segments=$("$READELF" --wide --segments "$library")

"$NM" --dynamic --defined-only "$library" | awk '{ print $3 }' | sort >"$work/exports"
sort "$exports" >"$work/expected"
same "exported names" "$work/expected" "$work/exports"

# Names that libc supplies carry its version; the host's carry none.
"$NM" --dynamic --undefined-only "$library" | awk '$1 == "U" { print $2 }' | sort >"$work/undefined"
grep -v '@' "$work/undefined" >"$work/imports" || true
sort "$imports" >"$work/expected"
same "names that the host supplies" "$work/expected" "$work/imports"

if grep -E '^(malloc|calloc|realloc|free|posix_memalign|aligned_alloc|_Zn|_Zd|pthread_|__cxa_)' "$work/undefined"; then
    fail "the heap, threads or the C++ runtime are used"
fi

echo "$dynamic" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | grep -vE '^(libc|libpthread|ld.*)\.so\.[0-9]+$' \
    >"$work/needed" || true
if [ -s "$work/needed" ]; then
    fail "needs more than libc: $(tr '\n' ' ' <"$work/needed")"
fi

echo "$dynamic" | grep -q 'SONAME.*\[lib_mainControl\.so\.0\]' || fail "soname"
echo "$dynamic" | grep -q 'BIND_NOW' || fail "symbols are not bound at load"
if echo "$dynamic" | grep -q 'TEXTREL'; then fail "text relocations"; fi
echo "$segments" | grep -q 'GNU_RELRO' || fail "no relro segment"
if echo "$segments" | grep 'GNU_STACK' | grep -q ' RWE '; then fail "executable stack"; fi
grep -q '^__stack_chk_fail' "$work/undefined" || fail "no stack protector"
grep -q '_chk@' "$work/undefined" || fail "not fortified"

if "$NM" "$library" | grep -E '_GLOBAL__sub_I|__static_initialization'; then fail "static constructors"; fi

if [ "$failures" -ne 0 ]; then exit 1; fi
echo "$(wc -l <"$work/exports") exported names, $(wc -l <"$work/imports") of the host, needs: $(echo "$dynamic" |
    sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' | tr '\n' ' ')"

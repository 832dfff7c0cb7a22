#!/bin/sh
# Counts the instructions of one call of each workload, and holds them to limits.
# Skipped with 77 on a processor that libc has shorter vectors for than the limits are made for.
# usage: instructions.sh PROGRAM LIMITS      both as "name instructions" lines, the counts on the output
set -eu
program=$1 limits=$2
grep -qw avx2 /proc/cpuinfo || exit 77
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if ! valgrind --tool=callgrind --callgrind-out-file="$work/calls" "$program" >"$work/log" 2>&1; then
    cat "$work/log" >&2
    exit 1
fi
for dump in "$work"/calls.*; do
    name=$(sed -n 's/^desc: Trigger: Client Request: //p' "$dump")
    [ -z "$name" ] || echo "$name $(sed -n 's/^summary: //p' "$dump" | head -n 1)"
done | sort >"$work/counts"

awk 'NR == FNR { limit[$1] = $2; expected++; next }
    { counted++; over = $2 + 0 > limit[$1] + 0; print $1, $2, limit[$1] (over ? " OVER" : ""); failed += over }
    END { exit failed > 0 || counted != expected }' "$limits" "$work/counts"

#!/bin/sh
# Configures as a distribution does, with flags of its own, and looks at the command line of each file: optimisation,
# fortification and debug information are those from outside, and no warning is an error.
# usage: flags_test.sh SOURCE_DIR WITH_HOST
set -eu
# shellcheck source=tests/support/consumer.sh
. "$(dirname "$0")/../support/consumer.sh"

flags="-O3 -g2 -D_FORTIFY_SOURCE=3"
quietly env CFLAGS="$flags" CXXFLAGS="$flags" cmake -G Ninja -S "$1" -B "$work/build" \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DMAINCONTROL_BUILD_TESTS=ON -DMAINCONTROL_BUILD_HOST="$2"

awk '/"command":/ {
    optimised = fortified = debugged = "not"
    strict = ""
    for (i = 1; i <= NF; i++) {
        if ($i ~ /^-O/) optimised = $i
        if ($i ~ /^-(Wp,)?-?[DU]_FORTIFY_SOURCE/) fortified = $i
        if ($i ~ /^-g/) debugged = $i
        if ($i ~ /^-Werror/) strict = $i
    }
    commands++
    if (optimised != "-O3" || fortified != "-D_FORTIFY_SOURCE=3" || debugged != "-g2" || strict != "") {
        print "FAILED: " optimised " " fortified " " debugged " " strict " for " $NF
        failures++
    }
} END { print commands " command lines"; exit failures > 0 || !commands }' "$work/build/compile_commands.json"

# To be sourced by scripts that build: steps that say what they do, and nothing else unless they fail.
# shellcheck shell=sh

steps_log=$(mktemp)
trap 'rm -f "$steps_log"' EXIT

step() { # TEXT COMMAND...
    text=$1
    shift
    printf '%s ... ' "$text" >&2
    started=$(date +%s)
    if "$@" >"$steps_log" 2>&1; then
        echo "done ($(($(date +%s) - started)) s)" >&2
    else
        echo "FAILED" >&2
        cat "$steps_log" >&2
        echo "FAILED: $text ($*)" >&2
        exit 1
    fi
}

build() { # PRESET
    step "Configuring $1" cmake --preset "$1"
    step "Building $1" cmake --build --preset "$1"
}

# What building the library and the host needs.
# shellcheck disable=SC2034 # for the scripts that source this one
build_packages="g++ gcc cmake ninja-build pkg-config libevent-dev libcli11-dev nlohmann-json3-dev libspdlog-dev"

show_usage() { # the lines of the script's head that begin with "# usage:", and those that follow
    sed -n '/^# usage: /,/^[^#]/{/^# /s/^# //p}' "$0"
}

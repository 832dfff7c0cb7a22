# To be sourced by tests that install what was built into an empty prefix and build a consumer against it.
# shellcheck shell=sh

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

quietly() { # COMMAND...
    "$@" >"$work/output" 2>&1 || {
        cat "$work/output"
        echo "FAILED: $*"
        exit 1
    }
}

install_and_build() { # BUILD_DIR CONSUMER_DIR, to "$work/build/consumer"
    quietly cmake --install "$1" --prefix "$prefix"
    quietly cmake -G Ninja -S "$2" -B "$work/build" -DCMAKE_PREFIX_PATH="$prefix"
    quietly cmake --build "$work/build"
}

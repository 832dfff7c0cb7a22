# To be sourced by tests that install what was built into an empty prefix and build a consumer against it.
# shellcheck shell=sh

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

fail() { # TEXT
    echo "FAILED: $*"
    exit 1
}

quietly() { # COMMAND...
    "$@" >"$work/output" 2>&1 || {
        cat "$work/output"
        fail "$*"
    }
}

install_and_build() { # BUILD_DIR CONSUMER_DIR, to "$work/build/consumer"
    quietly cmake --install "$1" --prefix "$prefix"
    build_by_cmake "$prefix" "$2"
}

build_by_cmake() { # ROOT CONSUMER_DIR, to "$work/build/consumer"
    quietly cmake -G Ninja -S "$2" -B "$work/build" -DCMAKE_PREFIX_PATH="$1"
    quietly cmake --build "$work/build"
}

# Leaves the folder of the library that it found below ROOT in $libdir.
build_by_pkg_config() { # ROOT MODULE CONSUMER_DIR, to "$work/consumer"
    pc=$(find "$1" -name "$2.pc")
    [ -n "$pc" ] || fail "no $2.pc below $1"
    PKG_CONFIG_PATH=$(dirname "$pc")
    export PKG_CONFIG_PATH
    libdir=$(dirname "$PKG_CONFIG_PATH")
    # shellcheck disable=SC2046 # the flags are words
    quietly cc -std=c11 -Wl,--as-needed -o "$work/consumer" "$3/main.c" $(pkg-config --cflags --libs "$2") \
        -Wl,-rpath,"$libdir"
}

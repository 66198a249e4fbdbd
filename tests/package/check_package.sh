#!/bin/sh
# check_package.sh BUILD_DIR SOURCE_DIR CMAKE
# Installs the build, moves what was installed, and uses it from its new place the ways a user would: through CMake,
# through pkg-config, as a plug-in that is loaded and unloaded, and as a command.
set -eu

build=$1
source=$2
cmake=$3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    echo "check_package: $1" >&2
    exit 1
}

cached() {
    sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"
}

command -v pkg-config >/dev/null || fail "pkg-config is not installed"

# What is linked with instrumented libraries must be instrumented too.
flags=
if [ "$(cached PETAL_SANITIZE)" = ON ]; then
    flags=-fsanitize=address,undefined
fi
compiler=$(cached CMAKE_CXX_COMPILER)

"$cmake" --install "$build" --prefix "$work/first" >"$work/install.log" || fail "$(cat "$work/install.log")"
mkdir "$work/moved to"
mv "$work/first" "$work/moved to/prefix"
prefix="$work/moved to/prefix"
lib=$(cached CMAKE_INSTALL_LIBDIR)

if grep -rlF -e "$work/first" -e "$build" -e "$source" "$prefix/$lib/cmake" "$prefix/$lib/pkgconfig"; then
    fail "the files above name places that exist on this machine only"
fi

echo "--- CMake package"
CXXFLAGS=$flags "$cmake" -S "$source/tests/package/outside-host" -B "$work/outside-host" -G Ninja \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$prefix" >"$work/configure.log" 2>&1 ||
    fail "$(cat "$work/configure.log")"
"$cmake" --build "$work/outside-host"
"$work/outside-host/outside-host" "$work/by-cmake.mdl"

echo "--- plug-in loaded by name"
"$work/outside-host/plugin-loader" "$prefix/$lib/libKivIbmRationalRose98Export.so"

echo "--- pkg-config"
# pkg-config's answer is a list of words, in which a blank of a path is escaped.
eval "set -- $(PKG_CONFIG_PATH="$prefix/$lib/pkgconfig" pkg-config --cflags --libs petal-bridge)"
"$compiler" -std=c++20 $flags "$source/tests/package/outside-host/main.cpp" -o "$work/by-pkg-config" "$@"
LD_LIBRARY_PATH="$prefix/$lib" "$work/by-pkg-config" "$work/by-pkg-config.mdl" >"$work/options"
cmp "$work/by-cmake.mdl" "$work/by-pkg-config.mdl" || fail "the two builds of one host write different files"

echo "--- command"
"$prefix/$(cached CMAKE_INSTALL_BINDIR)/petal" --version
"$prefix/$(cached CMAKE_INSTALL_BINDIR)/petal" export --quiet -o "$work/orders.mdl" \
    "$prefix/share/doc/petal-bridge/examples/orders.model.json"
test -s "$work/orders.mdl"

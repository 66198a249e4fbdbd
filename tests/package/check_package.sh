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
compiler=$(cached CMAKE_CXX_COMPILER)
flags=
if [ "$(cached PETAL_SANITIZE)" = ON ]; then
    library=$("$compiler" -print-file-name="libclang_rt.asan-$(uname -m).so")
    flags="-fsanitize=address,undefined -shared-libsan -Wl,-rpath,$(dirname "$library")"
fi

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

echo "--- the example of a host"
CXXFLAGS=$flags "$cmake" -S "$prefix/share/doc/petal-bridge/examples/host" -B "$work/shop" -G Ninja \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_PREFIX_PATH="$prefix" >"$work/configure.log" 2>&1 ||
    fail "$(cat "$work/configure.log")"
"$cmake" --build "$work/shop"
"$work/shop/shop" "$work/shop.mdl" 2>"$work/progress"
"$prefix/$(cached CMAKE_INSTALL_BINDIR)/petal" check "$work/shop.mdl"
if "$work/shop/shop" /dev/full 2>"$work/progress"; then
    fail "the example of a host does not notice a full disk"
fi

echo "--- a model written down and read back"
"$work/outside-host/dump-model" "$source/examples/orders.model.json" "$work/once.model.json"
"$work/outside-host/dump-model" "$work/once.model.json" "$work/again.model.json"
cmp "$work/once.model.json" "$work/again.model.json" || fail "a model that was read back is written otherwise"

echo "--- plug-in loaded by name"
"$work/outside-host/plugin-loader" "$prefix/$lib/libKivIbmRationalRose98Export.so"

echo "--- pkg-config"
# pkg-config's answer is a list of words, in which a blank of a path is escaped.
eval "set -- $(PKG_CONFIG_PATH="$prefix/$lib/pkgconfig" pkg-config --cflags --libs petal-bridge)"
"$compiler" -std=c++20 $flags "$source/tests/package/outside-host/main.cpp" -o "$work/by-pkg-config" "$@"
LD_LIBRARY_PATH="$prefix/$lib" "$work/by-pkg-config" "$work/by-pkg-config.mdl" >"$work/options"
eval "set -- $(PKG_CONFIG_PATH="$prefix/$lib/pkgconfig" pkg-config --cflags --libs petal-bridge-modelfile)"
"$compiler" -std=c++20 $flags "$source/tests/package/outside-host/dump_model.cpp" -o "$work/dump-by-pkg-config" "$@"
cmp "$work/by-cmake.mdl" "$work/by-pkg-config.mdl" || fail "the two builds of one host write different files"

echo "--- command"
petal=$prefix/$(cached CMAKE_INSTALL_BINDIR)/petal
design=$source/tests/designs/files/shop.ecore
"$petal" --version
"$petal" export --quiet -o "$work/orders.mdl" "$prefix/share/doc/petal-bridge/examples/orders.model.json"
test -s "$work/orders.mdl"
"$petal" export --quiet -o "$work/again.mdl" "$work/again.model.json"
cmp "$work/orders.mdl" "$work/again.mdl" || fail "a model that was read back is exported otherwise"
"$petal" draw "$work/orders.mdl" --format png -o "$work/pictures"
for picture in "$work/pictures"/*.png; do
    test -s "$picture" || fail "no picture was drawn"
done
"$petal" import --quiet "$design" -o "$work/shop.model.json"
grep -q Overview "$work/shop.model.json" || fail "the design was not laid out"

# says_what_is_missing LIBRARY ARGUMENTS...: the command fails without the library, in words, and leaves its output alone.
says_what_is_missing() {
    library=$1
    shift
    echo kept >"$work/kept.svg"
    if "$petal" "$@" -o "$work/kept.svg" 2>"$work/errors"; then
        fail "petal $* needs no $library"
    fi
    grep -q "^petal: $library cannot be loaded: .*No such file" "$work/errors" || fail "petal $* said: $(cat "$work/errors")"
    [ "$(cat "$work/kept.svg")" = kept ] || fail "petal $* changed the output"
}

echo "--- command without what it loads"
rm -r "$prefix/$lib/petal-bridge"
says_what_is_missing libpetal-layout.so import "$design"
says_what_is_missing libpetal-layout.so export "$design"
says_what_is_missing libpetal-pictures.so draw "$work/orders.mdl" --diagram Services --format svg
says_what_is_missing libpetal-pictures.so browse "$work/orders.mdl"
"$petal" draw "$work/orders.mdl" --list >"$work/diagrams"
"$petal" import --quiet --no-layout "$design" -o "$work/shop.model.json"
"$petal" export --quiet "$source/fuzz/seeds/StarUml/shop.mdj" -o "$work/shop.mdl"
"$petal" check "$work/orders.mdl"

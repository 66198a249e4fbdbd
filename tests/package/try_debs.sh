#!/bin/sh
# try_debs.sh SOURCE_DIR: uses the installed Debian packages as their users would. Nothing of a build is needed.
set -eu
source=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

petal --version
petal export --quiet /usr/share/doc/petal-bridge/examples/orders.model.json -o orders.mdl
petal check orders.mdl
petal draw orders.mdl --diagram Services -o services.png
petal browse orders.mdl
test -s services.png
test -s orders.html
man -w petal >/dev/null 2>&1 || test -s /usr/share/man/man1/petal.1.gz

cmake -S "$source/tests/package/outside-host" -B outside-host -G Ninja >configure.log || { cat configure.log; exit 1; }
cmake --build outside-host
outside-host/outside-host by-host.mdl >options
petal check by-host.mdl

g++ -std=c++20 /usr/share/doc/petal-bridge/examples/host/shop.cpp -o shop $(pkg-config --cflags --libs petal-bridge)
./shop shop.mdl
petal check shop.mdl

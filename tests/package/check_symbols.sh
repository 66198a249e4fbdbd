#!/bin/sh
# check_symbols.sh LIBRARY LIST
# The library defines exactly the names in LIST, one a line.
set -eu

exported=$(nm -D --defined-only -C "$1" | cut -d ' ' -f 3- | LC_ALL=C sort -u)
expected=$(LC_ALL=C sort -u "$2")
if [ "$exported" != "$expected" ]; then
    printf 'check_symbols: %s exports\n%s\n\nbut should export\n%s\n' "$1" "$exported" "$expected" >&2
    exit 1
fi

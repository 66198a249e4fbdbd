#!/bin/sh
# Runs what the page about conversions tells those who leave Rose, on models of its own:
#
#     check_migration.sh PETAL SOURCE_DIR
set -eu

petal=$1
source_dir=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin" "$work/models"
ln -s "$petal" "$work/bin/petal"
PATH=$work/bin:$PATH
export PATH
cp "$source_dir/tests/render/models/everything.mdl" "$work/models/"
petal export -q "$source_dir/examples/orders.model.json" -o "$work/models/orders.mdl"

awk '/^## A department/ { isHere = 1 } isHere && /^```$/ { exit } isScript { print } isHere && /^```sh$/ { isScript = 1 }' \
    "$source_dir/docs/convert.md" > "$work/migrate.sh"
(cd "$work" && sh -eu migrate.sh) > "$work/said" 2>&1 || { cat "$work/said" >&2; exit 1; }

for made in check.txt archive/everything.html archive/orders.html new/everything.xml new/orders.xml \
    reports/everything.json reports/orders.json; do
    [ -s "$work/$made" ] || { echo "check_migration: $made is missing or empty" >&2; exit 1; }
done
grep -q 'class Product: persistence Persistent removed' "$work/reports/orders.diff" || {
    echo "check_migration: the differences do not say what was lost" >&2
    cat "$work/reports/orders.diff" >&2
    exit 1
}

#!/bin/sh
# Exports every whole model file that the page about model files shows, without a warning, and checks what comes out:
#
#     check_examples.sh PETAL SOURCE_DIR
set -eu

petal=$1
page=$2/docs/model-file.md

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# A file for each block of JSON that says that it is a model file.
awk -v folder="$work" '
    /^```json$/ { file = folder "/" (NR + 1) ".model.json"; next }
    /^```$/ { file = "" }
    file { print > file }' "$page"

count=0
for model in "$work"/*.model.json; do
    grep -q '"format": "kiv-model"' "$model" || continue
    place="$page:$(basename "$model" .model.json)"
    "$petal" export --strict --layout -q "$model" -o "$work/out.mdl" || { echo "$place: is not exported" >&2; exit 1; }
    "$petal" check -q "$work/out.mdl" || { echo "$place: its Rose file is not whole" >&2; exit 1; }
    count=$((count + 1))
done
[ "$count" -ge 8 ] || { echo "$page: there are $count examples only" >&2; exit 1; }

#!/bin/sh
# Ecore files made of all small designs are valid to the library that they are for:
#
#     ecore_test.sh PETAL SOURCE_DIR
#
# Without that library or a Java compiler nothing is tried, which the exit code 77 says.
set -eu
petal=$1
source=$2
classes=$(ls /usr/share/java/org.eclipse.emf*.jar /usr/share/java/*emf*.jar 2>/dev/null | tr '\n' ':') || true
if ! command -v javac >/dev/null || ! java -cp "$classes" -version >/dev/null 2>&1 || [ -z "$classes" ]; then
    echo "skipped: neither a Java compiler nor the libraries of EMF are here"
    exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
javac -cp "$classes" -d "$work" "$source/tests/convert/ValidateEcore.java"
cd "$source/tests/designs/files"
for design in *.mdl *.mdj *.xmi *.ecore shop.uml enterprise-architect.xml "$source"/examples/*.model.json; do
    "$petal" convert -q "$design" -o "$work/$(basename "$design").ecore"
done
java -cp "$classes:$work" ValidateEcore "$work"/*.ecore

#!/bin/sh
# check_needs.sh BINARY [ALLOWED...]
# The program or library needs no library but the language's own and those ALLOWED.
set -eu

binary=$1
shift

dynamic=$(readelf -d "$binary")
libraries=$(printf '%s\n' "$dynamic" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p')
if [ -z "$libraries" ]; then
    echo "check_needs: $binary needs nothing at all, so it is no program or library" >&2
    exit 1
fi
status=0
for library in $libraries; do
    name=${library%%.so*}
    case " libstdc++ libm libgcc_s libc ld-linux ld-linux-x86-64 ld-linux-aarch64 $* " in
    *" $name "*) ;;
    *)
        echo "check_needs: $binary needs $library" >&2
        status=1
        ;;
    esac
done
exit $status

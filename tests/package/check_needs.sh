#!/bin/sh
# check_needs.sh BINARY [ALLOWED...]
# The program or library needs no library but the language's own and those ALLOWED.
set -eu

binary=$1
shift

status=0
for library in $(readelf -d "$binary" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p'); do
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

#!/bin/sh
# check_symbols.sh PLUGIN LIST [ALLOWED...]
# The plug-in defines exactly the names in LIST, one a line, and needs no library but the host library, the language's
# own and those ALLOWED.
set -eu

plugin=$1
list=$2
shift 2

status=0

exported=$(nm -D --defined-only -C "$plugin" | cut -d ' ' -f 3- | LC_ALL=C sort -u)
expected=$(LC_ALL=C sort -u "$list")
if [ "$exported" != "$expected" ]; then
    printf 'check_symbols: the plug-in exports\n%s\n\nbut should export\n%s\n' "$exported" "$expected" >&2
    status=1
fi

for library in $(readelf -d "$plugin" | sed -n 's/.*(NEEDED).*\[\(.*\)\]$/\1/p'); do
    name=${library%%.so*}
    case " libKivHost libstdc++ libm libgcc_s libc ld-linux ld-linux-x86-64 ld-linux-aarch64 $* " in
    *" $name "*) ;;
    *)
        echo "check_symbols: the plug-in needs $library" >&2
        status=1
        ;;
    esac
done
exit $status

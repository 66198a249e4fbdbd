# Sourced by the scripts beside it: the packages that are needed, and the optimised build. The current folder is the
# project's.

say() {
    echo "== $*"
}

fail() {
    echo "$*" >&2
    exit 1
}

# needed_packages PURPOSE...: those that stand under "# Building", "# Testing" or "# Checking".
needed_packages() {
    for purpose in "$@"; do
        sed -n "/^# $purpose\$/,/^\$/p" scripts/packages.txt | sed 's/#.*//'
    done
}

missing_packages() {
    for package in $(needed_packages "$@"); do
        case $(dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null) in
        ?i*) ;;
        *) echo "$package" ;;
        esac
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Dpkg::Use-Pty=0 -o DPkg::Lock::Timeout=120 "$@"
}

# The lists of packages are fetched only when those that are there do not lead to the packages.
apt_install() {
    apt_get install --no-install-recommends "$@" >"$log" 2>&1 && return
    apt_get update >"$log" 2>&1 && apt_get install --no-install-recommends "$@" >"$log" 2>&1
}

# install_packages PURPOSE...
install_packages() {
    if ! command -v dpkg-query >/dev/null; then
        say "No Debian packages here: what scripts/packages.txt lists is taken to be installed."
        return
    fi
    missing=$(missing_packages "$@" | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        fail "These packages are missing, and only root can install them: $missing"
    fi
    say "Installing $missing"
    log=$(mktemp)
    # shellcheck disable=SC2086 # a list of names
    if ! apt_install $missing; then
        tail -n 20 "$log" >&2
        fail "The packages could not be installed; all that was said is in $log"
    fi
    rm -f "$log"
}

# build PRESET TARGET [OPTIONS OF CMAKE...]
build() {
    preset=$1
    target=$2
    shift 2
    say "Building in build/$preset"
    if ! { cmake --preset "$preset" "$@" >/dev/null && cmake --build --preset "$preset" --target "$target"; }; then
        fail "The build FAILED; the output above shows where."
    fi
}

# with_sanitizers PROGRAM...: with the options of the tests (CMakePresets.json). What libraries keep is no leak. The leak
# checker guesses where the memory of their threads begins; a wrong guess would end it by a signal.
with_sanitizers() {
    env ASAN_OPTIONS=intercept_tls_get_addr=0 UBSAN_OPTIONS=print_stacktrace=1 \
        LSAN_OPTIONS=suppressions=tests/support/library-leaks.txt:print_suppressions=0 "$@"
}

# fuzz_seeds TARGET: the folders of inputs that its fuzzing begins with, and of those that once led to a fault.
fuzz_seeds() {
    case $1 in
    ModelFile | Export) echo fuzz/seeds/Models examples ;;
    Compare) echo fuzz/seeds/Compare fuzz/seeds/PetalReader ;;
    Convert | Dump) echo fuzz/seeds/Rose fuzz/seeds/PetalReader tests/render/models ;;
    Draw) echo tests/render/models ;;
    *)
        [ -d "fuzz/seeds/$1" ] || fail "there is no fuzz target '$1'; there are ModelFile, Export, Convert, Dump, Draw and" \
            "$(ls fuzz/seeds | grep -v Models | tr '\n' ' ')"
        echo "fuzz/seeds/$1"
        ;;
    esac
    [ ! -d "fuzz/regressions/$1" ] || echo "fuzz/regressions/$1"
}

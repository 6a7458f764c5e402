# Where things lie, for every script. Source it; it changes to the project's folder.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

project=$PWD
preset=${PRESET:-mingw} # of CMakePresets.json
programs=$project/build/$preset/bin

# One Wine prefix of the project's own, silent and without the prompts for its optional add-ons.
export WINEPREFIX=${TORVAPDM_WINEPREFIX:-$project/build/wine}
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='

say() { printf '%s\n' "$*"; }

# Runs a command and shows what it printed only when it fails.
quietly() {
    local log
    log=$(mktemp)
    if "$@" >"$log" 2>&1 </dev/null; then
        rm -f "$log"
    else
        local status=$?
        cat "$log" >&2
        rm -f "$log"
        say "failed: $*" >&2
        return $status
    fi
}

# Installs the Debian packages that are missing; for anybody but root, says which to install.
install_packages() {
    local missing=() package state
    for package in "$@"; do
        state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
        [ "$state" = installed ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if [ "$(id -u)" != 0 ]; then
        say "These Debian packages are missing; install them as root:" >&2
        say "  apt-get install ${missing[*]}" >&2
        exit 1
    fi
    say "installing ${missing[*]}"
    quietly apt-get update
    quietly env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        "${missing[@]}"
}

# build TARGETS: configures and builds these targets, or all.
build() {
    quietly cmake --preset "$preset"
    quietly cmake --build --preset "$preset" ${1:+--target "$@"}
}

# Runs the rest of the script as `SCRIPT --inside ARGS` in a network of its own (loopback only) and
# on a virtual screen of its own, so that it meets neither the machine's network nor its desktop.
# Where the system grants no network of one's own, the machine's is used.
run_isolated() {
    local network=("${own_network[@]}")
    if ! has_own_network; then
        say "no network namespace to be had: using the machine's network"
        network=(env NETWORK=machine)
    fi
    exec "${network[@]}" script/lib/isolated "script/$(basename "$0")" --inside "$@"
}

# How a command gets a network of its own, and whether the system grants one.
own_network=(unshare -n)
[ "$(id -u)" = 0 ] || own_network=(unshare -r -n)
has_own_network() { "${own_network[@]}" true 2>/dev/null; }

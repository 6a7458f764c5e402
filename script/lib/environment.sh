# Paths and helpers for all scripts. Source it; it changes to the project's folder.
set -euo pipefail

# The comment at the beginning of a script is its help.
if [ "${1:-}" = --help ] && [[ $(sed -n 2p "$0") = '# '* ]]; then
    sed -n '2,/^[^#]/s/^#\( \|$\)//p' "$0"
    exit
fi

unset CDPATH # it would change the path below
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

project=$PWD
preset=${PRESET:-mingw} # of CMakePresets.json
programs=$project/build/$preset/bin

# demo_folder PRESET: what script/demo writes with this build.
demo_folder() { [ "$1" = mingw ] && echo "$project/build/demo" || echo "$project/build/$1/demo"; }

# The version of the sources, and the date of its release.
project_version() { read_project 'project(torvapdm VERSION \([0-9.]*\) .*' version; }
release_date() { read_project 'set(TORVAPDM_RELEASE_DATE \([0-9-]*\)).*' 'release date'; }
read_project() {
    sed -n "s/^$1/\1/p" "$project/CMakeLists.txt" | grep . && return
    say "CMakeLists.txt has no $2" >&2
    return 1
}

# The project's own Wine prefix, without log output and without prompts for optional components.
export WINEPREFIX=${TORVAPDM_WINEPREFIX:-$project/build/wine}
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe='

say() { printf '%s\n' "$*"; }

bold= plain=
if [ -t 1 ] && [ -z "${NO_COLOR:-}" ]; then
    bold=$'\e[1m' plain=$'\e[0m'
fi
began=${SCRIPT_BEGAN:-$EPOCHSECONDS}
is_continued=${SCRIPT_BEGAN:+1} # after run_isolated
earlier_outcome=${SCRIPT_OUTCOME:-} # of the script that goes on as this one
unset SCRIPT_BEGAN SCRIPT_OUTCOME

# A script ends with one summary: that of `summarise`, or after an error the step that failed, if it has called
# ends_with_summary. The functions that it named with at_exit run before.
summary_due= cleanups=()
ends_with_summary() { summary_due=1; }
at_exit() { cleanups+=("$1"); }
finish_script() {
    local status=$? cleanup
    set +e
    for cleanup in "${cleanups[@]}"; do "$cleanup"; done
    [ $status = 0 ] || [ -z "$summary_due" ] || summarise "failed${step_name:+: $step_name}"
}
trap finish_script EXIT

# step NAME: says which step begins, after how long the one before it took. A line a minute says that it goes on. Not in
# a subshell, which would end the script's step and run what it has left for the end.
step() {
    [ "$BASHPID" = $$ ] || { say "step $1: not in a subshell" >&2; exit 1; }
    end_step
    step_name=$1 step_began=$EPOCHSECONDS
    say "$bold$1$plain"
    trap - EXIT # a process that is ended right after the fork would run it as well
    say_each_minute "$1" &
    step_watch=$!
    trap finish_script EXIT
}

end_step() {
    [ -n "${step_name:-}" ] || return 0
    { kill "$step_watch" && wait "$step_watch"; } 2>/dev/null || true
    say "$step_name: $((EPOCHSECONDS - step_began)) s"
    step_name=
}

# Until the script ends. What waits has nobody's output: a reader of the script's would wait for it.
say_each_minute() {
    local minutes=0 status format='%s: %d min\n'
    [ ! -t 1 ] || format='\r%s: %d min          \n' # in place of what count_steps has written
    while status=0 && { timeout 60 tail --pid=$$ -f /dev/null >/dev/null 2>&1 || status=$?; } && [ $status = 124 ]; do
        printf "$format" "$1" $((++minutes))
    done
}

# summarise TEXT: ends the last step; the script's last line.
summarise() {
    end_step
    say "${earlier_outcome:+$earlier_outcome; }$1, $((EPOCHSECONDS - began)) s"
    summary_due=
}

# go_on_as OUTCOME SCRIPT ARGS: the rest is done by another script, whose summary begins with the outcome of this one.
go_on_as() { SCRIPT_BEGAN=$began SCRIPT_OUTCOME=$1 exec "${@:2}"; }

# Runs a command and shows its output only if it fails.
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

# Installs missing Debian packages. Without root rights, lists them and exits.
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
    step "installing ${missing[*]}"
    quietly apt-get update
    quietly env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends \
        "${missing[@]}"
    end_step
}

# build [TARGET…]: configures and builds these targets, or all, with a line that counts the steps. Shows
# the build's output only if it fails.
build() {
    step "building"
    quietly cmake --preset "$preset"
    local log status=0
    log=$(mktemp)
    cmake --build --preset "$preset" ${1:+--target "$@"} 2>&1 </dev/null | tee "$log" | count_steps building ||
        status=$?
    [ $status = 0 ] || cat "$log" >&2
    rm -f "$log"
    [ $status = 0 ] || return $status
    end_step
}

# count_steps NAME: from lines "[12/160] …" on standard input, as Ninja writes them, to "NAME: 12 of 160": on a
# terminal one line that changes, elsewhere a line for each tenth.
count_steps() {
    local terminal=
    [ ! -t 1 ] || terminal=1
    awk -v terminal="$terminal" -v name="$1" '
        match($0, /^\[[1-9][0-9]*\/[0-9]+\]/) {
            split(substr($0, 2, RLENGTH - 2), step, "/")
            if (terminal) { printf "\r%s: %d of %d", name, step[1], step[2]; fflush(); counted = 1 }
            else if (step[1] >= next_at) {
                print name ": " step[1] " of " step[2]; fflush()
                next_at = step[1] + step[2] / 10
            }
        }
        END { if (counted) print "" }'
}

# Runs the rest of the script as `SCRIPT --inside ARGS` in a network namespace (loopback only) and on a
# virtual screen, isolated from the machine's network and desktop. Where network namespaces are not
# available, the machine's network is used. In a subshell, the script goes on afterwards.
run_isolated() {
    local network=("${own_network[@]}")
    if ! has_own_network; then
        say "network namespaces are not available: using the machine's network"
        network=(env NETWORK=machine)
    fi
    [ "$BASHPID" != $$ ] || export SCRIPT_BEGAN=$began
    exec "${network[@]}" script/lib/isolated "script/$(basename "$0")" --inside "$@"
}

# Runs a command in a new network namespace; has_own_network tests whether that is possible.
own_network=(unshare -n)
[ "$(id -u)" = 0 ] || own_network=(unshare -r -n)
has_own_network() { "${own_network[@]}" true 2>/dev/null; }

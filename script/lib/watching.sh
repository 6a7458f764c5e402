# Observes running programs: each line that a program writes to a file gets a timestamp on arrival, and what is
# expected is checked off when its line is found. Source it after environment.sh.

stamps=$(mktemp -d)
remove_stamps() { rm -rf "$stamps"; }
at_exit remove_stamps
observed=0 missed=0
expect_timeout=60 # seconds until it counts as missed

# watch NAME FILE: adds timestamps to the file's lines; the file need not exist yet.
watch() {
    : >"$stamps/$1"
    # The demo reports the time of arrival, so the interval is short. The watch ends with the script.
    {
        tail -n +1 -s 0.002 --pid=$$ -F "$2" | while IFS= read -r line; do
            printf '%s %s\n' "$EPOCHREALTIME" "${line%$'\r'}"
        done
    } >>"$stamps/$1" 2>/dev/null </dev/null &
}

# seen_at NAME TEXT [N]: the timestamp of the Nth line that contains the text; empty if there is none.
seen_at() {
    grep -F -- "$2" "$stamps/$1" | sed -n "${3:-1}s/ .*//p"
}

# written_at NAME TEXT: the time in the first line with this text ("DATE TIME …"), as a timestamp.
written_at() {
    local own
    own=$(grep -F -m 1 -- "$2" "$stamps/$1" | cut -d' ' -f2,3)
    [ -z "$own" ] || date -d "$own" +%s.%N
}

# await COMMAND...: waits until the command succeeds; fails if it does not in time.
await() {
    local deadline=$((SECONDS + expect_timeout))
    until "$@"; do
        [ $SECONDS -lt $deadline ] || return 1
        sleep 0.02
    done
}

# expect WHAT COMMAND...: waits until the command succeeds and checks it off.
expect() { await "${@:2}" && check_off "$1" yes || check_off "$1" no; }

# expect_line WHAT NAME TEXT [N]: waits for the Nth line with this text.
expect_line() { expect "$1" is_seen "${@:2}"; }
is_seen() { [ -n "$(seen_at "$@")" ]; }

# expect_text WHAT COMMAND TEXT: waits until the command prints the text.
expect_text() { expect "$1" prints "${@:2}"; }
prints() { "$1" | grep -qF -- "$2"; }

check_off() {
    if [ "$2" = yes ]; then
        printf '  ok      %s\n' "$1"
        observed=$((observed + 1))
    else
        printf '  MISSED  %s\n' "$1"
        missed=$((missed + 1))
    fi
}

milliseconds_between() {
    awk -v from="${1:-0}" -v to="${2:-0}" 'BEGIN { printf "%.1f", (to - from) * 1000 }'
}

# Exits with 0 only if everything was observed.
finish_expectations() {
    summarise "$observed steps observed, $missed missed"
    exit $((missed > 0))
}

relative() { printf '%s' "${1#"$project"/}"; }

host_title() { titles_of '^Mastercam'; }
about_title() { titles_of '^About TORVA ZEM'; }
sheet_title() { titles_of '^Setup sheet'; }
titles_of() { xdotool search --onlyvisible --name "$1" getwindowname 2>/dev/null || true; }
cat_debug_log() { cat "$debug_log" 2>/dev/null || true; }

# Gives the windows time to repaint.
settle() { sleep 1; }

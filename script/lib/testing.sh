# Runs ctest on one desktop or on several. Source it after environment.sh; TEST_OPTIONS are further options of
# ctest, ALL_TESTS its choice when no tests are named. A script that uses it calls `test_inside ARGS` when its
# first argument is --inside.

desktops=8
logs=$project/build/$preset
TEST_OPTIONS=()
ALL_TESTS=(--label-exclude alone) # see add_test_program

# The numbers of the processor's cores that this script may use, before it keeps to one of them.
export usable_cores=${usable_cores:-$(taskset -cp $$ | sed 's/.*: //' | tr , '\n' |
    while IFS=- read -r first last; do seq "$first" "${last:-$first}"; done)}

# What checks the formats' notation and the bills of materials, and is not in Debian.
install_checkers() {
    install_node_packages tests/kit/notation notation
    install_node_packages tests/packaging/bill bill
}

# install_node_packages FOLDER NAME: those that FOLDER locks, into build/NAME.
install_node_packages() {
    local place=$project/build/$2
    command -v npm >/dev/null || install_packages npm
    cmp -s "$1/package-lock.json" "$place/node_modules/installed.json" && return
    step "installing what ${1#tests/} needs"
    mkdir -p "$place"
    cp "$1/package.json" "$1/package-lock.json" "$place"
    (cd "$place" && quietly npm ci --no-audit --no-fund --omit=optional)
    cp "$place/package-lock.json" "$place/node_modules/installed.json"
    end_step
}

# Starts further desktops, each in a network of its own and with a copy of the prefix. ctest gives a test one of
# the desktops; see on_desktop.
start_desktops() {
    local number starting=()
    describe_desktop 1 "" >"$DESKTOPS/1"
    for ((number = 2; number <= desktops; ++number)); do
        (keep_to_core "$number" && TORVAPDM_WINEPREFIX=$WINEPREFIX-$number run_isolated --hold "$number" $$) &
        starting[number]=$!
    done
    for number in "${!starting[@]}"; do
        while [ ! -e "$DESKTOPS/$number" ]; do
            kill -0 "${starting[number]}" 2>/dev/null || exit 1
            sleep 0.1
        done
    done
}

# describe_desktop NUMBER PROCESS: PROCESS is one in the network of the desktop; empty for the network of the tests.
describe_desktop() {
    printf 'DISPLAY=%q WINEPREFIX=%q core=%q process=%q\n' "$DISPLAY" "$WINEPREFIX" "$(core_of "$1")" "$2"
}

# core_of DESKTOP: the core of the processor that runs its programs. A Wine program and its server run in turns; to
# wake each other on another core costs a third of all the tests' processor time. script/soak uses all cores,
# so that programs also run at the same instant.
core_of() {
    local cores=($usable_cores)
    say "${cores[$1 % ${#cores[@]}]}"
}

# keep_to_core DESKTOP: this shell and what it starts.
keep_to_core() { taskset -cp "$(core_of "$1")" "$BASHPID" >/dev/null; }

# hold_desktop NUMBER OWNER: keeps this desktop until it is ended or the process OWNER has ended.
hold_desktop() {
    describe_desktop "$1" $$ >"$DESKTOPS/$1.new"
    mv "$DESKTOPS/$1.new" "$DESKTOPS/$1"
    trap 'exit 0' TERM
    tail --pid="$2" -f /dev/null &
    wait
}

end_desktops() {
    local file
    for file in "$DESKTOPS"/*; do
        (source "$file" && [ -z "$process" ] || kill "$process" 2>/dev/null) || true
    done
    wait
}

# A desktop test has the desktop, the registry, the ports and the screen to itself and mostly waits for
# programs to start; meanwhile tests run on the other desktops.
on_all_desktops() {
    local number prefix
    for ((number = 2; number <= desktops; ++number)); do
        prefix=$WINEPREFIX-$number
        [ -f "$prefix/ready" ] || copy_prefix "$prefix" || return
    done
    DESKTOPS=$(mktemp -d)
    export DESKTOPS
    local status=0
    (keep_to_core 1 && run_isolated --all) || status=$?
    rm -rf "$DESKTOPS"
    return $status
}

# Copying a prefix is faster than creating one. The copies share the bytes of the system's programs and
# libraries, which nothing writes. A copy is renamed last, so a partial one is never used. Its callers handle an error,
# so that `set -e` does not end it.
copy_prefix() {
    local system=drive_c/windows/system32
    rm -rf "$1" "$1.new" &&
        mkdir -p "$1.new/$system" &&
        tar -C "$WINEPREFIX" --exclude="./$system/*" -cf - . | tar -C "$1.new" -xf - &&
        cp -al "$WINEPREFIX/$system/." "$1.new/$system" &&
        mv "$1.new" "$1"
}

# run_tests OPTIONS: one line for each test, also in test.log. Without the times of the last run, so that every run has
# the same order, which mixes tests that wait with tests that compute; the longest first would compute together.
run_tests() {
    rm -f "$logs/Testing/Temporary/CTestCostData.txt"
    ctest --preset "$preset" --no-tests=error --no-label-summary --output-log "$logs/test.log" "${TEST_OPTIONS[@]}" "$@" |
        grep --line-buffered -vE '^ +Start +[0-9]+:'
}

# count_tests: how to run each failed test on its own, and in the last line what the log says. A program whose tests run
# together counts as its tests, which it counts in the log of all output.
count_tests() {
    { cat "$logs/Testing/Temporary/LastTest.log" "$logs/test.log" 2>/dev/null || true; } |
        awk -v script="$(basename "$0")" '
        $2 == "Testing:" { program = $3 }
        program !~ /_tests$/ { program = "" }
        program && / PASSED +\] [0-9]+ tests?\./ { together[program] = $4 }
        program && /^\[  FAILED  \] .* \([0-9]+ ms\)$/ { sub(/,$/, "", $4); failed[++count] = $4; explained[program] = 1 }
        $2 == "Test" && $3 ~ /^#/ {
            name = $0; sub(/^[^:]*: /, "", name); sub(/ \.\.\..*/, "", name)
            if (name in together) passed += together[name]
            else if (/ Passed /) ++passed
            if (!/ Passed / && !(name in explained)) failed[++count] = name
            taken[name] = $(NF - 1)
        }
        END {
            for (i = 1; i <= count; ++i) {
                pattern = failed[i]; gsub(/\./, "\\.", pattern)
                print "to run it on its own: script/" script " \x27^" pattern "$\x27"
            }
            printf "%d passed, %d failed", passed, count
            separator = " (slowest: "
            for (place = 0; place < 5; ++place) {
                slowest = ""
                for (name in taken) if (slowest == "" || taken[name] > taken[slowest]) slowest = name
                if (slowest == "") break
                printf "%s%s %.1f s", separator, slowest, taken[slowest]
                separator = ", "
                delete taken[slowest]
            }
            if (separator == ", ") printf ")"
        }'
}

test_inside() {
    case "${1:-}" in
    --hold) hold_desktop "${@:2}" ;;
    --all)
        local status=0
        start_desktops
        taskset -cp "$(paste -sd, <<<"$usable_cores")" $$ >/dev/null # for tests that need no desktop
        run_tests "${ALL_TESTS[@]}" --parallel "$desktops" \
            --resource-spec-file "$project/tests/desktops.json" || status=$?
        end_desktops
        return $status
        ;;
    '') run_tests "${ALL_TESTS[@]}" --parallel 1 ;;
    *) run_tests --tests-regex "$1" --parallel 1 ;;
    esac
}

# run_all_tests [REGEX]: all of them on all desktops, or those whose names match on one. Sets `tested` to their outcome,
# which is the script's summary if a test fails.
run_all_tests() {
    local status=0 counted
    rm -f "$logs"/{test.log,Testing/Temporary/LastTest.log}
    step "running the tests"
    if [ $# -eq 0 ] && has_own_network; then
        on_all_desktops || status=$?
    else
        (keep_to_core 1 && run_isolated "$@") || status=$?
    fi
    end_step
    counted=$(count_tests)
    tested=${counted##*$'\n'}
    printf '%s' "${counted%"$tested"}"
    [ $status = 0 ] || summarise "$tested"
    return $status
}

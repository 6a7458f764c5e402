# Runs ctest on one desktop or on several. Source it after environment.sh; TEST_OPTIONS are further options of
# ctest. A script that uses it calls `test_inside ARGS` when its first argument is --inside.

desktops=4
logs=$project/build/$preset
TEST_OPTIONS=()

# A desktop test has the desktop, the registry, the ports and the screen to itself and mostly waits for
# programs to start. Meanwhile tests on other desktops run, each in a copy of the prefix.
on_all_desktops() {
    local prefix=("" "$WINEPREFIX") number test_runs=() status=0
    for ((number = 2; number <= desktops; ++number)); do
        prefix[number]=$WINEPREFIX-$number
        [ -f "${prefix[number]}/ready" ] || copy_prefix "${prefix[number]}"
    done
    # Discover the tests first, so that the desktops do not do it at the same time.
    (run_isolated --list)
    for ((number = 1; number <= desktops; ++number)); do
        (TORVAPDM_WINEPREFIX=${prefix[number]} run_isolated --part "$number") &
        test_runs+=($!)
    done
    for number in "${test_runs[@]}"; do
        wait "$number" || status=$?
    done
    return $status
}

# Copying a prefix is faster than creating one. The copies share the bytes of the system's programs and
# libraries, which nothing writes. A copy is renamed last, so a partial one is never used.
copy_prefix() {
    local system=drive_c/windows/system32
    rm -rf "$1" "$1.new"
    mkdir -p "$1.new/$system"
    tar -C "$WINEPREFIX" --exclude="./$system/*" -cf - . | tar -C "$1.new" -xf -
    cp -al "$WINEPREFIX/$system/." "$1.new/$system"
    mv "$1.new" "$1"
}

# run_tests LOG OPTIONS: one line for each test, also in LOG.log.
run_tests() {
    ctest --preset "$preset" --no-tests=error --output-log "$logs/$1.log" "${TEST_OPTIONS[@]}" "${@:2}" |
        grep --line-buffered -vE '^ +Start +[0-9]+:'
}

# summary SECONDS: what the logs say, and how to run each failed test on its own.
summary() {
    cat "$logs"/test*.log 2>/dev/null | awk -v seconds="$1" -v script="$(basename "$0")" '
        $2 == "Test" && $3 ~ /^#/ {
            name = $0; sub(/^[^:]*: /, "", name); sub(/ \.\.\..*/, "", name)
            if (/ Passed /) ++passed
            else { failed[++count] = name }
            taken[name] = $(NF - 1)
        }
        END {
            for (i = 1; i <= count; ++i) {
                pattern = failed[i]; gsub(/\./, "\\.", pattern)
                print "to run it on its own: script/" script " \x27^" pattern "$\x27"
            }
            printf "%d passed, %d failed, %d s", passed, count, seconds
            separator = ", slowest: "
            for (place = 0; place < 5; ++place) {
                slowest = ""
                for (name in taken) if (slowest == "" || taken[name] > taken[slowest]) slowest = name
                if (slowest == "") break
                printf "%s%s %.1f s", separator, slowest, taken[slowest]
                separator = ", "
                delete taken[slowest]
            }
            print ""
        }'
}

test_inside() {
    case "${1:-}" in
    --list) quietly ctest --preset "$preset" --show-only ;;
    --part) run_tests "test-$2" --parallel 1 --tests-information "$2,,$desktops" ;;
    '') run_tests test --parallel 2 ;;
    *) run_tests test --parallel 2 --tests-regex "$1" ;;
    esac
}

# run_all_tests [REGEX]: all of them on all desktops, or those whose names match on one.
run_all_tests() {
    local status=0
    rm -f "$logs"/test*.log
    SECONDS=0
    if [ $# -eq 0 ] && has_own_network; then
        on_all_desktops || status=$?
    else
        (run_isolated "$@") || status=$?
    fi
    summary "$SECONDS"
    return $status
}

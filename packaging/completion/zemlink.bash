# Completion for zemlink in bash. Source this file, or copy it as `zemlink` to the folder of bash-completion.

_zemlink() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    local commands="status open new checkin listen decode watch record replay report verify doctor"
    local kinds="command machine answer commits tools queue notices picture log events bookmark copies settings"
    local command= each words=
    COMPREPLY=()
    for each in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        [[ " $commands " == *" $each "* ]] && command=$each && break
    done
    if [ "$before" = --as ]; then
        mapfile -t COMPREPLY < <(compgen -W "$kinds" -- "$word")
        return
    fi
    case $command in
    status) words="" ;;
    open) words="--until-opened --host --timeout" ;;
    new) words="--host --timeout" ;;
    checkin) words="--host --timeout" ;;
    listen) words="--count --timeout" ;;
    decode) words="--as" ;;
    watch) words="--only --since --count --timeout" ;;
    record) words="--redact --timeout" ;;
    replay) words="--host --at-once --timeout" ;;
    report) words="--recording --redact" ;;
    verify) words="--open --new-file --check-in --junit --timeout" ;;
    doctor) words="--all" ;;
    *) words="$commands --version" ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words --json --help" -- "$word")
    case $command in
    open | decode | record | replay | report | verify) mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$word") ;;
    esac
}

complete -o filenames -F _zemlink zemlink zemlink.exe

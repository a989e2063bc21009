#!/usr/bin/env bash
# A step that fails says why and ends its script with 1:  steps_test.sh SOURCES LOGS
set -uo pipefail

# What a script prints whose step runs the commands $2; it must contain each of the other arguments.
expect_told() {
    local commands=$2 output status=0 wanted
    output=$(bash -c "set -euo pipefail; . '$1/scripts/steps.sh'; logs='$logs'
                      step one bash -c '$commands'; echo went on" 2>&1) || status=$?
    shift 2
    for wanted in "$@"; do
        [[ $output == *"$wanted"* ]] && [ $status -eq 1 ] && [[ $output != *"went on"* ]] && continue
        printf '%s: status %s, "%s" is not in\n%s\n' "$commands" "$status" "$wanted" "$output"
        failed=1
    done
}

sources=$1 logs=$2 failed=0
expect_told "$sources" 'echo the reason; exit 3' "the reason" "failed (3): bash"
expect_told "$sources" 'echo warning: of something else; echo the reason; exit 3' "the reason"
expect_told "$sources" 'echo a.cpp: error: first; seq 9000 | sed s/^/error:/; exit 3' \
    "a.cpp: error: first" "failed (3): bash"
exit $failed

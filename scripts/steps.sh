# For the scripts that do one step after another: sourced, not run.
#
# step NAME COMMAND...   runs quietly and prints one line with the time it took. When it fails, the
#                        end of what it printed and the command follow, and the script ends.
# build_preset PRESET [TARGET]...   configures when needed and builds, each as a step.

logs=$PWD/build/logs

show_failure() {   # what counts of a log: compile errors with their surroundings, else its end
    local log=$1
    if grep -qE '(error|warning|undefined reference)[: ]' "$log"; then
        grep -E -A4 'FAILED:|error[: ]|undefined reference|multiple definition' "$log" |
            cut -c1-400 | head -n 60
    else
        tail -n 60 "$log"
    fi
}

step() {
    local name=$1 log status=0 start=$EPOCHREALTIME
    shift
    mkdir -p "$logs"
    log=$logs/${name// /-}.log
    printf '%-28s ' "$name"
    "$@" >"$log" 2>&1 </dev/null || status=$?
    if [ $status -ne 0 ]; then
        echo "FAILED"
        show_failure "$log"
        printf '\nfailed (%s): %s\nits whole output: %s\n' "$status" "$*" "${log#"$PWD"/}"
        exit 1
    fi
    awk -v a="${start/,/.}" -v b="${EPOCHREALTIME/,/.}" 'BEGIN { printf "%.1f s\n", b - a }'
}

build_preset() {
    local preset=$1 folder=build/$1
    shift
    # Ninja configures again by itself when a CMake file changed, but does not know the presets.
    if [ ! -f "$folder/build.ninja" ] || [ CMakePresets.json -nt "$folder/build.ninja" ]; then
        step "configure $preset" cmake --preset "$preset"
    fi
    step "build $preset" cmake --build --preset "$preset" ${1:+--target "$@"}
}

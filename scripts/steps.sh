# For the scripts that do one step after another: sourced, not run.
#
# step NAME COMMAND...   runs quietly and prints one line with the time it took. When it fails, the
#                        end of what it printed and the command follow, and the script ends.
# configure_preset PRESET           configures a build folder when it needs to be.
# build_preset PRESET [TARGET]...   the same, then builds.

logs=$PWD/build/logs

show_failure() {   # what counts of a log: compile errors with their surroundings, else its end
    local log=$1 errors
    errors=$(grep -E -A4 'FAILED:|error[: ]|undefined reference|multiple definition' "$log") || true
    if [ -n "$errors" ]; then
        head -n 60 <<<"$errors" | cut -c1-400
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

configure_preset() {
    local ninja=build/$1/build.ninja
    # Ninja configures again by itself when a CMake file changed, but does not know the presets.
    if [ ! -f "$ninja" ] || [ CMakePresets.json -nt "$ninja" ]; then
        step "configure $1" cmake --preset "$1"
    fi
}

build_preset() {
    local preset=$1
    shift
    configure_preset "$preset"
    step "build $preset" cmake --build --preset "$preset" ${1:+--target "$@"}
}

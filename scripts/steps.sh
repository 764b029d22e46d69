# Shared by the scripts: one line a step, the output of a step only when it fails.
# Sourced, not run; leaves the caller in the root of the project.

cd "$(dirname "${BASH_SOURCE[0]}")/.."
step_logs=build/logs

# step "What it does" command...: the command's output goes to a log, which is
# shown when the command fails; then the whole script ends.
step() {
    local what=$1
    shift
    local log started=$SECONDS
    mkdir -p "$step_logs"
    log=$step_logs/$(printf '%s' "$what" | tr -cs 'A-Za-z0-9' '_').log
    printf '%s ... ' "$what"
    if "$@" >"$log" 2>&1 </dev/null; then
        printf 'done (%d s)\n' $((SECONDS - started))
    else
        local status=$?
        printf 'FAILED (exit %d), the end of %s:\n' "$status" "$log"
        tail -n 60 "$log"
        exit "$status"
    fi
}

# Configures and builds a preset of CMakePresets.json.
build_preset() {
    step "Configure $1" cmake --preset "$1"
    step "Build $1" cmake --build --preset "$1"
}

# Runs the tests of a preset and shows ctest's count.
test_preset() {
    step "Test $1" ctest --preset "$1"
    grep -E 'tests passed' "$step_logs/Test_$1.log"
}

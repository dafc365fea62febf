# Functions that run steps and test programs and add up their results. Sourced by ./test.
#
# The output of each step goes to a log in build/logs/; a failure prints the log's last lines.

mkdir -p build/logs
passed=0
failed=0
skipped=0
broken=()

section() { printf '\n== %s\n' "$1"; }

log_of() { echo "build/logs/$(tr -cs 'a-zA-Z0-9' '-' <<<"$1").log"; }

# step NAME COMMAND...: runs the command. A failure is recorded and makes `finish` fail.
step() {
    local name="$1" start=$SECONDS status=0
    shift
    "$@" >"$(log_of "$name")" 2>&1 || status=$?
    report_step "$name" "$status" $((SECONDS - start))
}

# report_step NAME STATUS SECONDS: prints a step's line, and the end of its log when it failed.
report_step() {
    local name="$1" status="$2" seconds="$3" log
    log=$(log_of "$name")
    if ((status == 0)); then
        printf '   ok      %-40s %4d s\n' "$name" "$seconds"
        tail -n 1 "$log" | grep -E '^(fuzz|lint|format|layers):' | sed 's/^/           /'
        return 0
    fi
    printf '   FAILED  %-40s %4d s, %s\n' "$name" "$seconds" "$log"
    tail -n 40 "$log"
    broken+=("$name")
    return 1
}

# gtest NAME COMMAND...: runs a GoogleTest program and adds its counts to the totals. A program that
# ends without its summary, or fails without a failed test, counts as one failed test.
gtest() {
    local name="$1" start=$SECONDS status
    shift
    "$@" >"$(log_of "$name")" 2>&1
    status=$?
    count "$name" "$status" $((SECONDS - start))
}

# gtest_beside NAME COMMAND..., step_beside NAME COMMAND...: start a test program or a step in the
# background. `collect` waits for all of them and reports them in the order of their start.
beside=()
gtest_beside() { start_beside count "$@"; }
step_beside() { start_beside report_step "$@"; }

start_beside() {  # REPORT NAME COMMAND...
    local report="$1" name="$2"
    shift 2
    {
        local start=$SECONDS status=0
        "$@" >"$(log_of "$name")" 2>&1 || status=$?
        echo $((SECONDS - start)) >"$(log_of "$name").seconds"
        exit $status
    } &
    beside+=("$! $report $name")
}

collect() {
    local job pid report name status
    for job in "${beside[@]}"; do
        read -r pid report name <<<"$job"
        status=0
        wait "$pid" || status=$?
        "$report" "$name" "$status" "$(cat "$(log_of "$name").seconds")"
    done
    beside=()
}

# count NAME STATUS SECONDS: adds the counts in the log of test program NAME to the totals and
# prints its line.
count() {
    local name="$1" status="$2" seconds="$3" log ok bad left
    log=$(log_of "$name")
    sed -i 's/\r$//' "$log"
    ok=$(sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' "$log" | tail -n 1)
    bad=$(sed -n 's/^\[  FAILED  \] \([0-9]*\) test.*, listed below:/\1/p' "$log" | tail -n 1)
    left=$(sed -n 's/^\[  SKIPPED \] \([0-9]*\) test.*, listed below:/\1/p' "$log" | tail -n 1)
    if [[ -z $ok ]] || { ((status != 0)) && ((${bad:-0} == 0)); }; then
        bad=$((${bad:-0} + 1))
    fi
    passed=$((passed + ${ok:-0}))
    failed=$((failed + ${bad:-0}))
    skipped=$((skipped + ${left:-0}))
    if ((${bad:-0} == 0)); then
        printf '   ok      %-40s %4d s  %5d passed\n' "$name" "$seconds" "$ok"
    else
        printf '   FAILED  %-40s %4d s  %5d passed, %d failed, status %d, %s\n' "$name" \
            "$seconds" "${ok:-0}" "$bad" "$status" "$log"
        grep -E 'Failure|^\[  FAILED  \]' "$log" | head -n 20
        tail -n 30 "$log"
    fi
}

finish() {
    section "result"
    ((${#broken[@]})) && printf '   not clean: %s\n' "${broken[@]}"
    if ((skipped)); then
        echo "tests: $passed passed, $failed failed, $skipped skipped"
    else
        echo "tests: $passed passed, $failed failed"
    fi
    ((failed == 0 && ${#broken[@]} == 0 && passed > 0))
    exit
}

#!/bin/bash
# Runs one fuzz target on its corpus, then on new inputs. Fails on a finding, or if nothing ran.
#
# Usage: scripts/fuzz.sh TARGET RUNS            for RUNS executions
#        scripts/fuzz.sh TARGET SECONDS s       for SECONDS seconds
# New corpus entries and findings are kept in build/fuzz/TARGET/; tests/data/fuzz/ is not changed.
set -euo pipefail
cd "$(dirname "$0")/.."
target="${1:?target}"
amount="${2:?executions}"
limit="-runs=$amount"
[[ ${3:-} == s ]] && limit="-max_total_time=$amount"
work="build/fuzz/$target"
mkdir -p "$work/corpus" "$work/findings"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! "build/native-asan/tests/fuzz/$target" "$limit" -print_final_stats=1 -rss_limit_mb=2048 \
    -artifact_prefix="$work/findings/" "$work/corpus" "tests/data/fuzz/$target" >"$log" 2>&1; then
    tail -n 60 "$log"
    exit 1
fi
executions=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
echo "fuzz: $target, ${executions:-0} executions, no finding"
((${executions:-0} > 0))

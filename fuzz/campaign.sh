#!/usr/bin/env bash
# Fuzzing campaign: runs every fuzz target of the fuzz build for SECONDS
# (default 600) under ASan + UBSan, starting from its kept corpus, then
# merges what the run found back into the kept corpus (minimised, inputs up
# to MAX_LEN octets). Crashes land in build/fuzz/campaign/<target>/.
# Usage: fuzz/campaign.sh [SECONDS] [PARALLEL]   (after the fuzz workflow)
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-600}
parallel=${2:-2}
max_len=${MAX_LEN:-256}
bin=build/fuzz/fuzz
out=build/fuzz/campaign
mkdir -p "$out"

run_one() {
    local target=$1 kept=fuzz/corpus/$1 work=$out/$1
    mkdir -p "$kept" "$work/corpus" "$work/artifacts"
    "$bin/$target" -max_total_time="$seconds" -max_len="$max_len" -timeout=10 \
        -print_final_stats=1 -artifact_prefix="$work/artifacts/" \
        "$work/corpus" "$kept" >"$work/log" 2>&1 || true
    # Keep only what adds coverage: merge the seeds and the finds into a
    # fresh directory, then replace the kept corpus with it.
    rm -rf "$work/merged" && mkdir -p "$work/merged"
    "$bin/$target" -merge=1 -max_len="$max_len" "$work/merged" "$kept" "$work/corpus" \
        >"$work/merge.log" 2>&1
    rm -rf "$kept" && mkdir -p "$kept"
    local i=0
    for f in "$work/merged"/*; do
        [ -e "$f" ] || continue
        cp "$f" "$kept/$(sha1sum "$f" | cut -c1-16)"
        i=$((i + 1))
    done
    local runs crashes
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$work/log" | grep -o '[0-9]*$' || echo 0)
    crashes=$(find "$work/artifacts" -type f | wc -l)
    echo "$target runs=$runs kept=$i crashes=$crashes"
}
export -f run_one
export seconds max_len bin out

ls "$bin" | grep '^fuzz_' | xargs -P "$parallel" -I{} bash -c 'run_one {}' | sort | tee "$out/summary"

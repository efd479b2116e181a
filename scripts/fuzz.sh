#!/usr/bin/env bash
# fuzz.sh BUILD SECONDS [JOBS [TARGET...]]: runs every fuzz target of the sanitizer build in
# BUILD (or only the TARGETs named) for SECONDS each, JOBS at a time (one per core).
# Each target grows its own working corpus in BUILD/fuzz/work/TARGET from the seeds in
# fuzz/corpus/TARGET; a crash, a leak, a hang or a broken promise leaves the input that did it in
# BUILD/fuzz/findings and makes the run fail. The logs keep libFuzzer's figures.
set -euo pipefail
build=${1:?build folder}
seconds=${2:?seconds per target}
jobs=${3:-2}
shift $(($# < 3 ? $# : 3))
cd "$(dirname "$0")/.."
root=$(pwd)
out="$build/fuzz"
mkdir -p "$out/work" "$out/findings" "$out/logs"
targets=(ReadTranscription SplitFields ParseFileName ValidateDefault ReadSettings ScanTypeTable)
[ $# -gt 0 ] && targets=("$@")

run_one() {
    local target=$1 extra=()
    [ -f "$root/fuzz/$target.dict" ] && extra+=("-dict=$root/fuzz/$target.dict")
    # A whole transcription may run past the 1000-line limit.
    [ "$target" = ReadTranscription ] && extra+=(-max_len=16384)
    mkdir -p "$out/work/$target"
    if "$out/fuzz_$target" "$out/work/$target" "$root/fuzz/corpus/$target" \
        -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -use_value_profile=1 \
        -print_final_stats=1 -artifact_prefix="$out/findings/$target-" "${extra[@]}" \
        > "$out/logs/$target.log" 2>&1; then
        echo "$target: passed"
    else
        echo "$target: FAILED, see $out/logs/$target.log"
        return 1
    fi
}
export -f run_one
export out root seconds

status=0
printf '%s\n' "${targets[@]}" | xargs -P "$jobs" -I{} bash -c 'run_one {}' || status=1
for target in "${targets[@]}"; do
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$out/logs/$target.log" |
        grep -o '[0-9]*$' || echo 0)
    corpus=$(find "$out/work/$target" -type f | wc -l)
    echo "$target: $runs executions, $corpus inputs in the working corpus"
done
exit $status

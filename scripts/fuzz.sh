#!/usr/bin/env bash
# Fuzzes every reader: builds the libFuzzer targets with clang (ASan + UBSan) into build-fuzz/
# (or $ZARVION_FUZZ_BUILD_DIR) and runs each target, one after the other at the lowest
# priority, for SECONDS (default 600) over its corpus fuzz/corpus/<target>/. Afterwards the
# corpus and the new inputs are merged anew (-merge=1) into the smallest set of inputs that
# covers the same code, which replaces the corpus. A crash leaves its input in
# build-fuzz/findings/<target>/ and the run goes on with the next target.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
# Each run's log is build-fuzz/logs/<target>.log; the summary ends the output.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ZARVION_FUZZ_BUILD_DIR:-$root/build-fuzz}
seconds=${1:-600}
shift || true
case $seconds in
    '' | *[!0-9]*) echo "usage: $0 [SECONDS] [TARGET...]" >&2; exit 2 ;;
esac

# The targets are the fuzz/<name>_fuzz.cpp files.
if [ $# -gt 0 ]; then
    targets=("$@")
else
    targets=()
    for f in "$root"/fuzz/*_fuzz.cpp; do
        targets+=("$(basename "$f" _fuzz.cpp)")
    done
fi

bash "$root/scripts/install-deps.sh"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_COMPILER=clang++ -DZARVION_FUZZ=ON -DZARVION_BUILD_GUI=OFF \
    -DZARVION_BUILD_TESTS=OFF -DZARVION_BUILD_BENCH=OFF >/dev/null
nice -n 19 cmake --build "$build" -j "$(nproc)" --target "${targets[@]/#/fuzz_}"

# Inputs and bytes of a folder.
measure() { find "$1" -maxdepth 1 -type f -printf '%s\n' | awk '{n++; s+=$1} END {print n+0, s+0}'; }

# Solver files are long; 32 KB holds every hand-made input and a real file's head.
options=(-max_len=32768 -timeout=20 -rss_limit_mb=2048)
summary=()
status=0
for t in "${targets[@]}"; do
    program=$build/fuzz/fuzz_$t
    corpus=$root/fuzz/corpus/$t
    fresh=$build/fresh/$t
    merged=$build/merged/$t
    findings=$build/findings/$t
    log=$build/logs/$t.log
    mkdir -p "$corpus" "$findings" "$build/logs"
    rm -rf "$fresh" "$merged" && mkdir -p "$fresh" "$merged"
    read -r before before_bytes < <(measure "$corpus")
    echo "== $t: ${seconds}s over $before inputs ($before_bytes bytes)"
    # New inputs go to the scratch folder; the corpus is only read.
    set +e
    nice -n 19 "$program" "$fresh" "$corpus" "${options[@]}" -max_total_time="$seconds" \
        -print_final_stats=1 -artifact_prefix="$findings/" >"$log" 2>&1
    rc=$?
    # The smallest set of old and new inputs that reaches every edge reached so far (hit
    # counts left aside, which would keep hundreds of near copies).
    nice -n 19 "$program" -merge=1 -use_counters=0 "${options[@]}" "$merged" "$corpus" "$fresh" \
        >>"$log" 2>&1
    merge_rc=$?
    set -e
    if [ "$merge_rc" -eq 0 ] && [ -n "$(ls -A "$merged")" ]; then
        find "$corpus" -maxdepth 1 -type f -delete
        mv "$merged"/* "$corpus"/
    else
        echo "$t: the merge failed (exit $merge_rc); the corpus is left as it was" >&2
        status=1
    fi
    read -r after after_bytes < <(measure "$corpus")
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
    rate=$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log" | tail -1)
    # crash-, leak-, timeout- and oom- files are findings; a slow unit (over 10 s once) is
    # worth a look but often only a busy machine.
    crashes=$(find "$findings" -maxdepth 1 -type f ! -name 'slow-unit-*' | wc -l)
    slow=$(find "$findings" -maxdepth 1 -type f -name 'slow-unit-*' | wc -l)
    line="$t: ${runs:-?} runs, ${rate:-?} execs/s, corpus $before -> $after inputs"
    line+=" ($before_bytes -> $after_bytes bytes), findings $crashes, slow units $slow"
    if [ "$rc" -ne 0 ]; then
        line+=" (exit $rc, see $log)"
        status=1
    fi
    summary+=("$line")
    echo "$line"
done
echo "== summary"
printf '%s\n' "${summary[@]}"
exit $status

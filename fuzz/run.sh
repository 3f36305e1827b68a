#!/usr/bin/env bash
# Builds the fuzz targets with clang (coverage, AddressSanitizer, UndefinedBehaviorSanitizer)
# in build-fuzz/ and runs each in turn, one at a time.
#
#   fuzz/run.sh [SECONDS]    SECONDS in all (default 600), split evenly between the targets
#   fuzz/run.sh --smoke      a short run for CI: 30 seconds in all
#
# Corpora live in build-fuzz/corpus/<target> and grow from run to run; they start from
# the box scenarios in scenarios/ and from frames of every driver's family. Findings
# (crash, leak, timeout and out-of-memory inputs) land in build-fuzz/findings/<target>,
# the engine's output in build-fuzz/logs/<target>. Prints executions, coverage and
# findings per target; exits non-zero on any finding or sanitizer report.
#
# Environment: FUZZ_BUILD_JOBS (default 2) parallel compile jobs.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD

total=600
case "${1:-}" in
    --smoke) total=30 ;;
    "") ;;
    *[!0-9]*) echo "usage: $0 [SECONDS | --smoke]" >&2; exit 2 ;;
    *) total=$1 ;;
esac

scripts/deps.sh clang libclang-rt-14-dev llvm-14

build=build-fuzz
targets=(fuzz_receive fuzz_commands fuzz_mcu)
per_target=$(( total / ${#targets[@]} ))
[ "$per_target" -ge 1 ] || per_target=1

echo "== building (clang, libFuzzer, ASan + UBSan) in $build =="
CXX=clang++ CC=clang cmake -S . -B "$build" -DCANBUS_FUZZ=ON -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j "${FUZZ_BUILD_JOBS:-2}" --target "${targets[@]}" fuzz_seedgen

# The dictionary: the checked-in words plus every key of the drivers' command tables.
dict="$build/commands.dict"
{
    cat fuzz/commands.dict
    echo "# keys of the command tables in canbus/"
    grep -rhoE '\{ *"[A-Za-z][A-Za-z0-9_]*" *,' canbus/ | grep -oE '"[^"]+"' || true
} | awk '!seen[$0]++' >"$dict"

export ASAN_OPTIONS="detect_leaks=1:symbolize=1:${ASAN_OPTIONS:-}"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:${UBSAN_OPTIONS:-}"
export QT_QPA_PLATFORM=offscreen
export CANBUS_KEY_DEVICE=/nonexistent/kb CANBUS_MCU_KEY_DEVICE=/nonexistent/vkey
export CANBUS_TOUCH_DEVICE=/nonexistent/vtouch

echo "== seeding corpora from scenarios/ =="
ASAN_OPTIONS=detect_leaks=0 "$build/fuzz/fuzz_seedgen" scenarios "$dict" "$build/corpus"

failed=0
summary=()
for target in "${targets[@]}"; do
    corpus="$build/corpus/$target"
    findings="$build/findings/$target"
    logs="$build/logs/$target"
    mkdir -p "$corpus" "$findings" "$logs"
    rm -f "$logs"/fuzz-*.log
    touch "$logs/.started"   # findings of this run are the files newer than this
    extra=()
    [ "$target" = fuzz_commands ] && extra+=(-dict="$root/$dict")

    echo "== $target: ${per_target}s =="
    # One job, one worker: the other core stays free. The engine writes its output to
    # fuzz-0.log in the working directory.
    (cd "$logs" && "$root/$build/fuzz/$target" "$root/$corpus" "${extra[@]}" \
        -max_total_time="$per_target" -jobs=1 -workers=1 -max_len=4096 -timeout=20 \
        -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$root/$findings/") >/dev/null 2>&1 || true
    log="$logs/fuzz-0.log"
    [ -f "$log" ] || { echo "$target: no output from the engine" >&2; failed=1; continue; }

    # The last status line: "#<runs> <event> cov: <n> ft: <n> corp: ..."
    status=$(grep -E '^#[0-9]+' "$log" | tail -n 1 || true)
    runs=$(sed -nE 's/^#([0-9]+).*/\1/p' <<<"$status")
    cov=$(sed -nE 's/.* cov: ([0-9]+).*/\1/p' <<<"$status")
    ft=$(sed -nE 's/.* ft: ([0-9]+).*/\1/p' <<<"$status")
    corp=$(sed -nE 's/.* corp: ([0-9]+)\/.*/\1/p' <<<"$status")
    files=$(find "$findings" -type f \( -name 'crash-*' -o -name 'leak-*' -o -name 'timeout-*' \
        -o -name 'oom-*' \) -newer "$logs/.started" 2>/dev/null | sort || true)
    reports=$(grep -cE 'ERROR: (AddressSanitizer|LeakSanitizer|libFuzzer)|runtime error:|malformed frame' "$log" || true)

    line="$target: ${runs:-0} executions, cov ${cov:-?}, ft ${ft:-?}, corpus ${corp:-?} inputs"
    if [ -n "$files" ] || [ "${reports:-0}" -gt 0 ]; then
        line+=", FINDINGS (see $log):"
        for f in $files; do line+=$'\n'"    $f"; done
        grep -m 5 -E 'ERROR:|runtime error:|malformed frame' "$log" | sed 's/^/    /' >&2 || true
        failed=1
    else
        line+=", no findings"
    fi
    summary+=("$line")
done

echo "== summary =="
printf '%s\n' "${summary[@]}"
exit "$failed"

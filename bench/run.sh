#!/usr/bin/env bash
# Builds the benchmarks in a tree of their own (build-bench, Release), runs them pinned
# to one core and prints one table. Figures are measured, never asserted.
#
#   bench/run.sh                   about 2 minutes once the tree is built
#   BENCH_MIN_TIME=1 bench/run.sh  steadier replay figures, longer
set -euo pipefail

root="$(cd "$(dirname "$0")/.." && pwd)"
build="$root/build-bench"
results="$build/bench-results"
min_time="${BENCH_MIN_TIME:-0.5}"

"$root/scripts/deps.sh" libbenchmark-dev python3

mkdir -p "$results"
log="$results/build.log"
echo "bench: building in $build" >&2
if ! { cmake -S "$root" -B "$build" -DCANBUS_BENCH=ON -DCMAKE_BUILD_TYPE=Release &&
       cmake --build "$build" -j2 --target bench_replay bench_startup bench_hostrss canbusmodule canbus-host; } \
       >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    echo "bench: the build failed; the whole log is $log" >&2
    exit 1
fi

pin=()
if command -v taskset >/dev/null; then
    # The last core this shell may use.
    cpu="$(taskset -cp $$ | sed 's/.*: //' | tr ',' '\n' | tail -1 | sed 's/.*-//')"
    pin=(taskset -c "$cpu")
fi

rm -f "$results"/*.json "$results"/*.jsonl

echo "bench: replay benchmarks (about a minute)" >&2
"${pin[@]}" "$build/bench/bench_replay" --benchmark_min_time="$min_time" \
    --benchmark_enable_random_interleaving=true --benchmark_out="$results/replay.json" --benchmark_out_format=json >"$results/replay.txt" 2>&1

# Every driver the replay benchmarks use, with its frame family (to play its scenarios):
# those with a scenario, and one of each family, as the factory table lists them.
drivers="$("$build/bench/bench_replay" --list)"

echo "bench: start-up and memory (about half a minute)" >&2
for d in $drivers; do
    id="${d%%:*}" family="${d##*:}"
    # The plug-in loads once per process: a process per start-up.
    for _ in 1 2 3 4 5 6 7; do
        "${pin[@]}" "$build/bench/bench_startup" --protocol "$id" >>"$results/startup.jsonl"
    done
    "${pin[@]}" "$build/bench/bench_startup" --protocol "$id" --family "$family" --run-ms 1000 \
        >>"$results/startup.jsonl"
    "${pin[@]}" "$build/bench/bench_hostrss" --protocol "$id" --duration 2 >>"$results/hostrss.jsonl" || true
done

cpu_model="$(grep -m1 'model name' /proc/cpuinfo | sed 's/.*: //')"
compiler="$(sed -n 's/^CMAKE_CXX_COMPILER:[A-Z]*=//p' "$build/CMakeCache.txt")"
compiler="$("${compiler:-c++}" --version | head -1)"
qt="$(pkg-config --modversion Qt5Core 2>/dev/null || echo '?')"
pinned="${cpu:+, pinned to core $cpu}"
machine="$cpu_model, $(nproc) cores$pinned; Linux $(uname -r); $compiler, Release; Qt $qt"

python3 "$root/bench/report.py" --machine "$machine" --replay "$results/replay.json" \
    --startup "$results/startup.jsonl" --hostrss "$results/hostrss.jsonl"

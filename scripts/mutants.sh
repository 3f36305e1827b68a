#!/usr/bin/env bash
# A small mutation check: does the test suite still catch the faults people make?
#
# Each fault in scripts/mutants.txt is one line of the code changed the way a slip of the
# hand would change it (a wrong bit, byte index, scale, clamp, key code, command byte,
# checksum start). The faults are put, one at a time, into a copy of the tree; the
# suites named for each are rebuilt and run, and the fault is "caught" when one of them
# fails. A fault whose line is no longer in the code is "stale" (the list wants an update),
# one that does not compile is "broken". For people, not for CI: a run takes minutes.
#
# Usage: scripts/mutants.sh [--list FILE] [--keep] [WORD]
#   --list FILE  the faults (default scripts/mutants.txt)
#   --keep       keep the copy of the tree and its build (printed at the end)
#   WORD         only the faults whose name or file contains WORD, or that name WORD
#                among their suites (tst_driver60)
# Exit code 0 when every fault chosen was caught, 1 otherwise, 2 on bad usage.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
list="$root/scripts/mutants.txt"
keep=0
only=""
while [ $# -gt 0 ]; do
    case "$1" in
        --list) [ $# -ge 2 ] || { echo "mutants.sh: --list wants a file" >&2; exit 2; }; list=$2; shift 2 ;;
        --keep) keep=1; shift ;;
        -h|--help) sed -n '2,/^[^#]/{/^#/s/^# \{0,1\}//p}' "$0"; exit 0 ;;
        -*) echo "mutants.sh: unknown option '$1' (try --help)" >&2; exit 2 ;;
        *) only=$1; shift ;;
    esac
done
[ -f "$list" ] || { echo "mutants.sh: no list of faults at $list" >&2; exit 2; }

# The list: blocks of "fault:", "file:", "from:", "to:" and "tests:" lines, a blank line
# between blocks, "#" for comments. from/to are a piece of one line, matched literally.
names=() files=() froms=() tos=() tests=()
flush() {
    if [ -n "${f_name:-}" ]; then
        if [ -z "${f_file:-}" ] || [ -z "${f_from:-}" ] || [ -z "${f_tests:-}" ]; then
            echo "mutants.sh: the fault '$f_name' in $list lacks a file, from or tests line" >&2
            exit 2
        fi
        if [ -z "$only" ] || [[ "$f_name" == *"$only"* ]] || [[ "$f_file" == *"$only"* ]] ||
           [[ " $f_tests " == *" $only "* ]]; then
            names+=("$f_name") files+=("$f_file") froms+=("$f_from") tos+=("${f_to:-}") tests+=("$f_tests")
        fi
    fi
    f_name="" f_file="" f_from="" f_to="" f_tests=""
}
while IFS= read -r line || [ -n "$line" ]; do
    case "$line" in
        "#"*) ;;
        "") flush ;;
        fault:*) flush; f_name=$(sed 's/^fault: *//' <<<"$line") ;;
        file:*) f_file=$(sed 's/^file: *//' <<<"$line") ;;
        from:*) f_from=$(sed 's/^from: *//' <<<"$line") ;;
        to:*) f_to=$(sed 's/^to: *//' <<<"$line") ;;
        tests:*) f_tests=$(sed 's/^tests: *//' <<<"$line") ;;
        *) echo "mutants.sh: cannot read this line of $list: $line" >&2; exit 2 ;;
    esac
done <"$list"
flush
[ ${#names[@]} -gt 0 ] || { echo "mutants.sh: no fault matches '$only'" >&2; exit 2; }

"$root/scripts/deps.sh"

# The tree as it stands, uncommitted changes included, in a place of its own.
work=$(mktemp -d "${TMPDIR:-/tmp}/canbus-mutants.XXXXXX")
cleanup() { [ "$keep" = 1 ] || rm -rf "$work"; }
trap cleanup EXIT
(cd "$root" && git ls-files -co --exclude-standard -z | xargs -0 cp --parents -t "$work" 2>/dev/null) ||
    { echo "mutants.sh: cannot copy the tree" >&2; exit 1; }

generator=()
command -v ninja >/dev/null && generator=(-G Ninja)
launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    export CCACHE_BASEDIR="$(dirname "$work")"
    # Each run builds in a new directory: without this, -g puts it into every hash and
    # the cache of the last run is never hit.
    export CCACHE_NOHASHDIR=1
fi
build="$work/build"
all_tests=$(printf '%s\n' "${tests[@]}" | tr ' ' '\n' | sort -u | tr '\n' ' ')
echo "mutants: building $all_tests in $build" >&2
cmake -S "$work" -B "$build" "${generator[@]}" "${launcher[@]}" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
# shellcheck disable=SC2086
cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target $all_tests >"$work/build.log" 2>&1 ||
    { tail -n 30 "$work/build.log" >&2; echo "mutants: the unchanged tree does not build" >&2; exit 1; }

run_tests() {
    local t
    for t in $1; do
        if ! (cd "$build/tests" && env QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='canbus.*.debug=false' \
                CANBUS_KEY_DEVICE=/nonexistent/kb CANBUS_MCU_KEY_DEVICE=/nonexistent/vkey \
                CANBUS_TOUCH_DEVICE=/nonexistent/vtouch timeout 300 "./$t" -silent >/dev/null 2>&1); then
            echo "$t"
            return 0
        fi
    done
    return 1
}

for t in $all_tests; do
    run_tests "$t" >/dev/null && { echo "mutants: $t fails on the unchanged tree; fix that first" >&2; exit 1; }
done

caught=0 missed=0 stale=0 broken=0
for i in "${!names[@]}"; do
    file="$work/${files[$i]}"
    n=$(grep -cF -- "${froms[$i]}" "$file" 2>/dev/null || true)
    if [ "${n:-0}" != 1 ]; then
        printf 'stale   %s (%s: the line is there %s times)\n' "${names[$i]}" "${files[$i]}" "${n:-0}"
        stale=$((stale + 1))
        continue
    fi
    cp -p "$file" "$file.unmutated"
    FROM="${froms[$i]}" TO="${tos[$i]}" perl -pi -e 's/\Q$ENV{FROM}\E/$ENV{TO}/' "$file"
    # shellcheck disable=SC2086
    if ! cmake --build "$build" --target ${tests[$i]} >"$work/mutant.log" 2>&1; then
        printf 'broken  %s (it does not compile; see the fault)\n' "${names[$i]}"
        broken=$((broken + 1))
    elif by=$(run_tests "${tests[$i]}"); then
        printf 'caught  %s (by %s)\n' "${names[$i]}" "$by"
        caught=$((caught + 1))
    else
        printf 'MISSED  %s (%s)\n' "${names[$i]}" "${tests[$i]}"
        missed=$((missed + 1))
    fi
    mv "$file.unmutated" "$file"
    touch "$file"
done
# shellcheck disable=SC2086
cmake --build "$build" --target $all_tests >/dev/null 2>&1 || true
[ "$keep" = 1 ] && echo "mutants: the copy stays in $work" >&2
echo "mutants: $caught caught, $missed missed, $stale stale, $broken broken of ${#names[@]}"
[ "$missed" = 0 ] && [ "$stale" = 0 ] && [ "$broken" = 0 ]

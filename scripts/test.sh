#!/usr/bin/env bash
# Builds the module and runs every test suite: once as a plain build and once with
# AddressSanitizer and UndefinedBehaviorSanitizer; then a short smoke run of the
# fuzzers (clang, libFuzzer); then the 32-bit ARM build with its suites under qemu-arm
# and the packages (scripts/test-armhf.sh). Installs missing Debian packages.
# Usage: scripts/test.sh [--quick | --armhf]
#   --quick  the plain build only
#   --armhf  the ARM build and its suites only
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "${1:-}" = "--armhf" ]; then
    exec bash scripts/test-armhf.sh
fi

scripts/deps.sh
jobs=$(nproc 2>/dev/null || echo 2)

run_build() {
    local dir=$1; shift
    cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
    cmake --build "$dir" -j "$jobs"
    (cd "$dir" && ctest --output-on-failure -j "$jobs")
}

echo "== plain build =="
run_build build

echo "== demo, unattended =="
CANBUS_BUILD_DIR=build bash scripts/demo.sh 27 --duration 6

if [ "${1:-}" != "--quick" ]; then
    echo "== sanitizer build (ASan + UBSan) =="
    export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
    export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
    run_build build-asan -DCANBUS_SANITIZE=ON

    echo "== fuzz smoke (clang, libFuzzer, ASan + UBSan) =="
    bash fuzz/run.sh --smoke

    echo "== packages of the plain build =="
    (cd build && cpack -G DEB >/dev/null && ls canbus-*.deb)

    echo "== ARM (armhf) build, suites under qemu-arm, packages =="
    bash scripts/test-armhf.sh
fi
echo "All tests passed."

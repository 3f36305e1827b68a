#!/usr/bin/env bash
# The module on its real processor, 32-bit ARM (Debian armhf): builds the whole tree
# with Debian's cross compiler against a sysroot of Debian's armhf packages
# (scripts/armhf-sysroot.sh), runs every test suite under qemu-arm (user-mode
# emulation), the pseudo-terminal suites included, and makes the armhf packages.
# Installs missing Debian packages. Prints how long each part took.
#
# Usage: scripts/test-armhf.sh [--no-package]
# Environment: CANBUS_ARMHF_BUILD_DIR (default build-armhf), CANBUS_ARMHF_SYSROOT,
#              CANBUS_ARMHF_CXXFLAGS (default "-O1": the tests run the same, the
#              build is quicker; no -g, which only makes the build slower).
set -euo pipefail
cd "$(dirname "$0")/.."

package=1
case "${1:-}" in
    --no-package) package=0 ;;
    -h|--help) sed -n '2,11p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
    "") ;;
    *) echo "test-armhf.sh: unknown argument '$1' (try --help)" >&2; exit 2 ;;
esac

build=${CANBUS_ARMHF_BUILD_DIR:-build-armhf}
flags=${CANBUS_ARMHF_CXXFLAGS:--O1}
jobs=2
timings=()
phase() { timings+=("$(printf '%-16s %4d s' "$1" "$2")"); }

echo "== armhf: cross compiler, emulator and sysroot =="
scripts/deps.sh g++-arm-linux-gnueabihf qemu-user-static file || true
missing=()
command -v arm-linux-gnueabihf-g++ >/dev/null || missing+=("g++-arm-linux-gnueabihf (the ARM cross compiler)")
command -v qemu-arm-static >/dev/null || command -v qemu-arm >/dev/null ||
    missing+=("qemu-user-static or qemu-user (runs ARM programs here)")
command -v file >/dev/null || missing+=("file")
if [ ${#missing[@]} -gt 0 ]; then
    echo "test-armhf.sh: missing, install with apt-get:" >&2
    printf '  %s\n' "${missing[@]}" >&2
    exit 1
fi
start=$SECONDS
scripts/armhf-sysroot.sh
phase sysroot $((SECONDS - start))

echo "== armhf build ($build/, $flags) =="
launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$PWD}
fi
start=$SECONDS
cmake -S . -B "$build" -DCMAKE_TOOLCHAIN_FILE=cmake/armhf-toolchain.cmake \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS_RELEASE="$flags -DNDEBUG" "${launcher[@]}" >/dev/null
cmake --build "$build" -j "$jobs"
phase "armhf build" $((SECONDS - start))

echo "== armhf tests under qemu-arm =="
# Suites that cannot run under user-mode emulation, each with the reason; ctest
# leaves them out and says so here, so that nothing is skipped unseen.
declare -A unrunnable=(
)
exclude=()
for suite in "${!unrunnable[@]}"; do
    echo "skipped under qemu-arm: $suite: ${unrunnable[$suite]}"
    exclude+=("^$suite\$")
done
exclude_args=()
[ ${#exclude[@]} -gt 0 ] && exclude_args=(-E "$(IFS='|'; echo "${exclude[*]}")")
# The suites run in a process namespace of their own where the system allows one: a
# program that misbehaves under emulation can then signal nothing outside it.
isolate=()
if unshare --pid --fork --mount-proc true 2>/dev/null; then
    isolate=(unshare --pid --fork --mount-proc)
fi
start=$SECONDS
(cd "$build" && "${isolate[@]}" ctest --output-on-failure -j "$jobs" "${exclude_args[@]}")
phase "armhf tests" $((SECONDS - start))

if [ "$package" -eq 1 ]; then
    echo "== armhf packages =="
    start=$SECONDS
    (cd "$build" && cpack -G DEB >/dev/null)
    for deb in "$build"/canbus-*_armhf.deb; do
        echo "$deb"
    done
    # The plug-in in the package must be an ARM library.
    module_deb=$(ls "$build"/canbus-module_*_armhf.deb)
    unpacked=$(mktemp -d)
    trap 'rm -rf "$unpacked"' EXIT
    dpkg -c "$module_deb" | grep -E 'qt5/plugins/canbus/libcanbusmodule\.so$'
    dpkg -x "$module_deb" "$unpacked"
    described=$(file -L "$unpacked"/usr/lib/arm-linux-gnueabihf/qt5/plugins/canbus/libcanbusmodule.so)
    echo "${described#"$unpacked"}"
    [[ "$described" == *"ARM, EABI5"* ]] || { echo "test-armhf.sh: the packaged plug-in is not an ARM library" >&2; exit 1; }
    phase "armhf packages" $((SECONDS - start))
fi

echo "== armhf timings =="
printf '  %s\n' "${timings[@]}"
echo "armhf: all tests passed."

#!/usr/bin/env bash
# Makes the sysroot for the 32-bit ARM (armhf) build out of Debian's armhf packages:
# the Qt 5 libraries the module links (Core, SerialPort, Test) with their headers and
# CMake files, the C and C++ runtime, and every library these depend on. The packages
# are downloaded and unpacked (dpkg -x), never installed: the machine's own packages
# stay as they are. Qt's CMake files want the code generators (moc, rcc, uic) and a
# mkspec under the sysroot's Qt paths; the host's run anywhere, so they are linked in.
#
# Usage: scripts/armhf-sysroot.sh [--force]   (--force: make it again from scratch)
# Environment: CANBUS_ARMHF_SYSROOT, where to put it (default .cache/armhf-sysroot).
# A second run with the same package list returns at once.
set -euo pipefail
cd "$(dirname "$0")/.."

sysroot=${CANBUS_ARMHF_SYSROOT:-$PWD/.cache/armhf-sysroot}
case "$sysroot" in /|"") echo "armhf-sysroot.sh: refusing sysroot '$sysroot'" >&2; exit 2 ;; esac
triplet=arm-linux-gnueabihf
force=0
case "${1:-}" in
    --force) force=1 ;;
    -h|--help) sed -n '2,11p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
    "") ;;
    *) echo "armhf-sysroot.sh: unknown argument '$1' (try --help)" >&2; exit 2 ;;
esac

# What the build links. Their library dependencies are added by walking apt's
# dependency graph; the -dev packages are taken alone, since what they depend on
# besides the libraries (OpenGL, X11, the armhf code generators) is not used.
runtime=(libc6 libstdc++6 libgcc-s1 libqt5core5a libqt5serialport5 libqt5test5)
development=(libc6-dev linux-libc-dev libstdc++-12-dev libgcc-12-dev
             qtbase5-dev libqt5serialport5-dev)

stamp=$sysroot/.packages
wanted="${runtime[*]} | ${development[*]}"
if [ "$force" -eq 0 ] && [ -f "$stamp" ] && [ "$(head -n1 "$stamp")" = "$wanted" ]; then
    echo "armhf sysroot: $sysroot (ready)"
    exit 0
fi

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
need=()
command -v dpkg-deb >/dev/null || need+=(dpkg)
[ -x /usr/lib/qt5/bin/moc ] || need+=(qtbase5-dev-tools)
[ -x "/usr/lib/$(gcc -dumpmachine 2>/dev/null || echo x86_64-linux-gnu)/qt5/bin/qmake" ] || need+=(qt5-qmake)
if [ ${#need[@]} -gt 0 ]; then
    echo "armhf sysroot: installing ${need[*]}"
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${need[@]}"
fi

# A mirror in the middle of a sync can fail one index (say the security updates'
# armhf list); the sysroot then takes the packages from the indexes that did come.
update() {
    $sudo apt-get update -q || { sleep 5; $sudo apt-get update -q; } ||
        echo "armhf sysroot: some package indexes did not update; using those that did" >&2
}
if ! dpkg --print-foreign-architectures | grep -qx armhf; then
    echo "armhf sysroot: adding the armhf architecture to dpkg"
    $sudo dpkg --add-architecture armhf
    update
elif ! apt-cache show libqt5core5a:armhf >/dev/null 2>&1; then
    update
fi
if ! apt-cache show libqt5core5a:armhf >/dev/null 2>&1; then
    echo "armhf sysroot: apt knows no armhf packages; the package sources must serve armhf" >&2
    exit 1
fi

# Every real armhf package the runtime list needs, by apt's own graph. Virtual
# packages (<name>) and architecture-independent data packages are left out.
armhf() { sed 's/$/:armhf/' <<<"$(printf '%s\n' "$@")"; }
mapfile -t closure < <(
    apt-cache depends --recurse --no-recommends --no-suggests --no-conflicts \
        --no-breaks --no-replaces --no-enhances $(armhf "${runtime[@]}") |
        grep -E '^[a-z0-9][^ ]*:armhf$' | sort -u)
mapfile -t packages < <(printf '%s\n' "${closure[@]}" $(armhf "${development[@]}") | sort -u)
echo "armhf sysroot: ${#packages[@]} packages into $sysroot"

rm -rf "$sysroot"
mkdir -p "$sysroot/.debs"
# As root apt would hand the download to its own user, who cannot write here.
sandbox=()
[ "$(id -u)" -eq 0 ] && sandbox=(-o APT::Sandbox::User=root)
(cd "$sysroot/.debs" && apt-get download -q "${sandbox[@]}" "${packages[@]}" >/dev/null) || {
    echo "armhf sysroot: apt-get download failed for some of: ${packages[*]}" >&2
    exit 1
}
for deb in "$sysroot"/.debs/*.deb; do
    dpkg -x "$deb" "$sysroot"
done

# Packages carry absolute links (libm.so -> /lib/...); inside a sysroot they must
# point into it, and relative links keep the folder movable.
while IFS= read -r link; do
    target=$(readlink "$link")
    ln -sfn "$(realpath -m --relative-to="$(dirname "$link")" "$sysroot$target")" "$link"
done < <(find "$sysroot" -type l -lname '/*')

# The code generators, qmake and the mkspec of the host, where Qt's CMake files look
# for them (they check that the files exist; only the generators are run).
hostqt=/usr/lib/$(gcc -dumpmachine 2>/dev/null || echo x86_64-linux-gnu)/qt5
mkdir -p "$sysroot/usr/lib/qt5/bin" "$sysroot/usr/lib/$triplet/qt5/bin" "$sysroot/usr/lib/$triplet/qt5/mkspecs"
for tool in moc rcc uic qlalr; do
    [ -x "/usr/lib/qt5/bin/$tool" ] && ln -sfn "/usr/lib/qt5/bin/$tool" "$sysroot/usr/lib/qt5/bin/$tool"
done
ln -sfn "$(readlink -f "$hostqt/bin/qmake")" "$sysroot/usr/lib/$triplet/qt5/bin/qmake"
cp -r "$hostqt/mkspecs/linux-g++" "$hostqt/mkspecs/common" "$sysroot/usr/lib/$triplet/qt5/mkspecs/"

for must in "usr/lib/$triplet/cmake/Qt5Core/Qt5CoreConfig.cmake" \
            "usr/lib/$triplet/cmake/Qt5SerialPort/Qt5SerialPortConfig.cmake" \
            "usr/lib/$triplet/cmake/Qt5Test/Qt5TestConfig.cmake" \
            "usr/lib/$triplet/libc.so" "lib/ld-linux-armhf.so.3"; do
    [ -e "$sysroot/$must" ] || { echo "armhf sysroot: $must is missing after unpacking" >&2; exit 1; }
done

rm -rf "$sysroot/.debs"
{ echo "$wanted"; printf '%s\n' "${packages[@]}"; } >"$stamp"
echo "armhf sysroot: ready ($(du -sh "$sysroot" | cut -f1))"

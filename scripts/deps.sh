#!/usr/bin/env bash
# Installs the Debian packages the build needs, only those that are missing.
# Usage: scripts/deps.sh [extra-package ...]
set -euo pipefail

# xvfb-run (with xauth, which it needs) lets the viewer's test draw without a display.
packages=(cmake make g++ pkg-config qtbase5-dev libqt5serialport5-dev xvfb xauth "$@")
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get install -y --no-install-recommends "${missing[@]}" ||
    { $sudo apt-get update && $sudo apt-get install -y --no-install-recommends "${missing[@]}"; }

#!/usr/bin/env bash
# Installs what a fresh Debian 12 machine lacks to build, run and test the program.
# Quick when everything is already there: apt is asked only for missing packages.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev qt6-charts-dev libqt6opengl6-dev libxkbcommon-dev qt6-qpa-plugins libgl-dev libxcb1-dev
  libgtest-dev libgmock-dev libbenchmark-dev libcli11-dev libpugixml-dev libdragonbox-dev
  clang-14 libclang-rt-14-dev
  fonts-liberation fontconfig
  xvfb xauth poppler-utils python3
  dbus-x11 at-spi2-core python3-pyatspi x11-utils
  cups cups-client cups-bsd printer-driver-cups-pdf
  dpkg-dev file desktop-file-utils man-db lintian appstream
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"

#!/usr/bin/env bash
# Installs the Debian 12 packages Tarnwick needs to build, run and test. Quiet when all are
# there already; uses sudo when not run as root.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config ccache clang lld libclang-rt-14-dev clang-format
    qt6-base-dev qt6-base-dev-tools qt6-serialport-dev qt6-httpserver-dev qt6-websockets-dev libqt6sql6-sqlite libqt6svg6 libgl-dev
    libqcustomplot-dev libqcustomplot2.1-qt6 libzip-dev libpugixml-dev libbenchmark-dev
    fonts-liberation fonts-dejavu-core
    socat xvfb xauth poppler-utils sqlite3 unzip python3-openpyxl
    libqrencode-dev chromium chromium-driver python3-selenium zbar-tools
    lintian desktop-file-utils appstream shared-mime-info libxml2-utils
)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null

#!/usr/bin/env bash
# Installs the Debian 12 packages the project builds and tests with, when any is missing.
set -euo pipefail
packages=(
    cmake ninja-build g++ ccache pkg-config
    qt6-base-dev qt6-svg-dev qt6-base-dev-tools libgl-dev
    libqcustomplot-dev libqcustomplot2.1-qt6
    libsundials-dev libsuitesparse-dev
    libcli11-dev libgtest-dev libbenchmark-dev nlohmann-json3-dev
    xvfb xauth
    poppler-utils
)
missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
if [ ${#missing[@]} -eq 0 ]; then
    exit 0
fi
echo "Installing: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"

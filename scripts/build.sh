#!/usr/bin/env bash
# Configures and builds into build/ (or $ZARVION_BUILD_DIR). Extra arguments go to cmake.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ZARVION_BUILD_DIR:-$root/build}
bash "$root/scripts/install-deps.sh"
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=${ZARVION_BUILD_TYPE:-RelWithDebInfo} "$@" >/dev/null
cmake --build "$build" -j "$(nproc)"

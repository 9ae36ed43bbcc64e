#!/usr/bin/env bash
# Installs what is missing, builds everything and runs the whole test suite twice: once as shipped,
# once built with AddressSanitizer and UndefinedBehaviorSanitizer (set ZARVION_SKIP_SANITIZE=1 to
# leave that second pass out during quick local work).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${ZARVION_BUILD_DIR:-$root/build}
ZARVION_BUILD_DIR=$build bash "$root/scripts/build.sh"
(cd "$build" && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j "$(nproc)")

if [ "${ZARVION_SKIP_SANITIZE:-0}" != 1 ]; then
    asan=${ZARVION_ASAN_BUILD_DIR:-$root/build-asan}
    ZARVION_BUILD_DIR=$asan bash "$root/scripts/build.sh" -DZARVION_SANITIZE=ON \
        -DZARVION_BUILD_BENCH=OFF
    cd "$asan"
    QT_QPA_PLATFORM=offscreen UBSAN_OPTIONS=print_stacktrace=1 \
        ctest --output-on-failure -j "$(nproc)"
fi

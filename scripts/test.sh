#!/usr/bin/env bash
# Builds orvCore and its tests with AddressSanitizer and UBSan, then runs every test with ctest.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/setup.sh"

build="$root/build/sanitize"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DORV_SANITIZE=ON -DORV_BUILD_TESTS=ON \
    -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_EXAMPLES=ON >/dev/null
cmake --build "$build" -j "$(nproc)"

# Death tests end the process on purpose: keep the sanitizers from reporting those exits as leaks.
export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=0:abort_on_error=0}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
ctest --test-dir "$build" --output-on-failure -j "$(nproc)"

#!/usr/bin/env bash
# Builds the benchmarks in Release and runs them. Extra arguments go to Google Benchmark
# (e.g. --benchmark_filter=Entity).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/setup.sh"

build="$root/build/bench"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DORV_BUILD_TESTS=OFF -DORV_BUILD_BENCHMARKS=ON \
    -DORV_BUILD_EXAMPLES=OFF >/dev/null
cmake --build "$build" --target orvCoreBench -j "$(nproc)"
"$build/bench/orvCoreBench" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true "$@"

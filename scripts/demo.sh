#!/usr/bin/env bash
# Builds orvCore and the demo host in Release, then runs the demo. Extra arguments go to the demo
# (try --help).
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/setup.sh"

build="$root/build/release"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DORV_BUILD_TESTS=OFF -DORV_BUILD_BENCHMARKS=OFF \
    -DORV_BUILD_EXAMPLES=ON >/dev/null
cmake --build "$build" --target orvDemo -j "$(nproc)"
"$build/examples/orvDemo" "$@"

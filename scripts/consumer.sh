#!/usr/bin/env bash
# Builds orvCore in Release, installs it into a temporary prefix, then builds the host project of tests/consumer
# against that install with find_package and runs it: the package as a host sees it.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/setup.sh"

build="$root/build/consumer-library"
work="$(mktemp -d "${TMPDIR:-/tmp}/orvConsumer.XXXXXX")"
trap 'rm -rf "$work"' EXIT

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DORV_BUILD_TESTS=OFF -DORV_BUILD_BENCHMARKS=OFF \
    -DORV_BUILD_EXAMPLES=OFF -DORV_SANITIZE=OFF -DORV_SANITIZE_THREAD=OFF >/dev/null
cmake --build "$build" -j "$(nproc)"
cmake --install "$build" --prefix "$work/prefix" >/dev/null

cmake -S "$root/tests/consumer" -B "$work/build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_PREFIX_PATH="$work/prefix" \
    >/dev/null
cmake --build "$work/build" -j "$(nproc)"
"$work/build/orvConsumerHost"
echo "consumer: built and ran against the installed package"

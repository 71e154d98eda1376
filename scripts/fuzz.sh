#!/usr/bin/env bash
# Builds the libFuzzer targets with clang (AddressSanitizer and UBSan) and runs one of them.
#   scripts/fuzz.sh TARGET SECONDS [libFuzzer arguments...]     e.g. scripts/fuzz.sh orvSnapshotFuzz 600
# The corpus starts from snapshots the demo host writes and grows in build/fuzz/corpus/TARGET; crashes land in
# build/fuzz/findings/TARGET. Not part of CI.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
if [ $# -lt 2 ]; then
    echo "usage: scripts/fuzz.sh TARGET SECONDS [libFuzzer arguments...]" >&2
    exit 2
fi
target="$1"
seconds="$2"
shift 2
source "$root/scripts/setup.sh"
for package in clang libclang-rt-14-dev; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        sudo_cmd=()
        [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
        "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "$package"
    fi
done

build="$root/build/fuzz"
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORV_SANITIZE=ON \
    -DCMAKE_CXX_FLAGS="-fsanitize=fuzzer-no-link" -DORV_BUILD_FUZZERS=ON -DORV_BUILD_TESTS=OFF \
    -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_EXAMPLES=ON >/dev/null
cmake --build "$build" --target "$target" orvDemo -j "$(nproc)"

corpus="$build/corpus/$target"
findings="$build/findings/$target"
mkdir -p "$corpus" "$findings"
if [ "$target" = orvSnapshotFuzz ] && [ -z "$(ls -A "$corpus")" ]; then
    # Seeds: small worlds run by behaviour graphs, with and without churn, one type and several; and a world walked
    # by its navigation context alone.
    export ASAN_OPTIONS=detect_leaks=0
    "$build/examples/orvDemo" --entities 6 --frames 2 --types 1 --save "$corpus/seed-small.bin" >/dev/null
    "$build/examples/orvDemo" --entities 12 --frames 3 --types 3 --churn 4 --churn-every 1 --save "$corpus/seed-churn.bin" >/dev/null
    "$build/examples/orvDemo" --entities 30 --frames 1 --types 2 --save "$corpus/seed-types.bin" >/dev/null
    "$build/examples/orvDemo" --entities 8 --frames 2 --types 2 --bare --save "$corpus/seed-bare.bin" >/dev/null
fi

export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1}"
"$build/fuzz/$target" "$corpus" -artifact_prefix="$findings/" -max_total_time="$seconds" -timeout=10 \
    -rss_limit_mb=2048 -print_final_stats=1 "$@"

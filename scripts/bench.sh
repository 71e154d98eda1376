#!/usr/bin/env bash
# Builds the benchmarks in Release and runs them. Extra arguments go to Google Benchmark
# (e.g. --benchmark_filter=Entity).
#   --busy-neighbour   keeps one core busy with another process (`yes > /dev/null`) while the benchmarks run, to
#                      show how the thread pool fares when a worker shares its core.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
ORV_SETUP_EXTRAS=bench source "$root/scripts/setup.sh"

busyNeighbour=0
benchmarkArgs=()
for arg in "$@"; do
    case "$arg" in
        --busy-neighbour) busyNeighbour=1 ;;
        *) benchmarkArgs+=("$arg") ;;
    esac
done

build="$root/build/bench"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DORV_BUILD_TESTS=OFF -DORV_BUILD_BENCHMARKS=ON \
    -DORV_BUILD_EXAMPLES=OFF >/dev/null
cmake --build "$build" --target orvCoreBench -j "$(nproc)"

neighbour=""
stopNeighbour() {
    if [[ -n "$neighbour" ]]; then
        kill "$neighbour" 2>/dev/null || true
        wait "$neighbour" 2>/dev/null || true
        neighbour=""
    fi
}
trap stopNeighbour EXIT
trap 'exit 130' INT TERM
if [[ "$busyNeighbour" == 1 ]]; then
    yes >/dev/null &
    neighbour=$!
    echo "busy neighbour: pid $neighbour"
fi

"$build/bench/orvCoreBench" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
    ${benchmarkArgs[@]+"${benchmarkArgs[@]}"}

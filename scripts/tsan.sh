#!/usr/bin/env bash
# Builds orvCore, its tests and the demo host with ThreadSanitizer, then runs the tests that start threads and the
# demo on two threads. What ThreadSanitizer may still report, and why it is not a race, is in scripts/tsan.supp.
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
source "$root/scripts/setup.sh"

build="$root/build/tsan"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DORV_SANITIZE_THREAD=ON -DORV_BUILD_TESTS=ON \
    -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_EXAMPLES=ON >/dev/null
cmake --build "$build" --target orvCoreTests orvDemo -j "$(nproc)"

# Any report fails the run (exit code 66), after the whole test has run so that every report shows.
export TSAN_OPTIONS="suppressions=$root/scripts/tsan.supp:second_deadlock_stack=1${TSAN_OPTIONS:+:$TSAN_OPTIONS}"

# The suites that run threads: the processor and its workers, the simulation, determinism and snapshot cases that
# drive it, the thread, barrier, lock, condition and job services, the multi-producer rings and the shared counts
# of smart pointers, death tests included.
threaded='SimulationsProcessor|Determinism|Snapshot|^Simulation(Death)?Test\.|SynchroBarrier|Lock|ConditionVar|Thread|Job'
threaded+='|BothRings|SmartPointer'
ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)" -R "$threaded"

# A demo run with churn, on the pool of two threads, then the same world saved and loaded back.
snapshot="$build/tsan-demo.bin"
"$build/examples/orvDemo" --threads 2 --entities 2000 --frames 60 --churn 100 --churn-every 20 --save "$snapshot"
"$build/examples/orvDemo" --threads 2 --frames 20 --load "$snapshot"
rm -f "$snapshot"

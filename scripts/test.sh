#!/usr/bin/env bash
# Builds orvCore and its tests with AddressSanitizer, LeakSanitizer and UBSan, then runs every test with ctest.
#   --clang   builds with clang and its own sanitizer runtimes instead of g++, in a build directory of its own
set -euo pipefail
root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"

compiler=gcc
for arg in "$@"; do
    case "$arg" in
        --clang) compiler=clang ;;
        *)
            echo "usage: scripts/test.sh [--clang]" >&2
            exit 2
            ;;
    esac
done

if [ "$compiler" = clang ]; then
    ORV_SETUP_EXTRAS=clang source "$root/scripts/setup.sh"
    build="$root/build/sanitize-clang"
    compiler_args=(-DCMAKE_CXX_COMPILER=clang++-14)
else
    source "$root/scripts/setup.sh"
    build="$root/build/sanitize"
    compiler_args=()
fi

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DORV_SANITIZE=ON -DORV_BUILD_TESTS=ON \
    -DORV_BUILD_BENCHMARKS=OFF -DORV_BUILD_EXAMPLES=OFF ${compiler_args[@]+"${compiler_args[@]}"} >/dev/null
cmake --build "$build" -j "$(nproc)"

# Leaks are checked at the end of every test. A death test's child ends on the library's fatal path on purpose and
# skips its own check (tests/support/orvDeathTestLeakCheck.cpp); its parent is checked like any test.
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1${UBSAN_OPTIONS:+:$UBSAN_OPTIONS}"
ctest --test-dir "$build" --output-on-failure --no-tests=error -j "$(nproc)"

#!/usr/bin/env bash
# Installs with apt-get whatever the build needs and this Debian machine lacks. Sourced by the other scripts.
# A script that needs more than the library and its tests names the extra lists in ORV_SETUP_EXTRAS before
# sourcing this file, separated by spaces:
#   clang   the second compiler, its sanitizer runtimes and llvm-symbolizer for their reports
#   bench   what only the benchmarks use
set -euo pipefail

orv_packages=(g++ make cmake libgtest-dev libgmock-dev libbenchmark-dev libtbb-dev librapidxml-dev uuid-runtime)
orv_clang_packages=(clang libclang-rt-14-dev llvm)
orv_bench_packages=(libcereal-dev)

for orv_extra in ${ORV_SETUP_EXTRAS:-}; do
    case "$orv_extra" in
        clang) orv_packages+=("${orv_clang_packages[@]}") ;;
        bench) orv_packages+=("${orv_bench_packages[@]}") ;;
        *)
            echo "setup.sh: unknown package list '$orv_extra' in ORV_SETUP_EXTRAS (clang, bench)" >&2
            exit 1
            ;;
    esac
done

orv_missing=()
for package in "${orv_packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
        orv_missing+=("$package")
    fi
done

if [ ${#orv_missing[@]} -gt 0 ]; then
    echo "Installing: ${orv_missing[*]}"
    sudo_cmd=()
    if [ "$(id -u)" -ne 0 ]; then
        sudo_cmd=(sudo)
    fi
    "${sudo_cmd[@]}" apt-get update -qq
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${orv_missing[@]}"
fi

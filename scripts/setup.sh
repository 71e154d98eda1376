#!/usr/bin/env bash
# Installs with apt-get whatever the build needs and this Debian machine lacks. Sourced by the other scripts.
set -euo pipefail

orv_packages=(g++ make cmake libgtest-dev libgmock-dev libbenchmark-dev libtbb-dev librapidxml-dev uuid-runtime)

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

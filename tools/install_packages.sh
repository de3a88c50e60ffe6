#!/usr/bin/env bash
# Installs what is missing to build and test, or the packages that are named; prints and does nothing when all are installed.
set -euo pipefail

packages=("$@")
if [[ ${#packages[@]} -eq 0 ]]; then
  packages=(
    cmake ninja-build g++ ccache pkg-config
    libpugixml-dev libzip-dev zlib1g-dev libutf8proc-dev libcairo2-dev libpango1.0-dev libgdk-pixbuf-2.0-dev
    libxlsxwriter-dev libcli11-dev nlohmann-json3-dev
    libgtest-dev libbenchmark-dev clang-format
    python3-dev pybind11-dev python3-pytest python3-build python3-setuptools python3-wheel
    fonts-liberation fonts-crosextra-carlito fonts-dejavu-core fontconfig
  )
fi

missing=()
for package in "${packages[@]}"; do
  if [[ $(dpkg-query -W -f '${Status}' "$package" 2>/dev/null) != "install ok installed" ]]; then
    missing+=("$package")
  fi
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing ${missing[*]}"
as_root=()
if [[ $(id -u) -ne 0 ]]; then as_root=(sudo); fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null

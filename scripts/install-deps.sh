#!/usr/bin/env bash
# Installs the Debian packages that building, testing and benchmarking need.
# Safe to run again: it only calls apt when something is missing.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config
  libgtest-dev libgmock-dev          # unit tests
  libbenchmark-dev libeigen3-dev     # bench/; Eigen is a baseline and an independent reference, never linked into the product
  python3 python3-ezdxf              # independent DXF reader the end-to-end tests check against
  clang libclang-rt-14-dev           # libFuzzer target for the DXF reader
  libcairo2-dev fonts-dejavu-core    # the headless print service writes PDF pages with cairo
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"

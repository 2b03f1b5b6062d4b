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
  locales                            # a German locale: CSV exports with decimal comma and ";" are tested in it
  libreoffice-calc-nogui poppler-utils  # tests open exported CSV in a real spreadsheet and read printed PDFs
  libwxgtk3.2-dev libx11-dev         # cadhost's window (wxWidgets); the X library takes its screenshots
  xvfb xauth imagemagick             # window tests run cadhost --window on a virtual display, read its pictures
)

# The tests of exports in a decimal-comma locale need de_DE.UTF-8; generate it when the system lacks it.
ensure_german_locale() {
  if locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then return 0; fi
  local sudo=""
  if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
  $sudo localedef -i de_DE -f UTF-8 de_DE.UTF-8 || echo "could not generate de_DE.UTF-8; its tests will be skipped" >&2
}

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -eq 0 ]; then
  ensure_german_locale
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
ensure_german_locale

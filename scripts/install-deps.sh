#!/usr/bin/env bash
# Installs what z4400conv needs to build (and, with --test, what its test
# suite, fuzzing and benchmarks need) from Debian's packages.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config
  qt6-base-dev libqt6svg6 libpugixml-dev libdeflate-dev
  libcli11-dev nlohmann-json3-dev help2man
)
test_packages=(
  libgtest-dev libgmock-dev libbenchmark-dev libxml2-utils qt6-base-private-dev
  clang libclang-rt-14-dev libxlsxwriter-dev
  libreoffice-calc-nogui poppler-utils unzip desktop-file-utils
  clang-format clang-tidy python3
  # Calibri's metrics for LibreOffice: workbooks print as the spreadsheet
  # draws them, so the tests see the column widths a user sees.
  fonts-crosextra-carlito
  # A locale with a decimal comma (de_DE.UTF-8, made below): numbers in
  # instrument files must read the same under it.
  locales
)

if [[ "${1:-}" == "--test" ]]; then
  packages+=("${test_packages[@]}")
fi

sudo=()
if [[ $(id -u) -ne 0 ]]; then sudo=(sudo); fi

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed" ||
    missing+=("$package")
done
if ((${#missing[@]} > 0)); then
  "${sudo[@]}" apt-get update -q
  DEBIAN_FRONTEND=noninteractive "${sudo[@]}" apt-get install -y -q --no-install-recommends \
    "${missing[@]}"
fi

if [[ "${1:-}" == "--test" ]] && ! locale -a | grep -qix 'de_DE\.utf-\?8'; then
  echo "de_DE.UTF-8 UTF-8" | "${sudo[@]}" tee -a /etc/locale.gen >/dev/null
  "${sudo[@]}" locale-gen
fi

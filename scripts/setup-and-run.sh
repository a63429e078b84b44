#!/usr/bin/env bash
# One command for a fresh machine: installs the build dependencies, builds
# z4400conv in Release and converts the instrument files of examples/ into
# workbooks in out/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DZ4400_BUILD_TESTS=OFF \
  -DZ4400_BUILD_BENCH=OFF
cmake --build build/release --target z4400conv

mkdir -p out
# z4400conv names each workbook it writes on stdout.
build/release/app/z4400conv --batch --output-dir out/ --overwrite examples/*.xml examples/*.csv

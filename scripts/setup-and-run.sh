#!/usr/bin/env bash
# One command for a fresh machine: installs the build dependencies, builds
# z4400conv in Release and converts the instrument files of examples/.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-deps.sh
cmake -S . -B build/release -G Ninja -DCMAKE_BUILD_TYPE=Release -DZ4400_BUILD_TESTS=OFF \
  -DZ4400_BUILD_BENCH=OFF
cmake --build build/release --target z4400conv

mkdir -p out
for example in examples/*.xml examples/*.csv; do
  name=$(basename "$example")
  build/release/app/z4400conv --dump "$example" > "out/${name%.*}.json"
  echo "$example -> out/${name%.*}.json"
done

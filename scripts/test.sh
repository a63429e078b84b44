#!/usr/bin/env bash
# Builds z4400conv with its tests and runs the whole suite with CTest.
#   scripts/test.sh             Release build in build/test
#   scripts/test.sh --sanitize  AddressSanitizer + UndefinedBehaviorSanitizer in build/asan
set -euo pipefail
cd "$(dirname "$0")/.."

build_dir=build/test
options=(-DCMAKE_BUILD_TYPE=Release)
if [[ "${1:-}" == "--sanitize" ]]; then
  build_dir=build/asan
  options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DZ4400_SANITIZE=ON -DZ4400_BUILD_BENCH=OFF)
  export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
  export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
fi

scripts/install-deps.sh --test
cmake -S . -B "$build_dir" -G Ninja "${options[@]}"
cmake --build "$build_dir"
ctest --test-dir "$build_dir" --output-on-failure --timeout 600 -j 2

#!/usr/bin/env bash
# Fuzzes the readers for SECONDS in all (default 60): builds the libFuzzer
# targets of fuzz/ with clang in build/fuzz and runs each for its share of
# the time, the source readers first, with corpora seeded from the
# instrument samples (when ../shared/samples exists), examples/ and the
# spreadsheet-made workbooks (when ../shared/ooxml exists). Findings go to
# build/fuzz/findings/.
#   scripts/fuzz.sh [SECONDS] [TARGET...]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
build_dir=build/fuzz
findings=$build_dir/findings

if (($# > 0)); then
  targets=("$@")
else
  targets=(fuzz_source_readers)
  for source in fuzz/fuzz_*.cc; do
    name=$(basename "$source" .cc)
    [[ $name == fuzz_source_readers ]] || targets+=("$name")
  done
fi
share=$((seconds / ${#targets[@]}))
((share >= 5)) || share=5

cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DZ4400_FUZZ=ON \
  -DZ4400_SANITIZE=ON -DZ4400_BUILD_GUI=OFF -DZ4400_BUILD_TESTS=OFF -DZ4400_BUILD_BENCH=OFF \
  >/dev/null
cmake --build "$build_dir" --target "${targets[@]}"

# Seeds: the first folder of each pair that exists.
seed() {  # seed CORPUS PATTERN...
  local corpus=$1
  shift
  for pattern in "$@"; do
    for file in $pattern; do
      [[ -f $file ]] && cp -n "$file" "$corpus"/ 2>/dev/null || true
    done
  done
}

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
mkdir -p "$findings"
for target in "${targets[@]}"; do
  corpus=$build_dir/corpus/$target
  mkdir -p "$corpus"
  case $target in
    fuzz_source_readers)
      seed "$corpus" "../shared/samples/*.xml" "../shared/samples/*.csv" \
        "/work/shared/samples/*.xml" "/work/shared/samples/*.csv" "examples/*.xml" "examples/*.csv"
      ;;
    *)
      seed "$corpus" "../shared/ooxml/excel-made/*.xlsx" "/work/shared/ooxml/excel-made/*.xlsx"
      ;;
  esac
  options=()
  dictionary=fuzz/${target#fuzz_}.dict
  [[ -f $dictionary ]] && options+=(-dict="$dictionary")
  echo "== $target for $share s"
  "$build_dir/fuzz/$target" "$corpus" "${options[@]}" -max_total_time="$share" -max_len=65536 \
    -timeout=10 -rss_limit_mb=2048 -artifact_prefix="$findings/$target-" -print_final_stats=1
done

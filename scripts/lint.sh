#!/usr/bin/env bash
# Lint checks: clang-format (every .cc and .h must be formatted), the layer
# check of the include graph (scripts/check-layers.py) and clang-tidy with
# the repository's .clang-tidy over a Release build's compile commands.
#   scripts/lint.sh            the whole tree (as CI runs it)
#   scripts/lint.sh --changed  only the files changed against main (quick)
#   --build-dir DIR            the Release build whose compile commands
#                              clang-tidy follows (configured when missing;
#                              build/rel unless given)
# Exits non-zero on the first check that finds anything.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=all
build_dir=build/rel
while [[ $# -gt 0 ]]; do
  case $1 in
    --changed) mode=changed ;;
    --build-dir)
      build_dir=${2:?--build-dir needs a folder}
      shift
      ;;
    *)
      echo "usage: scripts/lint.sh [--changed] [--build-dir DIR]" >&2
      exit 2
      ;;
  esac
  shift
done

if [[ $mode == changed ]]; then
  base=$(git merge-base HEAD main)
  mapfile -t files < <(git diff --name-only --diff-filter=d "$base" -- '*.cc' '*.h';
                       git ls-files --others --exclude-standard -- '*.cc' '*.h')
else
  mapfile -t files < <(git ls-files -- '*.cc' '*.h')
fi

echo "== clang-format (${#files[@]} files)"
if ((${#files[@]} > 0)); then
  clang-format --dry-run --Werror "${files[@]}"
fi

echo "== include layers"
python3 scripts/check-layers.py

if [[ ! -f $build_dir/compile_commands.json ]]; then
  cmake -S . -B "$build_dir" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
fi
# Generated sources (Qt's moc and resources) must exist for the files that
# include them.
cmake --build "$build_dir" --target z4400_shell_autogen >/dev/null 2>&1 || true
mapfile -t sources < <(printf '%s\n' "${files[@]}" | grep '\.cc$' | grep -v '^fuzz/' || true)
echo "== clang-tidy (${#sources[@]} sources)"
if ((${#sources[@]} > 0)); then
  run-clang-tidy -quiet -p "$build_dir" -j "$(nproc)" "${sources[@]/#/$PWD/}" \
    > "$build_dir/clang-tidy.log" 2>&1 || {
    grep -E "(warning|error):" "$build_dir/clang-tidy.log" | sort -u
    echo "clang-tidy found the above (full output in $build_dir/clang-tidy.log)" >&2
    exit 1
  }
fi
echo "lint clean"

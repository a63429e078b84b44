#!/usr/bin/env bash
# Builds the Debian package of a build tree and checks it.
#   scripts/package-check.sh --contents BUILD_DIR  the package holds the program,
#                                                   desktop entry, icon and manual page
#   scripts/package-check.sh BUILD_DIR             that, then installs the package into
#                                                   a scratch root and converts the
#                                                   examples with the installed program
set -euo pipefail
source_dir="$(cd "$(dirname "$0")/.." && pwd)"

contents_only=false
if [[ "${1:-}" == "--contents" ]]; then
  contents_only=true
  shift
fi
build_dir="$(cd "${1:?usage: package-check.sh [--contents] BUILD_DIR}" && pwd)"

scratch="$(mktemp -d)"
trap 'rm -rf "$scratch"' EXIT

if ! (cd "$scratch" && cpack -G DEB --config "$build_dir/CPackConfig.cmake" -B "$scratch/out" \
  >"$scratch/cpack.log" 2>&1); then
  cat "$scratch/cpack.log" >&2
  exit 1
fi
package="$(ls "$scratch"/out/*.deb)"
echo "package: $(basename "$package")"

listing="$(dpkg-deb -c "$package" | awk '{print $NF}')"
# The window program is part of the package when the build made it.
window=()
if [[ -x "$build_dir/app/z4400conv-window" ]]; then window=(./usr/bin/z4400conv-window); fi
missing=0
for wanted in ./usr/bin/z4400conv "${window[@]}" \
  ./usr/share/applications/z4400conv.desktop \
  ./usr/share/icons/hicolor/scalable/apps/z4400conv.svg \
  ./usr/share/man/man1/z4400conv.1.gz; do
  if ! grep -qxF "$wanted" <<<"$listing"; then
    echo "missing from the package: $wanted" >&2
    missing=1
  fi
done
depends="$(dpkg-deb -f "$package" Depends)"
if [[ -z "$depends" ]]; then
  echo "the package declares no dependencies" >&2
  missing=1
fi
echo "depends: $depends"
((missing == 0)) || exit 1
$contents_only && exit 0

# Installed as a user would find it: the files of the package under a
# scratch root, the examples converted by the program found there.
root="$scratch/root"
dpkg -x "$package" "$root"
if command -v desktop-file-validate >/dev/null; then
  desktop-file-validate "$root/usr/share/applications/z4400conv.desktop"
fi
zcat "$root/usr/share/man/man1/z4400conv.1.gz" | grep -qF '\-\-batch' ||
  { echo "the manual page does not describe --batch" >&2; exit 1; }
mkdir "$scratch/settings" "$scratch/workbooks"
if ! "$root/usr/bin/z4400conv" --batch --settings-dir "$scratch/settings" \
  --output-dir "$scratch/workbooks" "$source_dir"/examples/*.xml "$source_dir"/examples/*.csv \
  >"$scratch/batch.log" 2>&1; then
  cat "$scratch/batch.log" >&2
  exit 1
fi
converted=0
for example in "$source_dir"/examples/*.xml "$source_dir"/examples/*.csv; do
  name="$(basename "${example%.*}").xlsx"
  if [[ ! -s "$scratch/workbooks/$name" ]]; then
    echo "the installed program did not write $name" >&2
    exit 1
  fi
  converted=$((converted + 1))
done
echo "the installed program converted $converted examples"

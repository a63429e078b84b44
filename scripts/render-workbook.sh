#!/bin/sh
# Renders the first page of a saved workbook to a PNG image through
# LibreOffice Calc, so that people can look at what a spreadsheet shows:
#   scripts/render-workbook.sh BOOK.xlsx OUT.png [RESOLUTION_DPI]
# Needs soffice (libreoffice-calc-nogui) and pdftoppm (poppler-utils).
set -eu

if [ $# -lt 2 ]; then
  echo "usage: $0 BOOK.xlsx OUT.png [RESOLUTION_DPI]" >&2
  exit 2
fi
book=$1
out=$2
dpi=${3:-80}
for tool in soffice pdftoppm; do
  command -v "$tool" >/dev/null 2>&1 || { echo "$0: $tool is not installed" >&2; exit 3; }
done
[ -f "$book" ] || { echo "$0: no such file: $book" >&2; exit 2; }

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT INT TERM
cp "$book" "$work/book.xlsx"
# A private profile: no interference with (or from) a running LibreOffice.
timeout 180 soffice --headless --norestore "-env:UserInstallation=file://$work/profile" \
  --convert-to pdf --outdir "$work" "$work/book.xlsx" >"$work/soffice.log" 2>&1 || {
  echo "$0: LibreOffice could not convert $book" >&2
  cat "$work/soffice.log" >&2
  exit 1
}
[ -s "$work/book.pdf" ] || { echo "$0: LibreOffice wrote no PDF for $book" >&2; exit 1; }
case $out in
  *.png) stem=${out%.png} ;;
  *) stem=$out ;;
esac
pdftoppm -png -r "$dpi" -f 1 -l 1 -singlefile "$work/book.pdf" "$stem"
echo "$stem.png"

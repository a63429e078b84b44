#!/bin/sh
# Makes docs/report.png, the picture of a converted report in README.md: the
# example examples/band_scan_markers.xml is converted by z4400conv and the
# top of its "Report" sheet is drawn by LibreOffice Calc. Calc prints the
# sheet's left columns (configuration block) and right columns (chart and
# marker list) on two pages; the picture puts them side by side again.
#   scripts/make-readme-picture.sh [Z4400CONV]   (default build/release/app/z4400conv)
# Needs soffice (libreoffice-calc-nogui), pdftoppm (poppler-utils) and
# python3.
set -eu
cd "$(dirname "$0")/.."

program=${1:-build/release/app/z4400conv}
example=examples/band_scan_markers.xml
[ -x "$program" ] || { echo "$0: no z4400conv at $program (build it first)" >&2; exit 2; }
for tool in soffice pdftoppm python3; do
  command -v "$tool" >/dev/null 2>&1 || { echo "$0: $tool is not installed" >&2; exit 3; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT INT TERM
mkdir "$work/out"
"$program" --batch --overwrite --settings-dir "$work" --output-dir "$work/out" "$example" \
  >"$work/convert.log" 2>&1 || { cat "$work/convert.log" >&2; exit 1; }
book="$work/out/band_scan_markers.xlsx"
timeout 180 soffice --headless --norestore "-env:UserInstallation=file://$work/profile" \
  --convert-to pdf --outdir "$work" "$book" >"$work/soffice.log" 2>&1 || {
  cat "$work/soffice.log" >&2
  exit 1
}
pdftoppm -r 90 -f 1 -l 2 "$work/band_scan_markers.pdf" "$work/page"
# The two pages side by side, blank margins trimmed, a white border added.
python3 - "$work" docs/report.png <<'PY'
import glob, struct, sys, zlib

def read_ppm(path):
    data = open(path, 'rb').read()
    fields, pos = [], 0
    while len(fields) < 4:
        while data[pos:pos + 1].isspace():
            pos += 1
        end = pos
        while not data[end:end + 1].isspace():
            end += 1
        fields.append(data[pos:end])
        pos = end
    width, height = int(fields[1]), int(fields[2])
    pixels = data[pos + 1:]
    return [pixels[row * width * 3:(row + 1) * width * 3] for row in range(height)], width

def columns_used(rows, width):
    # Leftmost and rightmost non-white pixel columns of a page.
    left, right = width, 0
    for row in rows:
        stripped = row.strip(b'\xff')
        if stripped:
            left = min(left, (len(row) - len(row.lstrip(b'\xff'))) // 3)
            right = max(right, width - (len(row) - len(row.rstrip(b'\xff'))) // 3)
    return left, right

# Calc cuts the sheet at a column boundary: the first page's content ends
# there and the second page's starts there, so each page is cut to its own
# content before the two are put side by side.
pages = []
for path in sorted(glob.glob(sys.argv[1] + '/page-*.ppm')):
    rows, width = read_ppm(path)
    left, right = columns_used(rows, width)
    pages.append(([row[left * 3:right * 3] for row in rows], right - left))
height = max(len(rows) for rows, _ in pages)
rows = []
for y in range(height):
    rows.append(b''.join(r[y] if y < len(r) else b'\xff' * (w * 3) for r, w in pages))
width = len(rows[0]) // 3
white = b'\xff\xff\xff'
used = [y for y in range(height) if rows[y].strip(b'\xff')]
top, bottom = used[0], used[-1]
left, right = 0, width
border = 16
out_width = right - left + 2 * border
raw = b''
for y in range(top - border, bottom + border + 1):
    line = rows[y][left * 3:right * 3] if top <= y <= bottom else white * (right - left)
    raw += b'\x00' + white * border + line + white * border

def chunk(kind, body):
    return struct.pack('>I', len(body)) + kind + body + struct.pack('>I', zlib.crc32(kind + body))

png = b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', struct.pack('>IIBBBBB', out_width, bottom - top + 1 + 2 * border, 8, 2, 0, 0, 0))
png += chunk(b'IDAT', zlib.compress(raw, 9)) + chunk(b'IEND', b'')
open(sys.argv[2], 'wb').write(png)
PY
echo docs/report.png

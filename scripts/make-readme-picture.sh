#!/bin/sh
# Makes docs/report.png, the picture of a converted report in README.md: the
# example examples/band_scan_markers.xml is converted by z4400conv and the
# first printed page of its "Report" sheet is drawn by LibreOffice Calc
# (general information, screen 1's configuration block, chart and marker
# list; the page's footer is left out).
#   scripts/make-readme-picture.sh [Z4400CONV]   (default build/rel/app/z4400conv)
# The report names the source file's full path; the example is converted
# from /mnt/measurements/ in a private mount namespace (unshare), so that the
# picture names no folder of the machine it was made on.
# Needs soffice (libreoffice-calc-nogui), pdftoppm (poppler-utils), unshare
# (util-linux) and python3.
set -eu
cd "$(dirname "$0")/.."

program=$(realpath "${1:-build/rel/app/z4400conv}")
example=$(realpath examples/band_scan_markers.xml)
[ -x "$program" ] || { echo "$0: no z4400conv at $program (build it first)" >&2; exit 2; }
for tool in soffice pdftoppm python3 unshare; do
  command -v "$tool" >/dev/null 2>&1 || { echo "$0: $tool is not installed" >&2; exit 3; }
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT INT TERM
mkdir "$work/out"
# Inside the namespace /mnt is an empty folder of its own; the machine's
# /mnt is not touched.
unshare --user --map-root-user --mount sh -c '
  mount -t tmpfs measurements /mnt && mkdir /mnt/measurements &&
  cp "$1" /mnt/measurements/ &&
  "$2" --batch --overwrite --settings-dir "$3" --output-dir "$3/out" \
    /mnt/measurements/band_scan_markers.xml' sh "$example" "$program" "$work" \
  >"$work/convert.log" 2>&1 || { cat "$work/convert.log" >&2; exit 1; }
book="$work/out/band_scan_markers.xlsx"
timeout 180 soffice --headless --norestore "-env:UserInstallation=file://$work/profile" \
  --convert-to pdf --outdir "$work" "$book" >"$work/soffice.log" 2>&1 || {
  cat "$work/soffice.log" >&2
  exit 1
}
pdftoppm -r 110 -f 1 -l 1 -singlefile "$work/band_scan_markers.pdf" "$work/page"
# The page cut to its content above the footer, with a white border.
python3 - "$work/page.ppm" docs/report.png <<'PY'
import struct, sys, zlib

data = open(sys.argv[1], 'rb').read()
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
rows = [pixels[y * width * 3:(y + 1) * width * 3] for y in range(height)]
used = [y for y in range(height) if rows[y].strip(b'\xff')]
# The footer is the last run of used rows, far below the content.
groups = [[used[0]]]
for y in used[1:]:
    if y - groups[-1][-1] > 60:
        groups.append([])
    groups[-1].append(y)
content = [y for group in groups[:-1] for y in group] if len(groups) > 1 else used
top, bottom = content[0], content[-1]
left, right = width, 0
for y in range(top, bottom + 1):
    row = rows[y]
    if row.strip(b'\xff'):
        left = min(left, (len(row) - len(row.lstrip(b'\xff'))) // 3)
        right = max(right, width - (len(row) - len(row.rstrip(b'\xff'))) // 3)
border = 16
white = b'\xff\xff\xff'
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

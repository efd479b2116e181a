#!/usr/bin/env bash
# Checks that Tallyview is installed under PREFIX (default /usr) as the desktop expects: the
# program answers --version and --check, finds and reads the printed lines of a scan with the
# module installed beside it (given the sample generator SAMPLEGEN to draw the page), and the desktop entry, the icon, the AppStream metainfo,
# the shared-mime-info description and the man page are in place and valid. With PREFIX other
# than /usr the MIME database is built in a copy, as update-mime-database does on installation.
set -euo pipefail
prefix=${1:-/usr}
samplegen=${2:-}
here=$(cd "$(dirname "$0")/.." && pwd)
share="$prefix/share"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "check-desktop-files: $*" >&2
  exit 1
}

# The program: its version, and a check of a transcription without a display.
version=$("$prefix/bin/tallyview" --version | head -n 1)
[ "$version" = "tallyview 1.0.0" ] || fail "--version printed '$version'"
status=0
env -u DISPLAY -u WAYLAND_DISPLAY "$prefix/bin/tallyview" --check \
  "$here/tests/data/check/findings.QRL" > "$work/report" 2> "$work/errors" || status=$?
[ "$status" -eq 1 ] || fail "--check on findings.QRL ended with status $status"
grep -qx "Tallyview Report for Deaths 1872 Qtr 1 Page 42" "$work/report" ||
  fail "--check wrote no report"

# The scan module: the installed program opens its own (bin/../LIBDIR/tallyview), finds the
# lines of a generated page and reads them, and reports the typing slips the page was drawn with.
module=$(find "$prefix/lib" -path '*/tallyview/tallyview-scan.so' | head -n 1)
[ -n "$module" ] || fail "no lib/.../tallyview/tallyview-scan.so under $prefix"
if [ -n "$samplegen" ]; then
  "$samplegen" --slips births1911 "$work/page" > /dev/null
  status=0
  env -u DISPLAY -u WAYLAND_DISPLAY LD_DEBUG=files "$prefix/bin/tallyview" --compare \
    "$work/page/1911B30456.jpg" "$work/page/1911B30456.QRL" > "$work/compared" \
    2> "$work/loaded" || status=$?
  [ "$status" -eq 1 ] || fail "--compare on a page with slips ended with status $status"
  grep -q "file=$prefix/bin/\.\./.*/tallyview/tallyview-scan\.so " "$work/loaded" ||
    fail "the installed program did not open the installed tallyview-scan.so"
  grep -qP '^7\t2\tGlays\tGladys$' "$work/compared" ||
    fail "--compare did not report the slip on line 7: $(head -n 3 "$work/compared")"
fi

# The desktop entry opens scans and transcriptions.
entry="$share/applications/tallyview.desktop"
desktop-file-validate "$entry" || fail "$entry is not valid"
for type in image/jpeg image/tiff text/x-bmd-transcription; do
  grep -q "^MimeType=.*$type;" "$entry" || fail "$entry does not open $type"
done

# The icon, in the hicolor theme.
icon="$share/icons/hicolor/scalable/apps/tallyview.svg"
[ "$(file -b --mime-type "$icon")" = "image/svg+xml" ] || fail "$icon is not an SVG image"

# The AppStream metainfo, checked offline, and with the desktop entry it launches.
metainfo="$share/metainfo/example.tallyview.Tallyview.metainfo.xml"
appstreamcli validate --no-net "$metainfo" > /dev/null || fail "$metainfo is not valid"
appstreamcli validate-tree --no-net "$prefix" > /dev/null || fail "$prefix does not validate"

# The transcriptions' MIME type: each extension, in capitals or not, maps to it.
mime="$share/mime"
[ -f "$mime/packages/tallyview.xml" ] || fail "no $mime/packages/tallyview.xml"
if [ "$prefix" != /usr ]; then
  mkdir -p "$work/mime/packages"
  cp "$mime/packages/tallyview.xml" "$work/mime/packages/"
  # It notes on standard error that the copy is not where applications look.
  update-mime-database "$work/mime" 2> /dev/null
  mime="$work/mime"
fi
for glob in '*.qrl' '*.sca' '*.bmd'; do
  grep -qxF "50:text/x-bmd-transcription:$glob" "$mime/globs2" ||
    fail "$glob is not a transcription in $mime/globs2"
done
grep -qF '<sub-class-of type="text/plain"/>' "$mime/packages/tallyview.xml" ||
  fail "the transcriptions are not plain text"

# The man page renders without a warning (compressed as the package installs it).
page="$share/man/man1/tallyview.1"
[ -f "$page" ] || [ ! -f "$page.gz" ] || page="$page.gz"
if [ -f "$page" ] || [ "$prefix" != /usr ]; then
  LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$page" > "$work/man" 2> "$work/man-warnings"
  [ ! -s "$work/man-warnings" ] || fail "$page: $(cat "$work/man-warnings")"
  grep -q -- "--print-to" "$work/man" || fail "$page does not describe --print-to"
fi
echo "check-desktop-files: $prefix holds a valid Tallyview"

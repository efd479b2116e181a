#!/usr/bin/env bash
# Installs the Debian package that `make package` built, with apt, as a volunteer would on a
# fresh Debian 12 machine: checks what the package holds and what it depends on, that the
# program answers --version and --check, opens a scan on a display, that its desktop entry,
# icon, MIME type and metainfo are in place and valid and that the file manager offers it for
# scans and transcriptions; then removes it and checks that nothing of it is left. It installs
# on this machine, so it needs root or sudo, and refuses to touch a tallyview installed before.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive

fail() {
  echo "test-package: $*" >&2
  exit 1
}

installed() {
  dpkg-query -W -f='${Status}' tallyview 2> /dev/null | grep -q 'install ok installed'
}

deb=$(ls -t "$build"/tallyview_*_*.deb 2> /dev/null | head -n 1)
[ -n "$deb" ] || fail "no tallyview_VERSION_ARCH.deb in $build: run make package"
! installed || fail "tallyview is installed already; remove it first"

# What the package holds, whatever this machine's dpkg leaves out of /usr/share/doc and man.
contents=$(dpkg-deb -c "$deb")
for path in usr/bin/tallyview usr/share/applications/tallyview.desktop \
  usr/share/icons/hicolor/scalable/apps/tallyview.svg \
  usr/share/metainfo/example.tallyview.Tallyview.metainfo.xml \
  usr/share/mime/packages/tallyview.xml usr/share/man/man1/tallyview.1.gz \
  usr/share/doc/tallyview/README.md usr/share/doc/tallyview/copyright \
  usr/share/doc/tallyview/changelog.gz; do
  grep -q " \./$path\$" <<< "$contents" || fail "$deb does not hold /$path"
done
grep -q " \./usr/lib/[^/]*/tallyview/tallyview-scan\.so\$" <<< "$contents" ||
  fail "$deb does not hold /usr/lib/<triplet>/tallyview/tallyview-scan.so"
# The libraries it needs, as dpkg-shlibdeps found them in the program and its scan module, the
# OCR's English data, and the plug-ins: Qt's TIFF reader and its SVG icon engine, which draws
# the window icon.
depends=$(dpkg-deb -f "$deb" Depends)
for library in libqt6widgets6 libqt6printsupport6 libstdc++6 libtesseract5 liblept5 \
  tesseract-ocr-eng qt6-image-formats-plugins libqt6svg6; do
  [[ "$depends" == *"$library"* ]] || fail "the package does not depend on $library: $depends"
done

work=$(mktemp -d)
remove() {
  if installed; then $SUDO apt-get remove -y -qq tallyview > /dev/null; fi
  rm -rf "$work"
}
trap remove EXIT
(cd "$(dirname "$deb")" && $SUDO apt-get install -y -qq "./$(basename "$deb")") > /dev/null
installed || fail "apt-get did not install $deb"
dpkg -L tallyview > "$work/files"

[ "$(command -v tallyview)" = /usr/bin/tallyview ] || fail "tallyview is not /usr/bin/tallyview"
scripts/check-desktop-files.sh /usr "$build/tools/tallyview_samplegen"

# The file manager offers it for scans and transcriptions (the desktop database's cache).
for type in image/jpeg text/x-bmd-transcription; do
  grep -q "^$type=.*tallyview.desktop" /usr/share/applications/mimeinfo.cache ||
    fail "the desktop database does not offer tallyview for $type"
done

# A scan and its transcription opened as the desktop entry opens them: the program is still
# showing them when the time is up.
"$build/tools/tallyview_samplegen" births1911 "$work/sample" > /dev/null
status=0
xvfb-run -a -s "-screen 0 1366x768x24" timeout 8 tallyview "$work/sample/1911B30456.jpg" \
  "$work/sample/1911B30456.QRL" 2> "$work/stderr" || status=$?
[ "$status" -eq 124 ] || fail "tallyview ended with status $status: $(cat "$work/stderr")"

$SUDO apt-get remove -y -qq tallyview > /dev/null
! installed || fail "apt-get did not remove tallyview"
while read -r path; do
  [ -d "$path" ] || [ ! -e "$path" ] || fail "$path is left after the removal"
done < "$work/files"
! grep -q "text/x-bmd-transcription" /usr/share/mime/globs2 ||
  fail "the MIME database still knows the transcriptions"
! grep -q "tallyview.desktop" /usr/share/applications/mimeinfo.cache ||
  fail "the desktop database still offers tallyview"
echo "test-package: $(basename "$deb") installs, works and removes cleanly"

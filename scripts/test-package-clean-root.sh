#!/usr/bin/env bash
# Installs the Debian package that `make package` built into a fresh minimal Debian 12 root
# (debootstrap --variant=minbase bookworm, from the Debian mirror this machine's apt uses), with
# apt inside that root, so that every library it needs must come through its Depends; then runs
# `tallyview --version`, `tallyview --check` on a bundled transcription and `tallyview --compare`
# on a generated page there. It needs root and the network: where the machine cannot debootstrap
# it says why and skips, except in CI (CI=true), where that is a failure.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
here=$(pwd)

fail() {
  echo "test-package-clean-root: $*" >&2
  exit 1
}

skip() {
  if [ "${CI:-}" = true ]; then fail "$* (CI must run this test)"; fi
  echo "test-package-clean-root: skipped: $*"
  exit 0
}

deb=$(ls -t "$build"/tallyview_*_*.deb 2> /dev/null | head -n 1)
[ -n "$deb" ] || fail "no tallyview_VERSION_ARCH.deb in $build: run make package"
[ "$(id -u)" -eq 0 ] || skip "debootstrap and chroot need root"
command -v debootstrap > /dev/null || skip "debootstrap is not installed (scripts/install-deps.sh)"

# The mirror this machine's apt uses for Debian itself.
mirror=$(grep -hoE '^(deb |URIs:)[[:space:]]*(\[[^]]*\][[:space:]]*)?https?://[^[:space:]]+/debian/?([[:space:]]|$)' \
  /etc/apt/sources.list /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources \
  2> /dev/null | grep -oE 'https?://[^[:space:]]+' | head -n 1 || true)
[ -n "$mirror" ] || skip "no Debian mirror in /etc/apt/sources.list*"
host=$(sed -E 's#^https?://([^/:]+).*#\1#' <<< "$mirror")
getent hosts "$host" > /dev/null || skip "the mirror $mirror cannot be reached (no network)"

start=$(date +%s)
root="$build/clean-root"
unmount() {
  for mount in "$root/proc" "$root/sys" "$root/dev/pts" "$root/dev"; do
    if mountpoint -q "$mount" 2> /dev/null; then umount -l "$mount"; fi
  done
}
# Nothing of this machine is deleted with the root: the mounts are gone first, and the removal
# stays on the root's own file system.
cleanup() {
  unmount
  if findmnt -rn -o TARGET | grep -q "^$(realpath -m "$root")/"; then
    echo "test-package-clean-root: $root still has mounts; left in place" >&2
    return
  fi
  rm -rf --one-file-system "$root"
}
trap cleanup EXIT
cleanup

debootstrap --variant=minbase bookworm "$root" "$mirror" > "$build/clean-root.log" 2>&1 || {
  tail -n 20 "$build/clean-root.log" >&2
  fail "debootstrap failed (the whole log is $build/clean-root.log)"
}
mount -t proc proc "$root/proc"
mount --rbind /sys "$root/sys"
mount --bind /dev "$root/dev"
mount --bind /dev/pts "$root/dev/pts"
cp /etc/resolv.conf "$root/etc/resolv.conf"

mkdir -p "$root/tmp/tallyview"
cp "$deb" "$root/tmp/tallyview/"
cp tests/data/check/findings.QRL "$root/tmp/tallyview/"
"$build/tools/tallyview_samplegen" --slips births1911 "$root/tmp/tallyview/page" > /dev/null
inside() {
  chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 \
    DEBIAN_FRONTEND=noninteractive "$@"
}
inside apt-get install -y -q --no-install-recommends "/tmp/tallyview/$(basename "$deb")" \
  >> "$build/clean-root.log" 2>&1 || {
  tail -n 20 "$build/clean-root.log" >&2
  fail "apt-get could not install $(basename "$deb") in the fresh root"
}

version=$(inside tallyview --version | head -n 1)
[ "$version" = "tallyview $(dpkg-deb -f "$deb" Version)" ] || fail "--version printed '$version'"
status=0
inside tallyview --check /tmp/tallyview/findings.QRL > "$build/clean-root-report" 2>&1 || status=$?
[ "$status" -eq 1 ] || fail "--check on findings.QRL ended with status $status: $(cat "$build/clean-root-report")"
grep -qx "Tallyview Report for Deaths 1872 Qtr 1 Page 42" "$build/clean-root-report" ||
  fail "--check wrote no report in the fresh root"
rm -f "$build/clean-root-report"
# The scan module and the OCR's data, with nothing but what the package brought in: the lines of
# a generated page are found and read, and its first typing slip is reported.
status=0
inside tallyview --compare /tmp/tallyview/page/1911B30456.jpg /tmp/tallyview/page/1911B30456.QRL \
  > "$build/clean-root-compared" 2> /dev/null || status=$?
[ "$status" -eq 1 ] || fail "--compare on a page with slips ended with status $status"
grep -qP '^7\t2\tGlays\tGladys$' "$build/clean-root-compared" ||
  fail "--compare did not report the slip on line 7 in the fresh root"
rm -f "$build/clean-root-compared"
echo "test-package-clean-root: $(basename "$deb") installs and runs in a fresh Debian 12 root" \
  "($(($(date +%s) - start)) s)"

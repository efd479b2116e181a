#!/usr/bin/env bash
# Builds the Debian package the Debian way, from debian/: the committed sources (git ls-files)
# are copied to BUILD/debian-package/tallyview-VERSION and built there by dpkg-buildpackage
# (dh with its CMake build system, Debian's hardening flags), so that nothing of a developer's
# build or worktree goes into it. The .deb lands in BUILD; lintian then checks it and fails on
# any error or warning (pedantic tags included; the info tags left are explained in
# docs/ARCHITECTURE.md), and hardening-check that the binary carries Debian's hardening.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
here=$(pwd)
mkdir -p "$build"
build=$(cd "$build" && pwd)

version=$(dpkg-parsechangelog -S Version)
work="$build/debian-package"
source="$work/tallyview-$version"
rm -rf "$work"
mkdir -p "$source"
git ls-files -z | (cd "$here" && xargs -0 cp --parents -t "$source")

# No developer's flags: the package is built with dpkg-buildflags' as Debian's builders build
# it (a compiler cache named in CMAKE_CXX_COMPILER_LAUNCHER only saves time).
export DEB_BUILD_OPTIONS="${DEB_BUILD_OPTIONS:-parallel=$(nproc)}"
(cd "$source" && env -u CXXFLAGS -u CFLAGS -u LDFLAGS -u CPPFLAGS dpkg-buildpackage -us -uc -b) > "$work/build.log" 2>&1 || {
  tail -n 40 "$work/build.log" >&2
  echo "build-package: dpkg-buildpackage failed; the whole log is $work/build.log" >&2
  exit 1
}

arch=$(dpkg-architecture -qDEB_HOST_ARCH)
deb="tallyview_${version}_${arch}.deb"
rm -f "$build"/tallyview_*_*.deb
cp "$work/$deb" "$build/"
lintian --pedantic --fail-on error,warning --display-info "$build/$deb" "$work"/*.changes
# Debian's hardening in the binary: PIE, stack protector, FORTIFY_SOURCE, RELRO, BIND_NOW.
# (Debian 12's dpkg-buildflags has no control-flow protection to add yet.)
unpacked="$work/unpacked"
dpkg-deb -x "$build/$deb" "$unpacked"
hardening-check --nocfprotection "$unpacked/usr/bin/tallyview"
# The scan module is built with the same flags; the only functions FORTIFY_SOURCE could check in
# it (memcpy, memmove, memset) copy buffers whose sizes are known only at run time, so no checked
# call is emitted and hardening-check would report "only unprotected functions found".
hardening-check --nocfprotection --nofortify "$unpacked"/usr/lib/*/tallyview/tallyview-scan.so
echo "build-package: $build/$deb"

#!/usr/bin/env bash
# Checks that the release is named alike everywhere: the version and the release date set in
# CMakeLists.txt against debian/changelog, the built AppStream metainfo, the man page and what the
# built program says for --version.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."

fail() {
  echo "check-release: $*" >&2
  exit 1
}

version=$(sed -n 's/^project(Tallyview VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
date=$(sed -n 's/^set(TALLYVIEW_RELEASE_DATE "\([0-9-]*\)")$/\1/p' CMakeLists.txt)
[ -n "$version" ] || fail "CMakeLists.txt sets no project version"
[ -n "$date" ] || fail "CMakeLists.txt sets no TALLYVIEW_RELEASE_DATE"

# debian/changelog: the top entry is this version (native) of this date.
top=$(head -n 1 debian/changelog)
[[ "$top" == "tallyview ($version) "* ]] || fail "debian/changelog's top entry is '$top', not $version"
stamp=$(grep -m 1 '^ -- ' debian/changelog | sed 's/.*>  //')
[ "$(date -u -d "$stamp" +%F)" = "$date" ] ||
  fail "debian/changelog's top entry is dated '$stamp', not $date"

# The metainfo as the build configured it.
metainfo=$(ls "$build"/data/*.metainfo.xml)
grep -qF "<release version=\"$version\" date=\"$date\"/>" "$metainfo" ||
  fail "$metainfo does not name release $version of $date"

# The man page's header: the month of the release and the version.
month=$(LC_ALL=C date -u -d "$date" '+%B %Y')
grep -qxF ".TH TALLYVIEW 1 \"$month\" \"Tallyview $version\" \"User Commands\"" data/tallyview.1 ||
  fail "data/tallyview.1 does not name Tallyview $version of $month"

# The program itself.
said=$("$build/tallyview" --version)
[ "$(head -n 1 <<< "$said")" = "tallyview $version" ] || fail "--version said '$said'"
grep -qxF "Released $date." <<< "$said" || fail "--version does not give the release date $date"
echo "check-release: $version of $date everywhere"

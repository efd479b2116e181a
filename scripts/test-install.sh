#!/usr/bin/env bash
# Installs the build into a fresh prefix (cmake --install) and checks the files the desktop
# expects there. The test suite runs it; `make package-test` does the same for the package.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" > /dev/null
scripts/check-desktop-files.sh "$prefix" "$build/tools/tallyview_samplegen"

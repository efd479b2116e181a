#!/usr/bin/env bash
# Opens Tallyview on the bundled sample. The windows are not built yet, so for now this runs
# the headless check on the sample transcription and prints its report.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
echo "Tallyview: checking the bundled sample transcription samples/1911B30123.QRL"
echo "(the windowed program is not built yet; this is the report it would print)"
status=0
"$build/tallyview" --check --scan samples/1911B30123.jpg samples/1911B30123.QRL || status=$?
echo "Exit status $status (0: no findings, 1: queries or warnings listed)"

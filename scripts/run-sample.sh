#!/usr/bin/env bash
# Opens Tallyview on a freshly generated sample: a scanned births index page of 1911 (two
# columns, mother's surname) and its transcription, ready to calibrate.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
sample="$build/sample"
"$build/tools/tallyview_samplegen" births1911 "$sample" > /dev/null
echo "Tallyview: opening the sample scan $sample/1911B30456.jpg with its transcription."
echo "Line the box up under the first entry of column 1 with the arrow keys and press ENTER."
exec "$build/tallyview" "$sample/1911B30456.jpg" "$sample/1911B30456.QRL"

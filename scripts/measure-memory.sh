#!/usr/bin/env bash
# Peak memory (resident set) of the program with a 40-megapixel grey scan open and verified to
# the end: the desktop benchmark's --verify-to-end mode opens the scan and its transcription
# through the four steps on Qt's offscreen platform, lines the box up and presses ENTER to the
# last record, under /usr/bin/time -v. The budget is the decoded image's bytes times 1.5 plus
# 120 MiB. Prints one table row; exits 1 when the budget does not hold.
#   scripts/measure-memory.sh [BUILD]
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
bench="$build/bench/tallyview_bench_desktop"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export XDG_RUNTIME_DIR="$work"

"$bench" --write-scan GreyJpeg 40 "$work" > /dev/null
/usr/bin/time -v "$bench" --verify-to-end GreyJpeg 40 "$work" > "$work/verified" 2> "$work/time"

peak_kib=$(sed -n 's/^[[:space:]]*Maximum resident set size (kbytes): \([0-9]*\)$/\1/p' "$work/time")
decoded=$(sed -n 's/^verified to line .*, \([0-9]*\) bytes$/\1/p' "$work/verified")
if [ -z "$peak_kib" ] || [ -z "$decoded" ]; then
  echo "measure-memory: the verification did not run to the end" >&2
  cat "$work/verified" "$work/time" >&2
  exit 1
fi
awk -v peak="$peak_kib" -v decoded="$decoded" 'BEGIN {
  mib = 1024 * 1024
  budget = decoded * 1.5 + 120 * mib
  used = peak * 1024
  printf "| Peak memory, 40 MP grey JPEG open and verified to the end | %.1f MiB | <= %.1f MiB (%.1f MiB decoded x 1.5 + 120 MiB) | %s |\n",
    used / mib, budget / mib, decoded / mib, (used <= budget ? "holds" : "**OVER**")
  exit used <= budget ? 0 : 1
}'

#!/usr/bin/env bash
# The installed program on a real X display (Xvfb), driven by xdotool as its user drives it: it
# opens a generated page given on the command line, is calibrated with key events only, steps
# through every record, flags one, reloads, shows the statistics screen and prints the report to
# a PDF file, and is closed from its menu. Screenshots show where the box stands; it must stand
# just below the entry that the sample generator drew there.
#
# The scan carries small marks of known colours at known places, so that a screenshot tells
# where the scan lies on the screen whatever the view has scrolled to.
#
# Usage: scripts/test-end-to-end.sh [BUILD_DIR]   (the test suite runs it)
set -euo pipefail

build=$(cd "${1:-build}" && pwd)
cd "$(dirname "$0")/.."

if [ -z "${TALLYVIEW_E2E_DISPLAY:-}" ]; then
    for tool in xvfb-run xdotool import convert pdftotext; do
        command -v "$tool" > /dev/null || { echo "test-end-to-end: $tool is missing"; exit 1; }
    done
    work=$(mktemp -d)
    trap 'rm -rf "$work"' EXIT
    status=0
    TALLYVIEW_E2E_DISPLAY=1 TALLYVIEW_E2E_WORK="$work" \
        xvfb-run -a -s "-screen 0 1366x768x24 -dpi 96" "$0" "$build" || status=$?
    [ "$status" -eq 0 ] || { [ -f "$work/shot.png" ] && cp "$work/shot.png" "$build/end-to-end-last.png"; }
    exit "$status"
fi

work=$TALLYVIEW_E2E_WORK
fail() {
    echo "test-end-to-end: $*" >&2
    exit 1
}

# --- the installed program and a generated page with marks
cmake --install "$build" --prefix "$work/prefix" > /dev/null
"$build/tools/tallyview_samplegen" births1911 "$work/page" > /dev/null
base="$work/page/1911B30456"
lines="$base.lines"

# Marks: 9 x 9 pixels of red 255, green 0 and blue 2 x index, on a grid 300 pixels apart.
MarkCols=8
draw=()
for ((i = 0; i < 96; i++)); do
    mx=$((30 + 300 * (i % MarkCols)))
    my=$((30 + 300 * (i / MarkCols)))
    draw+=(-fill "rgb(255,0,$((2 * i)))" -draw "rectangle $((mx - 4)),$((my - 4)) $((mx + 4)),$((my + 4))")
done
convert "$base.jpg" -type TrueColor "${draw[@]}" "PNG24:$base.png"

pitch=$(awk '$2 == "pitch" { print $3 }' "$lines")
# The records of the page: table line, column, x, y.
awk '$1 !~ /^#/' "$lines" > "$work/records"
records=$(wc -l < "$work/records")

export HOME="$work/home" XDG_CONFIG_HOME="$work/config"
mkdir -p "$HOME" "$XDG_CONFIG_HOME"

# --- looking at the screen
# The pixels of the screen in the box's colour or a mark's, as "x y red green blue" lines.
screenPixels() {
    import -window root "$work/shot.png"
    convert "$work/shot.png" -colorspace sRGB -type TrueColor -depth 8 txt:- |
        grep -E '^[0-9]+,[0-9]+: \((255,192,128|255,0,[0-9]+)\)' |
        awk -F'[:,() ]+' '{ print $1, $2, $3, $4, $5 }' || true
}

# Sets BoxX BoxY (the box's top left on the scan, pixels) and OffX OffY (scan to screen).
look() {
    sleep 0.2
    read -r BoxX BoxY OffX OffY < <(screenPixels | awk -v cols="$MarkCols" '
        $3 == 255 && $4 == 192 && $5 == 128 {
            if (!seen || $1 < bx) bx = $1
            if (!seen || $2 < by) by = $2
            seen = 1
        }
        $3 == 255 && $4 == 0 && $5 % 2 == 0 { n[$5]++; sx[$5] += $1; sy[$5] += $2 }
        END {
            best = -1
            for (b in n) if (n[b] == 81 && (best < 0 || b + 0 < best)) best = b + 0
            if (!seen || best < 0) { print "none none none none"; exit }
            i = best / 2
            ox = sx[best] / 81 - (30 + 300 * (i % cols))
            oy = sy[best] / 81 - (30 + 300 * int(i / cols))
            printf "%.1f %.1f %.1f %.1f\n", bx - ox, by - oy, ox, oy
        }')
    [ "$BoxX" != none ] || fail "no box or no mark of the scan on the screen"
}

# The generator's place for a table line: "x y".
place() { awk -v l="$1" '$1 == l { print $3, $4 }' "$work/records"; }
# The table line of the n-th record.
recordLine() { awk -v n="$1" 'NR == n { print $1 }' "$work/records"; }

# Fails unless the box stands at the place of the table line.
expectBoxAt() {
    local line=$1 x y
    read -r x y < <(place "$line")
    look
    awk -v bx="$BoxX" -v by="$BoxY" -v x="$x" -v y="$y" -v p="$pitch" \
        'BEGIN { exit !((bx - x) ^ 2 <= 15 ^ 2 && (by - y) ^ 2 <= (p / 3) ^ 2) }' ||
        fail "line $line: the box is at $BoxX,$BoxY on the scan, the entry at $x,$y"
}

key() { xdotool key --delay 20 "$@"; }

# Moves the box with the arrow keys, SHIFT for long way, until it stands at the place.
moveBoxTo() {
    local x=$1 y=$2 tries dx dy n
    for ((tries = 0; tries < 12; tries++)); do
        look
        read -r dx dy < <(awk -v a="$x" -v b="$BoxX" -v c="$y" -v d="$BoxY" \
            'BEGIN { printf "%d %d\n", a - b, c - d }')
        if ((dy > 16 || dy < -16)); then
            n=$(((dy < 0 ? -dy : dy) / 18))
            key --repeat "$n" "shift+$([ "$dy" -gt 0 ] && echo Down || echo Up)"
        elif ((dx > 16 || dx < -16)); then
            n=$(((dx < 0 ? -dx : dx) / 18))
            key --repeat "$n" "shift+$([ "$dx" -gt 0 ] && echo Right || echo Left)"
        elif ((dy > 2 || dy < -2)); then
            n=$(((dy < 0 ? -dy : dy) / 2))
            key --repeat "$n" "$([ "$dy" -gt 0 ] && echo Down || echo Up)"
        elif ((dx > 2 || dx < -2)); then
            n=$(((dx < 0 ? -dx : dx) / 2))
            key --repeat "$n" "$([ "$dx" -gt 0 ] && echo Right || echo Left)"
        else
            return 0
        fi
    done
    fail "the arrow keys did not bring the box to $x,$y"
}

# --- the session
"$work/prefix/bin/tallyview" "$base.png" "$base.QRL" &
program=$!
trap 'kill "$program" 2> /dev/null || true' EXIT
for ((i = 0; i < 60; i++)); do
    sleep 0.5
    [ "$(screenPixels | grep -c ' 255 192 128$' || true)" -gt 0 ] && break
done
kill -0 "$program" 2> /dev/null || fail "the program ended at start"

# Calibration: the first entry of column 1, its tenth entry, the first entry of column 2.
first=$(recordLine 1)
read -r x y < <(place "$first")
moveBoxTo "$x" "$y"
key Return
read -r x y < <(place "$(recordLine 10)")
moveBoxTo "$x" "$y"
key Return
# The box offers the record a column's share of records on; + and - pick the right one.
top2=$(awk '$2 == 2 { print NR; exit }' "$work/records")
offered=$((1 + records / 2))
if ((top2 > offered)); then key --repeat $((top2 - offered)) KP_Add; fi
if ((top2 < offered)); then key --repeat $((offered - top2)) KP_Subtract; fi
read -r x y < <(place "$(recordLine "$top2")")
moveBoxTo "$x" "$y"
key Return

# Calibrated: the box is back at the first entry; ENTER steps through every record.
expectBoxAt "$first"
for ((n = 2; n <= records; n++)); do
    key Return
    if ((n % 20 == 0 || n == top2 - 1 || n == top2 || n == records)); then
        expectBoxAt "$(recordLine "$n")"
    fi
done
echo "test-end-to-end: the box stood under every entry checked of $records"

# Flag the last record, reload (the flag warning answered OK), and the box stays on it.
key m
key r
sleep 1
key Return
expectBoxAt "$(recordLine "$records")"

# The statistics screen from the menu bar (F10), then Print: all the records, saved as a PDF.
key F10 Right Return
sleep 1
import -window root "$work/shot.png"
xdotool search --onlyvisible --name '^Tallyview - Statistics$' > /dev/null ||
    fail "the statistics screen did not open"
key Tab Tab space
sleep 1
key Return # all the records
sleep 1
key Return # no printer: a PDF file
sleep 1
key ctrl+a
xdotool type --delay 10 "$work/report.pdf"
key Return
for ((i = 0; i < 20; i++)); do
    [ -s "$work/report.pdf" ] && break
    sleep 0.5
done
[ -s "$work/report.pdf" ] || fail "no report was printed"
pdftotext "$work/report.pdf" "$work/report.txt"
grep -q "^QRL Records" "$work/report.txt" || fail "the report lists no records"
key Escape # the statistics screen's Close

# Exit from the File menu: the program ends and keeps this scan in its settings.
sleep 0.5
key F10 Up Return
for ((i = 0; i < 20; i++)); do
    kill -0 "$program" 2> /dev/null || break
    sleep 0.5
done
kill -0 "$program" 2> /dev/null && fail "the program did not end on Exit"
wait "$program" || fail "the program ended with status $?"
grep -rq "ImgFile=1911B30456.png" "$XDG_CONFIG_HOME" || fail "the scan was not remembered"
echo "test-end-to-end: passed"

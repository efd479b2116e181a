#!/usr/bin/env bash
# Writes screenshots of Tallyview at work to shots/ (or $SHOTS): the start window, the main
# window while calibrating and while verifying (box on a record, notes shown), the scan layout
# form, the statistics screen on each of its five lists, the help form, the About box, the
# diagnostics panel and the first page of the printed report. A generated page (births1872) is
# taken through the four steps, calibrated and stepped through by the desktop tests' tour, on a
# real X display under Xvfb; the tour drives the forms because lining the box up needs the
# page's known line positions. Each window is grabbed with QWidget::grab, so overlapping windows
# never hide one another. The tour prints the report to report.pdf; its first page is drawn here.
# With QT_SCALE_FACTOR set (2 for 200 %), the windows are drawn at that scale on a screen that
# much larger, so that they have the same room as at 100 %.
set -euo pipefail
build=${1:-build}
cd "$(dirname "$0")/.."
out=$(mkdir -p "${SHOTS:-shots}" && cd "${SHOTS:-shots}" && pwd)
cmake --build "$build" --target tests_desktop tallyview_samplegen > /dev/null
scale=${QT_SCALE_FACTOR:-1}
screen=$(awk -v s="$scale" 'BEGIN { printf "%dx%dx24", 1366 * s, 768 * s }')
TALLYVIEW_SHOTS_DIR="$out" QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR="$scale" \
    xvfb-run -a -s "-screen 0 $screen" \
    "$build/tests/tests_desktop" --gtest_filter='EndToEnd.ScreenshotsOfTheFormsAtWork' > /dev/null
pdftoppm -png -r 60 -f 1 -l 1 -singlefile "$out/report.pdf" "$out/9-report-page-1"
ls "$out"/*.png

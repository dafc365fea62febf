#!/bin/bash
# Makes the tour of all screens: one PNG of every screen of the built program with the sample diary, on a
# virtual display.
#
# Usage: scripts/tour.sh [all]
#   all  at 240x320, 480x640 and 720x960 client pixels, not only at 480x640
#
# Leaves the pictures in build/tour/ and prints their names. Fails when a screen does not come.
set -euo pipefail
cd "$(dirname "$0")/.."
sizes=(480x640)
[[ ${1:-} == all ]] && sizes+=(240x320 720x960)

rm -rf build/tour
mkdir -p build/tour build/logs
export LUNARA_SCREEN=1024x1100x24  # higher than the tallest window
if ! LUNARA_DISPLAY=virtual LUNARA_E2E_RUN=tour scripts/e2e.sh \
    build/windows/tests/driver/lunara_tour.exe "${sizes[@]}" >build/logs/tour.log 2>&1; then
    tail -n 30 build/logs/tour.log >&2
    exit 1
fi
for picture in build/windows/e2e-tour/pictures/*.png; do
    name=build/tour/$(basename "$picture")
    mv "$picture" "$name"
    mogrify -trim +repage "$name"  # to the window: the desktop around it has one colour
    echo "$name"
done

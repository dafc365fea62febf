#!/bin/bash
# Makes the tour of all screens: runs the built program with the sample diary on a virtual display
# and takes one PNG of every screen.
#
# Usage: scripts/tour.sh [all]
#   all  at 240x320, 480x640 and 720x960; without it at 480x640 only
#
# Writes the pictures to build/tour/ and prints their names.
set -euo pipefail
cd "$(dirname "$0")/.."
sizes='480x640'
[[ ${1:-} == all ]] && sizes='*'

rm -rf build/tour
mkdir -p build/tour build/logs
# The display is taller than the tallest window.
export LUNARA_SCREEN=1024x1100x24
if ! LUNARA_DISPLAY=virtual LUNARA_E2E_PREFIX="$PWD/build/wine-tour" scripts/e2e.sh \
    build/windows/tests/e2e/lunara_tour.exe "--gtest_filter=*/$sizes" >build/logs/tour.log 2>&1; then
    tail -n 30 build/logs/tour.log >&2
    exit 1
fi
for picture in build/windows/e2e/pictures/*.png; do
    # From Sizes_Tour.EveryScreen_480x640-03-notes.png, whose separators may differ, to
    # 480x640-03-notes.png.
    name=$(basename "$picture" | sed -E 's/.*([0-9]{3}x[0-9]{3})-([0-9]+-.*)/\1-\2/')
    mv "$picture" "build/tour/$name"
    # Crops to the window: -trim removes the desktop around it, which has one colour.
    mogrify -trim +repage "build/tour/$name"
    echo "build/tour/$name"
done

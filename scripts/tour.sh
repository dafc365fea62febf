#!/bin/bash
# The tour of all screens: the built program with the sample diary on a virtual display, one PNG of every
# screen.
#
# Usage: scripts/tour.sh [all]
#   all  also at 240x320 and 720x960, not only at 480x640
#
# The pictures' names are printed; they are in build/tour/.
set -euo pipefail
cd "$(dirname "$0")/.."
sizes='480x640'
[[ ${1:-} == all ]] && sizes='*'

rm -rf build/tour
mkdir -p build/tour build/logs
# Higher than the tallest window.
export LUNARA_SCREEN=1024x1100x24
if ! LUNARA_DISPLAY=virtual LUNARA_E2E_PREFIX="$PWD/build/wine-tour" scripts/e2e.sh \
    build/windows/tests/e2e/lunara_tour.exe "--gtest_filter=*/$sizes" >build/logs/tour.log 2>&1; then
    tail -n 30 build/logs/tour.log >&2
    exit 1
fi
for picture in build/windows/e2e/pictures/*.png; do
    # Sizes_Tour.EveryScreen_480x640-03-notes.png, perhaps with other separators
    name=$(basename "$picture" | sed -E 's/.*([0-9]{3}x[0-9]{3})-([0-9]+-.*)/\1-\2/')
    mv "$picture" "build/tour/$name"
    # Trimmed to the window: the desktop around it is of one colour.
    mogrify -trim +repage "build/tour/$name"
    echo "build/tour/$name"
done

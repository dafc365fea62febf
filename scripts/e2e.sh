#!/bin/bash
# Runs the end-to-end tests: they drive the built program from outside, with a date that they set.
#
# Usage: scripts/e2e.sh [PROGRAM.exe [GOOGLETEST ARGUMENTS...]]
#   PROGRAM.exe  the test program; build/windows/tests/e2e/lunara_e2e.exe unless given
#
# Leaves screenshots of the steps in <build folder>/e2e/pictures, as PNG where ImageMagick is there.
#
# LUNARA_E2E_RUN names a run that takes place beside another one. It gets a Wine prefix, a date file
# and a full-disk switch of its own and keeps the other run's pictures. The two runs must not have a
# test in common: a test always uses the same folder.
#
# The date is faked for the test program and what it starts, not for the Wine server, which starts
# earlier and keeps timers in real time. Only the wall clock is faked, not the monotonic clock:
# timers and tick counts run normally.
set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
run=${LUNARA_E2E_RUN:+-$LUNARA_E2E_RUN}

if [[ ${1:-} == --inside ]]; then
    program=$2
    shift 2
    library=$(find /usr/lib -name libfaketime.so.1 -print -quit)
    if [[ -z $library ]]; then
        echo "e2e.sh: libfaketime is missing (package faketime)" >&2
        exit 1
    fi
    folder=$(dirname "$program")
    # The preloaded library with which a test declares a disk full (tests/e2e/full_disk.cpp).
    full_disk=$folder/full_disk$run.so
    ${CXX:-c++} -std=c++20 -O1 -shared -fPIC -o "$full_disk" "$project/tests/e2e/full_disk.cpp" -ldl
    full_disk_file=$folder/e2e-full-disk$run.txt
    rm -f "$full_disk_file"
    date_file=$folder/e2e-date$run.txt
    echo "2006-03-05 12:00:00" >"$date_file"
    # In a desktop window Wine draws frames and moves the focus itself, instead of waiting for a
    # window manager, which the virtual display does not have.
    wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
    screen=${LUNARA_SCREEN:-1024x900x24}  # the desktop window fills the display
    wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d "${screen%x*}" /f >/dev/null 2>&1
    LUNARA_E2E_DATE_FILE=$(winepath -w "$date_file" 2>/dev/null) \
        LUNARA_E2E_FULL_DISK=$(winepath -w "$full_disk_file" 2>/dev/null) \
        LUNARA_E2E_FULL_DISK_HOST=$full_disk_file \
        TZ=UTC FAKETIME_TIMESTAMP_FILE=$date_file FAKETIME_NO_CACHE=1 \
        DONT_FAKE_MONOTONIC=1 FAKETIME_DONT_FAKE_MONOTONIC=1 NO_FAKE_STAT=1 \
        LD_PRELOAD=$library:$full_disk wine "$program" "$@"
    exit
fi

# A prefix of its own, because the desktop window is a setting of the whole prefix.
export WINEPREFIX=${LUNARA_E2E_PREFIX:-$project/build/wine-e2e$run}
program=${1:-$project/build/windows/tests/e2e/lunara_e2e.exe}
(($# == 0)) || shift
program=$(realpath "$program")
pictures=$(dirname "$(dirname "$(dirname "$program")")")/e2e/pictures
[[ -n $run ]] || rm -rf "$pictures"

status=0
LUNARA_TIMEOUT=${LUNARA_TIMEOUT:-1800} \
    "$project/scripts/wine.sh" with "$project/scripts/e2e.sh" --inside "$program" "$@" || status=$?

if [[ -d $pictures ]] && command -v mogrify >/dev/null; then
    (cd "$pictures" && mogrify -format png ./*.bmp && rm -f ./*.bmp) || true
fi
exit "$status"

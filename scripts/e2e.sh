#!/bin/bash
# Runs a program that drives the built Lunara from outside, the end-to-end tests unless another one is
# given, with a display of its own and a date that the program sets.
#
# Usage: scripts/e2e.sh [PROGRAM.exe [ARGUMENTS...]]
#   PROGRAM.exe  build/windows/tests/e2e/lunara_e2e.exe unless given
#   ARGUMENTS    of the program; for the tests those of GoogleTest
#
# Everything that a run leaves behind is in <build folder>/e2e/: the program folders of the tests in run/,
# a picture of each step in pictures/, as PNG where ImageMagick is installed.
#
# LUNARA_E2E_RUN=NAME makes a run that can go on beside others. It shares no file with a run of another
# name: its folder is <build folder>/e2e-NAME/, its Wine prefix build/wine-e2e-NAME, and with them its
# settings, backups, date and full disk are its own. GoogleTest's sharding splits the tests over runs:
#   LUNARA_E2E_RUN=b GTEST_TOTAL_SHARDS=2 GTEST_SHARD_INDEX=1 scripts/e2e.sh
#
# The Wine server starts before the date is set, so that it keeps timers in real time. Only the wall clock
# is faked: the monotonic clock, and with it tick counts, run as always.
set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
run=${LUNARA_E2E_RUN:+-$LUNARA_E2E_RUN}

# The build folder of a program in <build folder>/tests/<folder>/, plus the run's own folder in it.
run_folder_of() { echo "$(dirname "$(dirname "$(dirname "$1")")")/e2e$run"; }

if [[ ${1:-} == --inside ]]; then
    program=$2
    shift 2
    library=$(find /usr/lib -name libfaketime.so.1 -print -quit)
    if [[ -z $library ]]; then
        echo "e2e.sh: libfaketime is missing (package faketime)" >&2
        exit 1
    fi
    folder=$(run_folder_of "$program")
    mkdir -p "$folder"
    preloaded=$library
    # Lets a test declare a disk full (tests/driver/full_disk.cpp). Without a compiler for the host a test
    # that does so fails; the tour does not and runs.
    compiler=${CXX:-c++}
    if command -v "$compiler" >/dev/null; then
        full_disk=$folder/full_disk.so
        "$compiler" -std=c++20 -O1 -shared -fPIC -o "$full_disk" \
            "$project/tests/driver/full_disk.cpp" -ldl
        preloaded+=:$full_disk
        export LUNARA_E2E_FULL_DISK_HOST=$folder/full-disk.txt
        rm -f "$LUNARA_E2E_FULL_DISK_HOST"
        LUNARA_E2E_FULL_DISK=$(winepath -w "$LUNARA_E2E_FULL_DISK_HOST" 2>/dev/null)
        export LUNARA_E2E_FULL_DISK
    fi
    date_file=$folder/date.txt
    echo "2006-03-05 12:00:00" >"$date_file"
    # Wine's desktop mode: Wine then draws frames and moves the focus itself, instead of waiting for a
    # window manager, which the virtual display does not have.
    wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d Default /f >/dev/null 2>&1
    screen=${LUNARA_SCREEN:-1024x900x24}  # the desktop fills the display
    wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v Default /d "${screen%x*}" /f >/dev/null 2>&1
    # Carets do not blink: pictures of the same screen are the same at any moment.
    wine reg add 'HKCU\Control Panel\Desktop' /v CursorBlinkRate /d -1 /f >/dev/null 2>&1
    LUNARA_E2E_DATE_FILE=$(winepath -w "$date_file" 2>/dev/null) \
        TZ=UTC FAKETIME_TIMESTAMP_FILE=$date_file FAKETIME_NO_CACHE=1 \
        DONT_FAKE_MONOTONIC=1 FAKETIME_DONT_FAKE_MONOTONIC=1 NO_FAKE_STAT=1 \
        LD_PRELOAD=$preloaded wine "$program" "$@"
    exit
fi

# Not the prefix of the other Wine tests, because desktop mode is a setting of the whole prefix.
export WINEPREFIX=$project/build/wine-e2e$run
program=${1:-$project/build/windows/tests/e2e/lunara_e2e.exe}
(($# == 0)) || shift
program=$(realpath "$program")
pictures=$(run_folder_of "$program")/pictures
rm -rf "$pictures"

status=0
LUNARA_TIMEOUT=${LUNARA_TIMEOUT:-1800} \
    "$project/scripts/wine.sh" with "$project/scripts/e2e.sh" --inside "$program" "$@" || status=$?

if [[ -d $pictures ]] && command -v mogrify >/dev/null; then
    (cd "$pictures" && mogrify -format png ./*.bmp && rm -f ./*.bmp) || true
fi
exit "$status"

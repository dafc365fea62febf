#!/bin/bash
# Runs Windows programs under Wine, without prompts or downloads, and cleans up afterwards.
#
# Usage: scripts/wine.sh run EXE [ARGS...]       one program; exits with its exit code
#        scripts/wine.sh with COMMAND [ARGS...]  a command that itself starts Wine programs
#
# The environment is passed through. These variables change the defaults:
#   WINEPREFIX       Wine's prefix, created on first use; default build/wine of the project
#   DISPLAY          the display to use; if unset, or with LUNARA_DISPLAY=virtual, a virtual display
#                    is started for this run
#   LUNARA_SCREEN    size of the virtual display; default 1024x900x24
#   LUNARA_TIMEOUT   seconds until the program is ended, with exit code 124; default 600, 0 for none
#   LUNARA_SHARED=1  joins the Wine server of the prefix and leaves it running. Otherwise the server
#                    and its programs are stopped before and after the run: a server that was
#                    started without a display never creates a window again.
set -euo pipefail

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

usage() {
    echo "usage: scripts/wine.sh run EXE [ARGS...] | with COMMAND [ARGS...]" >&2
    exit 2
}

(($# >= 2)) || usage
case $1 in
    run) shift; command=(wine "$@") ;;
    with) shift; command=("$@") ;;
    *) usage ;;
esac

export WINEPREFIX="${WINEPREFIX:-$project/build/wine}"
export WINEARCH=win64
# -all silences Wine's messages, also the one that 32-bit Wine is missing, which nothing here needs.
export WINEDEBUG="${WINEDEBUG:--all}"
# Wine encodes file names in the character set of the locale. In the C locale of a bare system it
# cannot create names with non-ASCII letters.
if [[ $(locale charmap 2>/dev/null) != UTF-8 ]]; then
    export LC_ALL=C.UTF-8
fi
# Disables mscoree and mshtml, which Wine would offer to download, and winemenubuilder, which would
# write to the user's own menus.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe=d}"

shared="${LUNARA_SHARED:-0}"
timeout_seconds="${LUNARA_TIMEOUT:-600}"
display_server=
scratch=$(mktemp -d)
child=

# Ends the processes of this run and nothing else: its command, the prefix's Wine server unless
# shared, and its virtual display.
# shellcheck disable=SC2317  # called by the traps
clean_up() {
    trap - EXIT INT TERM HUP PIPE
    if [[ -n $child ]] && kill -0 "$child" 2>/dev/null; then
        kill -TERM "$child" 2>/dev/null || true
        wait "$child" 2>/dev/null || true
    fi
    if [[ $shared != 1 ]]; then
        stop_server
    fi
    if [[ -n $display_server ]]; then
        kill "$display_server" 2>/dev/null || true
        wait "$display_server" 2>/dev/null || true
    fi
    rm -rf "$scratch"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
trap 'exit 129' HUP
trap 'exit 141' PIPE

stop_server() {
    [[ -d $WINEPREFIX ]] || return 0
    wineserver -k >/dev/null 2>&1 || true
    wineserver -w >/dev/null 2>&1 || true
}

# Starts a virtual display and waits until it is ready. Xvfb picks a free number and reports it.
start_display() {
    mkfifo "$scratch/display"
    Xvfb -displayfd 3 -screen 0 "${LUNARA_SCREEN:-1024x900x24}" -nolisten tcp -noreset \
        3>"$scratch/display" >"$scratch/display.log" 2>&1 </dev/null &
    display_server=$!
    local number=
    # If Xvfb fails it closes its end of the pipe, and the read returns without a number.
    read -r -t 60 number <"$scratch/display" || true
    if [[ -z $number ]]; then
        echo "wine.sh: the virtual display did not start:" >&2
        cat "$scratch/display.log" >&2
        exit 1
    fi
    export DISPLAY=":$number"
}

# Creates the prefix. Replaces Wine's links to the user's own folders by empty folders: programs
# under test must neither read nor write there.
make_prefix() {
    mkdir -p "$(dirname "$WINEPREFIX")"
    local fresh=1
    [[ -e $WINEPREFIX/system.reg ]] && fresh=0
    if ! timeout -k 10 300 wine wineboot -i >"$scratch/wineboot.log" 2>&1 </dev/null; then
        echo "wine.sh: Wine could not make $WINEPREFIX:" >&2
        cat "$scratch/wineboot.log" >&2
        exit 1
    fi
    wineserver -w
    if ((fresh)); then
        local link
        while IFS= read -r -d '' link; do
            rm "$link"
            mkdir "$link"
        done < <(find "$WINEPREFIX/drive_c/users" -type l -print0)
    fi
    # Unmanaged windows for the UI tests: whenever a managed one closes, Wine waits two seconds for
    # a window manager, which the virtual display does not have.
    wine reg add 'HKCU\Software\Wine\AppDefaults\lunara_ui_tests.exe\X11 Driver' \
        /v Managed /d N /f >/dev/null 2>&1
    touch "$WINEPREFIX/.ready"
}

if [[ $shared != 1 ]]; then
    stop_server
fi
if [[ -z ${DISPLAY:-} || ${LUNARA_DISPLAY:-} == virtual ]]; then
    start_display
fi
if [[ ! -e $WINEPREFIX/.ready ]]; then
    make_prefix
fi

# Caption buttons are drawn with letters of this font, which Debian's Wine does not find where its
# package installs it. Without the font the buttons show "0", "1" and "r".
signs=/usr/share/wine/fonts/marlett.ttf
if [[ -e $signs ]]; then
    ln -sf "$signs" "$WINEPREFIX/drive_c/windows/Fonts/marlett.ttf"
fi

# Runs in the background under `wait`: bash delays a trap until a foreground command has ended.
status=0
timeout -k 10 "$timeout_seconds" "${command[@]}" <&0 &
child=$!
wait "$child" || status=$?
child=
exit "$status"

#!/bin/bash
# Runs Windows programs under Wine without asking, downloading or leaving anything behind.
#
# Usage: scripts/wine.sh run EXE [ARGS...]       one program; exits with its exit code
#        scripts/wine.sh with COMMAND [ARGS...]  any command that starts Wine programs itself
#
# The environment is passed through. These variables choose what is not usual:
#   WINEPREFIX       Wine's folder; build/wine of the project unless set, made on first use
#   DISPLAY          used as it is; without one, or with LUNARA_DISPLAY=virtual, the program gets a
#                    virtual display of its own
#   LUNARA_SCREEN    size of the virtual display (1024x900x24)
#   LUNARA_TIMEOUT   seconds until the program is ended, exit code 124 (600); 0 for none
#   LUNARA_SHARED=1  joins the Wine server that runs in the prefix, and lets it run on. Otherwise
#                    whatever runs in the prefix is ended first and afterwards: a server that was
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
# -all also silences the remark that there is no 32-bit Wine, which nothing here needs.
export WINEDEBUG="${WINEDEBUG:--all}"
# Wine writes file names in the character set of the locale. In that of a bare system, which is none,
# names with other letters than English ones cannot be made.
if [[ $(locale charmap 2>/dev/null) != UTF-8 ]]; then
    export LC_ALL=C.UTF-8
fi
# Without these two Wine offers to download them; winemenubuilder writes into the user's own menus.
export WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml=;winemenubuilder.exe=d}"

shared="${LUNARA_SHARED:-0}"
timeout_seconds="${LUNARA_TIMEOUT:-600}"
display_server=
scratch=$(mktemp -d)
child=

# Ends what this script started and nothing else.
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

# Starts a display on a free number, which the server itself chooses, and waits until it answers.
start_display() {
    mkfifo "$scratch/display"
    Xvfb -displayfd 3 -screen 0 "${LUNARA_SCREEN:-1024x900x24}" -nolisten tcp -noreset \
        3>"$scratch/display" >"$scratch/display.log" 2>&1 </dev/null &
    display_server=$!
    local number=
    # A server that gives up closes its end, and the read ends with nothing.
    read -r -t 60 number <"$scratch/display" || true
    if [[ -z $number ]]; then
        echo "wine.sh: the virtual display did not start:" >&2
        cat "$scratch/display.log" >&2
        exit 1
    fi
    export DISPLAY=":$number"
}

# Makes the prefix. The user's own folders are not linked into it: programs under test must not
# find, or leave, anything there.
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
    # Wine waits two seconds for a window manager whenever a window closes, and the virtual display
    # has none. The windows of the test program do without.
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

# The signs on caption buttons are letters of this font, which Debian's Wine does not find where its
# package puts it. Without it a window has the buttons "0", "1" and "r".
signs=/usr/share/wine/fonts/marlett.ttf
if [[ -e $signs ]]; then
    ln -sf "$signs" "$WINEPREFIX/drive_c/windows/Fonts/marlett.ttf"
fi

# In the background and waited for, so that a signal to this script is handled at once.
status=0
timeout -k 10 "$timeout_seconds" "${command[@]}" <&0 &
child=$!
wait "$child" || status=$?
child=
exit "$status"

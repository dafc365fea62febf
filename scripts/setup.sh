#!/bin/bash
# Installs the missing packages that building and testing Lunara needs.
#
# Usage: scripts/setup.sh [program|native|all]
#   program  what ./run needs: the Windows cross compiler, Wine and a virtual display
#   native   the portable core, the companion, their tests and the checkers
#   all      both, and the libraries that the benchmarks compare with (the default)
#
# Only Debian packages are used. Prints nothing and asks nothing when none is missing.
set -euo pipefail

profile="${1:-all}"

packages=(cmake ninja-build git libcli11-dev nlohmann-json3-dev)
if [[ $profile != program ]]; then
    packages+=(g++ clang clang-format clang-tidy libclang-rt-14-dev python3 googletest)
fi
if [[ $profile != native ]]; then
    packages+=(g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 wine wine64 xvfb xauth faketime
               xdotool imagemagick fonts-wine fonts-dejavu-core fonts-liberation procps)
fi
if [[ $profile == all ]]; then
    packages+=(libbenchmark-dev libssl-dev libgcrypt20-dev nettle-dev)
fi

missing=()
for package in "${packages[@]}"; do
    state=$(dpkg-query -W -f='${db:Status-Abbrev}' "$package" 2>/dev/null || true)
    [[ $state == ii* ]] || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        echo "setup: these packages are missing and there is no sudo to install them:" >&2
        echo "  ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update &&
       "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
           apt-get install -y --no-install-recommends "${missing[@]}"; } >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    echo "setup: apt-get could not install them (its last lines stand above)" >&2
    exit 1
fi

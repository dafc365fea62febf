#!/bin/bash
# Runs clang-tidy over our sources in a preset's build; fails on any finding.
#
# Usage: scripts/lint.sh native|windows [all]
#   native   the sources of the native build
#   windows  the sources that only the Windows build compiles
#   all      includes tests and benchmarks, which take several times as long as the program
set -euo pipefail
cd "$(dirname "$0")/.."
preset="${1:?native or windows}"
left_out='^(tests|benchmarks)/'
[[ ${2:-} == all ]] && left_out='^$'

sources_of() {  # PRESET: prints our .cpp files of its compile commands, as paths from the root
    sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "build/$1/compile_commands.json" |
        grep "^$PWD/" | grep -v "^$PWD/build/" | sed "s#^$PWD/##" | grep '\.cpp$' | grep -vE "$left_out" | sort -u
}

arguments=()
if [[ $preset == windows ]]; then
    mapfile -t files < <(comm -13 <(sources_of native) <(sources_of windows))
    headers=/usr/lib/gcc/x86_64-w64-mingw32/12-posix/include/c++
    arguments=(--extra-arg=--target=x86_64-w64-windows-gnu
        --extra-arg=-isystem$headers --extra-arg=-isystem$headers/x86_64-w64-mingw32
        --extra-arg=-isystem/usr/x86_64-w64-mingw32/include
        --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-ignored-attributes)
else
    mapfile -t files < <(sources_of native)
fi

# Skips a file that was clean before, until it, any header, clang-tidy or its settings change.
mkdir -p "build/lint/$preset"
state=$({ clang-tidy --version; cat .clang-tidy scripts/lint.sh; cat $(git ls-files '*.h' '*.inc'); } | sha1sum | cut -c1-16)
export preset state
lint_one() {
    local file="$1" stamp
    shift
    stamp="build/lint/$preset/$(tr / _ <<<"$file").$(sha1sum <"$file" | cut -c1-16).$state"
    [[ -e $stamp ]] && return 0
    if clang-tidy --quiet -p "build/$preset" "$@" "$file" 2>/dev/null; then
        touch "$stamp"
    else
        echo "lint: $file"
        return 1
    fi
}
export -f lint_one
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -I{} bash -c 'lint_one "$@"' _ {} "${arguments[@]}"
echo "lint: ${#files[@]} files of the $preset build"

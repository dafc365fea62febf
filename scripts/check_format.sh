#!/bin/bash
# Checks that every C++ source file is formatted according to .clang-format; --fix formats them.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run --Werror)
[[ ${1:-} == --fix ]] && mode=(-i)
mapfile -t files < <(git ls-files --cached --others --exclude-standard '*.cpp' '*.h')
clang-format "${mode[@]}" "${files[@]}"
echo "format: ${#files[@]} files"

#!/bin/bash
# Fails when a source file is not formatted as .clang-format says. With --fix, formats it.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run --Werror)
[[ ${1:-} == --fix ]] && mode=(-i)
mapfile -t files < <(git ls-files --cached --others --exclude-standard '*.cpp' '*.h')
clang-format "${mode[@]}" "${files[@]}"
echo "format: ${#files[@]} files"

#!/usr/bin/env bash
# Fails when a C++ file of the project differs from what the project's .clang-format makes
# of it, and names the files. scripts/check-format.sh --fix rewrites them instead.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v clang-format >/dev/null || { echo "clang-format is not installed (apt-get install clang-format)"; exit 1; }
mapfile -t files < <(git ls-files '*.cpp' '*.h')
if [ "${1:-}" = "--fix" ]; then
    clang-format -i "${files[@]}"
    exit 0
fi
bad=()
for f in "${files[@]}"; do
    if ! clang-format --dry-run --Werror "$f" >/dev/null 2>&1; then
        bad+=("$f")
    fi
done
if [ ${#bad[@]} -ne 0 ]; then
    echo "Not formatted by .clang-format (run scripts/check-format.sh --fix):"
    printf '  %s\n' "${bad[@]}"
    exit 1
fi
echo "Formatting: ${#files[@]} files as .clang-format wants them"

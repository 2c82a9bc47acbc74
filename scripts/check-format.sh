#!/usr/bin/env bash
# Fails, naming the places, if a source differs from what .clang-format asks for.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

git ls-files -z '*.h' '*.cpp' | xargs -0 --no-run-if-empty clang-format-14 --dry-run -Werror

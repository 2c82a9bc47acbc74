#!/usr/bin/env bash
# Builds everything and runs all tests; with --sanitize under the address and undefined behaviour
# sanitizers.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

preset=debug
case "$#:${1:-}" in
  0:) ;;
  1:--sanitize) preset=sanitize ;;
  *) echo "usage: ./test.sh [--sanitize]" >&2; exit 2 ;;
esac

scripts/install.sh
cmake --preset "$preset" --log-level=WARNING
cmake --build --preset "$preset"
# No test may need a screen, nor open a window on the one that somebody works at.
export QT_QPA_PLATFORM=offscreen
ctest --preset "$preset" -j2

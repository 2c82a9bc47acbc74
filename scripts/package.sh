#!/usr/bin/env bash
# Builds Oriolemark as its users get it, and packs it: a Debian package and a plain archive, in
# build/release/package.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install.sh
cmake --preset release --log-level=WARNING
cmake --build --preset release --target packaging
cd build/release
cpack

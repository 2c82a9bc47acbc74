#!/usr/bin/env bash
# Installs those packages of packages.txt that this machine does not have yet.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "install: no apt-get here. Install what packages.txt names by this system's own means;" \
    "going on with what is there."
  exit 0
fi

missing=()
while read -r package; do
  status="$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)"
  [[ "$status" == installed ]] || missing+=("$package")
done < <(sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' packages.txt)

((${#missing[@]})) || exit 0

as_root=()
if ((EUID != 0)); then
  if ! command -v sudo >/dev/null; then
    echo "install: these packages are missing, and only root may install them: ${missing[*]}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

echo "install: installing with apt-get: ${missing[*]}"
"${as_root[@]}" apt-get -qq update
# Handed over by env, because sudo does not pass the caller's environment on.
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get -qq install --yes --no-install-recommends "${missing[@]}" >/dev/null
echo "install: done"

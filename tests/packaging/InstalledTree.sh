#!/usr/bin/env bash
# Installs the build into a prefix of its own, and starts its programs from there as a user would,
# from a folder that cannot be written. usage: InstalledTree.sh BUILD
set -euo pipefail

folder="$(mktemp -d)"
trap 'kill $(jobs -p) 2>/dev/null || true; wait; chmod -R u+w "$folder"; rm -rf "$folder"' EXIT
repository="$(realpath "$(dirname "$0")/../..")"
cmake --install "$1" --prefix "$folder/prefix" >/dev/null
export PATH="$folder/prefix/bin:$PATH" XDG_DATA_HOME="$folder/data" XDG_CONFIG_HOME="$folder/config"
cp "$repository/docs/formats/example.orm" "$folder/prefix/share"
# The simulator, whoever starts it, keeps a log.
mv "$folder/prefix/bin/tx5000sim" "$folder/prefix/bin/simulator"
printf '#!/bin/sh\nexec simulator --log "%s/log" "$@"\n' "$folder" >"$folder/prefix/bin/tx5000sim"
chmod +x "$folder/prefix/bin/tx5000sim"
chmod -R a-w "$folder/prefix"
cd "$folder/prefix/share"
find "$folder/prefix" | sort >"$folder/before"

# Without a display, and with one that does not answer: one line, and the code of a failure.
for display in "" :4242; do
  code=0
  env -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM DISPLAY="$display" oriolemark 2>"$folder/said" || code=$?
  [[ $code == 1 && "$(wc -l <"$folder/said")" == 1 ]]
done

# starts ENTRY FILE TEXT [ARGUMENT...]: the command of this menu entry works until the text is in
# the file, and ends when it is told to.
starts() {
  local entry="$1" file="$2" text="$3" program turns=0
  shift 3
  "$(sed -n 's/^Exec=\([a-z-]*\).*/\1/p' "applications/$entry.desktop")" "$@" 2>/dev/null &
  program=$!
  until grep -q "$text" "$file" 2>/dev/null; do
    kill -0 "$program"
    ((++turns < 300))
    sleep 0.1
  done
  kill -TERM "$program"
  wait "$program" || [[ $entry-$? == oriolemark-demo-143 ]]
}
export QT_QPA_PLATFORM=offscreen
starts oriolemark "$XDG_CONFIG_HOME/Oriolemark/Oriolemark.ini" \
  'RecentFile1=.*/prefix/share/example.orm' example.orm
starts oriolemark-demo "$folder/log" '< "TAVIK'
# The picture for the printer goes here. The manual was found then, by which it knows its prefix.
[[ -d "$XDG_DATA_HOME/Oriolemark" ]]
find "$folder/prefix" | sort | diff "$folder/before" -

# The manual page and the completion of each program know every option of its help.
for program in oriolemark tx5000sim; do
  source "bash-completion/completions/$program"
  env -u QT_QPA_PLATFORM -u DISPLAY "$program" --help | grep -o '^  --*[a-z-]*' >"$folder/options"
  while read -r option; do
    zcat "man/man1/$program.1.gz" | tr -d '\\' | grep -q "^\.BI* $option\(~\|$\)"
    COMP_WORDS=("$program" "$option") COMP_CWORD=1
    "_$program" "$program"
    [[ " ${COMPREPLY[*]} " == *" $option "* ]]
  done <"$folder/options"
  [[ "$(wc -l <"$folder/options")" -ge 11 ]]
done

# What the program is, without a display; and one line for what it does not understand.
unset QT_QPA_PLATFORM DISPLAY WAYLAND_DISPLAY
grep -q "<release version=\"$(oriolemark --version | cut -d ' ' -f 2)\"" metainfo/*.xml
code=0
oriolemark --odd 2>"$folder/said" || code=$?
[[ $code == 2 && "$(wc -l <"$folder/said")" == 1 ]]

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

# Without a display, the command line finds the simulator and its library.
env -u QT_QPA_PLATFORM -u DISPLAY oriolemark-cli --sim --link usb wave ch1 "$folder/wave.png"

# knows PROGRAM [VERB] NAME: the manual page and the completion know this verb or option.
knows() {
  local name="${*: -1}"
  grep -qE "^\.[BIR]+ (.* ,~ )?$name([^a-z-]|$)" <<<"$(zcat "man/man1/$1.1.gz" | tr -d '\\')"
  COMP_WORDS=("$@") COMP_CWORD=$(($# - 1))
  "_${1//-/_}" "$1"
  [[ " ${COMPREPLY[*]} " == *" $name "* ]]
}
# knows_options LEAST PROGRAM [VERB]: the same of all options of a help text, at least so many.
knows_options() {
  local least="$1" options option
  shift
  options="$(env -u QT_QPA_PLATFORM -u DISPLAY "$@" --help |
    sed -nE 's/^  (-h,)?(-{1,2}[a-z-]+).*/\2/p')"
  [[ "$(wc -w <<<"$options")" -ge $least ]]
  for option in $options; do knows "$@" "$option"; done
}
for program in oriolemark=11 oriolemark-cli=7 tx5000sim=11; do
  source "bash-completion/completions/${program%=*}"
  knows_options "${program#*=}" "${program%=*}"
done
for verb in $(oriolemark-cli --help | sed -n 's/^  \([a-z][a-z0-9]*\)  .*/\1/p'); do
  knows oriolemark-cli "$verb"
  knows_options 1 oriolemark-cli "$verb"
done

# What the program is, without a display; and one line for what it does not understand.
unset QT_QPA_PLATFORM DISPLAY WAYLAND_DISPLAY
grep -q "<release version=\"$(oriolemark --version | cut -d ' ' -f 2)\"" metainfo/*.xml
code=0
oriolemark --odd 2>"$folder/said" || code=$?
[[ $code == 2 && "$(wc -l <"$folder/said")" == 1 ]]

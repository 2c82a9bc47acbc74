#!/usr/bin/env bash
# Starts the program itself, as its users have it, with an instrument on its line: it has to connect
# by itself, and to end in order when it is told to. usage: StartAndConnect.sh ORIOLEMARK TX5000SIM
set -euo pipefail

folder="$(mktemp -d)"
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
export XDG_CONFIG_HOME="$folder" XDG_DATA_HOME="$folder/data" QT_QPA_PLATFORM=offscreen
mkdir "$folder/Oriolemark"
cat > "$folder/Oriolemark/Oriolemark.ini" <<END
[%General]
StartupCheckHardware=True

[IO%20Settings]
ScopeIOType=2
BaudRate=115200

[Drivers]
COM1="$folder/line"
END

"$2" --link "$folder/line" --log "$folder/log" < /dev/null > /dev/null &
until [[ -e "$folder/line" ]]; do sleep 0.1; done
"$1" &
program=$!
until grep -q '< "TAVIK' "$folder/log"; do
  kill -0 "$program"
  sleep 0.1
done
# The instrument is known now, and the window comes up.
sleep 2
kill -TERM "$program"
wait "$program"
tail -n 1 "$folder/log" | grep -q '> ":KEY:LOCK:ENABLE'
grep -q 'MainWidth=6' "$folder/Oriolemark/Oriolemark.ini"

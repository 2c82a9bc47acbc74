#!/usr/bin/env bash
# Works a simulated instrument over one link with the command-line program, as scripts do. Other
# tools read what it wrote. usage: Stories.sh CLI TX5000SIM LIBRARIES serial|gpib|usb
set -Eeuo pipefail

cli="$(realpath "$1")" simulator="$(realpath "$2")" libraries="$(realpath "$3")" link="$4"
folder="$(mktemp -d)"
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
trap 'echo "$link: line $LINENO failed: $BASH_COMMAND" >&2' ERR
cd "$folder"
export XDG_CONFIG_HOME="$folder" TX5000SIM_SOCKET="$folder/socket"
case "$link" in
  serial) type=2 place=(--link "$folder/line") nobody=serial:/nonexistent ;;
  gpib) type=1 place=(--socket "$folder/socket") nobody=gpib:3 ;;
  usb) type=0 place=(--socket "$folder/socket") nobody=usb:5 ;;
esac
mkdir Oriolemark
cat >Oriolemark/Oriolemark.ini <<END
[IO%20Settings]
ScopeIOType=$type
BaudRate=115200

[Drivers]
COM1="$folder/line"
GpibLibrary="$libraries/libtx5000gpib.so"
UsbLibrary="$libraries/libtx5000usb.so"
END
mkfifo console
exec 7<>console
"$simulator" "${place[@]}" --firmware 03.01.15 --log log <&7 >said &

# becomes COMMAND...: waits until the command succeeds.
becomes() {
  local turns=0
  until "$@"; do
    ((++turns < 200))
    sleep 0.05
  done
}
# hand LINE: works the instrument itself.
hand() {
  local answers
  answers="$(wc -l <said)"
  echo "$1" >&7
  becomes eval '(($(wc -l <said) > answers))'
}
# expect CODE ARGUMENT...: the call ends with this code.
expect() {
  local wanted="$1" code=0
  shift
  "$cli" "$@" >out 2>err || code=$?
  [[ $code == "$wanted" ]] && return
  echo "$link: '$*' ended with $code, not $wanted: $(head -c 2000 out err)" >&2
  return 1
}
# reads FILE EXPRESSION: another tool reads the file as "d", and finds this true.
reads() {
  python3 -c '
import csv, io, json, sys
from datetime import datetime
text = open(sys.argv[1], newline="").read()
d = json.loads(text) if text[0] in "{[" else list(csv.DictReader(io.StringIO(text), strict=True))
assert eval("(" + sys.argv[2] + ")"), (sys.argv[2], text[:2000])' "$@"
}

becomes grep -q ready said
expect 0 identify --json
reads out 'd["Model"] == "TX-5102CA" and d["Firmware"] == "03.01.15"'

# Settings: a value that is taken, one that is not offered, and one that comes back as another.
expect 0 set "CH1 Volt/Div=2V" :display:grid=half --csv
reads out 'd == [{"CH1 Volt/Div_V": "2", "Display Grid": "HALF"}]'
expect 2 set "CH1 Volt/Div=3V"
hand "fault garbage for :DISPLAY:GRID:?"
expect 4 set Grid=FULL
hand clear
expect 0 download own.cfx
hand "set :CHANNEL1:RANGE 1.00V"
expect 0 upload own.cfx
hand "get :CHANNEL1:RANGE"
[[ "$(tail -n 1 said)" == 2.00V ]]

# Readings: 600 samples of a sine of 3.2 V, and limits that Vpp keeps and Vmax does not.
peaks='round(max(v) - min(v), 1) == 3.2 and len(v) == 600 and len(t) == 600 and t[0] < 0 < t[-1]'
expect 0 wave ch1 wave.csv
reads wave.csv "[t := [float(r['Time_s']) for r in d], v := [float(r['CH1_V']) for r in d]] and $peaks"
expect 0 samples ch1 samples.csv
reads samples.csv 'len(d) == 600 and d[599]["NO."] == "600" and abs(float(d[0]["Voltage_V"])) < 2'
expect 0 measure ch1 measure.orm
sed $'10s/FALSE/TRUE/; 11s/.*/4\r/; 12s/.*/3\r/; 14s/FALSE/TRUE/' measure.orm >limits.orm
expect 1 measure ch1 --limits limits.orm --json
reads out 'd["Vpp_V"] == 3.2 and 990 < d["Frequency_Hz"] < 1010 and
  [v for k, v in d.items() if "verdict" in k] == ["Pass", "Fail [Over Limit]"]'

# The other forms.
expect 0 convert measure.orm --csv
reads out 'float(d[0]["Vpp_V"]) == 3.2'
expect 1 measure ch1 table.xls --limits limits.orm:Measure0
grep -q $'^Vmax\t1.600V\tFail \\[Over Limit\\]\r$' table.xls
expect 0 wave both --json
reads out "[t := d['Time_s'], v := d['CH1_V']] and $peaks and len(d['CH2_V']) == 600"
expect 0 wave ch1 wave.orm
expect 0 convert wave.orm wave.json --item Wave0 --json
reads wave.json "[t := d['Time_s'], v := d['CH1_V']] and $peaks"
expect 0 wave ch1 wave.bmp --zoom 100%
expect 0 wave both wave.png --monochrome --no-grid
file wave.bmp wave.png >kinds
grep -q 'wave.bmp:.* 350 x 250 x 24' kinds
grep -q 'wave.png:.* PNG image data, 525 x 375' kinds
# The screen is on USB only.
if [[ $link == usb ]]; then
  expect 0 screen screen.png
  file screen.png | grep -q 'PNG image data, 320 x 240'
else
  expect 2 screen screen.png
fi

# The acquisition, the keys.
expect 0 stop
expect 0 key vscaleinc "Vertical scale up"
[[ "$(grep -c ":KEY:V_SCALE_INC" log)" == 2 ]]
expect 0 get 'Run|Stop' --json
reads out 'd == {"Running Control Run|Stop": "STOP"}'
expect 0 run

# A watch goes on where the link was lost, and behind a terminal that was closed.
nohup "$cli" watch --every 200ms --count 4 get Grid >watched 2>err &
watch=$!
becomes grep -q FULL watched
kill -HUP "$watch"
hand unplug
becomes grep -q 'next try' err
hand plug
wait "$watch"
reads watched 'len(d) == 4 and {r["Display Grid"] for r in d} == {"FULL"} and
  sorted(d, key=lambda r: datetime.fromisoformat(r["time"].replace("Z", "+00:00"))) == d'

# Calls that end otherwise, and what is said to them.
while IFS='|' read -r code said arguments; do
  eval "expect $code $arguments"
  grep -qF -- "$said" err
done <<'END'
2|Did you mean "measure"|measur ch1
2|Did you mean "CH1 Volt/Div"|get "CH1 Volts"
2|Write NAME=VALUE|set Grid
2|one of these extensions|wave ch1 wave.txt
2|no time|watch --every 1x identify
2|Measure0|measure ch1 --limits limits.orm:Other
3||identify --link "$nobody"
5|--overwrite|wave ch1 wave.csv
5|No such file|wave ch1 nowhere/wave.csv
5|nowhere.cfx|upload nowhere.cfx
END
expect 0 samples ch1 samples.csv --overwrite
code=0
"$cli" identify >/dev/full 2>err || code=$?
[[ $code == 5 ]]

# A request to end: the front keys are enabled again, and no half of a file is left.
hand "fault delay 400"
code=0
timeout --preserve-status 1.5 "$cli" measure ch1 late.csv 2>err || code=$?
[[ $code == 130 ]]
# A late reply may follow it in the log.
locked_last() { grep '> "' log | tail -n 1 | grep -q ':KEY:LOCK:ENABLE'; }
becomes locked_last
[[ -z "$(find . -name 'late.csv*' -o -name '*.saving*')" ]]

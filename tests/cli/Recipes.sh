#!/usr/bin/env bash
# Runs the recipes of the manual to the letter, with a simulated instrument on the link of the
# settings. usage: Recipes.sh PAGE CLI TX5000SIM LIBRARIES
set -Eeuo pipefail

page="$(realpath "$1")" programs="$(realpath "$(dirname "$2")")"
simulator="$(realpath "$3")" libraries="$(realpath "$4")"
folder="$(mktemp -d)"
trap 'kill $(jobs -p) 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
trap 'echo "line $LINENO failed: $BASH_COMMAND" >&2' ERR
cd "$folder"
export PATH="$programs:$PATH" TX5000SIM_SOCKET="$folder/socket" HOME="$folder"
unset XDG_CONFIG_HOME
# The settings for RS232, where cron looks for them, and others for USB.
for link in .config=2 usb=0; do
  mkdir -p "${link%=*}/Oriolemark"
  cat >"${link%=*}/Oriolemark/Oriolemark.ini" <<END
[IO%20Settings]
ScopeIOType=${link#*=}
BaudRate=115200

[Drivers]
COM1="$folder/line"
UsbLibrary="$libraries/libtx5000usb.so"
END
done
mkfifo console
exec 7<>console
"$simulator" --link line --socket socket --firmware 03.01.15 <&7 >said &
# becomes COMMAND...: waits until the command succeeds.
becomes() {
  local turns=0
  until "$@"; do
    ((++turns < 400))
    sleep 0.05
  done
}
becomes grep -q socket said

python3 - "$page" <<'END'
import html, os, re, sys
text = open(sys.argv[1]).read()
for name, recipe in re.findall('<h3 id="(.*?)">.*?<pre class="recipe">\n(.*?)</pre>', text, re.S):
    open(name, "w").write(html.unescape(recipe))
    os.chmod(name, 0o755)
END
over_usb=(env XDG_CONFIG_HOME="$folder/usb")

EVERY=100ms COUNT=2 "${over_usb[@]}" ./night
python3 -c 'import csv, sys; assert [float(r["Vpp_V"]) for r in csv.DictReader(sys.stdin)] == [3.2] * 2' \
  <"$(echo night-*.csv)"

code=0
"${over_usb[@]}" ./production 7 >out 2>err || code=$?
[[ $code == 2 && "$(cat out)" == "7: NOT TESTED" ]]
"${over_usb[@]}" oriolemark-cli measure ch1 limits.orm
sed -i $'10s/FALSE/TRUE/; 11s/.*/4\r/; 12s/.*/3\r/' limits.orm
"${over_usb[@]}" ./production 7 | grep -q '^7: PASS$'
sed -i $'11s/.*/3\r/' limits.orm
code=0
"${over_usb[@]}" ./production 7 >out || code=$?
[[ $code == 1 && "$(head -n 1 out)" == "7: FAIL" ]]
grep -q $'^Vpp\t3.200V\tFail' 7.txt

"${over_usb[@]}" ./screenshot
[[ "$(file scope-*.png | grep -c 'PNG image data')" == 2 ]]
grep -q '^CH1 Volt/Div  *1.00V$' scope-*-settings.txt

{
  becomes test -e clone.cfx
  echo "set :CHANNEL1:RANGE 2.00V" >&7
  becomes grep -q ok said
  echo
} | "${over_usb[@]}" ./clone >out
grep -q '^Cloned\.$' out
"${over_usb[@]}" oriolemark-cli get "CH1 Volt/Div" | grep -q 1.00V

"${over_usb[@]}" ./notebook | grep -q '^600 samples, 3\.2[0-9]* V'

# As cron does it: five fields, a poor environment, and a command that ends at the first bare "%".
command="$(sed -E 's/^([^ ]+ ){5}//; s/([^\\])%.*/\1/; s/\\%/%/g' cron)"
env -i HOME="$folder" PATH="$programs:/usr/bin:/bin" sh -c "$command"
python3 -c 'import json, sys; assert json.load(sys.stdin)["time"][:2] == "20"' <"scope-$(date +%F).json"

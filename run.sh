#!/usr/bin/env bash
# Builds Oriolemark and opens it on a simulated instrument, or with --real on the user's settings.
# Without a screen it takes the tour on an invisible one instead.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

usage="usage: ./run.sh [--serial | --gpib | --usb | --real]
  --serial   opens Oriolemark linked to a simulated TX5000 over RS232, as with no option
  --gpib     the same over GPIB
  --usb      the same over USB; what each link keeps stays in build/run
  --real     opens Oriolemark on your own settings and your own instrument"

real=no
link=serial
tour_options=()
case "$#:${1:-}" in
  0:) ;;
  1:--serial | 1:--gpib | 1:--usb)
    link="${1#--}"
    tour_options=(--link "$link")
    ;;
  1:--real) real=yes ;;
  1:-h | 1:--help) echo "$usage"; exit 0 ;;
  *) echo "$usage" >&2; exit 2 ;;
esac

screen=no
[[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]] && screen=yes
if [[ $real == yes && $screen == no ]]; then
  echo "run: --real needs a screen: neither DISPLAY nor WAYLAND_DISPLAY is set." >&2
  exit 1
fi

started=()
end_started() {
  local pid
  # Last started, first ended: the window manager before its screen.
  for ((i = ${#started[@]} - 1; i >= 0; --i)); do
    pid="${started[i]}"
    kill "$pid" 2>/dev/null || true
    wait "$pid" 2>/dev/null || true
  done
}
trap end_started EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# wait_for SECONDS PID COMMAND...: until the command succeeds; fails if the process ends first.
wait_for() {
  local turns=$(($1 * 20)) pid="$2"
  shift 2
  while ((turns-- > 0)); do
    "$@" && return 0
    kill -0 "$pid" 2>/dev/null || return 1
    sleep 0.05
  done
  return 1
}

build() {
  scripts/install.sh
  cmake --preset release --log-level=WARNING
  cmake --build --preset release --target Oriolemark oriolemark_cli tx5000sim oriolemark_tour
}

start_simulator() {
  # Relative: the name of a socket has to be short.
  local place=build/run/tx5000.socket said=build/run/tx5000sim.out
  local options=(--socket "$place")
  if [[ $link == serial ]]; then
    place="$PWD/build/run/tx5000"
    options=(--link "$place" --baud 115200)
  else
    export TX5000SIM_SOCKET="$place"
    # The virtual panel refuses older firmware.
    options+=(--firmware 03.01.15)
  fi
  mkdir -p build/run
  : >"$said"
  build/release/bin/tx5000sim "${options[@]}" </dev/null >"$said" 2>&1 &
  started+=("$!")
  if ! wait_for 10 "$!" grep -q '^ready' "$said"; then
    echo "run: the simulated instrument did not start:" >&2
    cat "$said" >&2
    exit 1
  fi
  echo "run: the simulated instrument listens at $place ($link)"
}

# Where the program finds the instrument, and the number of the link.
driver_settings() {
  case "$link" in
    serial) echo "COM1=\"$PWD/build/run/tx5000\"" ;;
    *) echo "${link^}Library=\"$PWD/build/release/lib/libtx5000$link.so\"" ;;
  esac
}
link_number() {
  case "$link" in
    gpib) echo 1 ;;
    serial) echo 2 ;;
    usb) echo 0 ;;
  esac
}

# Only the first time: later runs keep what the user has chosen in the program. The main window has
# room for a whole picture (1000x700 pixels, 15 units each).
write_settings() {
  local file="$XDG_CONFIG_HOME/Oriolemark/Oriolemark.ini"
  [[ ! -e "$file" ]] || return 0
  mkdir -p "$(dirname "$file")"
  cat >"$file" <<INI
[Drivers]
$(driver_settings)

[%General]
StartupCheckHardware=True

[IO%20Settings]
ScopeIOType=$(link_number)
COM_Port=1
BaudRate=115200

[Settings]
MainWidth=15000
MainHeight=10500
INI
}

start_screen() {
  local number="$PWD/build/tour/display"
  : >"$number"
  Xvfb -displayfd 3 -screen 0 1400x1000x24 -nolisten tcp 3>"$number" 2>build/tour/xvfb.log &
  started+=("$!")
  if ! wait_for 20 "$!" test -s "$number"; then
    echo "run: no invisible screen, see build/tour/xvfb.log" >&2
    exit 1
  fi
  DISPLAY=":$(tr -d '[:space:]' <"$number")"
  export DISPLAY
  openbox >build/tour/openbox.log 2>&1 &
  started+=("$!")
}

take_tour() {
  echo "run: no screen here (neither DISPLAY nor WAYLAND_DISPLAY is set)." \
    "Taking the tour on an invisible one."
  rm -rf build/tour
  mkdir -p build/tour
  export XDG_CONFIG_HOME="$PWD/build/tour/config"
  export XDG_DATA_HOME="$PWD/build/tour/data"
  start_screen
  local code=0
  QT_QPA_PLATFORM=xcb build/release/bin/oriolemark_tour build/tour \
    "$PWD/build/release/bin/tx5000sim" "${tour_options[@]}" || code=$?
  echo "run: the tour ended with code $code; screenshots and the log of the line are in build/tour/"
  return "$code"
}

build
if [[ $screen == no ]]; then
  take_tour
elif [[ $real == yes ]]; then
  build/release/bin/Oriolemark
else
  export XDG_CONFIG_HOME="$PWD/build/run/config-$link"
  export XDG_DATA_HOME="$PWD/build/run/data-$link"
  start_simulator
  write_settings
  build/release/bin/Oriolemark
fi

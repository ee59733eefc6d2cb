#!/usr/bin/env bash
# The whole program with its windows at the 10 ms poll, on a display or offscreen, against korvane-ecu in a process of
# its own: processor time, memory, and the time to the first painted window.
#
#   bench/program.sh [SECONDS]      build/release must be built; default 20 seconds
#   bench/program.sh SECONDS maps   with the map window open and its trace on
#   bench/program.sh SECONDS log    with "Save data to" ticked
#   bench/program.sh SECONDS readouts   with five big readouts open, each on a channel of its own
#   bench/program.sh SECONDS all   with five big readouts, both map windows, the settings and the log viewer
#   bench/program.sh SECONDS ignition   with the poll of the ignition debug window, which draws both trends each time
#   bench/program.sh SECONDS ignition headless   the same without windows; any scene may have this behind it
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-20}
scene=${2:-}
mode=${3:-console}
bin=build/release/bin
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  export QT_QPA_PLATFORM=offscreen
fi

work=$(mktemp -d)
"$bin/korvane-ecu" --pty "$work/ecu" </dev/null >/dev/null &
ecu=$!
trap 'kill "$ecu" 2>/dev/null || true; rm -rf "$work"' EXIT
for _ in {1..50}; do
  [ ! -e "$work/ecu" ] || break
  sleep 0.1
done

mkdir "$work/folder"
cp packaging/Settings_par.ini "$work/folder/"
mkfifo "$work/commands"
KORVANE_DEBUG=1 "$bin/korvane-tuner" "--$mode" --folder "$work/folder" --port COM1="$work/ecu" --connect COM1 \
  <"$work/commands" >"$work/replies" 2>"$work/log" &
tuner=$!
exec 3>"$work/commands"

# User and system time of the program so far, in clock ticks.
ticks() { awk '{ print $14 + $15 }' "/proc/$tuner/stat"; }

# The read of all settings would slow the poll down.
echo "set frmMisc.TimerInitialGetData.Enabled false" >&3
sleep 3
if [ "$scene" = maps ]; then
  printf '%s\n' "click frmSarn2.btnKartat" "click frmMaps.chkTrace" >&3
  sleep 3
fi
if [ "$scene" = log ]; then
  echo "click frmSarn2.chkDatalog" >&3
  sleep 3
fi
if [ "$scene" = all ]; then
  printf '%s\n' "click frmSarn2.btnKartat" "click frmMaps.chkTrace" "wait 2000" "click frmSarn2.Command1" "wait 2000" \
    "click frmSarn2.btnAsetukset" "click frmSarn2.btnDatalogTrend" >&3
fi
if [ "$scene" = readouts ] || [ "$scene" = all ]; then
  for i in 1 2 3 4 5; do
    printf '%s\n' "click frmSarn2.Command6" "choose frmBigText#$i.Combo1 $((i == 1 ? 0 : i + 1))" >&3
  done
  sleep 3
fi
if [ "$scene" = ignition ]; then
  printf '%s\n' "click frmSarn2.Command5" "click frmIGNDebug.Command1" >&3
  sleep 3
fi
before=$(ticks)
sleep "$seconds"
after=$(ticks)
memory=$(awk '/^VmRSS/ { print $2 }' "/proc/$tuner/status")
echo "get frmSarn2.lblPackets.Caption" >&3
sleep 0.5
echo "quit" >&3
exec 3>&-
wait "$tuner"

hertz=$(getconf CLK_TCK)
awk -v t=$((after - before)) -v hz="$hertz" -v s="$seconds" -v kb="$memory" 'BEGIN {
  printf "processor: %.1f %% of one core\nresident memory: %.1f MB\n", 100 * t / hz / s, kb / 1024 }'
[ "$scene" = ignition ] || echo "packets a second: $(tail -n 2 "$work/replies" | head -n 1)"
grep "^error" "$work/replies" || true
grep "first window" "$work/log" || true

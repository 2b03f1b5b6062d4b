#!/usr/bin/env bash
# The window on the 200,000-entity survey drawing under Xvfb: the first complete picture after start, the picture
# moved while panning with the middle button (each frame), the redraw when the drag ends, and the redraw after a
# wheel zoom. The figures come from cadhost's --trace lines; xdotool plays the user.
#   usage: bench/gui/window_bench.sh BUILD_DIR      (e.g. build/release)
set -euo pipefail
build="$(cd "${1:-build/release}" && pwd)"
here="$(cd "$(dirname "$0")/../.." && pwd)"
drawing="$build/bench/gui/survey-200000.dxf"
mkdir -p "$build/bench/gui"
[ -f "$drawing" ] || /usr/bin/python3 "$here/bench/dxf/make_survey.py" "$drawing" 200000
log="$build/bench/gui/window-trace.log"
export XDG_CONFIG_HOME="$build/bench/gui/config"

run() {
  "$build/cadhost" "$drawing" --trace --window 2>"$log" >/dev/null &
  host=$!
  xdotool search --sync --name "cadhost" >/dev/null
  # Wait for the first picture, then let the window settle.
  for _ in $(seq 600); do grep -q "view: [1-9][0-9]* entities drawn" "$log" && break; sleep 0.1; done
  sleep 1
  xdotool mousemove 600 350
  xdotool mousedown 2
  for i in $(seq 60); do xdotool mousemove 600 $((350 + i * 3)); sleep 0.01; done
  xdotool mouseup 2
  sleep 1
  xdotool click 4
  sleep 2
  kill "$host"
  wait "$host" 2>/dev/null || true
}
if [ "${WINDOW_BENCH_INSIDE:-}" = 1 ]; then
  run
  exit 0
fi
WINDOW_BENCH_INSIDE=1 xvfb-run -a -s "-screen 0 1600x1200x24" "$0" "$build"

echo "first picture:          $(grep -m1 'view: [1-9][0-9]* entities drawn' "$log" | sed 's/.*drawn in \([0-9.]*\) ms, \([0-9]*\) ms after start/drawn in \1 ms, \2 ms after start/')"
awk '/moved picture shown in/ { n++; s += $(NF-1) } END { if (n) printf "panning:                %d frames, %.2f ms each (%.0f frames per second possible)\n", n, s/n, 1000/(s/n) }' "$log"
echo "redraw after the drag:  $(grep 'view: [1-9][0-9]* entities drawn' "$log" | sed -n 2p | sed 's/.*drawn in \([0-9.]*\) ms.*/\1 ms/')"
echo "redraw after the zoom:  $(grep 'view: [1-9][0-9]* entities drawn' "$log" | sed -n 3p | sed 's/.*drawn in \([0-9.]*\) ms.*/\1 ms/')"

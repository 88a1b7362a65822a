#!/usr/bin/env bash
# Installs what is missing, builds and runs Tarnwick.
# With no instrument port configured, Tarnwick runs on the built-in instrument simulator in a
# private demo profile, so a newcomer sees live weather at once. Without a display the same
# program runs under Xvfb for a while, the live status line and the pages the simulator
# received are printed, and a screenshot of the main window with its live views is saved.
set -euo pipefail
repo=$(cd "$(dirname "$0")/.." && pwd)
cd "$repo"

scripts/install-deps.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
ninja -C build tarnwick oskerby pellamor-sim

bin="$repo/build/bin"
registry="${XDG_CONFIG_HOME:-$HOME/.config}/Zorvane/registry.ini"
port=$(sed -n 's/^Zorvane\\SerialPort\\0=//p' "$registry" 2>/dev/null | head -n1 || true)
if [ -n "$port" ] && [ "$port" != "0" ]; then
    exec "$bin/tarnwick" "$@"
fi

# The demo profile: its own settings, data and runtime folders, the simulator on Com1.
demo="$repo/demo-profile"
. "$repo/scripts/simulator-profile.sh"
simulator_profile "$demo" "$demo/instrument"

"$bin/pellamor-sim" --pty "$demo/instrument" --interval 2 >"$demo/simulator.log" 2>&1 &
sim=$!
trap 'kill $sim 2>/dev/null || true' EXIT
for _ in $(seq 50); do
    grep -q '^READY' "$demo/simulator.log" 2>/dev/null && break
    sleep 0.1
done

# The demo opens the large display, the wind rose and the altitude chart side by side, so the
# live weather is on screen within seconds.
views=miWeather,miWindPlot,miAADA,miTileVertically

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    TARNWICK_DEMO_COMMANDS=$views "$bin/tarnwick" "$@"
    exit 0
fi

echo "No display: running Tarnwick under Xvfb for 30 seconds."
TARNWICK_ECHO_STATUS=1 TARNWICK_DEMO_COMMANDS=$views TARNWICK_SCREENSHOT="$demo/screenshot.png" \
    TARNWICK_QUIT_AFTER_MS=30000 \
    xvfb-run -a -s "-screen 0 1280x800x24" "$bin/tarnwick" | sed -n 's/^STATUS: /Live status line: /p' | tail -n 5 || true
echo "Pages the simulator received:"
grep '^PAGE: ' "$demo/simulator.log" | tail -n 5 || echo "  (none yet)"
echo "Screenshot of the main window: $demo/screenshot.png"

#!/usr/bin/env bash
# Builds the program and starts it on the sample season.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
if [ -n "${DISPLAY:-}" ] || [ -n "${WAYLAND_DISPLAY:-}" ]; then
    exec build/bin/scorvane
fi
echo "No display found: starting under xvfb-run (the window is not visible; use a desktop session to see it)."
exec xvfb-run -a -s "-screen 0 1280x800x24" build/bin/scorvane

#!/usr/bin/env bash
# Builds everything and runs the whole test suite (screen tests headless, offscreen), then the
# hardening runs: the suite under the sanitizers, every fuzz target for a bounded time, and the
# whole program and its tests built for Windows and run under wine (scripts/hardening.sh).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure --parallel 2
scripts/hardening.sh

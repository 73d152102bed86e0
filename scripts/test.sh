#!/usr/bin/env bash
# Builds everything and runs the whole test suite. Screen tests run headless (offscreen).
# The hardening runs (sanitizers, fuzzing, the Windows build under wine) are scripts/hardening.sh.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh
export QT_QPA_PLATFORM=offscreen
ctest --test-dir build --output-on-failure --parallel 2

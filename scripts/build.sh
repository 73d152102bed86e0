#!/usr/bin/env bash
# Configures and builds everything into build/ (the program lands in build/bin/ together with
# its BXFB.INI, its help pages and the sample season).
set -euo pipefail
cd "$(dirname "$0")/.."
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --parallel

#!/usr/bin/env bash
# The hardening runs (README.md, "Hardening"), after scripts/build.sh: the suite again under
# AddressSanitizer and UndefinedBehaviorSanitizer, every fuzz target for a bounded time, and the
# whole program with every test program built for Windows and run under wine (scripts/windows.sh;
# Qt for Windows is built once into a cache outside the checkout).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
began=$SECONDS
step() { echo; echo "=== $* ($(( (SECONDS - began) / 60 )) min so far)"; }
export QT_QPA_PLATFORM=offscreen

step "Sanitizers: the whole suite built with clang, ASan and UBSan (build-asan)"
CC=clang CXX=clang++ cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DSCORVANE_SANITIZE=ON >/dev/null
cmake --build build-asan --parallel 2
ASAN_OPTIONS=detect_leaks=1:check_initialization_order=1 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir build-asan --output-on-failure --parallel 2 -E '^(format|architecture)\.'

step "Fuzzing: every libFuzzer target from its seed inputs (build-fuzz)"
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DSCORVANE_BUILD_GUI=OFF -DSCORVANE_FUZZ=ON >/dev/null
cmake --build build-fuzz --parallel 2 --target fuzz_targets
ctest --test-dir build-fuzz --output-on-failure --parallel 2 -R '^fuzz\.'

step "Windows: the whole program and every test program, built with mingw-w64, run under wine"
scripts/windows.sh deps qt qcustomplot pugixml program test

step "All done"

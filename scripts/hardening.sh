#!/usr/bin/env bash
# The hardening runs (README.md, "Hardening"), after scripts/build.sh: the suite again under
# AddressSanitizer and UndefinedBehaviorSanitizer, every fuzz target for a bounded time, and the
# plain C++ libraries and their tests built for Windows and run under wine.
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

step "Windows: the plain C++ libraries and their tests, built with mingw-w64, run under wine"
cmake -S . -B build-mingw -G Ninja -DCMAKE_BUILD_TYPE=Release \
    -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake -DSCORVANE_BUILD_GUI=OFF \
    -DSCORVANE_GTEST_SOURCE=/usr/src/googletest >/dev/null
cmake --build build-mingw --parallel 2
export WINEPREFIX="$PWD/build-mingw/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
wineboot --init >/dev/null 2>&1 || true
ctest --test-dir build-mingw --output-on-failure --parallel 2 -E '^(format|architecture)\.'
wineserver --kill >/dev/null 2>&1 || true

step "All done"

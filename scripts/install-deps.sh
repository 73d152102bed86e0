#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the program need, if any are missing.
set -euo pipefail

packages=(build-essential cmake ninja-build qt6-base-dev qt6-base-dev-tools libgl-dev libgtest-dev clang-format
          libqcustomplot-dev libqt6opengl6-dev libpugixml-dev fonts-liberation xvfb xauth
          # Hardening: clang with its sanitizer and libFuzzer runtimes, the Windows cross-compiler,
          # GoogleTest's sources (built for Windows) and wine to run the Windows tests.
          clang libclang-rt-14-dev mingw-w64 googletest wine wine64)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"

#!/usr/bin/env bash
# The whole program for 64-bit Windows, cross-built on Debian with mingw-w64 and tried under wine.
#
#   scripts/windows.sh [step...]     steps: deps qt qcustomplot program test run; "build" is
#                                    deps qt qcustomplot program; no step runs them all
#
# Qt and QCustomPlot for Windows are built from Debian's own source packages (apt-get source,
# Debian's patches applied) and kept in a cache outside the checkout, one folder per Qt version,
# compiler version and set of configure options:
#   ${XDG_CACHE_HOME:-~/.cache}/scorvane/qt-<version>-<compiler>-<options hash>/
#   ${XDG_CACHE_HOME:-~/.cache}/scorvane/qcustomplot-<version>-<same Qt folder name>/
# Sources are unpacked and built in work-<folder>/ beside them; a folder with its stamp file
# ".complete" is used as it is. Building Qt takes about 12 minutes on 2 idle cores; the cache holds
# about 90 MB. The program, the report command and every test program land in build-windows/bin/
# together with the DLLs they need, so they run under wine with nothing installed.
set -euo pipefail
cd "$(dirname "$0")/.."
repo=$PWD
jobs=${SCORVANE_JOBS:-$(nproc)}
triple=x86_64-w64-mingw32
cxx=$triple-g++-posix
cache=${XDG_CACHE_HOME:-$HOME/.cache}/scorvane
build=$repo/build-windows
began=$SECONDS
step() { echo; echo "=== $* ($(( (SECONDS - began) / 60 )) min so far)"; }
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"

# The Debian packages the cross build and the wine runs need, and a deb-src entry for apt-get
# source when the machine has none (copied from its Debian entries; apt-get update once then).
deps() {
    step "Packages for the Windows build"
    local packages=(g++-mingw-w64-x86-64-posix mingw-w64 wine wine64 nsis xvfb xauth dpkg-dev
                    cmake ninja-build qt6-base-dev qt6-base-dev-tools googletest imagemagick openbox)
    local missing=() p
    for p in "${packages[@]}"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    local update=no
    if ! grep -Eqs '^[[:space:]]*(deb-src[[:space:]]|Types:.*deb-src)' /etc/apt/sources.list \
        /etc/apt/sources.list.d/*.list /etc/apt/sources.list.d/*.sources; then
        echo "Adding deb-src entries for the Debian archive"
        if [ -f /etc/apt/sources.list.d/debian.sources ]; then
            # deb822: each "Types: deb" stanza again with "Types: deb-src".
            sed -E 's/^Types:[[:space:]]*deb[[:space:]]*$/Types: deb-src/' \
                /etc/apt/sources.list.d/debian.sources \
                | $sudo tee /etc/apt/sources.list.d/scorvane-deb-src.sources >/dev/null
        fi
        if [ -f /etc/apt/sources.list ]; then
            # One-line format: each Debian "deb" line again as "deb-src".
            grep -E '^[[:space:]]*deb[[:space:]].*debian' /etc/apt/sources.list \
                | sed -E 's/^[[:space:]]*deb[[:space:]]/deb-src /' \
                | $sudo tee /etc/apt/sources.list.d/scorvane-deb-src.list >/dev/null || true
        fi
        update=yes
    fi
    if [ ${#missing[@]} -gt 0 ] || [ $update = yes ]; then
        $sudo apt-get update -qq
    fi
    if [ ${#missing[@]} -gt 0 ]; then
        echo "Installing: ${missing[*]}"
        DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
    fi
}

# The version of a source package apt-get source would fetch, upstream part only (6.4.2).
upstream_version() {
    apt-cache showsrc "$1" | sed -n 's/^Version: \(.*\)$/\1/p' | sort -V | tail -1 \
        | sed -E 's/^[0-9]+://; s/[+~-].*$//'
}

# Unpacks a Debian source package (with its patches applied) into a work folder, afresh.
fetch_source() { # package work-folder
    rm -rf "$2"
    mkdir -p "$2"
    (cd "$2" && apt-get source "$1") >"$2/apt-get-source.log" 2>&1 ||
        { cat "$2/apt-get-source.log" >&2; return 1; }
    find "$2" -mindepth 1 -maxdepth 1 -type d | head -1
}

# Qt for Windows: qtbase only, shared libraries, the Linux host's own moc, rcc and uic
# (QT_HOST_PATH). Off what the program does not use. Tablet events need the wintab headers, which
# Debian's repacked source drops; Direct2D must stay on or PrintSupport and the windows platform
# plugin fail to link; the bundled FreeType gives the offscreen platform plugin. With OpenGL off,
# dynamic OpenGL must go too, or the windows platform plugin does not compile.
qt_options=(
    -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=ON
    -DCMAKE_TOOLCHAIN_FILE="$repo/cmake/mingw-w64.cmake"
    -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF
    -DFEATURE_sql=OFF -DFEATURE_network=OFF -DFEATURE_dbus=OFF -DFEATURE_xml=OFF
    -DFEATURE_concurrent=OFF -DFEATURE_opengl=OFF -DFEATURE_dynamicgl=OFF -DFEATURE_vulkan=OFF
    -DFEATURE_tabletevent=OFF -DFEATURE_direct2d=ON
    -DFEATURE_freetype=ON -DFEATURE_system_freetype=OFF
    -DFEATURE_system_zlib=OFF -DFEATURE_system_png=OFF -DFEATURE_system_jpeg=OFF
    -DFEATURE_system_pcre2=OFF -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_doubleconversion=OFF
)

# The Qt folder's name: Qt's version, the compiler's and a hash of the options and the toolchain.
qt_folder() {
    local version compiler hash
    version=$(upstream_version qt6-base)
    compiler=gcc-$($cxx -dumpfullversion)
    hash=$( (printf '%s\n' "${qt_options[@]}"; cat "$repo/cmake/mingw-w64.cmake") | sha256sum | cut -c1-10)
    echo "$cache/qt-$version-$compiler-$hash"
}

qt() {
    local prefix work src t
    prefix=$(qt_folder)
    if [ -f "$prefix/.complete" ]; then
        step "Qt for Windows: using $prefix"
        return
    fi
    step "Qt for Windows: building into $prefix"
    work=$(dirname "$prefix")/work-$(basename "$prefix")
    src=$(fetch_source qt6-base "$work")
    rm -rf "$prefix"
    t=$SECONDS
    cmake -S "$src" -B "$work/build" "${qt_options[@]}" -DCMAKE_INSTALL_PREFIX="$prefix"
    cmake --build "$work/build" --parallel "$jobs"
    cmake --install "$work/build"
    echo "Qt built and installed in $(( (SECONDS - t) / 60 )) min, $(du -sh "$prefix" | cut -f1)"
    touch "$prefix/.complete"
}

# The toolchain every build against that Qt uses: Qt's own, which finds Qt's packages inside the
# Qt folder, chained to ours, which names the compiler and wine as the emulator.
qt_toolchain() {
    echo -DCMAKE_TOOLCHAIN_FILE="$(qt_folder)/lib/cmake/Qt6/qt.toolchain.cmake"
    echo -DQT_CHAINLOAD_TOOLCHAIN_FILE="$repo/cmake/mingw-w64.cmake"
}

qcp_folder() {
    echo "$cache/qcustomplot-$(upstream_version qcustomplot)-$(basename "$(qt_folder)")"
}

# QCustomPlot for Windows: Debian's source package with its own CMake project, which makes the
# same package and target as Debian's (QCustomPlotQt6::QCustomPlotQt6), against that Qt. On Windows
# a user of the DLL must declare its classes imported, so the target hands QCUSTOMPLOT_USE_LIBRARY
# to whoever links it.
qcustomplot() {
    local prefix work src
    prefix=$(qcp_folder)
    if [ -f "$prefix/.complete" ]; then
        step "QCustomPlot for Windows: using $prefix"
        return
    fi
    step "QCustomPlot for Windows: building into $prefix"
    work=$(dirname "$prefix")/work-$(basename "$prefix")
    src=$(fetch_source qcustomplot "$work")
    echo 'target_compile_definitions(${LIB_NAME} INTERFACE QCUSTOMPLOT_USE_LIBRARY)' >>"$src/CMakeLists.txt"
    rm -rf "$prefix"
    mapfile -t toolchain < <(qt_toolchain)
    cmake -S "$src" -B "$work/build" -G Ninja -DCMAKE_BUILD_TYPE=Release "${toolchain[@]}" \
        -DUSE_QT_VERSION=6 -DCMAKE_INSTALL_PREFIX="$prefix"
    cmake --build "$work/build" --parallel "$jobs"
    cmake --install "$work/build"
    touch "$prefix/.complete"
}

# The program, the report command and every test program for Windows, in build-windows/, with
# Qt's, QCustomPlot's and the compiler's DLLs and Qt's plugins copied beside them.
program() {
    local qt qcp
    qt=$(qt_folder)
    qcp=$(qcp_folder)
    step "The program for Windows (build-windows)"
    mapfile -t toolchain < <(qt_toolchain)
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release "${toolchain[@]}" \
        -DQCustomPlotQt6_DIR="$qcp/lib/cmake/QCustomPlotQt6" \
        -DSCORVANE_GTEST_SOURCE=/usr/src/googletest >/dev/null
    # The build runs scorvane-setup under wine, which keeps its own prefix in the build folder.
    export WINEPREFIX="$build/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    mkdir -p "$build/bin"
    cp -u "$qt"/bin/Qt6{Core,Gui,Widgets,PrintSupport,Test}.dll "$qcp"/bin/*.dll "$build/bin/"
    cp -u /usr/lib/gcc/$triple/"$($cxx -dumpfullversion)"/{libstdc++-6,libgcc_s_seh-1}.dll \
        /usr/$triple/lib/libwinpthread-1.dll "$build/bin/"
    local plugins
    for plugins in platforms styles imageformats; do
        if [ -d "$qt/plugins/$plugins" ]; then
            mkdir -p "$build/bin/$plugins"
            cp -u "$qt/plugins/$plugins"/*.dll "$build/bin/$plugins/"
        fi
    done
    wineboot --init >/dev/null 2>&1 || true
    cmake --build "$build" --parallel "$jobs"
    wineserver --kill >/dev/null 2>&1 || true
}

# Every test program under wine. Wine hands the program no QT_* variables, only their WINE-prefixed
# forms, so the screen tests get the platform plugin as WINEQT_QPA_PLATFORM.
tests() {
    step "The test programs under wine (build-windows)"
    export WINEPREFIX="$build/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    export WINEQT_QPA_PLATFORM=offscreen
    wineboot --init >/dev/null 2>&1 || true
    ctest --test-dir "$build" --output-on-failure --parallel "$jobs" -E '^(format|architecture|install)\.'
    wineserver --kill >/dev/null 2>&1 || true
}

# The program under wine: on the desktop when there is one, otherwise on a virtual display with a
# window manager (the window then exists but cannot be seen).
run() {
    step "scorvane.exe under wine"
    export WINEPREFIX="$build/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    if [ -n "${DISPLAY:-}" ]; then
        exec wine "$build/bin/scorvane.exe"
    fi
    exec xvfb-run -a -s "-screen 0 1280x800x24" \
        bash -c 'openbox >/dev/null 2>&1 & exec wine "$0"' "$build/bin/scorvane.exe"
}

[ $# -gt 0 ] || set -- deps qt qcustomplot program test
for s in "$@"; do
    case $s in
    build) deps; qt; qcustomplot; program ;;
    deps | qt | qcustomplot | program | run) $s ;;
    test) tests ;;
    *) echo "Unknown step $s (deps, qt, qcustomplot, program, test, run, build)" >&2; exit 2 ;;
    esac
done
step "All done"

#!/usr/bin/env bash
# The whole program for 64-bit Windows, cross-built on Debian with mingw-w64 and tried under wine.
#
#   scripts/windows.sh [step...]
#
#   deps qt qcustomplot pugixml program test   (no step given: these six, as the test command runs
#       them) packages; Qt, QCustomPlot and pugixml for Windows; the program, scorvane-report and
#       every test program in build-windows/bin; the whole suite under wine on a virtual display
#   build          deps qt qcustomplot pugixml program
#   installer      build, then build-windows/scorvane-<version>-setup.exe and -windows.zip
#   try-installer  the installer under wine: silent install, a report, the main window, uninstall
#   run            the program under wine
#
# Qt, QCustomPlot and pugixml for Windows are built from Debian's own source packages (apt-get
# source, Debian's patches applied) and kept in a cache outside the checkout, one folder per
# version, compiler version and set of configure options:
#   ${XDG_CACHE_HOME:-~/.cache}/scorvane/qt-<version>-<compiler>-<options hash>/
#   ${XDG_CACHE_HOME:-~/.cache}/scorvane/qcustomplot-<version>-<same Qt folder name>/
#   ${XDG_CACHE_HOME:-~/.cache}/scorvane/pugixml-<version>-<compiler>-<options hash>/
# Sources are unpacked and built in work-<folder>/ beside them; a folder with its stamp file
# ".complete" is used as it is, and the work folder is removed. Building Qt takes about 37 minutes on 2
# cores; the cache holds about 90 MB. The program, the report command and every test program land in build-windows/bin/
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
                    cmake ninja-build qt6-base-dev qt6-base-dev-tools googletest zip imagemagick openbox
                    xdotool)
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
# The checkout's own folder is left out of the hash (the toolchain's contents are in it), so every
# checkout of the same sources shares one Qt; the program's build names its toolchain itself.
qt_folder() {
    local version compiler hash
    version=$(upstream_version qt6-base)
    compiler=gcc-$($cxx -dumpfullversion)
    hash=$( (printf '%s\n' "${qt_options[@]//"$repo"/<checkout>}"; cat "$repo/cmake/mingw-w64.cmake") |
        sha256sum | cut -c1-10)
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
    rm -rf "$work"
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
    rm -rf "$work"
}

# pugixml for Windows: a static library (nothing to bundle), built with our own toolchain alone,
# since it needs no Qt. Its folder is named like Qt's, from its own options.
pugixml_options=(
    -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF -DPUGIXML_BUILD_TESTS=OFF
    -DCMAKE_INSTALL_LIBDIR=lib -DCMAKE_TOOLCHAIN_FILE="$repo/cmake/mingw-w64.cmake"
)

pugixml_folder() {
    local version compiler hash
    version=$(upstream_version pugixml)
    compiler=gcc-$($cxx -dumpfullversion)
    hash=$( (printf '%s\n' "${pugixml_options[@]//"$repo"/<checkout>}"; cat "$repo/cmake/mingw-w64.cmake") |
        sha256sum | cut -c1-10)
    echo "$cache/pugixml-$version-$compiler-$hash"
}

pugixml() {
    local prefix work src t
    prefix=$(pugixml_folder)
    if [ -f "$prefix/.complete" ]; then
        step "pugixml for Windows: using $prefix"
        return
    fi
    step "pugixml for Windows: building into $prefix"
    work=$(dirname "$prefix")/work-$(basename "$prefix")
    src=$(fetch_source pugixml "$work")
    rm -rf "$prefix"
    t=$SECONDS
    cmake -S "$src" -B "$work/build" "${pugixml_options[@]}" -DCMAKE_INSTALL_PREFIX="$prefix"
    cmake --build "$work/build" --parallel "$jobs"
    cmake --install "$work/build"
    echo "pugixml built and installed in $(( SECONDS - t )) s"
    touch "$prefix/.complete"
    rm -rf "$work"
}

# The folders the DLLs of a Windows build come from: Qt's, QCustomPlot's and the compiler's.
dll_folders() {
    echo "$(qt_folder)/bin"
    echo "$(qcp_folder)/bin"
    echo "/usr/lib/gcc/$triple/$($cxx -dumpfullversion)"
    echo "/usr/$triple/lib"
}

# The DLLs a program or DLL imports, by name, from its import table.
dll_imports() {
    $triple-objdump -p "$1" | sed -n 's/^[[:space:]]*DLL Name:[[:space:]]*//p' | tr -d '\r'
}

# Copies into a folder every DLL the given programs and DLLs load, and every DLL those load in
# turn, found in dll_folders; a DLL found in none of them is Windows' own (KERNEL32.dll and the
# like) and stays out. Plugins the programs load at run time are copied first into their own
# subfolders (platforms, styles), so that their imports are followed too.
bundle_dlls() { # folder plugin-pattern... -- program...
    local into=$1 qt
    shift
    qt=$(qt_folder)
    local queue=()
    while [ "$1" != "--" ]; do
        local plugin
        for plugin in "$qt"/plugins/$1; do
            [ -f "$plugin" ] || continue
            local sub=$into/$(basename "$(dirname "$plugin")")
            mkdir -p "$sub"
            cp -u "$plugin" "$sub/"
            queue+=("$sub/$(basename "$plugin")")
        done
        shift
    done
    shift
    queue+=("$@")
    mapfile -t folders < <(dll_folders)
    declare -A seen=()
    while [ ${#queue[@]} -gt 0 ]; do
        local file=${queue[0]}
        queue=("${queue[@]:1}")
        local name
        while read -r name; do
            local key=${name,,}
            [ -z "${seen[$key]:-}" ] || continue
            seen[$key]=1
            local folder found=""
            for folder in "${folders[@]}"; do
                found=$(find "$folder" -maxdepth 1 -iname "$name" -print -quit 2>/dev/null)
                [ -z "$found" ] || break
            done
            [ -n "$found" ] || continue
            cp -u "$found" "$into/"
            queue+=("$into/$(basename "$found")")
        done < <(dll_imports "$file")
    done
}

# The program, the report command and every test program for Windows, in build-windows/bin, with
# the DLLs and Qt plugins they load beside them (the screen tests also use the offscreen platform).
program() {
    local qcp
    qcp=$(qcp_folder)
    step "The program for Windows (build-windows)"
    mapfile -t toolchain < <(qt_toolchain)
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release "${toolchain[@]}" \
        -DQCustomPlotQt6_DIR="$qcp/lib/cmake/QCustomPlotQt6" \
        -Dpugixml_DIR="$(pugixml_folder)/lib/cmake/pugixml" \
        -DSCORVANE_GTEST_SOURCE=/usr/src/googletest >/dev/null
    # The build runs scorvane-setup under wine, which keeps its own prefix in the build folder.
    export WINEPREFIX="$build/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    wineboot --init >/dev/null 2>&1 || true
    cmake --build "$build" --parallel "$jobs"
    bundle_dlls "$build/bin" 'platforms/q*.dll' 'styles/*.dll' -- "$build"/bin/*.exe
    wineserver --kill >/dev/null 2>&1 || true
}

# Every test program under wine, the screen tests with Qt's windows platform plugin on a virtual
# display (the default platform: wine hands a program no QT_* variable, so the tests' own
# QT_QPA_PLATFORM=offscreen does not reach them; on Windows the offscreen platform finds no fonts).
tests() {
    step "The test programs under wine, on a virtual display (build-windows)"
    export WINEPREFIX="$build/wineprefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    unset WINEQT_QPA_PLATFORM
    # Wine's desktop belongs to the first wine process: it must start on the virtual display.
    wineserver --kill >/dev/null 2>&1 || true
    xvfb-run -a -s "-screen 0 1280x1024x24" bash -c '
        wineboot --init >/dev/null 2>&1 || true
        status=0
        ctest --test-dir "$0" --output-on-failure --parallel "$1" -E "^(format|architecture|install)\." ||
            status=$?
        wineserver --kill >/dev/null 2>&1 || true
        exit $status' "$build" "$jobs"
}

# The program as it is installed on a coach's computer, in build-windows/stage/Scorvane: what
# "cmake --install" puts there (bin\, share\scorvane\ with the help pages, the default BXFB.INI and
# the sample season) and the DLLs and plugins the program and the report command load.
stage_dir=$build/stage/Scorvane
stage() {
    step "The installed program (build-windows/stage)"
    rm -rf "$build/stage"
    cmake --install "$build" --prefix "$stage_dir" >/dev/null
    bundle_dlls "$stage_dir/bin" 'platforms/qwindows.dll' 'styles/*.dll' -- "$stage_dir"/bin/*.exe
    # scorvane-setup is a build tool; the installed program makes the user's files itself.
    rm -f "$stage_dir/bin/scorvane-setup.exe"
    find "$stage_dir" -type f | sed "s|^$stage_dir/||" | sort
}

project_version() {
    sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt"
}

# The installer (build-windows/scorvane-<version>-setup.exe) and the portable zip of the same
# folder (build-windows/scorvane-<version>-windows.zip). The lists of files to install and to
# remove are written from the staged folder. Builds what is not built yet first.
installer() {
    deps
    qt
    qcustomplot
    pugixml
    program
    stage
    step "The installer and the portable zip"
    local version files size
    version=$(project_version)
    files=$build/stage/files.nsh
    {
        echo '!macro InstallFiles'
        (cd "$stage_dir" && find . -mindepth 1 -type d | sort) | while read -r d; do
            echo "    CreateDirectory \"\$INSTDIR\\$(echo "${d#./}" | tr / '\\')\""
        done
        (cd "$stage_dir" && find . -type f | sort) | while read -r f; do
            local win; win=$(echo "${f#./}" | tr / '\\')
            echo "    SetOutPath \"\$INSTDIR\\$(dirname "$win" | sed 's/^\.$//')\""
            echo "    File \"/oname=\$INSTDIR\\$win\" \"$stage_dir/${f#./}\""
        done
        echo '    SetOutPath "$INSTDIR"'
        echo '!macroend'
        echo '!macro RemoveFiles'
        (cd "$stage_dir" && find . -type f | sort) | while read -r f; do
            echo "    Delete \"\$INSTDIR\\$(echo "${f#./}" | tr / '\\')\""
        done
        # Deepest first, each only when empty.
        (cd "$stage_dir" && find . -mindepth 1 -type d | sort -r) | while read -r d; do
            echo "    RMDir \"\$INSTDIR\\$(echo "${d#./}" | tr / '\\')\""
        done
        echo '!macroend'
    } >"$files"
    size=$(du -sk "$stage_dir" | cut -f1)
    makensis -V2 -DVERSION="$version" -DICON="$repo/packaging/scorvane.ico" -DFILES="$files" \
        -DSIZE_KB="$size" -DOUTFILE="$build/scorvane-$version-setup.exe" "$repo/packaging/scorvane.nsi"
    rm -f "$build/scorvane-$version-windows.zip"
    (cd "$build/stage" && zip -qr9 "$build/scorvane-$version-windows.zip" Scorvane)
    ls -l "$build/scorvane-$version-setup.exe" "$build/scorvane-$version-windows.zip"
}

# The installer tried under wine, in a wine prefix of its own: a silent install, the installed
# report command printing from the installed sample season, the installed program started until
# its main window shows (a screenshot in build-windows/installed.png), a silent uninstall that
# leaves the user's files and nothing of the program.
try_installer() {
    step "The installer under wine"
    local version prefix program
    version=$(project_version)
    prefix=$build/wineprefix-installer
    rm -rf "$prefix"
    export WINEPREFIX="$prefix" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
    wineboot --init >/dev/null 2>&1 || true
    program="$prefix/drive_c/Program Files/Scorvane"
    wine "$build/scorvane-$version-setup.exe" /S
    wineserver --wait
    [ -f "$program/bin/scorvane.exe" ] || { echo "Not installed: $program/bin/scorvane.exe" >&2; return 1; }
    [ -f "$prefix/drive_c/ProgramData/Microsoft/Windows/Start Menu/Programs/Scorvane for Football.lnk" ] ||
        { echo "No Start-menu entry" >&2; return 1; }
    echo "Installed: $(find "$program" -type f | wc -l) files"
    echo "The installed report command on the installed sample season:"
    wine "$program/bin/scorvane-report.exe" --data 'C:\Program Files\Scorvane\share\scorvane\sample-season' \
        --team 1 --category P
    echo "The installed program, until its main window shows:"
    # Wine's desktop belongs to the first wine process: it must start on the virtual display.
    wineserver --kill >/dev/null 2>&1 || true
    xvfb-run -a -s "-screen 0 1280x800x24" bash -c '
        openbox >/dev/null 2>&1 &
        wine "$0/bin/scorvane.exe" >/dev/null 2>&1 &
        for i in $(seq 90); do
            sleep 1
            if xdotool search --name "^Scorvane for Football" >/dev/null 2>&1; then
                sleep 5; import -window root "$1"; echo "Main window shown after $i s: $1"; exit 0
            fi
        done
        import -window root "$1"
        echo "No main window after 90 s: $1" >&2; exit 1' "$program" "$build/installed.png"
    wineserver --kill >/dev/null 2>&1 || true
    wine "$program/Uninstall.exe" /S
    wineserver --wait
    sleep 2 # the uninstaller runs a copy of itself from the temporary folder
    wineserver --wait
    if [ -e "$program" ]; then
        echo "Left after uninstalling:" >&2; find "$program" >&2; return 1
    fi
    echo "Uninstalled; the user's files are kept:"
    find "$prefix/drive_c/users" -path '*Scorvane*' -maxdepth 6 | sed "s|^$prefix/||"
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

[ $# -gt 0 ] || set -- deps qt qcustomplot pugixml program test
for s in "$@"; do
    case $s in
    build) deps; qt; qcustomplot; pugixml; program ;;
    deps | qt | qcustomplot | pugixml | program | run | stage | installer) $s ;;
    test) tests ;;
    try-installer) try_installer ;;
    *) echo "Unknown step $s (deps qt qcustomplot pugixml program test run stage installer" \
        "try-installer build)" >&2; exit 2 ;;
    esac
done
step "All done"

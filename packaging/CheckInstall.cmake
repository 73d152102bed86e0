# Installs a build into a fresh prefix and checks that everything an installed program needs is
# there and that the installed report command runs on the installed sample season.
#   cmake -DBUILD_DIR=<build> -DPREFIX=<empty folder to install into> -P CheckInstall.cmake

file(REMOVE_RECURSE ${PREFIX})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${PREFIX}
                RESULT_VARIABLE installed OUTPUT_QUIET)
if(NOT installed EQUAL 0)
    message(FATAL_ERROR "cmake --install failed (${installed})")
endif()

set(expected
    bin/scorvane
    bin/scorvane-report
    bin/scorvane-import
    share/scorvane/BXFB.INI
    share/scorvane/sample-season/FBTEAMS.DAT
    share/scorvane/help/topic10.html
    share/applications/scorvane.desktop
    share/icons/hicolor/scalable/apps/scorvane.svg)
foreach(file ${expected})
    if(NOT EXISTS ${PREFIX}/${file})
        message(FATAL_ERROR "missing after installing: ${file}")
    endif()
endforeach()

# Every help page of the source tree, and nothing of the build's own program folder.
file(GLOB source_pages RELATIVE ${SOURCE_DIR}/help ${SOURCE_DIR}/help/*.html)
file(GLOB installed_pages RELATIVE ${PREFIX}/share/scorvane/help ${PREFIX}/share/scorvane/help/*)
list(SORT source_pages)
list(SORT installed_pages)
if(NOT source_pages STREQUAL installed_pages)
    message(FATAL_ERROR "help pages differ: installed ${installed_pages}, source ${source_pages}")
endif()
foreach(unwanted bin/BXFB.INI bin/sample-season bin/help)
    if(EXISTS ${PREFIX}/${unwanted})
        message(FATAL_ERROR "${unwanted} must not be installed: bin/ is not the user's to write")
    endif()
endforeach()

file(SIZE ${PREFIX}/share/scorvane/BXFB.INI config_size)
if(NOT config_size EQUAL 1018)
    message(FATAL_ERROR "the default BXFB.INI has ${config_size} bytes, not 1018")
endif()

file(READ ${PREFIX}/share/applications/scorvane.desktop desktop)
foreach(line "Exec=scorvane" "Icon=scorvane" "Type=Application")
    string(FIND "${desktop}" "${line}" at)
    if(at EQUAL -1)
        message(FATAL_ERROR "the menu entry lacks ${line}")
    endif()
endforeach()

execute_process(COMMAND ${PREFIX}/bin/scorvane-report --data ${PREFIX}/share/scorvane/sample-season
                        --team 1 --category P
                RESULT_VARIABLE reported OUTPUT_VARIABLE report ERROR_VARIABLE errors)
if(NOT reported EQUAL 0)
    message(FATAL_ERROR "the installed scorvane-report failed (${reported}): ${errors}")
endif()
string(FIND "${report}" "Passing Statistics" titled)
if(titled EQUAL -1)
    message(FATAL_ERROR "the installed scorvane-report printed no passing report:\n${report}")
endif()
# Without --config the installed command reads the user's own configuration, never one in bin/.
execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=XDG_CONFIG_HOME HOME=${PREFIX}/home
                        ${PREFIX}/bin/scorvane-report --team 1 --category P
                RESULT_VARIABLE reported OUTPUT_QUIET ERROR_VARIABLE errors)
string(FIND "${errors}" "Not Found: ${PREFIX}/home/.config/scorvane/BXFB.INI" looked)
if(reported EQUAL 0 OR looked EQUAL -1)
    message(FATAL_ERROR "the installed scorvane-report did not look for the user's BXFB.INI "
                        "(${reported}): ${errors}")
endif()
file(REMOVE_RECURSE ${PREFIX})

# Checks who includes whom, as docs/architecture.md says:
#   cmake -DSOURCE_DIR=<absolute path of src> -P CheckLayers.cmake
# Every quoted include of a source file under src/ must name its own folder (a bare file name)
# or a folder its layer may use; logic folders include no Qt header. Any breach is listed and
# the check fails.

cmake_minimum_required(VERSION 3.22)

# Layer of a folder, and the folders each layer may include.
set(allowed_storage   storage)
set(allowed_shell     storage shell)
set(allowed_games     storage games)
set(allowed_entry     storage games entry)
set(allowed_reports   storage games reports)
set(allowed_seasons   storage games reports seasons)
set(allowed_ui        storage ui)
set(allowed_shell_ui  storage shell shell/ui ui)
set(allowed_games_ui  storage games games/ui ui)
set(allowed_entry_ui  storage games entry entry/ui ui)
set(allowed_reports_ui storage games reports reports/ui ui)
# The seasons subsystem is built on the reports subsystem, its screens on the report screens.
set(allowed_seasons_ui storage games reports seasons reports/ui seasons/ui ui)
set(allowed_app       storage shell games entry reports seasons ui shell/ui games/ui entry/ui reports/ui
                      seasons/ui app)
set(logic_layers storage shell games entry reports seasons)

if(NOT SOURCE_DIR)
    message(FATAL_ERROR "SOURCE_DIR is not set")
endif()
file(GLOB_RECURSE sources RELATIVE ${SOURCE_DIR} ${SOURCE_DIR}/*.h ${SOURCE_DIR}/*.cpp)
set(breaches "")
foreach(source ${sources})
    get_filename_component(folder ${source} DIRECTORY)
    string(REPLACE "/" "_" layer "${folder}")
    if(NOT DEFINED allowed_${layer})
        list(APPEND breaches "${source}: the folder ${folder} is no layer of docs/architecture.md")
        continue()
    endif()
    file(STRINGS ${SOURCE_DIR}/${source} includes REGEX "^[ \t]*#[ \t]*include[ \t]*[\"<]")
    foreach(line ${includes})
        if(line MATCHES "#[ \t]*include[ \t]*<(Q[A-Za-z]*)")
            if(layer IN_LIST logic_layers)
                list(APPEND breaches "${source}: logic includes the Qt header ${CMAKE_MATCH_1}")
            endif()
        elseif(line MATCHES "#[ \t]*include[ \t]*\"([^\"]+)\"")
            set(target "${CMAKE_MATCH_1}")
            get_filename_component(target_folder "${target}" DIRECTORY)
            if(target_folder STREQUAL "")
                continue()  # a header of the file's own folder
            endif()
            if(NOT target_folder IN_LIST allowed_${layer})
                list(APPEND breaches "${source}: ${folder} may not include ${target}")
            endif()
        endif()
    endforeach()
endforeach()

if(breaches)
    list(JOIN breaches "\n" text)
    message(FATAL_ERROR "Layering breaches:\n${text}")
endif()
list(LENGTH sources count)
message(STATUS "Layering: ${count} files follow docs/architecture.md")

# Checks that only the storage layer's platform part talks to the operating system:
#   cmake -DSOURCE_DIRS="<src>;<tools>" -P CheckPlatformCalls.cmake
# A system header (POSIX or Windows), a test of which system it is, the standard library's own
# file-system part (<filesystem>, std::filesystem), its file streams (<fstream>, fopen) or a read
# of the environment (getenv), anywhere but in src/storage/Platform*.cpp, is listed and the check
# fails. The last three because on Windows they take names in the ANSI code page, while the
# program's names are UTF-8 throughout.

cmake_minimum_required(VERSION 3.22)

set(system_headers "unistd|fcntl|dirent|dlfcn|pwd|grp|termios|poll|pthread|windows|winbase|io|direct|share|sys/[a-z_]+")
set(system_tests "_WIN32|_WIN64|__linux__|__unix__|__APPLE__|_MSC_VER|__MINGW32__")

if(NOT SOURCE_DIRS)
    message(FATAL_ERROR "SOURCE_DIRS is not set")
endif()
set(breaches "")
set(count 0)
foreach(dir ${SOURCE_DIRS})
    file(GLOB_RECURSE sources ${dir}/*.h ${dir}/*.cpp)
    foreach(source ${sources})
        math(EXPR count "${count} + 1")
        get_filename_component(name ${source} NAME)
        get_filename_component(folder ${source} DIRECTORY)
        get_filename_component(folder_name ${folder} NAME)
        if(folder_name STREQUAL "storage" AND name MATCHES "^Platform.*\\.cpp$")
            continue()
        endif()
        file(STRINGS ${source} lines REGEX "#[ \t]*(include|if|ifdef|ifndef|elif)")
        foreach(line ${lines})
            if(line MATCHES "#[ \t]*include[ \t]*<(${system_headers})\\.h>")
                list(APPEND breaches "${source}: includes <${CMAKE_MATCH_1}.h>")
            elseif(line MATCHES "#[ \t]*(if|ifdef|ifndef|elif).*(${system_tests})")
                list(APPEND breaches "${source}: asks for ${CMAKE_MATCH_2}")
            endif()
        endforeach()
        file(STRINGS ${source} lines REGEX "filesystem|fstream|fopen|getenv")
        foreach(line ${lines})
            if(line MATCHES "#[ \t]*include[ \t]*<filesystem>")
                list(APPEND breaches "${source}: includes <filesystem>")
            elseif(line MATCHES "std::filesystem")
                list(APPEND breaches "${source}: uses std::filesystem")
            elseif(line MATCHES "#[ \t]*include[ \t]*<fstream>|std::w?[io]?fstream|(^|[^a-z_])_?w?fopen(_s)?[ \t]*\\(")
                list(APPEND breaches "${source}: opens a file by its name outside the platform part")
            elseif(line MATCHES "(^|[^a-z_])_?w?getenv(_s)?[ \t]*\\(")
                list(APPEND breaches "${source}: reads the environment (getenv)")
            endif()
        endforeach()
    endforeach()
endforeach()

if(breaches)
    list(JOIN breaches "\n" text)
    message(FATAL_ERROR "System calls outside src/storage/Platform*.cpp:\n${text}")
endif()
message(STATUS "Platform calls: ${count} files leave the system to src/storage/Platform*.cpp")

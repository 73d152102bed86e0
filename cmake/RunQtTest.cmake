# Runs a Qt Test program of the Windows build (under wine when cross-built) with its log written to
# a file, then prints the log: there Qt Test's own output to the console is lost.
#   cmake -DPROGRAM=<exe> -DLOG=<file> [-DEMULATOR=<wine>] -P RunQtTest.cmake
file(REMOVE "${LOG}")
execute_process(COMMAND ${EMULATOR} "${PROGRAM}" -o "${LOG},txt" RESULT_VARIABLE status)
if(EXISTS "${LOG}")
    file(READ "${LOG}" text)
    message("${text}")
else()
    message("(no log written)")
endif()
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${status}")
endif()

# Runs one libFuzzer program for a bounded time from its seed inputs:
#   cmake -DFUZZER=<program> -DSEEDS=<seed folder> -DWORK=<scratch folder> -DSECONDS=<n>
#         [-DDICTIONARY=<file>] -P RunFuzzer.cmake
# New inputs go to WORK/corpus, never into the seed folder; an input that finds a fault is kept
# as WORK/crash-*, to be added to the seed folder once the fault is fixed. Fails on any crash,
# hang (an input taking over 10 seconds), sanitizer report, leak or uncaught exception.

cmake_minimum_required(VERSION 3.22)
foreach(v FUZZER SEEDS WORK SECONDS)
    if(NOT DEFINED ${v})
        message(FATAL_ERROR "${v} is not set")
    endif()
endforeach()
file(REMOVE_RECURSE ${WORK}/corpus)
file(MAKE_DIRECTORY ${WORK}/corpus)
set(options -max_total_time=${SECONDS} -timeout=10 -rss_limit_mb=2048 -max_len=65536
            -print_final_stats=1 -artifact_prefix=${WORK}/)
if(DICTIONARY AND EXISTS ${DICTIONARY})
    list(APPEND options -dict=${DICTIONARY})
endif()
execute_process(COMMAND ${FUZZER} ${options} ${WORK}/corpus ${SEEDS} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${FUZZER} found a fault (exit ${result}); the input is in ${WORK}")
endif()

# -DSCORVANE_GTEST_SOURCE=<folder>: GoogleTest built from its sources inside this build, for
# cross-builds where the system's GoogleTest libraries are for another system. Debian's
# "googletest" package puts the sources in /usr/src/googletest.
set(SCORVANE_GTEST_SOURCE "" CACHE PATH "GoogleTest sources to build the tests with")
if(SCORVANE_GTEST_SOURCE)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
    add_subdirectory(${SCORVANE_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    # tests/ asks for the package GTest: a package configuration standing for the targets built
    # here (GTest::gtest and GTest::gtest_main).
    set(config ${CMAKE_BINARY_DIR}/googletest-config)
    file(WRITE ${config}/GTestConfig.cmake "# GoogleTest built from its sources in this build\n")
    set(GTest_DIR ${config} CACHE PATH "" FORCE)
endif()

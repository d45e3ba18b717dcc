# GoogleTest, found in one of two ways:
#  1. TOLVANE_GTEST_SOURCE_DIR names GoogleTest's sources, which are built
#     here with this build's compiler and standard library (needed with
#     libc++, since packaged libraries are built against libstdc++);
#  2. otherwise an installed GoogleTest (find_package).
# Nothing is downloaded: the build works offline, and a missing GoogleTest
# stops the configure step with what to install.

set(TOLVANE_GTEST_SOURCE_DIR "" CACHE PATH "GoogleTest sources to build from (empty: use an installed one)")

if(TOLVANE_GTEST_SOURCE_DIR)
    if(NOT EXISTS ${TOLVANE_GTEST_SOURCE_DIR}/CMakeLists.txt
            OR NOT EXISTS ${TOLVANE_GTEST_SOURCE_DIR}/googlemock)
        message(FATAL_ERROR
            "No GoogleTest sources in TOLVANE_GTEST_SOURCE_DIR (${TOLVANE_GTEST_SOURCE_DIR}). "
            "On Debian or Ubuntu, install the package googletest, which puts them in "
            "/usr/src/googletest (scripts/install-linux-deps does it), or point "
            "TOLVANE_GTEST_SOURCE_DIR at a copy of GoogleTest's sources.")
    endif()
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
    add_subdirectory(${TOLVANE_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/_deps/googletest EXCLUDE_FROM_ALL SYSTEM)
else()
    find_package(GTest QUIET)
    # The tests use GoogleMock too, which Debian packages separately.
    if(NOT GTest_FOUND OR NOT TARGET GTest::gmock)
        message(FATAL_ERROR
            "GoogleTest with GoogleMock is not installed. "
            "On Debian or Ubuntu, install the packages libgtest-dev and libgmock-dev "
            "(scripts/test installs them when it can); with Homebrew, googletest. "
            "Or build from GoogleTest's sources: install the Debian package googletest "
            "and configure with -DTOLVANE_GTEST_SOURCE_DIR=/usr/src/googletest.")
    endif()
endif()

# Recent GoogleTest sources define the namespaced names themselves; older
# ones only the plain targets.
foreach(_gtest_target gtest gtest_main gmock)
    if(NOT TARGET GTest::${_gtest_target} AND TARGET ${_gtest_target})
        add_library(GTest::${_gtest_target} ALIAS ${_gtest_target})
    endif()
endforeach()

include(GoogleTest)

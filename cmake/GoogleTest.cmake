# GoogleTest, found in one of three ways:
#  1. TOLVANE_GTEST_SOURCE_DIR names GoogleTest's sources, which are built
#     here with this build's compiler and standard library (needed with
#     libc++, since packaged libraries are built against libstdc++);
#  2. an installed GoogleTest (find_package);
#  3. otherwise it is downloaded (a fresh machine with internet access).

set(TOLVANE_GTEST_SOURCE_DIR "" CACHE PATH "GoogleTest sources to build from (empty: use an installed one)")

if(TOLVANE_GTEST_SOURCE_DIR)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
    add_subdirectory(${TOLVANE_GTEST_SOURCE_DIR} ${CMAKE_BINARY_DIR}/_deps/googletest EXCLUDE_FROM_ALL SYSTEM)
else()
    find_package(GTest QUIET)
    if(NOT GTest_FOUND)
        include(FetchContent)
        FetchContent_Declare(googletest
            GIT_REPOSITORY https://github.com/google/googletest.git
            GIT_TAG v1.14.0
            SYSTEM)
        set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
        FetchContent_MakeAvailable(googletest)
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

# Proves that the type-checks against apple-stubs/ leave no Objective-C++
# file out: every .mm file of the project (outside build trees) must sit
# directly inside one of the folders the checks cover. Run by CTest (test
# MacAdaptersTypeCheckCoversEveryFile) as
#
#   cmake -DSOURCE_DIR=<repo> -DFOLDERS=<a|b|...> -P ObjCTypeCheckCoverage.cmake
#
# FOLDERS are relative to SOURCE_DIR.

cmake_policy(VERSION 3.25)

if(NOT SOURCE_DIR OR NOT FOLDERS)
    message(FATAL_ERROR "usage: cmake -DSOURCE_DIR=<repo> -DFOLDERS=<a|b|...> -P ObjCTypeCheckCoverage.cmake")
endif()

string(REPLACE "|" ";" folders "${FOLDERS}")
file(GLOB_RECURSE sources RELATIVE "${SOURCE_DIR}" "${SOURCE_DIR}/*.mm")
# Build trees, and the fixtures of this script's own test, are not the
# project's sources.
list(FILTER sources EXCLUDE REGEX "^(build|\\.git|tests/typecheck)/")
list(SORT sources)

set(uncovered "")
foreach(source IN LISTS sources)
    get_filename_component(folder "${source}" DIRECTORY)
    if(NOT folder IN_LIST folders)
        list(APPEND uncovered "${source}")
    endif()
endforeach()

list(LENGTH sources fileCount)
if(uncovered)
    list(JOIN uncovered "\n  " shown)
    message(FATAL_ERROR "Objective-C++ files that no type-check covers:\n  ${shown}")
endif()
message("all ${fileCount} Objective-C++ files are covered by a type-check")

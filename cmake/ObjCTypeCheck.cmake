# Type-checks the Objective-C++ files of some folders of the project against
# the declaration-only Apple headers in apple-stubs/, with clang's Objective-C++
# front end and ARC, so that a wrong selector, argument type or nullability
# fails on any system, not only on a Mac; the warnings are the project's own,
# as the Mac build applies them. Nothing is compiled to code or
# linked. Each room of the kit is checked with its own include folders and
# those of the rooms below it, as its Mac library builds, so an adapter that
# includes a header of a higher room fails here too. Run by CTest (tests
# MacAdaptersTypeCheck.<room>, MacAdaptersTypeCheck.app) as
#
#   cmake -DCLANGXX=<clang++> -DSOURCE_DIR=<repo> -DFOLDERS=<a|b|...> -DINCLUDE_DIRS=<a|b|...> -P ObjCTypeCheck.cmake
#
# FOLDERS are relative to SOURCE_DIR; every .mm file directly inside one of
# them is checked. Every .mm file of the project belongs to one check
# (MacAdaptersTypeCheckCoversEveryFile, ObjCTypeCheckCoverage.cmake).
#
# Exits with status 77 (CTest's skip) when no clang++ was found. Refuses to
# run on a Mac, where the stubs would meet the real SDK (AppleStubChecks.cmake
# says why; the build registers no stub check there).

cmake_policy(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/AppleStubChecks.cmake")

tolvane_stub_host_kind(hostKind)
tolvane_apple_stub_checks("${hostKind}" checks)
if(NOT "MacAdaptersTypeCheck" IN_LIST checks)
    message(FATAL_ERROR "The type-check against apple-stubs/ does not run on an Apple host: "
        "the real compile of the .mm files checks them against the SDK there.")
endif()

if(NOT CLANGXX OR NOT EXISTS "${CLANGXX}")
    message("SKIPPED: clang++ was not found, so the Objective-C++ files cannot be type-checked here.")
    cmake_language(EXIT 77)
endif()

string(REPLACE "|" ";" folders "${FOLDERS}")
set(objcxxSources "")
foreach(folder IN LISTS folders)
    file(GLOB folderSources "${SOURCE_DIR}/${folder}/*.mm")
    list(APPEND objcxxSources ${folderSources})
endforeach()
list(SORT objcxxSources)
list(LENGTH objcxxSources fileCount)
if(fileCount EQUAL 0)
    message(FATAL_ERROR "No .mm files found in ${folders}")
endif()

string(REPLACE "|" ";" includeDirs "${INCLUDE_DIRS}")
tolvane_objc_type_check_arguments("${hostKind}" "${SOURCE_DIR}" "${includeDirs}" flags)

set(failed "")
foreach(source IN LISTS objcxxSources)
    file(RELATIVE_PATH shown "${SOURCE_DIR}" "${source}")
    execute_process(
        COMMAND "${CLANGXX}" ${flags} "${source}"
        RESULT_VARIABLE status
        OUTPUT_VARIABLE output
        ERROR_VARIABLE output)
    if(status EQUAL 0)
        message("ok      ${shown}")
    else()
        message("FAILED  ${shown}\n${output}")
        list(APPEND failed "${shown}")
    endif()
endforeach()

list(JOIN flags " " shownFlags)
message("command: ${CLANGXX} ${shownFlags} <file>")
if(failed)
    list(LENGTH failed failedCount)
    message(FATAL_ERROR "${failedCount} of ${fileCount} Objective-C++ files failed the type-check: ${failed}")
endif()
message("type-checked ${fileCount} Objective-C++ files against apple-stubs/")

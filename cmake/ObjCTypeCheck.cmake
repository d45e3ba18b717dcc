# Type-checks every Objective-C++ file of the project against the
# declaration-only Apple headers in apple-stubs/, with clang's Objective-C++
# front end and ARC, so that a wrong selector, argument type or nullability
# fails on any system, not only on a Mac; the warnings are the project's own,
# as the Mac build applies them. Nothing is compiled to code or
# linked. Run by CTest (test MacAdaptersTypeCheck) as
#
#   cmake -DCLANGXX=<clang++> -DSOURCE_DIR=<repo> -DINCLUDE_DIRS=<a|b|...> -P ObjCTypeCheck.cmake
#
# Exits with status 77 (CTest's skip) when no clang++ was found.

cmake_policy(VERSION 3.25)

if(NOT CLANGXX OR NOT EXISTS "${CLANGXX}")
    message("SKIPPED: clang++ was not found, so the Objective-C++ files cannot be type-checked here.")
    cmake_language(EXIT 77)
endif()

file(GLOB_RECURSE objcxxSources
    "${SOURCE_DIR}/kit/mac/*.mm"
    "${SOURCE_DIR}/app/mac/*.mm"
    "${SOURCE_DIR}/tests/mac/*.mm")
list(SORT objcxxSources)
list(LENGTH objcxxSources fileCount)
if(fileCount EQUAL 0)
    message(FATAL_ERROR "No .mm files found under kit/mac, app/mac or tests/mac")
endif()

# libc++, the standard library Apple ships and the Mac build compiles against.
set(flags
    -stdlib=libc++ -std=c++20 -x objective-c++ -fobjc-arc -fblocks -fobjc-runtime=macosx-13.0
    -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Werror
    -isystem "${SOURCE_DIR}/apple-stubs")
string(REPLACE "|" ";" includeDirs "${INCLUDE_DIRS}")
list(REMOVE_DUPLICATES includeDirs)
foreach(dir IN LISTS includeDirs)
    # The system's own include folder stays where the compiler puts it.
    if(dir AND NOT dir STREQUAL "/usr/include" AND NOT dir STREQUAL "/usr/local/include")
        list(APPEND flags "-I${dir}")
    endif()
endforeach()

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

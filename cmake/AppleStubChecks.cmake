# Where the checks against the declaration stubs in apple-stubs/ run, and the
# type-check's compiler command line. One place decides both, so that the
# build (tests/CMakeLists.txt), the type-check itself (ObjCTypeCheck.cmake)
# and the test of that decision (StubChecksPlan.cmake) cannot disagree.
#
# The stubs stand in for the macOS SDK on systems that have none. They are
# never mixed with a real SDK: on an Apple host no stub check is registered.
# Isolating the stubs from the SDK there is not possible: libc++'s headers
# include the C library's headers (<stddef.h>, <string.h>, <pthread.h>, ...),
# and on a Mac only the SDK provides those, so a compile that keeps the SDK
# off its include path has no C library, and one that keeps it on sees every
# stubbed declaration twice (the stub <libproc.h> and the SDK's
# <sys/resource.h> both declare rusage_info_v4). On an Apple host the real
# compile of every .mm file (OrvikKitMac, TolvaneMac, TolvaneMacTests and the
# app's entry in the bundle) checks what the stubs check, against the SDK
# itself, and scripts/check-no-networking reads the linked binary's imports.
#
# Host kinds: "Apple" (building on or for an Apple platform) or "Other".

# Every check that reads the stubs: the type-check, the networking check of
# the stubs, and the networking check's own negative test.
set(TOLVANE_APPLE_STUB_CHECK_NAMES
    MacAdaptersTypeCheck
    AppleStubsDeclareNoNetworking
    NetworkingCheckRejectsASocket)

# The host kind of this configuration (project mode) or of this machine
# (script mode, where only CMAKE_HOST_APPLE is set).
function(tolvane_stub_host_kind outVar)
    if(APPLE OR CMAKE_HOST_APPLE)
        set(${outVar} "Apple" PARENT_SCOPE)
    else()
        set(${outVar} "Other" PARENT_SCOPE)
    endif()
endfunction()

function(_tolvane_check_host_kind hostKind)
    if(NOT hostKind STREQUAL "Apple" AND NOT hostKind STREQUAL "Other")
        message(FATAL_ERROR "Unknown host kind \"${hostKind}\": expected Apple or Other")
    endif()
endfunction()

# The names of the stub checks a host of the given kind registers.
function(tolvane_apple_stub_checks hostKind outVar)
    _tolvane_check_host_kind("${hostKind}")
    if(hostKind STREQUAL "Apple")
        set(${outVar} "" PARENT_SCOPE)
    else()
        set(${outVar} "${TOLVANE_APPLE_STUB_CHECK_NAMES}" PARENT_SCOPE)
    endif()
endfunction()

# The type-check's compiler arguments before the file name, for a host of the
# given kind: empty for an Apple host, which runs no type-check. includeDirs
# is a list of the project's include folders.
function(tolvane_objc_type_check_arguments hostKind sourceDir includeDirs outVar)
    _tolvane_check_host_kind("${hostKind}")
    if(hostKind STREQUAL "Apple")
        set(${outVar} "" PARENT_SCOPE)
        return()
    endif()
    # libc++, the standard library Apple ships and the Mac build compiles
    # against; the stubs come first among the system folders.
    set(arguments
        -stdlib=libc++ -std=c++20 -x objective-c++ -fobjc-arc -fblocks -fobjc-runtime=macosx-13.0
        -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Werror
        -isystem "${sourceDir}/apple-stubs")
    set(dirs ${includeDirs})
    list(REMOVE_DUPLICATES dirs)
    foreach(dir IN LISTS dirs)
        # The system's own include folder stays where the compiler puts it.
        if(dir AND NOT dir STREQUAL "/usr/include" AND NOT dir STREQUAL "/usr/local/include")
            list(APPEND arguments "-I${dir}")
        endif()
    endforeach()
    set(${outVar} "${arguments}" PARENT_SCOPE)
endfunction()

# Prints which checks against apple-stubs/ a host of the given kind
# registers, and the type-check's command line there, from the same functions
# the build uses (AppleStubChecks.cmake):
#
#   cmake -DHOST_KIND=<Apple|Other> -DSOURCE_DIR=<repo> -P StubChecksPlan.cmake
#
# The tests StubChecksPlanForAnAppleHost and StubChecksPlanForOtherHosts run
# it on any system and match its output.

cmake_policy(VERSION 3.25)
include("${CMAKE_CURRENT_LIST_DIR}/AppleStubChecks.cmake")

if(NOT HOST_KIND OR NOT SOURCE_DIR)
    message(FATAL_ERROR "usage: cmake -DHOST_KIND=<Apple|Other> -DSOURCE_DIR=<repo> -P StubChecksPlan.cmake")
endif()

tolvane_apple_stub_checks("${HOST_KIND}" checks)
tolvane_objc_type_check_arguments("${HOST_KIND}" "${SOURCE_DIR}" "${SOURCE_DIR}/kit/base/mac/include" arguments)

message("host kind: ${HOST_KIND}")
if(checks)
    list(JOIN checks " " shownChecks)
    message("stub checks registered: ${shownChecks}")
else()
    message("stub checks registered: none")
endif()
if(arguments)
    list(JOIN arguments " " shownArguments)
    message("type-check command: clang++ ${shownArguments} <file.mm>")
else()
    message("type-check command: none (the .mm files compile against the SDK)")
endif()

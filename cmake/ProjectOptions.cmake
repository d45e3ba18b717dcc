# Compiler settings shared by every target of the project.

set(TOLVANE_SANITIZERS "" CACHE STRING
    "Sanitizers for every target, as a list (address;undefined or thread)")

# Instrumentation applies to everything built here, third-party test
# frameworks included, so that sanitizer runtimes see every allocation.
if(TOLVANE_SANITIZERS)
    list(JOIN TOLVANE_SANITIZERS "," _tolvane_sanitizers)
    add_compile_options(-fsanitize=${_tolvane_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${_tolvane_sanitizers})
endif()

option(TOLVANE_COVERAGE "Instrument every target for line and branch coverage (GCC's gcov)" OFF)

# gcov instrumentation, read afterwards by scripts/coverage. Everything built
# here is instrumented, since every executable that links an instrumented
# library needs the gcov runtime; the report keeps the modules' own sources.
# The counters are updated atomically because some tests run several threads.
if(TOLVANE_COVERAGE)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        message(FATAL_ERROR "Coverage is measured with GCC's gcov; configure with g++.")
    endif()
    if(TOLVANE_SANITIZERS OR TOLVANE_BUILD_FUZZERS)
        message(FATAL_ERROR "Coverage is measured on a plain build, without sanitizers or fuzzers.")
    endif()
    add_compile_options(--coverage -fprofile-update=atomic)
    add_link_options(--coverage)
endif()

if(TOLVANE_BUILD_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR "The fuzz targets need Clang's libFuzzer; configure with clang++.")
    endif()
    # Coverage instrumentation for the libraries; the fuzz executables add
    # the libFuzzer driver themselves.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Warnings are errors in the project's own code under every toolchain.
function(tolvane_apply_project_options target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Werror)
endfunction()

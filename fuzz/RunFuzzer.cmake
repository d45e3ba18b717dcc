# Runs one libFuzzer target as a test: cmake -P RunFuzzer.cmake with
#   FUZZER       the fuzz executable
#   WORK_DIR     its working corpus: emptied here, then filled by the run
#   SEED_DIR     the seed corpus in the source tree; only read
#   ARTIFACT_DIR where a failing input is saved
#   SECONDS      how long to fuzz
#
# libFuzzer writes new inputs to the first corpus directory only, so the
# working directory goes first and the seeds are never touched. A failed
# check, a crash, a leak or a sanitizer report makes libFuzzer exit non-zero
# and fails the test.

foreach(variable FUZZER WORK_DIR SEED_DIR ARTIFACT_DIR SECONDS)
    if(NOT DEFINED ${variable})
        message(FATAL_ERROR "RunFuzzer.cmake needs -D${variable}=...")
    endif()
endforeach()

if(NOT IS_DIRECTORY "${SEED_DIR}")
    message(FATAL_ERROR "No seed corpus at ${SEED_DIR}")
endif()

file(REMOVE_RECURSE "${WORK_DIR}")
file(MAKE_DIRECTORY "${WORK_DIR}" "${ARTIFACT_DIR}")

execute_process(
    COMMAND "${FUZZER}"
        -max_total_time=${SECONDS}
        -timeout=10
        -print_final_stats=1
        "-artifact_prefix=${ARTIFACT_DIR}/"
        "${WORK_DIR}"
        "${SEED_DIR}"
    RESULT_VARIABLE result)

if(NOT result STREQUAL "0")
    message(FATAL_ERROR "${FUZZER} failed (${result}); the failing input, if any, is in ${ARTIFACT_DIR}")
endif()

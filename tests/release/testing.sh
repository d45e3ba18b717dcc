# shellcheck shell=bash
# What the tests of the release scripts share. Each test file defines one
# function per test case and ends with `runCase "$@"`; CTest runs a file once
# per case, naming the case (tests/release/CMakeLists.txt). Scripts that need
# macOS's tools run against the fakes in fake-tools/, which record their
# command lines in $FAKE_LOG, one line per call, each argument in brackets.
# shellcheck disable=SC2034  # the test files that source this one use them
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
scripts="$root/scripts"
fakeTools="$root/tests/release/fake-tools"
scratch="$(mktemp -d "${TMPDIR:-/tmp}/tolvane-release-test.XXXXXX")"
trap 'rm -rf "$scratch"' EXIT
export FAKE_LOG="$scratch/calls.log"
: > "$FAKE_LOG"
failures=0

fail() {
    echo "FAIL: $*" >&2
    failures=$((failures + 1))
}

# Runs a command, keeping its exit status in `status`, its standard output in
# `output` and its standard error in `errors`.
run() {
    if "$@" > "$scratch/stdout" 2> "$scratch/stderr"; then status=0; else status=$?; fi
    output="$(cat "$scratch/stdout")"
    errors="$(cat "$scratch/stderr")"
}

# Runs a command (or a function of the test file) with the fake macOS tools
# first on PATH.
runWithFakes() {
    local path="$PATH"
    PATH="$fakeTools:$PATH"
    run "$@"
    PATH="$path"
}

expectStatus() {  # expected, what
    if [ "$status" -ne "$1" ]; then
        fail "$2: exit status $status, expected $1; stdout: $output; stderr: $errors"
    fi
}

expectEqual() {  # actual, expected, what
    if [ "$1" != "$2" ]; then
        fail "$3 differs (expected, then actual):"
        diff <(printf '%s\n' "$2") <(printf '%s\n' "$1") >&2 || true
    fi
}

expectContains() {  # text, part, what
    case "$1" in
        *"$2"*) ;;
        *) fail "$3: \"$2\" not found in: $1" ;;
    esac
}

expectLacks() {  # text, part, what
    case "$1" in
        *"$2"*) fail "$3: \"$2\" found in: $1" ;;
        *) ;;
    esac
}

# The recorded calls of one fake tool, with the scratch folder written as
# SCRATCH and every temporary folder the scripts made as TEMP.
callsOf() {  # tool
    grep "^$1 " "$FAKE_LOG" | sed -e "s|$scratch|SCRATCH|g" -e 's|/[^] ]*/tolvane-[a-z]*\.[A-Za-z0-9]\{6\}|TEMP|g' || true
}

runCase() {
    if [ "$#" -ne 1 ] || ! declare -F "$1" > /dev/null; then
        echo "usage: $0 CASE (one of the functions of this file)" >&2
        exit 2
    fi
    "$1"
    if [ "$failures" -ne 0 ]; then
        echo "$1: $failures check(s) failed" >&2
        exit 1
    fi
    echo "$1: passed"
}

#!/usr/bin/env bash
# scripts/project-version: the version from CMakeLists.txt's project() line
# and the check of a release tag against it.
# shellcheck source-path=SCRIPTDIR source=testing.sh
source "$(dirname "$0")/testing.sh"

writeCMakeLists() {  # the project() line
    printf 'cmake_minimum_required(VERSION 3.25)\n\n%s\n\noption(X "x" OFF)\n' "$1" > "$scratch/CMakeLists.txt"
}

printsTheVersionOfTheProjectLine() {
    writeCMakeLists 'project(Tolvane VERSION 2.3.4 LANGUAGES CXX)'
    run "$scripts/project-version" --cmake-lists "$scratch/CMakeLists.txt"
    expectStatus 0 "reading the version"
    expectEqual "$output" "2.3.4" "the version"
}

readsTheProjectsOwnCMakeLists() {
    run "$scripts/project-version"
    expectStatus 0 "reading the project's version"
    expectEqual "$output" "$(sed -n 's/^project(Tolvane VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")" "the project's version"
}

aTagOfTheVersionPasses() {
    writeCMakeLists 'project(Tolvane VERSION 2.3.4 LANGUAGES CXX)'
    run "$scripts/project-version" --cmake-lists "$scratch/CMakeLists.txt" --check-tag v2.3.4
    expectStatus 0 "checking v2.3.4 against 2.3.4"
}

aTagThatDiffersFailsClearly() {
    writeCMakeLists 'project(Tolvane VERSION 2.3.4 LANGUAGES CXX)'
    run "$scripts/project-version" --cmake-lists "$scratch/CMakeLists.txt" --check-tag v2.3.5
    expectStatus 1 "checking v2.3.5 against 2.3.4"
    expectContains "$errors" 'The tag "v2.3.5" does not match the project version 2.3.4' "the message"
}

aTagWithoutTheLeadingVFails() {
    writeCMakeLists 'project(Tolvane VERSION 2.3.4 LANGUAGES CXX)'
    run "$scripts/project-version" --cmake-lists "$scratch/CMakeLists.txt" --check-tag 2.3.4
    expectStatus 1 "checking 2.3.4 (no v) against 2.3.4"
}

aProjectLineWithoutAVersionIsAnError() {
    writeCMakeLists 'project(Tolvane LANGUAGES CXX)'
    run "$scripts/project-version" --cmake-lists "$scratch/CMakeLists.txt"
    expectStatus 2 "reading a project() line without a version"
    expectEqual "$output" "" "what it prints"
}

aVersionOfTwoPartsIsAnError() {
    writeCMakeLists 'project(Tolvane VERSION 2.3 LANGUAGES CXX)'
    run "$scripts/project-version" --cmake-lists "$scratch/CMakeLists.txt"
    expectStatus 2 "reading version 2.3"
    expectContains "$errors" "not of the form MAJOR.MINOR.PATCH" "the message"
}

runCase "$@"

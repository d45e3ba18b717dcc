#!/usr/bin/env bash
# scripts/changelog-section: one version's section of a Keep a Changelog file,
# the notes of that version's release.
# shellcheck source-path=SCRIPTDIR source=testing.sh
source "$(dirname "$0")/testing.sh"

writeChangelog() {
    cat > "$scratch/CHANGELOG.md" <<'CHANGES'
# Changelog

All notable changes.

## [Unreleased]

## [1.1.0] - 2026-12-01

### Added

- Shuffle.

### Fixed

- The key no longer repeats.

## [1.0.0] - 2026-11-24

- The first release.

[1.1.0]: https://example.com/compare/v1.0.0...v1.1.0
[1.0.0]: https://example.com/releases/tag/v1.0.0
CHANGES
}

printsTheSectionWithoutItsHeadingUpToTheNext() {
    writeChangelog
    run "$scripts/changelog-section" 1.1.0 "$scratch/CHANGELOG.md"
    expectStatus 0 "extracting 1.1.0"
    expectEqual "$output" "### Added

- Shuffle.

### Fixed

- The key no longer repeats." "the section of 1.1.0"
}

theLastSectionEndsBeforeTheLinkDefinitions() {
    writeChangelog
    run "$scripts/changelog-section" 1.0.0 "$scratch/CHANGELOG.md"
    expectStatus 0 "extracting 1.0.0"
    expectEqual "$output" "- The first release." "the section of 1.0.0"
}

aVersionWithoutASectionFails() {
    writeChangelog
    run "$scripts/changelog-section" 1.2.0 "$scratch/CHANGELOG.md"
    expectStatus 1 "extracting 1.2.0"
    expectContains "$errors" "has no section for 1.2.0" "the message"
    expectEqual "$output" "" "what it prints"
}

anEmptySectionFails() {
    writeChangelog
    run "$scripts/changelog-section" Unreleased "$scratch/CHANGELOG.md"
    expectStatus 1 "extracting the empty Unreleased section"
    expectContains "$errors" "is empty" "the message"
}

aVersionMatchesOnlyWhole() {
    writeChangelog
    run "$scripts/changelog-section" 1.0 "$scratch/CHANGELOG.md"
    expectStatus 1 "extracting 1.0 from a changelog with 1.0.0"
    run "$scripts/changelog-section" 1.0.0. "$scratch/CHANGELOG.md"
    expectStatus 1 "extracting 1.0.0. from a changelog with 1.0.0"
}

theChangelogHasNotesForTheProjectVersion() {
    run "$scripts/project-version"
    expectStatus 0 "reading the project's version"
    local version="$output"
    run "$scripts/changelog-section" "$version"
    expectStatus 0 "extracting the project version's section of CHANGELOG.md"
    expectContains "$output" "- " "the notes of $version"
}

runCase "$@"

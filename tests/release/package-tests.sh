#!/usr/bin/env bash
# scripts/package against fakes of hdiutil, ditto, shasum, codesign and
# plutil (fake-tools/): the command lines it runs, what goes into the disk
# image, the checksums, and what it refuses.
# shellcheck source-path=SCRIPTDIR source=testing.sh
source "$(dirname "$0")/testing.sh"

version="$("$scripts/project-version")"
export FAKE_BUNDLE_VERSION="$version"

# Checks a checksum file with the system's own tool.
checkSums() {
    if command -v sha256sum > /dev/null; then
        sha256sum -c "$1" > /dev/null
    else
        /usr/bin/shasum -a 256 -c "$1" > /dev/null
    fi
}

makeApp() {
    mkdir -p "$scratch/build/Tolvane.app/Contents/MacOS"
    printf '<plist/>\n' > "$scratch/build/Tolvane.app/Contents/Info.plist"
    printf 'binary\n' > "$scratch/build/Tolvane.app/Contents/MacOS/Tolvane"
}

onAnotherSystemItSaysItNeedsMacOS() {
    makeApp
    FAKE_UNAME=Linux runWithFakes "$scripts/package" "$scratch/build/Tolvane.app" "$scratch/out"
    expectStatus 2 "packing on Linux"
    expectContains "$errors" "needs macOS" "the message"
    expectEqual "$(callsOf hdiutil)" "" "hdiutil calls"
}

makesTheDiskImageZipAndChecksums() {
    makeApp
    runWithFakes "$scripts/package" "$scratch/build/Tolvane.app" "$scratch/out"
    expectStatus 0 "packing"
    expectEqual "$(callsOf plutil)" "plutil [-extract] [CFBundleShortVersionString] [raw] [-o] [-] [SCRATCH/build/Tolvane.app/Contents/Info.plist]" "the version check"
    expectEqual "$(callsOf codesign)" "codesign [--verify] [--strict] [SCRATCH/build/Tolvane.app]" "codesign calls (no disk image signature without --sign)"
    expectEqual "$(callsOf hdiutil)" "hdiutil [create] [-volname] [Tolvane] [-srcfolder] [TEMP/Tolvane] [-fs] [HFS+] [-format] [UDZO] [-ov] [SCRATCH/out/Tolvane-$version.dmg]
hdiutil [verify] [SCRATCH/out/Tolvane-$version.dmg]" "hdiutil calls"
    expectEqual "$(callsOf ditto)" "ditto [SCRATCH/build/Tolvane.app] [TEMP/Tolvane/Tolvane.app]
ditto [-c] [-k] [--keepParent] [SCRATCH/build/Tolvane.app] [SCRATCH/out/Tolvane-$version.zip]" "ditto calls"
    expectEqual "$(callsOf shasum)" "shasum [-a] [256] [Tolvane-$version.dmg] [Tolvane-$version.zip]" "shasum calls"
    # What the fake hdiutil saw in the folder it made the image from.
    expectEqual "$(cat "$scratch/out/Tolvane-$version.dmg")" ".
./Applications
./Tolvane.app
./Tolvane.app/Contents
./Tolvane.app/Contents/Info.plist
./Tolvane.app/Contents/MacOS
./Tolvane.app/Contents/MacOS/Tolvane
Applications -> /Applications" "the disk image's folder"
    expectEqual "$(cat "$scratch/out/Tolvane-$version.zip")" "zip of Tolvane.app" "the zip"
    if ! (cd "$scratch/out" && checkSums "Tolvane-$version.sha256"); then
        fail "Tolvane-$version.sha256 does not check out: $(cat "$scratch/out/Tolvane-$version.sha256")"
    fi
    expectEqual "$(sed 's/^[0-9a-f]\{64\}  /HASH  /' "$scratch/out/Tolvane-$version.sha256")" "HASH  Tolvane-$version.dmg
HASH  Tolvane-$version.zip" "the checksum file"
    expectContains "$output" "Tolvane-$version.dmg" "what it prints"
}

signsTheDiskImageWithATimestampWhenGivenAnIdentity() {
    makeApp
    runWithFakes "$scripts/package" --sign "Developer ID Application: Orvik Works (TEAMID1234)" "$scratch/build/Tolvane.app" "$scratch/out"
    expectStatus 0 "packing with --sign"
    expectEqual "$(callsOf codesign)" "codesign [--verify] [--strict] [SCRATCH/build/Tolvane.app]
codesign [--force] [--sign] [Developer ID Application: Orvik Works (TEAMID1234)] [--timestamp] [SCRATCH/out/Tolvane-$version.dmg]
codesign [--verify] [--strict] [SCRATCH/out/Tolvane-$version.dmg]" "codesign calls"
}

notarizesTheSignedDiskImageBeforeTheChecksums() {
    makeApp
    printf 'key\n' > "$scratch/AuthKey.p8"
    NOTARY_API_KEY_FILE="$scratch/AuthKey.p8" NOTARY_API_KEY_ID=KEYID12345 NOTARY_API_ISSUER_ID=issuer-uuid \
        FAKE_NOTARY_ANSWER='{"id":"4ad1c3a2","message":"Processing complete","status":"Accepted"}' \
        runWithFakes "$scripts/package" --sign "Developer ID Application: Orvik Works (TEAMID1234)" --notarize \
        "$scratch/build/Tolvane.app" "$scratch/out"
    expectStatus 0 "packing with --sign and --notarize"
    expectEqual "$(grep -E '^(codesign \[--force|xcrun|ditto \[-c|shasum)' "$FAKE_LOG" | sed "s|$scratch|SCRATCH|g")" \
        "codesign [--force] [--sign] [Developer ID Application: Orvik Works (TEAMID1234)] [--timestamp] [SCRATCH/out/Tolvane-$version.dmg]
xcrun [notarytool] [submit] [SCRATCH/out/Tolvane-$version.dmg] [--wait] [--output-format] [json] [--key] [SCRATCH/AuthKey.p8] [--key-id] [KEYID12345] [--issuer] [issuer-uuid]
xcrun [stapler] [staple] [SCRATCH/out/Tolvane-$version.dmg]
xcrun [stapler] [validate] [SCRATCH/out/Tolvane-$version.dmg]
ditto [-c] [-k] [--keepParent] [SCRATCH/build/Tolvane.app] [SCRATCH/out/Tolvane-$version.zip]
shasum [-a] [256] [Tolvane-$version.dmg] [Tolvane-$version.zip]" "signing, notarizing, stapling, zipping and summing, in order"
}

notarizingWithoutSigningIsRefused() {
    makeApp
    runWithFakes "$scripts/package" --notarize "$scratch/build/Tolvane.app" "$scratch/out"
    expectStatus 2 "packing with --notarize alone"
    expectEqual "$(callsOf hdiutil)" "" "hdiutil calls"
}

refusesAnAppOfAnotherVersion() {
    makeApp
    FAKE_BUNDLE_VERSION=9.9.9 runWithFakes "$scripts/package" "$scratch/build/Tolvane.app" "$scratch/out"
    expectStatus 1 "packing an app of version 9.9.9"
    expectContains "$errors" "is version 9.9.9, but the project is at $version" "the message"
    expectEqual "$(callsOf hdiutil)" "" "hdiutil calls"
}

refusesAnAppWhoseSignatureDoesNotVerify() {
    makeApp
    FAKE_CODESIGN_FAILS=1 runWithFakes "$scripts/package" "$scratch/build/Tolvane.app" "$scratch/out"
    expectStatus 1 "packing an app whose signature does not verify"
    expectEqual "$(callsOf hdiutil)" "" "hdiutil calls"
}

refusesSomethingThatIsNotTheApp() {
    mkdir -p "$scratch/build/Other.app"
    runWithFakes "$scripts/package" "$scratch/build/Other.app" "$scratch/out"
    expectStatus 2 "packing Other.app"
}

runCase "$@"

#!/usr/bin/env bash
# scripts/signing-keychain against a fake of security (fake-tools/): the
# keychain it makes, the identity it finds in `security find-identity`'s
# output, its removal, and that no secret is printed.
# shellcheck source-path=SCRIPTDIR source=testing.sh
source "$(dirname "$0")/testing.sh"

hash="0123456789ABCDEF0123456789ABCDEF01234567"
developerId="  1) $hash \"Developer ID Application: Orvik Works (TEAMID1234)\"
     1 valid identities found"
certificatePassword="p12-export-password"
export SIGNING_KEYCHAIN HOME
SIGNING_KEYCHAIN="$scratch/signing.keychain-db"
HOME="$scratch/home"

withCertificate() {
    env DEVELOPER_ID_CERTIFICATE_P12="$(printf 'p12 bytes' | base64)" \
        DEVELOPER_ID_CERTIFICATE_PASSWORD="$certificatePassword" "$@"
}

createImportsTheIdentityAndPrintsItsHash() {
    FAKE_IDENTITIES="$developerId" runWithFakes withCertificate "$scripts/signing-keychain" create
    expectStatus 0 "creating the keychain"
    expectEqual "$output" "$hash" "what it prints"
    expectEqual "$(callsOf security | sed -e 's/\[TEMP\/certificate.p12\]/[P12]/')" \
        "security [create-keychain] [-p] [0123456789abcdef0123456789abcdef0123456789abcdef] [SCRATCH/signing.keychain-db]
security [set-keychain-settings] [-lut] [21600] [SCRATCH/signing.keychain-db]
security [unlock-keychain] [-p] [0123456789abcdef0123456789abcdef0123456789abcdef] [SCRATCH/signing.keychain-db]
security [import] [P12] [-k] [SCRATCH/signing.keychain-db] [-f] [pkcs12] [-P] [$certificatePassword] [-T] [/usr/bin/codesign]
security [set-key-partition-list] [-S] [apple-tool:,apple:,codesign:] [-s] [-k] [0123456789abcdef0123456789abcdef0123456789abcdef] [SCRATCH/signing.keychain-db]
security [list-keychains] [-d] [user]
security [list-keychains] [-d] [user] [-s] [SCRATCH/signing.keychain-db] [SCRATCH/home/Library/Keychains/login.keychain-db] [/Library/Keychains/System.keychain]
security [find-identity] [-v] [-p] [codesigning] [SCRATCH/signing.keychain-db]" "the security calls"
}

noSecretIsPrinted() {
    FAKE_IDENTITIES="$developerId" runWithFakes withCertificate "$scripts/signing-keychain" create
    expectStatus 0 "creating the keychain"
    expectLacks "$output$errors" "$certificatePassword" "the output"
    expectLacks "$output$errors" "0123456789abcdef0123456789abcdef0123456789abcdef" "the output (the keychain's password)"
}

anIdentityThatIsNotDeveloperIdIsRefused() {
    FAKE_IDENTITIES="  1) $hash \"Apple Development: Someone (TEAMID1234)\"
     1 valid identities found" runWithFakes withCertificate "$scripts/signing-keychain" create
    expectStatus 1 "creating the keychain for an Apple Development identity"
    expectContains "$errors" "no valid Developer ID Application identity" "the message"
    expectEqual "$output" "" "what it prints"
}

noValidIdentityIsRefused() {
    FAKE_IDENTITIES="     0 valid identities found" runWithFakes withCertificate "$scripts/signing-keychain" create
    expectStatus 1 "creating the keychain without a valid identity"
}

aWrongPasswordFailsClearly() {
    FAKE_IMPORT_FAILS=1 FAKE_IDENTITIES="$developerId" runWithFakes withCertificate "$scripts/signing-keychain" create
    expectStatus 1 "importing with a wrong password"
    expectContains "$errors" "could not be imported" "the message"
}

missingSecretsAreAnError() {
    run env -u DEVELOPER_ID_CERTIFICATE_P12 DEVELOPER_ID_CERTIFICATE_PASSWORD=x env PATH="$fakeTools:$PATH" "$scripts/signing-keychain" create
    expectStatus 2 "creating the keychain without the certificate"
    expectEqual "$(callsOf security)" "" "security calls"
}

deleteRemovesTheKeychain() {
    FAKE_IDENTITIES="$developerId" runWithFakes withCertificate "$scripts/signing-keychain" create
    runWithFakes "$scripts/signing-keychain" delete
    expectStatus 0 "deleting the keychain"
    expectContains "$(callsOf security)" "security [delete-keychain] [SCRATCH/signing.keychain-db]" "the security calls"
    [ ! -e "$SIGNING_KEYCHAIN" ] || fail "the keychain is still there"
}

deleteWithoutAKeychainSucceeds() {
    runWithFakes "$scripts/signing-keychain" delete
    expectStatus 0 "deleting a keychain that is not there"
    expectEqual "$(callsOf security)" "" "security calls"
}

runCase "$@"

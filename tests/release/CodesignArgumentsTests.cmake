# Checks the codesign arguments of Tolvane.app (cmake/Codesign.cmake): a real
# identity is signed with a secure timestamp, which notarization requires;
# an ad-hoc signature is not. Both with the hardened runtime and the
# entitlements. Run with cmake -DSOURCE_DIR=... -DCASE=... -P.
include(${SOURCE_DIR}/cmake/Codesign.cmake)

function(expectArguments identity expected)
    tolvane_codesign_arguments(actual "${identity}" /path/Tolvane.entitlements)
    if(NOT actual STREQUAL expected)
        message(FATAL_ERROR "Signing with identity \"${identity}\":\n  got      ${actual}\n  expected ${expected}")
    endif()
endfunction()

if(CASE STREQUAL "ARealIdentityIsSignedWithASecureTimestamp")
    expectArguments("Developer ID Application: Orvik Works (TEAMID1234)"
        "--force;--sign;Developer ID Application: Orvik Works (TEAMID1234);--options;runtime;--timestamp;--entitlements;/path/Tolvane.entitlements")
    expectArguments("0123456789ABCDEF0123456789ABCDEF01234567"
        "--force;--sign;0123456789ABCDEF0123456789ABCDEF01234567;--options;runtime;--timestamp;--entitlements;/path/Tolvane.entitlements")
elseif(CASE STREQUAL "AnAdHocSignatureHasNoTimestamp")
    expectArguments("" "--force;--sign;-;--options;runtime;--entitlements;/path/Tolvane.entitlements")
    expectArguments("-" "--force;--sign;-;--options;runtime;--entitlements;/path/Tolvane.entitlements")
else()
    message(FATAL_ERROR "Unknown case \"${CASE}\"")
endif()
message(STATUS "${CASE}: passed")

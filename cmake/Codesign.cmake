# The codesign arguments that sign Tolvane.app, as one function so that the
# bundle target (app/bundle/CMakeLists.txt, Apple only) and its test
# (tests/release, every platform) use the same list.
#
# Always: --force (a linked binary carries the linker's ad-hoc signature),
# the hardened runtime (--options runtime) and the app's entitlements. Under
# a real identity also --timestamp, a secure timestamp from Apple's server,
# which notarization requires of every Developer ID signature next to the
# hardened runtime. An ad-hoc signature ("-", or no identity) gets none: it
# identifies no signer whose certificate could expire.
function(tolvane_codesign_arguments outVar identity entitlements)
    if(identity STREQUAL "" OR identity STREQUAL "-")
        set(arguments --force --sign - --options runtime --entitlements "${entitlements}")
    else()
        set(arguments --force --sign "${identity}" --options runtime --timestamp --entitlements "${entitlements}")
    endif()
    set(${outVar} "${arguments}" PARENT_SCOPE)
endfunction()

# What the macOS bundle Tolvane.app is made of, set up on every platform so
# that its tests (tests/bundle) check the same files on Linux that a Mac
# packs into the bundle: the Info.plist (configured here from the project's
# version and the deployment target), the entitlements, and the strings
# tables of the app ("Localizable", "InfoPlist") and of the kit ("OrvikKit")
# in one <language>.lproj folder per localisation.
# The bundle target itself is app/bundle/CMakeLists.txt (Apple only).

set(TOLVANE_BUNDLE_IDENTIFIER "com.orvikworks.Tolvane")
set(TOLVANE_BUNDLE_NAME "Tolvane")

set(TOLVANE_ENTITLEMENTS ${PROJECT_SOURCE_DIR}/app/bundle/Tolvane.entitlements)
set(TOLVANE_APP_STRINGS ${PROJECT_SOURCE_DIR}/app/bundle/en.lproj/Localizable.strings)
set(TOLVANE_KIT_STRINGS ${PROJECT_SOURCE_DIR}/kit/resources/en.lproj/OrvikKit.strings)

# Every file of every localisation, app and kit alike: each goes to
# Contents/Resources/<language>.lproj/ in the bundle. A new language is one
# more folder here (and its entry in CFBundleLocalizations of Info.plist.in).
file(GLOB TOLVANE_LOCALIZED_RESOURCES CONFIGURE_DEPENDS
    ${PROJECT_SOURCE_DIR}/app/bundle/*.lproj/*
    ${PROJECT_SOURCE_DIR}/kit/resources/*.lproj/*)

set(TOLVANE_INFO_PLIST ${PROJECT_BINARY_DIR}/bundle/Info.plist)
configure_file(${PROJECT_SOURCE_DIR}/app/bundle/Info.plist.in ${TOLVANE_INFO_PLIST} @ONLY)

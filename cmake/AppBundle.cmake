# What the macOS bundle Tolvane.app is made of, set up on every platform so
# that its tests (tests/bundle) check the same files on Linux that a Mac
# packs into the bundle: the Info.plist (configured here from the project's
# version and the deployment target), the entitlements, and the localisation
# folders: every <language>.lproj folder of the app (app/bundle) and of the
# kit (kit/resources), whose files (the strings tables "Localizable" and
# "OrvikKit", InfoPlist.strings, strings dictionaries) land together in
# Contents/Resources/<language>.lproj/. The bundle target itself is
# app/bundle/CMakeLists.txt (Apple only).

set(TOLVANE_BUNDLE_IDENTIFIER "com.orvikworks.Tolvane")
set(TOLVANE_BUNDLE_NAME "Tolvane")

set(TOLVANE_ENTITLEMENTS ${PROJECT_SOURCE_DIR}/app/bundle/Tolvane.entitlements)
set(TOLVANE_APP_STRINGS ${PROJECT_SOURCE_DIR}/app/bundle/en.lproj/Localizable.strings)
set(TOLVANE_KIT_STRINGS ${PROJECT_SOURCE_DIR}/kit/resources/en.lproj/OrvikKit.strings)

set(TOLVANE_INFO_PLIST ${PROJECT_BINARY_DIR}/bundle/Info.plist)
configure_file(${PROJECT_SOURCE_DIR}/app/bundle/Info.plist.in ${TOLVANE_INFO_PLIST} @ONLY)

# The folders that hold the <language>.lproj folders; the portable localiser
# of the previews and tests reads them where they lie.
set(TOLVANE_APP_RESOURCES ${PROJECT_SOURCE_DIR}/app/bundle)
set(TOLVANE_KIT_RESOURCES ${PROJECT_SOURCE_DIR}/kit/resources)

# Every file of every language folder, app and kit alike, found again
# whenever one is added or removed (CONFIGURE_DEPENDS), each with where the
# bundle puts it (a new language is one more folder, and its entry in
# CFBundleLocalizations of Info.plist.in):
# TOLVANE_LOCALIZATION_FILES lists the sources and
# TOLVANE_LOCALIZATION_DESTINATIONS, in the same order, their places below
# Contents/ ("Resources/de.lproj/Localizable.strings"). The same list is
# written to bundle/localizations.txt (one "destination<TAB>source" a line)
# for tests/bundle, which checks it against the folders on disk.
file(GLOB TOLVANE_LOCALIZATION_FILES CONFIGURE_DEPENDS LIST_DIRECTORIES false
    ${TOLVANE_APP_RESOURCES}/*.lproj/*
    ${TOLVANE_KIT_RESOURCES}/*.lproj/*)
list(SORT TOLVANE_LOCALIZATION_FILES)
set(TOLVANE_LOCALIZATION_DESTINATIONS "")
set(TOLVANE_LOCALIZATION_LANGUAGES "")
set(localizationManifest "")
foreach(localizationFile IN LISTS TOLVANE_LOCALIZATION_FILES)
    get_filename_component(localizationFolder ${localizationFile} DIRECTORY)
    get_filename_component(localizationFolderName ${localizationFolder} NAME)
    get_filename_component(localizationFileName ${localizationFile} NAME)
    string(REGEX REPLACE "\\.lproj$" "" localizationLanguage ${localizationFolderName})
    list(APPEND TOLVANE_LOCALIZATION_LANGUAGES ${localizationLanguage})
    set(localizationDestination "Resources/${localizationFolderName}/${localizationFileName}")
    list(APPEND TOLVANE_LOCALIZATION_DESTINATIONS ${localizationDestination})
    string(APPEND localizationManifest "${localizationDestination}\t${localizationFile}\n")
endforeach()
list(REMOVE_DUPLICATES TOLVANE_LOCALIZATION_LANGUAGES)
set(TOLVANE_LOCALIZATION_MANIFEST ${PROJECT_BINARY_DIR}/bundle/localizations.txt)
file(CONFIGURE OUTPUT ${TOLVANE_LOCALIZATION_MANIFEST} CONTENT "${localizationManifest}")

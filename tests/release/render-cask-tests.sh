#!/usr/bin/env bash
# scripts/render-cask: the Homebrew cask of a release, from
# packaging/homebrew/tolvane.rb by plain text substitution.
# shellcheck source-path=SCRIPTDIR source=testing.sh
source "$(dirname "$0")/testing.sh"

checksum="0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"

# shellcheck disable=SC2016  # the expected cask holds backquotes
rendersTheTemplateWithTheReleasesValues() {
    run "$scripts/render-cask" 1.2.3 "$checksum" orvikworks/tolvane
    expectStatus 0 "rendering the cask"
    expectEqual "$output" 'cask "tolvane" do
  version "1.2.3"
  sha256 "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"

  url "https://github.com/orvikworks/tolvane/releases/download/v#{version}/Tolvane-#{version}.dmg"
  name "Tolvane"
  desc "Menu-bar app that makes the media keys control Apple'"'"'s Music app"
  homepage "https://github.com/orvikworks/tolvane"

  # macOS 13 Ventura or later: the bare symbol means "this version or newer"
  # (Homebrew deprecated the string form ">= :ventura").
  depends_on macos: :ventura

  app "Tolvane.app"

  # Tolvane writes nothing but its user defaults. It is not sandboxed, so it
  # has no container. The Accessibility and Automation permissions are
  # macOS'"'"'s to keep: `tccutil reset` removes them (see the README).
  zap trash: "~/Library/Preferences/com.orvikworks.Tolvane.plist"
end' "the rendered cask"
}

theZapNamesTheBundlesPreferencesFile() {
    local identifier
    identifier="$(sed -n 's/^set(TOLVANE_BUNDLE_IDENTIFIER "\(.*\)")$/\1/p' "$root/cmake/AppBundle.cmake")"
    run "$scripts/render-cask" 1.2.3 "$checksum" orvikworks/tolvane
    expectStatus 0 "rendering the cask"
    expectContains "$output" "zap trash: \"~/Library/Preferences/$identifier.plist\"" "the zap stanza"
}

theUrlNamesTheDiskImageThePackageScriptMakes() {
    run "$scripts/render-cask" 1.2.3 "$checksum" orvikworks/tolvane
    expectContains "$output" '/releases/download/v#{version}/Tolvane-#{version}.dmg"' "the url"
    # shellcheck disable=SC2016  # the package script's own line, unexpanded
    expectContains "$(cat "$scripts/package")" 'dmg="$output/Tolvane-$version.dmg"' "the package script's disk image"
}

refusesAMalformedVersion() {
    local version
    for version in 1.2 v1.2.3 1.2.3-beta 1.2.3.4 "1.2.3 " "1.2.3|x" "" "$(printf '1.2.3\n4.5.6')"; do
        run "$scripts/render-cask" "$version" "$checksum" orvikworks/tolvane
        expectStatus 1 "rendering version \"$version\""
        expectEqual "$output" "" "what rendering version \"$version\" prints"
    done
}

refusesAMalformedChecksum() {
    local sum
    for sum in "${checksum%?}" "${checksum}0" "$(printf '%s' "$checksum" | tr a-f A-F)" "${checksum%?}g" "" "sha256:$checksum"; do
        run "$scripts/render-cask" 1.2.3 "$sum" orvikworks/tolvane
        expectStatus 1 "rendering checksum \"$sum\""
        expectEqual "$output" "" "what rendering checksum \"$sum\" prints"
    done
}

refusesAMalformedRepository() {
    local repository
    for repository in orvikworks orvikworks/tolvane/extra "orvik works/tolvane" "orvik|works/tolvane" /tolvane "orvikworks/"; do
        run "$scripts/render-cask" 1.2.3 "$checksum" "$repository"
        expectStatus 1 "rendering repository \"$repository\""
        expectEqual "$output" "" "what rendering repository \"$repository\" prints"
    done
}

aPlaceholderItDoesNotFillIsAnError() {
    printf 'cask "tolvane" do\n  version "@VERSION@"\n  auto_updates @AUTO_UPDATES@\nend\n' > "$scratch/tolvane.rb"
    run "$scripts/render-cask" 1.2.3 "$checksum" orvikworks/tolvane "$scratch/tolvane.rb"
    expectStatus 2 "rendering a template with an unknown placeholder"
    expectContains "$errors" "@AUTO_UPDATES@" "the message"
}

runCase "$@"

# The template of Tolvane's Homebrew cask. scripts/render-cask fills in the
# version, the SHA-256 of the release's DMG, the GitHub owner/name the release
# is published under and the bundle identifier, and leaves out this comment;
# the release workflow keeps the result as an artifact to copy into a tap.
cask "tolvane" do
  version "@VERSION@"
  sha256 "@SHA256@"

  url "https://github.com/@REPOSITORY@/releases/download/v#{version}/Tolvane-#{version}.dmg"
  name "Tolvane"
  desc "Menu-bar app that makes the media keys control Apple's Music app"
  homepage "https://github.com/@REPOSITORY@"

  # macOS 13 Ventura or later: the bare symbol means "this version or newer"
  # (Homebrew deprecated the string form ">= :ventura").
  depends_on macos: :ventura

  app "Tolvane.app"

  # Tolvane writes nothing but its user defaults. It is not sandboxed, so it
  # has no container. The Accessibility and Automation permissions are
  # macOS's to keep: `tccutil reset` removes them (see the README).
  zap trash: "~/Library/Preferences/@BUNDLE_IDENTIFIER@.plist"
end

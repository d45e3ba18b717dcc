#include "OrvikKit/SystemSettings.h"

#include <array>

namespace orvik::SystemSettings {

namespace {

constexpr std::array<std::string_view, 1> accessibilityURLs{
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"};
constexpr std::array<std::string_view, 1> automationURLs{
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Automation"};
constexpr std::array<std::string_view, 1> screenRecordingURLs{
    "x-apple.systempreferences:com.apple.preference.security?Privacy_ScreenCapture"};
constexpr std::array<std::string_view, 2> keyboardShortcutsURLs{
    "x-apple.systempreferences:com.apple.Keyboard-Settings.extension?Shortcuts",
    "x-apple.systempreferences:com.apple.preference.keyboard?Shortcuts"};
constexpr std::array<std::string_view, 1> menuBarURLs{"x-apple.systempreferences:com.apple.MenuBarSettings"};

}  // namespace

std::span<const std::string_view> candidateURLs(Pane pane) noexcept {
    switch (pane) {
    case Pane::accessibility: return accessibilityURLs;
    case Pane::automation: return automationURLs;
    case Pane::screenRecording: return screenRecordingURLs;
    case Pane::keyboardShortcuts: return keyboardShortcutsURLs;
    case Pane::menuBar: return menuBarURLs;
    }
    return {};
}

bool open(Pane pane, URLOpener& opener) {
    for (std::string_view url : candidateURLs(pane)) {
        if (opener.open(url) == URLOpenResult::opened) return true;
    }
    return false;
}

}  // namespace orvik::SystemSettings

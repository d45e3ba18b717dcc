// The kit's part of the menu, as content the views only draw: the header
// line with its switch, the footer's lines, the privacy card, the card that
// reminds the user to look for a new version, the open-at-login row and the
// warning card. Every decision about what these show and what their controls
// do is made here; measures, fonts and colours are the views' business.
//
// Texts are localisation keys (see LocalizedText): the kit's own texts are
// in its table "OrvikKit", texts handed in by the app keep whatever table
// the app gave them. Actions are plain functions, run on the main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "OrvikKit/LocalizedText.h"
#include "OrvikKit/SystemServices.h"
#include "OrvikKit/UpdateReminderCenter.h"
#include "OrvikKit/ViewColor.h"

namespace orvik {

// The header: brand glyph and name (from the brand), a status line with its
// coloured dot, and the on/off switch.
struct MenuHeader {
    LocalizedText status;
    NamedColor statusColor = NamedColor::gray;
    bool isOn = false;
    std::function<void(bool)> setOn;  // called when the user flips the switch
    LocalizedText switchHelp;         // the switch's tooltip
};

// A row of the footer: a title on the left, a detail on the right; the whole
// row is one button.
struct FooterRow {
    LocalizedText title;
    LocalizedText detail;
    std::optional<char> shortcut;  // the key that triggers the row with command held
    std::function<void()> action;
};

// The footer: an optional caption line, then "Check for Updates" when there
// is an update action, then "Quit".
struct MenuFooter {
    std::optional<LocalizedText> caption;  // the app's own caption
    std::function<void()> checkForUpdates;  // empty: no update row
    std::string version;                    // the app's version (AppInfoSource::version)
    std::function<void()> quit;             // asks the application to terminate

    struct Lines {
        // The caption when one is given; otherwise, when there is no update
        // action, "Version " and the version; otherwise nothing, since the
        // update row shows the version and it is never shown twice.
        std::optional<LocalizedText> caption;
        // "Check for Updates" (detail "Version " and the version) when there
        // is an update action; then always "Quit" (detail "⌘Q", shortcut q).
        std::vector<FooterRow> rows;
    };
    Lines lines() const;

    static LocalizedText versionText(const std::string& version) { return kitText("Version %@", {version}); }
};

struct PrivacyItem {
    std::string symbol;  // a system symbol name
    LocalizedText text;

    friend bool operator==(const PrivacyItem&, const PrivacyItem&) = default;
};

// "Private by design", followed by the app's items.
struct PrivacyCard {
    std::string symbol = "lock.shield.fill";
    LocalizedText title = kitText("Private by design");
    std::vector<PrivacyItem> items;
};

// A small capsule button; the prominent one is filled with the accent colour.
struct PillButton {
    LocalizedText title;
    bool prominent = false;
    std::function<void()> action;
};

// The card shown while the update reminder is due (its user shows it only
// then; the card does not hide itself).
struct UpdateReminderCard {
    std::string symbol = "arrow.down.circle.fill";
    LocalizedText title = kitText("A new version may be out");
    LocalizedText message = kitText(
        "This app never goes online, so it can't check by itself. Checking on the website takes one click.");
    PillButton check;   // "Check", prominent: opens the updates page and restarts the period
    PillButton notNow;  // "Not Now": restarts the period, so the reminder is no longer due

    // The card for `center`, whose actions its buttons run.
    static UpdateReminderCard from(std::shared_ptr<UpdateReminderCenter> center);
};

// A warning with a button; the button reads "Open System Settings" unless
// another label is given.
struct WarningCard {
    std::string symbol;
    LocalizedText title;
    LocalizedText message;
    LocalizedText button = kitText("Open System Settings");
    std::function<void()> action;
};

// The "Open at login" setting row's view state. The popover makes one each
// time it is shown, which reads the login-item state once; flipping the
// switch asks the login-item service for the change and then shows the state
// the service reports, so a refused change springs back at once. While a
// snapshot renders (Snapshot::isActive) the row shows the switch off without
// asking the service and ignores writes.
class OpenAtLoginRow {
public:
    static constexpr std::string_view symbol = "power";
    static LocalizedText title() { return kitText("Open at login"); }

    // `loginItem` is needed unless a snapshot is rendering.
    explicit OpenAtLoginRow(std::shared_ptr<LoginItemService> loginItem);

    bool isOn() const noexcept { return isOn_; }
    void setOn(bool on);

private:
    std::shared_ptr<LoginItemService> loginItem_;
    bool snapshot_;
    bool isOn_;
};

}  // namespace orvik

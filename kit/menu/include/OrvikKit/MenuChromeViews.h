// The menu chrome as views: the header, the footer, the privacy card, the
// open-at-login row and the update reminder card, built from the chrome's
// content (MenuChrome.h) and the pieces (MenuPieces.h). The brand comes from
// the environment; hover and press from the host's view state.
//
// Main thread only.
#pragma once

#include <memory>

#include "OrvikKit/MenuChrome.h"
#include "OrvikKit/MenuPieces.h"
#include "OrvikKit/ViewTree.h"

namespace orvik {

// Glyph, brand name and status line, and the on/off switch with its tooltip.
View body(const MenuHeader& header);

// The caption line (when there is one), then the rows, each a full-width
// button with a hover background.
View body(const MenuFooter& footer, const ViewState& state);
View body(const FooterRow& row, const ViewState& state);

View body(const PrivacyItem& item);
View body(const PrivacyCard& card);

// The "Open at login" row over the row's view state (kept by the caller for
// as long as the popover is shown).
View body(const std::shared_ptr<OpenAtLoginRow>& row);

View body(const UpdateReminderCard& card, const ViewState& state);

}  // namespace orvik

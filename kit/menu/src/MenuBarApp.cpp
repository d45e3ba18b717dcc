#include "OrvikKit/MenuBarApp.h"

#include "OrvikKit/FatalError.h"

namespace orvik::MenuBarApp {

Parts finishLaunching(const Launch& launch) {
    Parts parts = launch();
    if (!parts.menuBar || !parts.updateReminders) {
        fatalError("the launch function built no status-item controller or no reminder centre");
    }
    parts.menuBar->showUpdateBadge(*parts.updateReminders);
    return parts;
}

bool reopen(const std::optional<Parts>& parts) {
    if (parts && parts->menuBar) parts->menuBar->reopen();
    return false;
}

}  // namespace orvik::MenuBarApp

// A status item with its button and popover, as a test drives it: it knows a
// set of symbol names (every name unless told otherwise), keeps the image
// last set and records every call in order.
#pragma once

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "OrvikKit/MenuBarController.h"

namespace testsupport {

class FakeStatusItem final : public orvik::StatusItem {
public:
    bool hasButton() const override { return buttonExists; }

    void configureButton(std::string_view accessibilityLabel, std::function<void()> action) override {
        calls.emplace_back("configureButton");
        if (!buttonExists) return;
        buttonAccessibilityLabel = std::string(accessibilityLabel);
        buttonAction = std::move(action);
    }

    // A click on the button, as the user makes it: calls the action the
    // controller wired, if any.
    void click() {
        if (buttonAction) buttonAction();
    }

    bool setImage(const orvik::StatusItemImage& image) override {
        calls.push_back("setImage " + image.symbolName);
        if (!buttonExists) return false;
        if (knownSymbols && !knownSymbols->contains(image.symbolName)) return false;
        this->image = image;
        imagesSet.push_back(image);
        return true;
    }

    bool isPopoverShown() const override { return popoverShown; }
    orvik::StatusItemPlacement placement() const override {
        ++placementReads;
        return placementFacts;
    }
    void activateApplication() override { calls.emplace_back("activate"); }
    void showPopover() override {
        calls.emplace_back("show");
        popoverShown = true;
    }
    void makePopoverKey() override {
        calls.emplace_back("makeKey");
        popoverIsKey = popoverShown;
    }
    void closePopover() override {
        calls.emplace_back("close");
        popoverShown = false;
        popoverIsKey = false;
    }

    bool buttonExists = true;
    std::optional<std::string> buttonAccessibilityLabel;  // set by configureButton
    std::function<void()> buttonAction;                    // set by configureButton
    // The symbols the platform has; nothing: every name.
    std::optional<std::set<std::string>> knownSymbols;

    std::optional<orvik::StatusItemImage> image;     // what the button shows
    std::vector<orvik::StatusItemImage> imagesSet;   // every image put on the button
    bool popoverShown = false;
    bool popoverIsKey = false;
    // What placement() answers: by default an item in the menu bar of one
    // 1440 × 900 screen without a camera housing.
    orvik::StatusItemPlacement placementFacts = shownPlacement();
    mutable int placementReads = 0;

    static orvik::StatusItemPlacement shownPlacement() {
        return orvik::StatusItemPlacement{
            .hasButton = true,
            .itemIsVisible = true,
            .hasWindow = true,
            .windowIsVisible = true,
            .windowIsOccluded = false,
            .windowFrame = {.x = 1200, .y = 876, .width = 30, .height = 24},
            .screens = {orvik::ScreenFacts{.frame = {.x = 0, .y = 0, .width = 1440, .height = 900},
                                           .topLeftArea = {},
                                           .topRightArea = {}}},
        };
    }
    std::vector<std::string> calls;  // every call, in order
};

}  // namespace testsupport

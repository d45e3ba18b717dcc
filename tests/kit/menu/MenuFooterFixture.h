// A footer whose update and quit actions count their presses, for the tests
// of the footer's content and of its views.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <utility>

#include "OrvikKit/MenuChrome.h"

namespace orvik::testing_footer {

class MenuFooterFixture : public testing::Test {
protected:
    int checks = 0;
    int quits = 0;

    MenuFooter footer(std::optional<LocalizedText> caption, bool withUpdateAction) {
        return MenuFooter{.caption = std::move(caption),
                          .checkForUpdates = withUpdateAction ? std::function<void()>([this] { ++checks; }) : nullptr,
                          .version = "1.2",
                          .quit = [this] { ++quits; }};
    }
};

}  // namespace orvik::testing_footer

// The menu's own texts fit its fixed width in every language: the real menu
// (MenuView over the app state, driven on the whole-app fakes into each
// state that shows different texts) laid out as snapshot mode lays it out,
// with the preview's Pango measurer and fonts and each language's tables
// and direction. No text of ours may be cut with an ellipsis or reach
// outside its card; a track's name and artist come from Music and may be
// cut.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "AppWorld.h"
#include "OrvikKit/CairoCanvas.h"
#include "OrvikKit/Layout.h"
#include "OrvikKit/LayoutDirection.h"
#include "OrvikKit/MissingIcon.h"
#include "OrvikKit/Snapshot.h"
#include "OrvikKit/StringsLocalizer.h"
#include "TestSupport/BundleStrings.h"
#include "TestSupport/SnapshotFlag.h"
#include "Tolvane/MenuContent.h"
#include "Tolvane/MenuView.h"

namespace tolvane {
namespace {

using testsupport::AppWorld;
using testsupport::FakeScriptEngine;

// Cut texts the design itself fixes: English is the design's own wording,
// and the header's status line has the design's size (11.5 points, one
// line) and room (the menu's 330 points less the header's icon, switch and
// insets). Where the English text is longer than that room, it is cut on
// every Mac too; the design decides, not a translation. Only English texts
// may be listed here; a translation that does not fit is shortened.
struct KnownCut {
    std::string language;
    std::string key;
};
const std::vector<KnownCut> knownCuts = {
    {"en", "Paused \u00B7 keys follow the macOS default"},
};

bool isKnownCut(const std::string& language, const std::string& key) {
    for (const KnownCut& cut : knownCuts) {
        if (cut.language == language && cut.key == key) return true;
    }
    return false;
}

// One state of the menu, as a test names it.
struct MenuState {
    std::string name;
    std::function<MenuContent(AppWorld&)> build;
};

MenuEnvironment environment(AppWorld& world) {
    return MenuEnvironment{.loginItem = std::make_shared<testsupport::FakeLoginItemService>(false),
                           .urlOpener = world.urlOpener,
                           .version = "1.2.10",
                           .quit = [] {}};
}

void pressNext(AppWorld& world, int times) {
    for (int press = 0; press < times; ++press) {
        world.press(testsupport::nextKey);
        world.settle();
    }
}

// Music runs and refuses the next command, which the state then shows.
void refuseAutomation(AppWorld& world, const std::shared_ptr<AppState>& state) {
    world.musicLaunches();
    world.settle();
    world.music->answer(testsupport::commandSource(MusicCommand::playPause), FakeScriptEngine::error(-1743));
    state->perform(MusicCommand::playPause);
    world.settle();
}

std::vector<MenuState> menuStates() {
    return {
        {"active, a track playing, 1 key sent",
         [](AppWorld& world) {
             world.musicPlays("So What", "Miles Davis", true);
             const auto state = world.launch();
             world.settle();
             pressNext(world, 1);
             return menuContent(state, environment(world));
         }},
        {"active, a track paused, 3 keys sent",
         [](AppWorld& world) {
             world.musicPlays("So What", "Miles Davis", false);
             const auto state = world.launch();
             world.settle();
             pressNext(world, 3);
             return menuContent(state, environment(world));
         }},
        {"active, nothing playing, 5 keys sent",
         [](AppWorld& world) {
             world.running->setRunning("com.apple.Music", true);
             const auto state = world.launch();
             world.settle();
             pressNext(world, 5);
             return menuContent(state, environment(world));
         }},
        {"active, Music closed, no key sent",
         [](AppWorld& world) {
             const auto state = world.launch();
             world.settle();
             return menuContent(state, environment(world));
         }},
        {"switched off, 1234 keys sent",
         [](AppWorld& world) {
             world.running->setRunning("com.apple.Music", true);
             const auto state = world.launch();
             world.settle();
             pressNext(world, 1234);
             state->setEnabled(false);
             world.settle();
             return menuContent(state, environment(world));
         }},
        {"waiting for permission",
         [](AppWorld& world) {
             world.accessibility->trusted = false;
             const auto state = world.launch();
             world.settle();
             return menuContent(state, environment(world));
         }},
        {"could not activate",
         [](AppWorld& world) {
             world.taps->refuseCreation = true;
             const auto state = world.launch();
             world.settle();
             return menuContent(state, environment(world));
         }},
        {"Automation denied, 22 keys sent",
         [](AppWorld& world) {
             world.running->setRunning("com.apple.Music", true);
             const auto state = world.launch();
             world.settle();
             pressNext(world, 22);
             refuseAutomation(world, state);
             return menuContent(state, environment(world));
         }},
        {"both warnings",
         [](AppWorld& world) {
             world.accessibility->trusted = false;
             const auto state = world.launch();
             world.settle();
             refuseAutomation(world, state);
             return menuContent(state, environment(world));
         }},
        {"the update reminder",
         [](AppWorld& world) {
             world.musicPlays("So What", "Miles Davis", true);
             const auto state = world.launch();
             world.settle();
             MenuContent content = menuContent(state, environment(world));
             content.updateReminder = orvik::UpdateReminderCard::from(state->updateReminders());
             return content;
         }},
    };
}

// The texts of ours a layout cuts, with the key each was looked up by.
struct Cut {
    std::string key;
    std::string shown;
};

std::vector<Cut> cutTextsOfOurs(const orvik::LayoutNode& root) {
    std::vector<Cut> cut;
    for (const orvik::LayoutNode* node : orvik::cutTexts(root)) {
        const auto& text = std::get<orvik::TextNode>(node->view->node);
        // Texts shown as they stand are Music's (a track's name and artist).
        if (const auto* key = std::get_if<orvik::LocalizedText>(&text.content)) {
            cut.push_back(Cut{key->key, node->text});
        }
    }
    return cut;
}

// The menu laid out as snapshot mode lays it out in `language` (on the
// pixel grid of `scale`, the snapshot's by default). The layout points into
// the view tree, which it keeps.
struct LaidOutMenu {
    std::unique_ptr<const orvik::View> view;
    orvik::LayoutNode root;
};

LaidOutMenu layOut(const MenuContent& content, const std::string& language,
                   double scale = orvik::Snapshot::scale) {
    orvik::cairo::CairoSnapshotPlatform platform(testsupport::bundleLocalizer(language));
    LaidOutMenu menu;
    menu.view = std::make_unique<const orvik::View>(MenuView{content, orvik::ViewState{}}.body());
    const orvik::LayoutContext context{
        .measurer = platform.textMeasurer(),
        .localize = [&platform, &language](const orvik::LocalizedText& text) {
            return platform.localized(text, language);
        },
        .direction = orvik::layoutDirectionForLanguage(language),
        .pixelScale = scale,
    };
    menu.root = orvik::layout(*menu.view, orvik::ProposedSize::unspecified(), context);
    return menu;
}

std::vector<std::string> languages() {
    return orvik::StringsLocalizer::languagesIn(testsupport::bundleResourceFolders());
}

class MenuFitTest : public ::testing::Test {
protected:
    void SetUp() override {
        // Without the preview's fonts the measures are another font's: fail,
        // do not measure something else.
        const std::vector<std::string> missing = orvik::cairo::missingFontFamilies();
        std::string names;
        for (const std::string& family : missing) names += " \"" + family + "\"";
        ASSERT_TRUE(missing.empty()) << "the preview fonts" << names
                                     << " are not installed; scripts/install-linux-deps test installs them";
    }

    testsupport::ScopedSnapshotFlag snapshot_{true};
};

TEST_F(MenuFitTest, EveryLanguageIsMeasured) {
    const std::vector<std::string> found = languages();
    EXPECT_EQ(found.size(), 17u);
    EXPECT_TRUE(std::set<std::string>(found.begin(), found.end()).contains("en"));
}

TEST_F(MenuFitTest, NoTextOfOursIsCutInAnyLanguageOrState) {
    std::set<std::string> knownCutsSeen;
    for (const MenuState& menuState : menuStates()) {
        AppWorld world;
        const MenuContent content = menuState.build(world);
        for (const std::string& language : languages()) {
            const LaidOutMenu menu = layOut(content, language);
            const orvik::LayoutNode& root = menu.root;
            EXPECT_DOUBLE_EQ(root.frame.width, MenuView::width) << language << ", " << menuState.name;
            for (const Cut& cut : cutTextsOfOurs(root)) {
                if (isKnownCut(language, cut.key)) {
                    knownCutsSeen.insert(language + ": " + cut.key);
                    continue;
                }
                ADD_FAILURE() << language << ", " << menuState.name << ": \"" << cut.shown << "\" is cut (key \""
                              << cut.key << "\")";
            }
        }
        world.settle();
    }
    // A listed cut that no longer happens is taken off the list.
    for (const KnownCut& known : knownCuts) {
        EXPECT_TRUE(knownCutsSeen.contains(known.language + ": " + known.key))
            << known.language << ": \"" << known.key << "\" fits now; take it off the list of known cuts";
    }
}

// The first edge of `node` or its descendants that does not fall on a whole
// pixel at `scale`, described; empty when every edge does.
std::string edgeOffTheGrid(const orvik::LayoutNode& node, double scale) {
    const auto onGrid = [scale](double position) {
        return std::abs(position * scale - std::round(position * scale)) < 1e-9;
    };
    const orvik::Rect& frame = node.frame;
    if (!onGrid(frame.x) || !onGrid(frame.y) || !onGrid(frame.maxX()) || !onGrid(frame.maxY())) {
        std::ostringstream description;
        description << "a frame at (" << frame.x << ", " << frame.y << ") of " << frame.width << " x "
                    << frame.height << (node.text.empty() ? "" : " showing \"" + node.text + "\"");
        return description.str();
    }
    for (const orvik::LayoutNode& child : node.children) {
        std::string found = edgeOffTheGrid(child, scale);
        if (!found.empty()) return found;
    }
    return {};
}

TEST_F(MenuFitTest, EveryFrameEdgeIsOnWholePixelsAtOneAndTwoPixelsAPointInEveryLanguageAndState) {
    for (const MenuState& menuState : menuStates()) {
        AppWorld world;
        const MenuContent content = menuState.build(world);
        for (const std::string& language : languages()) {
            for (const double scale : {1.0, 2.0}) {
                const LaidOutMenu menu = layOut(content, language, scale);
                const orvik::Rect& root = menu.root.frame;
                EXPECT_EQ(root.width, std::round(root.width)) << language << ", " << menuState.name;
                EXPECT_EQ(root.height, std::round(root.height))
                    << language << ", " << menuState.name << ": the menu is not a whole number of points high";
                const std::string offGrid = edgeOffTheGrid(menu.root, scale);
                EXPECT_TRUE(offGrid.empty()) << language << ", " << menuState.name << ", " << scale
                                             << " pixels a point: " << offGrid;
            }
        }
        world.settle();
    }
}

// The help window shown when the status item's icon is hidden, as the app
// shows it on macOS 26 (Menu Bar settings) and on macOS 13 to 15 (a full
// menu bar), laid out in `language` on the snapshot's pixel grid.
struct LaidOutHelp {
    std::unique_ptr<const orvik::View> view;
    orvik::LayoutNode root;
};

LaidOutHelp layOutHelp(orvik::SystemVersion version, const std::string& language) {
    orvik::cairo::CairoSnapshotPlatform platform(testsupport::bundleLocalizer(language));
    orvik::MissingIconWindowContent content(orvik::missingIconHelp("Tolvane", version), musicBrand(), {});
    LaidOutHelp help;
    help.view = std::make_unique<const orvik::View>(content.body());
    const orvik::LayoutContext context{
        .measurer = platform.textMeasurer(),
        .localize = [&platform, &language](const orvik::LocalizedText& text) {
            return platform.localized(text, language);
        },
        .direction = orvik::layoutDirectionForLanguage(language),
        .pixelScale = orvik::Snapshot::scale,
    };
    help.root = orvik::layout(*help.view, orvik::ProposedSize::unspecified(), context);
    return help;
}

TEST_F(MenuFitTest, NoTextOfTheHiddenIconWindowIsCutInAnyLanguage) {
    for (const orvik::SystemVersion version : {orvik::SystemVersion{26, 1, 0}, orvik::SystemVersion{15, 5, 0}}) {
        for (const std::string& language : languages()) {
            const LaidOutHelp help = layOutHelp(version, language);
            EXPECT_DOUBLE_EQ(help.root.frame.width, orvik::MissingIconView::width) << language;
            for (const Cut& cut : cutTextsOfOurs(help.root)) {
                ADD_FAILURE() << language << ", macOS " << version.major << ": \"" << cut.shown << "\" is cut (key \""
                              << cut.key << "\")";
            }
            const std::string offGrid = edgeOffTheGrid(help.root, orvik::Snapshot::scale);
            EXPECT_TRUE(offGrid.empty()) << language << ", macOS " << version.major << ": " << offGrid;
        }
    }
}

TEST_F(MenuFitTest, EveryStateShowsTheTextsItIsNamedFor) {
    // The states really differ: the header's status line of each.
    std::set<std::string> statuses;
    std::string names;
    for (const MenuState& menuState : menuStates()) {
        AppWorld world;
        const MenuContent content = menuState.build(world);
        statuses.insert(content.header.status.key);
        names += "\n" + menuState.name + ": " + content.header.status.key;
        if (menuState.name == "both warnings") {
            EXPECT_EQ(content.warnings.size(), 2u);
        }
        if (menuState.name == "the update reminder") {
            EXPECT_TRUE(content.updateReminder.has_value());
        }
        world.settle();
    }
    EXPECT_EQ(statuses.size(), 5u) << names;
}

}  // namespace
}  // namespace tolvane

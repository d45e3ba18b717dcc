// The popover's view tree, drawn from the app state: the menu's width,
// padding and spacing, the app's brand, the now-playing card with artwork and
// transport buttons, the settings card, the popover's redraws and view state.
// Metrics are FixedTextMeasurer's (a character is half the font size wide, a
// line 1.25 × the size; a symbol a square of its size).
#include "Tolvane/MenuView.h"

#include <gtest/gtest.h>

#include "AppWorld.h"
#include "TestSupport/FakeArtwork.h"
#include "TestSupport/FrameExpectations.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"
#include "Tolvane/MenuSnapshot.h"

namespace tolvane {
namespace {

using orvik::Color;
using orvik::Font;
using orvik::FontWeight;
using orvik::Paint;
using orvik::Rect;
using testsupport::AppWorld;
using testsupport::DrawOperation;
using testsupport::FakeLoginItemService;
using testsupport::render;
using testsupport::resolved;
using testsupport::ScopedSnapshotFlag;
using Kind = DrawOperation::Kind;
using testsupport::expectFrame;

class MenuViewTest : public testing::Test {
protected:
    AppWorld world;
    std::shared_ptr<FakeLoginItemService> loginItem = std::make_shared<FakeLoginItemService>(false);
    int quits = 0;

    MenuEnvironment environment() {
        return MenuEnvironment{
            .loginItem = loginItem, .urlOpener = world.urlOpener, .version = "1.2", .quit = [this] { ++quits; }};
    }

    testsupport::Rendering draw(const std::shared_ptr<AppState>& state, orvik::ViewState viewState = {}) {
        return render(MenuView{menuContent(state, environment()), std::move(viewState)}.body());
    }

    std::shared_ptr<AppState> sample(std::optional<ArtworkImage> artwork) {
        return MenuSnapshot::sampleState(world.services(), std::move(artwork));
    }
};

TEST_F(MenuViewTest, TheMenuIs330WideWithPadding14AndSpacing12) {
    const auto rendering = draw(sample(testsupport::drawableArtwork("sample", 88, 88)));
    EXPECT_DOUBLE_EQ(rendering.root.frame.width, 330);
    const auto glyph = rendering.canvas.ofKind(Kind::fill)[0];
    expectFrame(glyph.frame, {14, 14, 40, 40});
    // The now-playing card follows the 40-high header after 12.
    std::optional<DrawOperation> cardFill;
    for (const auto& fill : rendering.canvas.ofKind(Kind::fill)) {
        if (!cardFill && fill.shape == orvik::Shape::roundedRectangle(12)) cardFill = fill;
    }
    ASSERT_TRUE(cardFill.has_value());
    expectFrame(cardFill->frame, {14, 14 + 40 + 12, 302, 11 + 44 + 11});
    EXPECT_TRUE(rendering.canvas.groupsBalance());
}

TEST_F(MenuViewTest, TheMenuIsDrawnInTheMusicBrand) {
    const auto rendering = draw(sample(std::nullopt));
    EXPECT_TRUE(rendering.canvas.find(Kind::text, "Tolvane").has_value());
    const auto glyphSymbol = rendering.canvas.find(Kind::symbol, "playpause.fill");
    ASSERT_TRUE(glyphSymbol.has_value());
    EXPECT_DOUBLE_EQ(glyphSymbol->font.size, 40 * 0.36);
    const auto glyph = rendering.canvas.ofKind(Kind::fill)[0];
    EXPECT_EQ(glyph.paint.colors[0], (orvik::Rgba{0.98, 0.36, 0.47, 1.0}));
    EXPECT_EQ(glyph.paint.colors[1], (orvik::Rgba{0.98, 0.14, 0.27, 1.0}));
    EXPECT_EQ(rendering.canvas.ofKind(Kind::beginShadow)[0].shadow.color, resolved(Color::pink().withOpacity(0.35)));
}

TEST_F(MenuViewTest, TheMusicBrandIsTolvaneInPink) {
    const orvik::AppBrand& brand = musicBrand();
    EXPECT_EQ(brand.name, "Tolvane");
    EXPECT_EQ(brand.symbol, "playpause.fill");
    EXPECT_EQ(brand.gradient,
              (std::vector<Color>{Color::sRGB(0.98, 0.36, 0.47, 1.0), Color::sRGB(0.98, 0.14, 0.27, 1.0)}));
    EXPECT_EQ(brand.accent, Color::pink());
    EXPECT_DOUBLE_EQ(brand.symbolScale, 0.36);
}

TEST_F(MenuViewTest, ThePopoverIs330WideWhateverTheLengthOfTheTrackNameAndLongNamesAreCutToOneLine) {
    const std::string longName(200, 'N');
    const std::string longArtist(200, 'A');
    world.musicPlays(longName, longArtist, true);
    const auto state = world.launch();
    world.settle();
    const auto rendering = draw(state);
    EXPECT_DOUBLE_EQ(rendering.root.frame.width, 330);
    const auto name = rendering.canvas.find(Kind::text, longName);
    const auto artist = rendering.canvas.find(Kind::text, longArtist);
    ASSERT_TRUE(name.has_value());
    ASSERT_TRUE(artist.has_value());
    EXPECT_EQ(name->lineLimit, 1);
    EXPECT_EQ(artist->lineLimit, 1);
    EXPECT_DOUBLE_EQ(name->frame.height, 12.5 * 1.25);
    EXPECT_DOUBLE_EQ(artist->frame.height, 11.5 * 1.25);
    // 302 - 2 × 11 padding - 44 artwork - 3 × 12 spacing - 4 spacer - (3 × 26 + 2 × 2) buttons
    EXPECT_DOUBLE_EQ(name->frame.width, 114);
    EXPECT_DOUBLE_EQ(name->frame.x, 14 + 11 + 44 + 12);
    for (const auto& operation : rendering.canvas.operations) {
        EXPECT_LE(operation.frame.maxX(), 330 - 14 + 1e-9) << operation.text;
    }
}

TEST_F(MenuViewTest, ArtworkIsA44SquareWithRadius7ClippingTheImageAndASoftShadow) {
    const auto picture = testsupport::drawableArtwork("wide", 120, 60);
    const auto rendering = render(Artwork{picture}.body());
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 5u);
    EXPECT_EQ(operations[0].kind, Kind::beginShadow);
    EXPECT_EQ(operations[0].shadow, (orvik::ResolvedShadow{orvik::Rgba{0, 0, 0, 0.15}, 2, 0, 1}));
    EXPECT_EQ(operations[1].kind, Kind::beginClip);
    EXPECT_EQ(operations[1].shape, orvik::Shape::roundedRectangle(7));
    expectFrame(operations[1].frame, {0, 0, 44, 44});
    EXPECT_EQ(operations[2].kind, Kind::image);
    expectFrame(operations[2].frame, {-22, 0, 88, 44});  // aspect fill, centred
    EXPECT_EQ(operations[3].kind, Kind::endClip);
    EXPECT_EQ(operations[4].kind, Kind::endShadow);
}

TEST_F(MenuViewTest, WithoutArtworkThePlaceholderIsAGreyGradientWithAMusicNote) {
    const auto rendering = render(Artwork{std::nullopt}.body());
    const auto gradient = rendering.canvas.ofKind(Kind::fill)[0];
    expectFrame(gradient.frame, {0, 0, 44, 44});
    EXPECT_EQ(gradient.paint.colors[0], resolved(Color::gray().withOpacity(0.35)));
    EXPECT_EQ(gradient.paint.colors[1], resolved(Color::gray().withOpacity(0.2)));
    EXPECT_EQ(gradient.paint.start, (orvik::Point{22, 0}));
    EXPECT_EQ(gradient.paint.end, (orvik::Point{22, 44}));
    const auto note = rendering.canvas.find(Kind::symbol, "music.note");
    ASSERT_TRUE(note.has_value());
    EXPECT_EQ(note->font, Font{17});
    EXPECT_EQ(note->paint, Paint::solid(resolved(Color::secondary())));
    expectFrame(note->frame, {13.5, 13.5, 17, 17});
}

TEST_F(MenuViewTest, ArtworkThePlatformCannotDrawShowsThePlaceholder) {
    const auto rendering = render(Artwork{testsupport::FakeThumbnailer::image("opaque")}.body());
    EXPECT_TRUE(rendering.canvas.ofKind(Kind::image).empty());
    EXPECT_TRUE(rendering.canvas.find(Kind::symbol, "music.note").has_value());
}

TEST_F(MenuViewTest, WithNoTrackAndMusicClosedTheCardReadsMusicIsClosedWithPlaceholderAndPlay) {
    const auto state = world.launch();
    const auto rendering = draw(state);
    const auto title = rendering.canvas.find(Kind::text, "Music is closed");
    ASSERT_TRUE(title.has_value());
    EXPECT_EQ(title->font, (Font{12.5, FontWeight::semibold}));
    const auto subtitle = rendering.canvas.find(Kind::text, "Press \u23EF to start");
    ASSERT_TRUE(subtitle.has_value());
    EXPECT_EQ(subtitle->font, Font{11.5});
    EXPECT_EQ(subtitle->color, resolved(Color::secondary()));
    EXPECT_TRUE(rendering.canvas.find(Kind::symbol, "music.note").has_value());
    EXPECT_TRUE(rendering.canvas.find(Kind::symbol, "play.fill").has_value());
    EXPECT_FALSE(rendering.canvas.find(Kind::symbol, "pause.fill").has_value());
}

TEST_F(MenuViewTest, APausedTrackShowsPlayAndAPlayingTrackShowsPause) {
    world.musicPlays("So What", "Miles Davis", false);
    const auto state = world.launch();
    world.settle();
    EXPECT_TRUE(draw(state).canvas.find(Kind::symbol, "play.fill").has_value());
    world.postPlayerInfo("Playing", "So What", "Miles Davis");
    EXPECT_TRUE(draw(state).canvas.find(Kind::symbol, "pause.fill").has_value());
}

TEST_F(MenuViewTest, TransportButtonsAre26SquareTargetsWithTheirSymbolSizes) {
    const auto rendering = draw(sample(std::nullopt));
    const auto previous = rendering.canvas.find(Kind::symbol, "backward.fill");
    const auto playPause = rendering.canvas.find(Kind::symbol, "pause.fill");
    const auto next = rendering.canvas.find(Kind::symbol, "forward.fill");
    ASSERT_TRUE(previous && playPause && next);
    EXPECT_EQ(previous->font, (Font{11, FontWeight::semibold}));
    EXPECT_EQ(playPause->font, (Font{15, FontWeight::semibold}));
    EXPECT_EQ(next->font, (Font{11, FontWeight::semibold}));
    // Right-aligned in the card: 316 - 11 padding = 305 is the trailing edge.
    expectFrame(next->frame, {305 - 26 + 7.5, next->frame.y, 11, 11});
    expectFrame(playPause->frame, {305 - 26 - 2 - 26 + 5.5, playPause->frame.y, 15, 15});

    std::vector<Rect> targets;
    for (const auto* node : rendering.nodesOf<orvik::ButtonNode>()) {
        const auto& id = std::get<orvik::ButtonNode>(node->view->node).id;
        if (id.starts_with("transport.")) targets.push_back(node->frame);
    }
    ASSERT_EQ(targets.size(), 3u);
    for (const Rect& target : targets) {
        EXPECT_DOUBLE_EQ(target.width, 26);
        EXPECT_DOUBLE_EQ(target.height, 26);
    }
}

TEST_F(MenuViewTest, AHoveredTransportButtonShowsAFaintCircle) {
    const ScopedSnapshotFlag live(false);
    orvik::ViewState viewState;
    viewState.hovered.insert(transportButtonID(MusicCommand::next));
    const auto rendering = draw(sample(std::nullopt), viewState);
    std::vector<DrawOperation> circles;
    for (const auto& fill : rendering.canvas.ofKind(Kind::fill)) {
        if (fill.shape == orvik::Shape::circle() && fill.frame.width == 26) circles.push_back(fill);
    }
    ASSERT_EQ(circles.size(), 3u);
    EXPECT_EQ(circles[0].paint.color().alpha, 0);
    EXPECT_EQ(circles[1].paint.color().alpha, 0);
    EXPECT_EQ(circles[2].paint, Paint::solid(resolved(Color::primary().withOpacity(0.1))));
}

TEST_F(MenuViewTest, TransportButtonsPerformTheirCommands) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    world.settle();
    const auto rendering = draw(state);
    for (const auto* node : rendering.nodesOf<orvik::ButtonNode>()) {
        const auto& button = std::get<orvik::ButtonNode>(node->view->node);
        if (button.id == transportButtonID(MusicCommand::next)) button.action();
    }
    world.settle();
    EXPECT_EQ(world.commandRuns(), std::vector<std::string>{testsupport::commandSource(MusicCommand::next)});
}

TEST_F(MenuViewTest, TheMiddleButtonWithMusicClosedSendsLaunchAndPlayWhateverTheClosedSetting) {
    for (ClosedBehavior behavior : {ClosedBehavior::ignore, ClosedBehavior::system}) {
        AppWorld fresh;
        fresh.settings->write(AppState::closedBehaviorPreference, behavior);
        const auto state = fresh.launch();
        const auto rendering =
            render(MenuView{menuContent(state, {.loginItem = loginItem, .urlOpener = fresh.urlOpener}), {}}.body());
        EXPECT_TRUE(rendering.canvas.find(Kind::symbol, "play.fill").has_value());
        for (const auto* node : rendering.nodesOf<orvik::ButtonNode>()) {
            const auto& button = std::get<orvik::ButtonNode>(node->view->node);
            if (button.id == transportButtonID(MusicCommand::playPause)) button.action();
        }
        fresh.settle();
        EXPECT_EQ(fresh.commandRuns(),
                  std::vector<std::string>{testsupport::commandSource(MusicCommand::launchAndPlay)});
    }
}

TEST_F(MenuViewTest, AFreshInstallWithNeitherPermissionShowsBothWarningsAccessibilityFirst) {
    world.accessibility->trusted = false;
    world.running->setRunning("com.apple.Music", true);
    world.music->answer(testsupport::commandSource(MusicCommand::playPause), testsupport::FakeScriptEngine::error(-1743));
    const auto state = world.launch();
    state->perform(MusicCommand::playPause);
    world.settle();
    const auto rendering = draw(state);
    const auto accessibility = rendering.canvas.find(Kind::text, "Allow Accessibility access");
    const auto automation = rendering.canvas.find(Kind::text, "Allow controlling Music");
    ASSERT_TRUE(accessibility && automation);
    EXPECT_LT(accessibility->frame.y, automation->frame.y);
    EXPECT_EQ(rendering.canvas.ofKind(Kind::text).size() - 0, rendering.canvas.ofKind(Kind::text).size());
    std::size_t buttons = 0;
    for (const auto& text : rendering.canvas.ofKind(Kind::text)) buttons += text.text == "Open System Settings";
    EXPECT_EQ(buttons, 2u);
}

TEST_F(MenuViewTest, TheFooterShowsNoCaptionUntilTheFirstKeyIsSent) {
    world.running->setRunning("com.apple.Music", true);
    const auto state = world.launch();
    EXPECT_FALSE(draw(state).canvas.find(Kind::text, "Keys sent: 0").has_value());
    for (const auto& text : draw(state).canvas.ofKind(Kind::text)) EXPECT_FALSE(text.text.starts_with("Keys sent"));
    world.press(testsupport::nextKey);
    EXPECT_TRUE(draw(state).canvas.find(Kind::text, "Keys sent: 1").has_value());
}

TEST_F(MenuViewTest, TransportButtonsSayInWordsWhatTheyDo) {
    const auto help = [&](const std::shared_ptr<AppState>& state) {
        std::vector<orvik::LocalizedText> texts;
        const auto rendering = draw(state);
        for (const auto* node : rendering.nodesOf<orvik::TooltipNode>()) {
            texts.push_back(std::get<orvik::TooltipNode>(node->view->node).text);
        }
        return texts;
    };
    const auto idle = world.launch();
    EXPECT_EQ(help(idle), (std::vector<orvik::LocalizedText>{orvik::appText("Turn off"), orvik::appText("Previous Track"),
                                                             orvik::appText("Play"), orvik::appText("Next Track")}));
    AppWorld playing;
    playing.musicPlays("So What", "Miles Davis", true);
    const auto state = playing.launch();
    playing.settle();
    EXPECT_EQ(help(state)[2], orvik::appText("Pause"));
}

TEST_F(MenuViewTest, TheHeaderStatusColourAndTooltipFollowTheState) {
    const auto state = world.launch();
    auto dot = [&] {
        const auto rendering = draw(state);
        return rendering.canvas.ofKind(Kind::fill)[1].paint.color();
    };
    EXPECT_EQ(dot(), resolved(Color::green()));
    state->setEnabled(false);
    EXPECT_EQ(dot(), resolved(Color::gray()));
    const auto disabled = draw(state);
    const auto tooltips = disabled.nodesOf<orvik::TooltipNode>();
    ASSERT_EQ(tooltips.size(), 4u) << "the header switch's, then the three transport buttons'";
    EXPECT_EQ(std::get<orvik::TooltipNode>(tooltips[0]->view->node).text, orvik::appText("Turn on"));
    world.accessibility->trusted = false;
    state->setEnabled(true);
    world.wait(2);
    EXPECT_EQ(dot(), resolved(Color::orange()));
}

TEST_F(MenuViewTest, TheSettingsCardHasThePickerRowAnIndentedDividerAndTheLoginRow) {
    const ScopedSnapshotFlag live(false);
    const auto rendering = draw(sample(std::nullopt));
    const auto title = rendering.canvas.find(Kind::text, "When Music is closed");
    ASSERT_TRUE(title.has_value());
    const auto pickers = rendering.nodesOf<orvik::PickerNode>();
    ASSERT_EQ(pickers.size(), 1u);
    EXPECT_EQ(pickers[0]->options, (std::vector<std::string>{"Open Music", "Ignore the key", "macOS default"}));
    EXPECT_EQ(std::get<orvik::PickerNode>(pickers[0]->view->node).selectedIndex, 0u);

    std::optional<DrawOperation> divider;
    for (const auto& fill : rendering.canvas.ofKind(Kind::fill)) {
        if (fill.paint.color() == resolved(Color::separator())) divider = fill;
    }
    ASSERT_TRUE(divider.has_value());
    const double cardTop = title->frame.y - (38 - 15) / 2.0;
    expectFrame(divider->frame, {14 + 40, cardTop + 38, 302 - 40, 1});
    EXPECT_DOUBLE_EQ(rendering.canvas.find(Kind::text, "Open at login")->frame.y, cardTop + 38 + 1 + 11.5);
}

TEST_F(MenuViewTest, ChoosingInThePickerWritesTheSetting) {
    const ScopedSnapshotFlag live(false);
    const auto state = world.launch();
    const auto rendering = draw(state);
    std::get<orvik::PickerNode>(rendering.nodesOf<orvik::PickerNode>()[0]->view->node).select(1);
    EXPECT_EQ(state->closedBehavior(), ClosedBehavior::ignore);
}

TEST_F(MenuViewTest, TheSnapshotFlagSwitchesLiveControlsToTheirDrawnFormsAndTurnsHoverOff) {
    const auto state = sample(std::nullopt);
    {
        const ScopedSnapshotFlag live(false);
        const auto rendering = draw(state);
        EXPECT_EQ(rendering.nodesOf<orvik::SwitchNode>().size(), 2u);
        EXPECT_EQ(rendering.nodesOf<orvik::PickerNode>().size(), 1u);
        EXPECT_EQ(rendering.nodesOf<orvik::HoverNode>().size(), 3u + 2u);
        EXPECT_FALSE(rendering.canvas.find(Kind::symbol, "chevron.up.chevron.down").has_value());
    }
    {
        const ScopedSnapshotFlag snapshot(true);
        const auto rendering = draw(state);
        EXPECT_TRUE(rendering.nodesOf<orvik::SwitchNode>().empty());
        EXPECT_TRUE(rendering.nodesOf<orvik::PickerNode>().empty());
        EXPECT_TRUE(rendering.nodesOf<orvik::HoverNode>().empty());
        EXPECT_TRUE(rendering.canvas.find(Kind::symbol, "chevron.up.chevron.down").has_value());
        EXPECT_TRUE(rendering.canvas.find(Kind::text, "Open Music").has_value());
        std::vector<DrawOperation> capsules;
        for (const auto& fill : rendering.canvas.ofKind(Kind::fill)) {
            if (fill.shape == orvik::Shape::capsule()) capsules.push_back(fill);
        }
        ASSERT_EQ(capsules.size(), 2u);
        EXPECT_DOUBLE_EQ(capsules[0].frame.width, 32);  // the header's switch, on, in pink
        EXPECT_EQ(capsules[0].paint, Paint::solid(resolved(Color::pink())));
        EXPECT_DOUBLE_EQ(capsules[1].frame.width, 26);  // open at login, off
        EXPECT_EQ(capsules[1].paint, Paint::solid(resolved(Color::primary().withOpacity(0.15))));
    }
}

// --- The popover ------------------------------------------------------------------------

TEST_F(MenuViewTest, PressingNotNowMakesTheUpdateCardDisappearAtOnce) {
    // The reminder's period for this version began 31 days ago.
    world.standardDefaults->set(orvik::PropertyListValue("1.2"), "updateReminderVersion");
    world.standardDefaults->set(orvik::PropertyListValue(orvik::secondsSince1970(world.now) - 31 * 86400.0),
                                "updateReminderSince");
    const auto state = world.launch();
    ASSERT_TRUE(state->updateReminders()->updateReminderDue.get());
    MenuPopover popover(state, environment());
    int redraws = 0;
    const orvik::Subscription subscription = popover.changes.subscribe([&redraws] { ++redraws; });
    popover.willShow();

    const orvik::View before = popover.body();
    const auto rendering = render(before);
    ASSERT_TRUE(rendering.canvas.find(Kind::text, "A new version may be out").has_value());
    const int redrawsBefore = redraws;
    for (const auto* node : rendering.nodesOf<orvik::ButtonNode>()) {
        const auto& button = std::get<orvik::ButtonNode>(node->view->node);
        if (button.id == "update.notNow") button.action();
    }
    EXPECT_GT(redraws, redrawsBefore) << "the due flag changed without an app-state signal, and the popover follows it";
    EXPECT_FALSE(render(popover.body()).canvas.find(Kind::text, "A new version may be out").has_value());
}

TEST_F(MenuViewTest, ThePopoverRedrawsOnEveryAppStateChange) {
    const auto state = world.launch();
    MenuPopover popover(state, environment());
    int redraws = 0;
    const orvik::Subscription subscription = popover.changes.subscribe([&redraws] { ++redraws; });
    state->setClosedBehavior(ClosedBehavior::ignore);
    EXPECT_EQ(redraws, 1);
}

TEST_F(MenuViewTest, ThePopoverReadsTheLoginItemOncePerShowingAndRefreshesTheTrack) {
    const ScopedSnapshotFlag live(false);
    loginItem->enabled = true;
    world.musicPlays("So What", "Miles Davis", true);
    const auto state = world.launch();
    world.settle();
    MenuPopover popover(state, environment());
    popover.willShow();
    const std::size_t queriesBefore = world.music->runs().size();
    EXPECT_EQ(loginItem->isEnabledCalls, 1u);
    for (int rebuild = 0; rebuild < 3; ++rebuild) {
        const auto rendering = render(popover.body());
        EXPECT_TRUE(std::get<orvik::SwitchNode>(rendering.nodesOf<orvik::SwitchNode>()[1]->view->node).isOn.value);
    }
    EXPECT_EQ(loginItem->isEnabledCalls, 1u) << "rebuilding the content does not ask again";

    loginItem->enabled = false;
    popover.viewState().hovered.insert("footer.Quit");
    popover.willShow();
    world.settle();
    EXPECT_EQ(loginItem->isEnabledCalls, 2u);
    EXPECT_TRUE(popover.viewState().hovered.empty()) << "a new showing starts with nothing hovered";
    EXPECT_FALSE(std::get<orvik::SwitchNode>(render(popover.body()).nodesOf<orvik::SwitchNode>()[1]->view->node).isOn.value);
    EXPECT_GT(world.music->runs().size(), queriesBefore) << "showing the popover refreshes the track";
}

TEST_F(MenuViewTest, FlippingTheLoginSwitchKeepsTheStateTheServiceReports) {
    const ScopedSnapshotFlag live(false);
    loginItem->refusesChanges = true;
    const auto state = world.launch();
    MenuPopover popover(state, environment());
    popover.willShow();
    const auto rendering = render(popover.body());
    std::get<orvik::SwitchNode>(rendering.nodesOf<orvik::SwitchNode>()[1]->view->node).isOn.set(true);
    EXPECT_EQ(loginItem->requests, std::vector<bool>{true});
    EXPECT_FALSE(std::get<orvik::SwitchNode>(render(popover.body()).nodesOf<orvik::SwitchNode>()[1]->view->node).isOn.value);
}

}  // namespace
}  // namespace tolvane

// The menu chrome, drawn: header, footer, privacy card, open-at-login row and
// update reminder card, with their exact frames, fonts and colours on
// FixedTextMeasurer's metrics (a character is half the font size wide, a
// line 1.25 × the size; a symbol a square of its size).
#include "OrvikKit/MenuChromeViews.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "MenuFooterFixture.h"
#include "TestSupport/FakeSystemServices.h"
#include "TestSupport/FrameExpectations.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"

namespace orvik {
namespace {

using testsupport::DrawOperation;
using testsupport::FakeLoginItemService;
using testsupport::render;
using testsupport::resolved;
using testsupport::ScopedSnapshotFlag;
using Kind = DrawOperation::Kind;
using testsupport::expectFrame;

constexpr ProposedSize menuWidth{302, std::nullopt};

// --- Header ---------------------------------------------------------------------------

MenuHeader header(std::vector<bool>* written = nullptr) {
    return MenuHeader{.status = appText("Active"),
                      .statusColor = NamedColor::green,
                      .isOn = true,
                      .setOn = [written](bool on) {
                          if (written) written->push_back(on);
                      },
                      .switchHelp = appText("Turn off")};
}

TEST(MenuHeaderViewTest, TheHeaderShowsGlyphNameStatusAndSwitchWithTheirMeasures) {
    const ScopedSnapshotFlag snapshot(true);
    const auto rendering = render(body(header()), menuWidth);
    expectFrame(rendering.root.frame, {0, 0, 302, 40});

    const auto glyph = rendering.canvas.ofKind(Kind::fill)[0];
    expectFrame(glyph.frame, {0, 0, 40, 40});
    EXPECT_EQ(glyph.shape, Shape::roundedRectangle(40 * 0.2237));

    // The column: name (18.75 high), 2, status line (14.375 high) = 35.125,
    // centred in 40, 12 after the glyph.
    const double columnY = (40 - 35.125) / 2;
    const auto name = rendering.canvas.find(Kind::text, "Orvik Works");
    ASSERT_TRUE(name.has_value());
    EXPECT_EQ(name->font, (Font{15, FontWeight::semibold}));
    expectFrame(name->frame, {52, columnY, 11 * 7.5, 18.75});

    const auto dot = rendering.canvas.ofKind(Kind::fill)[1];
    EXPECT_EQ(dot.shape, Shape::circle());
    EXPECT_EQ(dot.paint, Paint::solid(resolved(Color::green())));
    expectFrame(dot.frame, {52, columnY + 18.75 + 2 + (14.375 - 7) / 2, 7, 7});

    const auto status = rendering.canvas.find(Kind::text, "Active");
    ASSERT_TRUE(status.has_value());
    EXPECT_EQ(status->font, Font{11.5});
    EXPECT_EQ(status->color, resolved(Color::secondary()));
    EXPECT_EQ(status->lineLimit, 1);
    expectFrame(status->frame, {52 + 7 + 5, columnY + 18.75 + 2, 6 * 5.75, 14.375});

    // The small switch, drawn, at the trailing end.
    const auto capsule = rendering.canvas.ofKind(Kind::fill)[2];
    EXPECT_EQ(capsule.shape, Shape::capsule());
    expectFrame(capsule.frame, {302 - 32, 11, 32, 18});

    const auto tooltips = rendering.nodesOf<TooltipNode>();
    ASSERT_EQ(tooltips.size(), 1u);
    EXPECT_EQ(std::get<TooltipNode>(tooltips[0]->view->node).text, appText("Turn off"));
    expectFrame(tooltips[0]->frame, {270, 11, 32, 18});
}

TEST(MenuHeaderViewTest, TheLiveHeaderSwitchIsTheNativeSmallSwitchWritingTheSetting) {
    const ScopedSnapshotFlag live(false);
    std::vector<bool> written;
    const auto rendering = render(body(header(&written)), menuWidth);
    const auto switches = rendering.nodesOf<SwitchNode>();
    ASSERT_EQ(switches.size(), 1u);
    const SwitchNode& control = std::get<SwitchNode>(switches[0]->view->node);
    EXPECT_EQ(control.size, ControlSize::small);
    control.isOn.set(false);
    EXPECT_EQ(written, std::vector<bool>{false});
}

// --- Footer ---------------------------------------------------------------------------

class MenuFooterViewTest : public testing_footer::MenuFooterFixture {
protected:
    static std::vector<std::string> texts(const testsupport::Rendering& rendering) {
        std::vector<std::string> shown;
        for (const auto& operation : rendering.canvas.ofKind(Kind::text)) shown.push_back(operation.text);
        return shown;
    }
};

TEST_F(MenuFooterViewTest, AFooterWithNeitherCaptionNorUpdateActionShowsTheVersionLineAndQuit) {
    const auto rendering = render(body(footer(std::nullopt, false), ViewState{}), menuWidth);
    EXPECT_EQ(texts(rendering), (std::vector<std::string>{"Version 1.2", "Quit", "\u2318Q"}));
    expectFrame(rendering.root.frame, {0, 0, 302, 52});
}

TEST_F(MenuFooterViewTest, AFooterWithAnUpdateActionShowsTheVersionOnlyInTheCheckRow) {
    const auto rendering = render(body(footer(std::nullopt, true), ViewState{}), menuWidth);
    EXPECT_EQ(texts(rendering), (std::vector<std::string>{"Check for Updates", "Version 1.2", "Quit", "\u2318Q"}));
}

TEST_F(MenuFooterViewTest, AFooterWithCaptionAndUpdateActionShowsTheCaptionFirst) {
    const auto rendering = render(body(footer(appText("Keys sent: %lld", {"12"}), true), ViewState{}), menuWidth);
    EXPECT_EQ(texts(rendering),
              (std::vector<std::string>{"Keys sent: 12", "Check for Updates", "Version 1.2", "Quit", "\u2318Q"}));
    expectFrame(rendering.root.frame, {0, 0, 302, 78});
}

TEST_F(MenuFooterViewTest, TheCaptionLineIsTertiaryAtLeast26HighAndLinesUpWithTheRowTitles) {
    const auto rendering = render(body(footer(appText("Keys sent: %lld", {"12"}), true), ViewState{}), menuWidth);
    const auto caption = rendering.canvas.find(Kind::text, "Keys sent: 12");
    ASSERT_TRUE(caption.has_value());
    EXPECT_EQ(caption->font, Font{12});
    EXPECT_EQ(caption->color, resolved(Color::tertiary()));
    EXPECT_EQ(caption->lineLimit, 1);
    expectFrame(caption->frame, {11, (26 - 15) / 2.0, 13 * 6, 15});
    EXPECT_DOUBLE_EQ(rendering.canvas.find(Kind::text, "Check for Updates")->frame.x, 11);
}

TEST_F(MenuFooterViewTest, FooterRowsAre26HighWithTitleDetailAndARoundedHoverBackground) {
    ViewState state;
    state.hovered.insert("footer.Quit");
    const auto rendering = render(body(footer(std::nullopt, true), state), menuWidth);
    const auto backgrounds = rendering.canvas.ofKind(Kind::fill);
    ASSERT_EQ(backgrounds.size(), 2u);
    for (const auto& background : backgrounds) EXPECT_EQ(background.shape, Shape::roundedRectangle(7));
    expectFrame(backgrounds[0].frame, {0, 0, 302, 26});
    expectFrame(backgrounds[1].frame, {0, 26, 302, 26});
    EXPECT_EQ(backgrounds[0].paint, Paint::solid(resolved(Color::primary().withOpacity(0))));
    EXPECT_EQ(backgrounds[1].paint, Paint::solid(resolved(Color::primary().withOpacity(0.07))));

    const auto title = rendering.canvas.find(Kind::text, "Check for Updates");
    EXPECT_EQ(title->font, Font{12});
    EXPECT_EQ(title->color, resolved(Color::primary()));
    EXPECT_EQ(title->lineLimit, 1);
    expectFrame(title->frame, {11, 5.5, 17 * 6, 15});
    const auto detail = rendering.canvas.find(Kind::text, "Version 1.2");
    EXPECT_EQ(detail->color, resolved(Color::tertiary()));
    expectFrame(detail->frame, {302 - 11 - 11 * 6, 5.5, 11 * 6, 15});

    const auto buttons = rendering.nodesOf<ButtonNode>();
    ASSERT_EQ(buttons.size(), 2u);
    expectFrame(buttons[0]->frame, {0, 0, 302, 26});  // the whole row is the click target
    std::get<ButtonNode>(buttons[0]->view->node).action();
    EXPECT_EQ(checks, 1);
}

TEST_F(MenuFooterViewTest, CommandQInTheOpenPopoverQuitsTheApp) {
    const auto rendering = render(body(footer(std::nullopt, true), ViewState{}), menuWidth);
    const ButtonNode* quit = nullptr;
    for (const LayoutNode* node : rendering.nodesOf<ButtonNode>()) {
        const auto& candidate = std::get<ButtonNode>(node->view->node);
        if (candidate.shortcut == 'q') quit = &candidate;
    }
    ASSERT_NE(quit, nullptr);
    quit->action();
    EXPECT_EQ(quits, 1);
}

TEST_F(MenuFooterViewTest, LiveFooterRowsTrackHover) {
    const ScopedSnapshotFlag live(false);
    const auto rendering = render(body(footer(std::nullopt, true), ViewState{}), menuWidth);
    const auto hovers = rendering.nodesOf<HoverNode>();
    ASSERT_EQ(hovers.size(), 2u);
    EXPECT_EQ(std::get<HoverNode>(hovers[1]->view->node).id, "footer.Quit");
}

TEST_F(MenuFooterViewTest, InSnapshotModeNoFooterRowShowsAHoverBackground) {
    const ScopedSnapshotFlag snapshot(true);
    const auto rendering = render(body(footer(appText("Keys sent: %lld", {"1"}), true), ViewState{}), menuWidth);
    EXPECT_TRUE(rendering.nodesOf<HoverNode>().empty());
    for (const auto& fill : rendering.canvas.ofKind(Kind::fill)) EXPECT_EQ(fill.paint.color().alpha, 0);
}

// --- Privacy card ---------------------------------------------------------------------

TEST(PrivacyCardViewTest, ThePrivacyCardHasTheShieldTitleAndItems) {
    PrivacyCard card;
    card.items = {{"network.slash", appText("Offline")}, {"keyboard", appText("Keys only")}};
    const auto rendering = render(body(card), menuWidth);

    const auto shield = rendering.canvas.find(Kind::symbol, "lock.shield.fill");
    ASSERT_TRUE(shield.has_value());
    EXPECT_EQ(shield->font, Font{18});
    expectFrame(shield->frame, {11, 11, 18, 18});
    const GradientEnds green = automaticGradientEnds(resolved(Color::green()));
    EXPECT_TRUE(shield->paint.isGradient);
    EXPECT_EQ(shield->paint.colors[0], green.top);
    EXPECT_EQ(shield->paint.colors[1], green.bottom);

    const auto title = rendering.canvas.find(Kind::text, "Private by design");
    EXPECT_EQ(title->font, (Font{12.5, FontWeight::semibold}));
    expectFrame(title->frame, {39, 11, 17 * 6.25, 15.625});

    // An item: symbol in a frame 15 wide, 7, then the text; rows 5 apart.
    const double firstRowY = 11 + 15.625 + 5;
    const auto symbol = rendering.canvas.find(Kind::symbol, "network.slash");
    EXPECT_EQ(symbol->font, (Font{10, FontWeight::medium}));
    EXPECT_EQ(symbol->paint, Paint::solid(resolved(Color::green())));
    expectFrame(symbol->frame, {39 + 2.5, firstRowY + (13.75 - 10) / 2, 10, 10});
    const auto text = rendering.canvas.find(Kind::text, "Offline");
    EXPECT_EQ(text->font, Font{11});
    EXPECT_EQ(text->color, resolved(Color::primary().withOpacity(0.85)));
    expectFrame(text->frame, {39 + 15 + 7, firstRowY, 7 * 5.5, 13.75});
    EXPECT_DOUBLE_EQ(rendering.canvas.find(Kind::text, "Keys only")->frame.y, firstRowY + 13.75 + 5);
    expectFrame(rendering.root.frame, {0, 0, 302, 11 + 15.625 + 5 + 13.75 + 5 + 13.75 + 11});
}

// --- Open at login ----------------------------------------------------------------------

TEST(OpenAtLoginRowViewTest, TheRowIsASettingRowWithAMiniSwitchThatSpringsBackWhenRefused) {
    const ScopedSnapshotFlag live(false);
    const auto loginItem = std::make_shared<FakeLoginItemService>(false);
    loginItem->refusesChanges = true;
    const auto row = std::make_shared<OpenAtLoginRow>(loginItem);
    const auto rendering = render(body(row), menuWidth);
    EXPECT_TRUE(rendering.canvas.find(Kind::symbol, "power").has_value());
    EXPECT_TRUE(rendering.canvas.find(Kind::text, "Open at login").has_value());
    const auto switches = rendering.nodesOf<SwitchNode>();
    ASSERT_EQ(switches.size(), 1u);
    const SwitchNode& control = std::get<SwitchNode>(switches[0]->view->node);
    EXPECT_EQ(control.size, ControlSize::mini);
    EXPECT_FALSE(control.isOn.value);
    control.isOn.set(true);
    EXPECT_EQ(loginItem->requests, std::vector<bool>{true});
    EXPECT_FALSE(row->isOn());
    EXPECT_FALSE(std::get<SwitchNode>(render(body(row), menuWidth).nodesOf<SwitchNode>()[0]->view->node).isOn.value);
}

TEST(OpenAtLoginRowViewTest, InASnapshotTheRowDrawsAMiniSwitchThatIsOff) {
    const ScopedSnapshotFlag snapshot(true);
    const auto loginItem = std::make_shared<FakeLoginItemService>(true);
    const auto rendering = render(body(std::make_shared<OpenAtLoginRow>(loginItem)), menuWidth);
    const auto capsule = rendering.canvas.ofKind(Kind::fill)[1];
    EXPECT_EQ(capsule.shape, Shape::capsule());
    expectFrame(capsule.frame, {302 - 10 - 26, 11.5, 26, 15});
    EXPECT_EQ(capsule.paint, Paint::solid(resolved(Color::primary().withOpacity(0.15))));
    EXPECT_EQ(loginItem->isEnabledCalls, 0u);
}

// --- Update reminder card ---------------------------------------------------------------

TEST(UpdateReminderCardViewTest, TheCardHasTheArrowTitleMessageAndTwoPills) {
    const auto center = UpdateReminderCenter::preview("tolvane", true);
    const auto rendering = render(body(UpdateReminderCard::from(center), ViewState{}), menuWidth);

    const auto arrow = rendering.canvas.find(Kind::symbol, "arrow.down.circle.fill");
    ASSERT_TRUE(arrow.has_value());
    EXPECT_EQ(arrow->font, Font{17});
    expectFrame(arrow->frame, {11 + 2.5, 11, 17, 17});
    EXPECT_EQ(arrow->paint.colors[1], resolved(Color::accentColor()));

    const auto title = rendering.canvas.find(Kind::text, "A new version may be out");
    EXPECT_EQ(title->font, (Font{12.5, FontWeight::semibold}));
    expectFrame(title->frame, {43, 11, 24 * 6.25, 15.625});

    const std::string messageText =
        "This app never goes online, so it can't check by itself. Checking on the website takes one click.";
    const auto message = rendering.canvas.find(Kind::text, messageText);
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->color, resolved(Color::secondary()));
    EXPECT_EQ(message->lineLimit, std::nullopt);
    EXPECT_DOUBLE_EQ(message->frame.y, 11 + 15.625 + 4);
    EXPECT_GT(message->frame.height, 13.75) << "the message wraps";

    const auto check = rendering.canvas.find(Kind::text, "Check");
    const auto notNow = rendering.canvas.find(Kind::text, "Not Now");
    const double pillsY = message->frame.maxY() + 4 + 2;
    EXPECT_DOUBLE_EQ(check->frame.y, pillsY + (22 - 13.75) / 2);
    EXPECT_EQ(check->color, resolved(Color::white()));
    EXPECT_DOUBLE_EQ(notNow->frame.x, 43 + 47.5 + 6 + 10);
    EXPECT_EQ(notNow->color, resolved(Color::primary()));
}

TEST(UpdateReminderCardViewTest, NotNowMakesTheReminderNotDue) {
    const auto center = UpdateReminderCenter::preview("tolvane", true);
    const auto rendering = render(body(UpdateReminderCard::from(center), ViewState{}), menuWidth);
    const auto buttons = rendering.nodesOf<ButtonNode>();
    ASSERT_EQ(buttons.size(), 2u);
    EXPECT_EQ(std::get<ButtonNode>(buttons[1]->view->node).id, "update.notNow");
    std::get<ButtonNode>(buttons[1]->view->node).action();
    EXPECT_FALSE(center->updateReminderDue.get());
}

}  // namespace
}  // namespace orvik

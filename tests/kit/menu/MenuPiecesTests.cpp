// The kit's building blocks, drawn: exact frames, shapes, fonts, colours,
// opacities and shadows, on FixedTextMeasurer's metrics (a character is half
// the font size wide, a line 1.25 × the size; a symbol a square of its size).
#include "OrvikKit/MenuPieces.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport/FrameExpectations.h"
#include "TestSupport/SampleViews.h"
#include "TestSupport/RecordingCanvas.h"
#include "TestSupport/SnapshotFlag.h"

namespace orvik {
namespace {

using testsupport::DrawOperation;
using testsupport::box;
using testsupport::render;
using testsupport::resolved;
using testsupport::ScopedSnapshotFlag;
using Kind = DrawOperation::Kind;
using testsupport::expectFrame;

Paint automaticGradientOf(const Color& color, Rect frame) {
    const GradientEnds ends = automaticGradientEnds(resolved(color));
    Paint paint;
    paint.isGradient = true;
    paint.colors[0] = ends.top;
    paint.colors[1] = ends.bottom;
    paint.colorCount = 2;
    paint.start = Point{frame.x + frame.width / 2, frame.y};
    paint.end = Point{frame.x + frame.width / 2, frame.maxY()};
    return paint;
}

// --- AppGlyph -------------------------------------------------------------------------

TEST(AppGlyphTest, AViewTreeWithNoBrandSetDrawsTheKitDefaultGlyph) {
    const auto rendering = render(AppGlyph{40}.body());
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 4u);

    EXPECT_EQ(operations[0].kind, Kind::beginShadow);
    EXPECT_EQ(operations[0].shadow, (ResolvedShadow{resolved(Color::accentColor().withOpacity(0.35)), 4, 0, 2}));

    EXPECT_EQ(operations[1].kind, Kind::fill);
    EXPECT_EQ(operations[1].shape, Shape::roundedRectangle(40 * 0.2237));
    expectFrame(operations[1].frame, {0, 0, 40, 40});
    EXPECT_TRUE(operations[1].paint.isGradient);
    ASSERT_EQ(operations[1].paint.colorCount, 2u);
    EXPECT_EQ(operations[1].paint.colors[0], resolved(Color::gray()));
    EXPECT_EQ(operations[1].paint.colors[1], resolved(Color::secondary()));
    EXPECT_EQ(operations[1].paint.start, (Point{20, 0}));
    EXPECT_EQ(operations[1].paint.end, (Point{20, 40}));

    EXPECT_EQ(operations[2].kind, Kind::symbol);
    EXPECT_EQ(operations[2].text, "square.grid.2x2");
    EXPECT_DOUBLE_EQ(operations[2].font.size, 40 * 0.42);
    EXPECT_EQ(operations[2].font.weight, FontWeight::semibold);
    EXPECT_EQ(operations[2].paint, Paint::solid(resolved(Color::white())));
    expectFrame(operations[2].frame, {20 - 8.4, 20 - 8.4, 16.8, 16.8});

    EXPECT_EQ(operations[3].kind, Kind::endShadow);
}

TEST(AppGlyphTest, TheGlyphReadsTheBrandSetAboveIt) {
    AppBrand brand = AppBrand::kitDefault();
    brand.symbol = "star.fill";
    brand.symbolScale = 0.5;
    brand.accent = Color::pink();
    const auto rendering = render(AppGlyph{20}.body().appBrand(brand));
    const auto symbols = rendering.canvas.ofKind(Kind::symbol);
    ASSERT_EQ(symbols.size(), 1u);
    EXPECT_EQ(symbols[0].text, "star.fill");
    EXPECT_DOUBLE_EQ(symbols[0].font.size, 10);
    EXPECT_EQ(rendering.canvas.operations[0].shadow.color, resolved(Color::pink().withOpacity(0.35)));
}

// --- Card -----------------------------------------------------------------------------

TEST(CardTest, ACardPadsItsContentFillsTheWidthAndHasAFaintFillAndBorder) {
    const auto rendering = render(Card{11, box(50, 20)}.body(), {200, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 200, 42});
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 3u);
    EXPECT_EQ(operations[0].kind, Kind::fill);
    EXPECT_EQ(operations[0].shape, Shape::roundedRectangle(12));
    expectFrame(operations[0].frame, {0, 0, 200, 42});
    EXPECT_EQ(operations[0].paint, Paint::solid(resolved(Color::primary().withOpacity(0.05))));
    expectFrame(operations[1].frame, {11, 11, 50, 20});  // top leading
    EXPECT_EQ(operations[2].kind, Kind::strokeInside);
    EXPECT_EQ(operations[2].shape, Shape::roundedRectangle(12));
    expectFrame(operations[2].frame, {0, 0, 200, 42});
    EXPECT_DOUBLE_EQ(operations[2].width, 1);
    EXPECT_EQ(operations[2].color, resolved(Color::primary().withOpacity(0.06)));
}

TEST(CardTest, CardColoursFollowTheDarkAppearance) {
    const auto rendering = render(Card{0, box(10, 10)}.body(), {100, std::nullopt}, Appearance::dark);
    EXPECT_EQ(rendering.canvas.operations[0].paint.color(), (Rgba{1, 1, 1, 0.85 * 0.05}));
}

// --- WarningCard ----------------------------------------------------------------------

WarningCard warning(std::string message) {
    return WarningCard{.symbol = "hand.raised.fill",
                       .title = appText("Allow it"),
                       .message = appText(std::move(message)),
                       .action = [] {}};
}

TEST(WarningCardTest, AWarningCardBuiltWithoutAButtonTitleShowsOpenSystemSettings) {
    const auto rendering = render(body(warning("Short.")), {302, std::nullopt});
    const auto label = rendering.canvas.find(Kind::text, "Open System Settings");
    ASSERT_TRUE(label.has_value());
    EXPECT_DOUBLE_EQ(label->font.size, 11);
}

TEST(WarningCardTest, TheWarningCardHasItsSymbolTitleMessageAndButtonWhereTheyBelong) {
    const auto rendering = render(body(warning("Short.")), {302, std::nullopt});
    const auto symbol = rendering.canvas.find(Kind::symbol, "hand.raised.fill");
    ASSERT_TRUE(symbol.has_value());
    EXPECT_DOUBLE_EQ(symbol->font.size, 15);
    EXPECT_EQ(symbol->font.weight, FontWeight::regular);
    EXPECT_EQ(symbol->paint, Paint::solid(resolved(Color::orange())));
    expectFrame(symbol->frame, {11 + 3.5, 11, 15, 15});  // centred in a frame 22 wide, top aligned

    const auto title = rendering.canvas.find(Kind::text, "Allow it");
    ASSERT_TRUE(title.has_value());
    EXPECT_EQ(title->font, (Font{12.5, FontWeight::semibold}));
    expectFrame(title->frame, {11 + 22 + 10, 11, 8 * 6.25, 15.625});

    const auto message = rendering.canvas.find(Kind::text, "Short.");
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->font, Font{11});
    EXPECT_EQ(message->color, resolved(Color::secondary()));
    EXPECT_EQ(message->lineLimit, std::nullopt);
    EXPECT_DOUBLE_EQ(message->frame.y, 11 + 15.625 + 6);

    const auto buttonLabel = rendering.canvas.find(Kind::text, "Open System Settings");
    EXPECT_DOUBLE_EQ(buttonLabel->frame.y, 11 + 15.625 + 6 + 13.75 + 6 + (20 - 13.75) / 2);
    EXPECT_EQ(rendering.nodesOf<ButtonNode>().size(), 1u);
}

TEST(WarningCardTest, ALongWarningMessageWrapsAndMakesTheCardTallerInsteadOfBeingCut) {
    const auto shortCard = render(body(warning("Short.")), {302, std::nullopt});
    std::string message;
    for (int word = 0; word < 6; ++word) message += (word ? " " : "") + std::string(20, 'w');
    const auto longCard = render(body(warning(message)), {302, std::nullopt});

    EXPECT_DOUBLE_EQ(longCard.root.frame.width, 302);
    const auto text = longCard.canvas.find(Kind::text, message);
    ASSERT_TRUE(text.has_value());
    // 6 words of 20 characters at 5.5 points: 248 points hold two words a line.
    EXPECT_DOUBLE_EQ(text->frame.height, 3 * 13.75);
    EXPECT_LE(text->frame.width, 302 - 22 - 22 - 10);
    EXPECT_DOUBLE_EQ(longCard.root.frame.height, shortCard.root.frame.height + 2 * 13.75);
    std::vector<const LayoutNode*> texts = longCard.nodesOf<TextNode>();
    for (const LayoutNode* node : texts) EXPECT_FALSE(node->truncated);
}

// --- ActionIcon ------------------------------------------------------------------------

TEST(ActionIconTest, AnActionIconIsAWhiteSymbolOnAnAccentGradientTile) {
    const auto rendering = render(ActionIcon{"power", 20}.body());
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 2u);
    EXPECT_EQ(operations[0].shape, Shape::roundedRectangle(5));
    expectFrame(operations[0].frame, {0, 0, 20, 20});
    EXPECT_EQ(operations[0].paint, automaticGradientOf(Color::accentColor(), {0, 0, 20, 20}));
    EXPECT_EQ(operations[1].text, "power");
    EXPECT_DOUBLE_EQ(operations[1].font.size, 20 * 0.53);
    EXPECT_EQ(operations[1].font.weight, FontWeight::semibold);
    EXPECT_EQ(operations[1].paint, Paint::solid(resolved(Color::white())));
    expectFrame(operations[1].frame, {(20 - 10.6) / 2, (20 - 10.6) / 2, 10.6, 10.6});
}

// --- SettingRow -----------------------------------------------------------------------

TEST(SettingRowTest, ASettingRowIs38HighWithIconTitleAndTrailingAccessory) {
    const auto rendering = render(SettingRow{"power", kitText("Open at login"), box(26, 15)}.body(), {302, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 302, 38});
    expectFrame(rendering.canvas.ofKind(Kind::fill)[0].frame, {10, 9, 20, 20});  // the icon's tile
    const auto title = rendering.canvas.find(Kind::text, "Open at login");
    ASSERT_TRUE(title.has_value());
    EXPECT_EQ(title->font, Font{12});
    EXPECT_EQ(title->lineLimit, 1);
    expectFrame(title->frame, {40, 11.5, 13 * 6, 15});
    expectFrame(rendering.canvas.ofKind(Kind::fill).back().frame, {302 - 10 - 26, 11.5, 26, 15});
}

TEST(SettingRowTest, ASettingTitleLongerThanTheRowIsCutToOneLine) {
    const std::string title(80, 't');
    const auto rendering = render(SettingRow{"power", appText(title), box(26, 15)}.body(), {302, std::nullopt});
    expectFrame(rendering.root.frame, {0, 0, 302, 38});
    const auto text = rendering.canvas.find(Kind::text, title);
    ASSERT_TRUE(text.has_value());
    EXPECT_DOUBLE_EQ(text->frame.height, 15);
    // 302 - 2 × 10 padding - 20 icon - 26 switch - 3 × 10 spacing
    EXPECT_DOUBLE_EQ(text->frame.width, 206);
    EXPECT_TRUE(rendering.nodesOf<TextNode>()[0]->truncated);
}

// --- MenuSwitch -----------------------------------------------------------------------

TEST(MenuSwitchTest, ADrawnSwitchAtTheMiniSizeIs26By15AndAtEveryOtherSize32By18) {
    const ScopedSnapshotFlag snapshot(true);
    const auto mini = render(MenuSwitch{Binding<bool>{true, {}}, ControlSize::mini}.body());
    expectFrame(mini.root.frame, {0, 0, 26, 15});
    for (ControlSize size : {ControlSize::small, ControlSize::regular, ControlSize::large}) {
        const auto other = render(MenuSwitch{Binding<bool>{true, {}}, size}.body());
        expectFrame(other.root.frame, {0, 0, 32, 18});
    }
}

TEST(MenuSwitchTest, ADrawnSwitchThatIsOnIsAnAccentCapsuleWithTheKnobAtTheTrailingEnd) {
    const ScopedSnapshotFlag snapshot(true);
    const auto rendering = render(MenuSwitch{Binding<bool>{true, {}}, ControlSize::small}.body());
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 4u);
    EXPECT_EQ(operations[0].shape, Shape::capsule());
    expectFrame(operations[0].frame, {0, 0, 32, 18});
    EXPECT_EQ(operations[0].paint, Paint::solid(resolved(Color::accentColor())));
    EXPECT_EQ(operations[1].kind, Kind::beginShadow);
    EXPECT_EQ(operations[1].shadow, (ResolvedShadow{Rgba{0, 0, 0, 0.2}, 1, 0, 0.5}));
    EXPECT_EQ(operations[2].shape, Shape::circle());
    EXPECT_EQ(operations[2].paint, Paint::solid(resolved(Color::white())));
    expectFrame(operations[2].frame, {32 - 1.5 - 15, 1.5, 15, 15});
    EXPECT_EQ(operations[3].kind, Kind::endShadow);
}

TEST(MenuSwitchTest, ADrawnSwitchThatIsOffIsAFaintCapsuleWithTheKnobAtTheLeadingEnd) {
    const ScopedSnapshotFlag snapshot(true);
    const auto rendering = render(MenuSwitch{Binding<bool>{false, {}}, ControlSize::mini}.body());
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    ASSERT_EQ(fills.size(), 2u);
    EXPECT_EQ(fills[0].paint, Paint::solid(resolved(Color::primary().withOpacity(0.15))));
    expectFrame(fills[1].frame, {1.5, 1.5, 12, 12});
}

TEST(MenuSwitchTest, ADrawnSwitchUsesTheBrandAccent) {
    const ScopedSnapshotFlag snapshot(true);
    AppBrand brand = AppBrand::kitDefault();
    brand.accent = Color::pink();
    const auto rendering = render(MenuSwitch{Binding<bool>{true, {}}, ControlSize::mini}.body().appBrand(brand));
    EXPECT_EQ(rendering.canvas.operations[0].paint, Paint::solid(resolved(Color::pink())));
}

TEST(MenuSwitchTest, WithTheSnapshotFlagOffTheNativeSwitchAppearsTintedWithTheBrandAccent) {
    const ScopedSnapshotFlag live(false);
    std::vector<bool> written;
    const auto rendering = render(
        MenuSwitch{Binding<bool>{true, [&written](bool on) { written.push_back(on); }}, ControlSize::small}.body());
    EXPECT_TRUE(rendering.canvas.operations.empty());
    const auto switches = rendering.nodesOf<SwitchNode>();
    ASSERT_EQ(switches.size(), 1u);
    const SwitchNode& control = std::get<SwitchNode>(switches[0]->view->node);
    EXPECT_TRUE(control.isOn.value);
    EXPECT_EQ(control.size, ControlSize::small);
    EXPECT_EQ(control.tint, Color::accentColor());
    control.isOn.set(false);
    EXPECT_EQ(written, std::vector<bool>{false});
}

// --- MenuPicker -----------------------------------------------------------------------

MenuPicker<int> numberPicker(int selected, std::vector<int>* chosen) {
    return MenuPicker<int>{
        .selection = Binding<int>{selected, [chosen](int value) { chosen->push_back(value); }},
        .options = {1, 2, 3},
        .title = [](const int& value) { return appText(value == 1 ? "One" : value == 2 ? "Two" : "Three"); },
    };
}

TEST(MenuPickerTest, WithTheSnapshotFlagOnThePickerIsDrawnWithTheSelectionAndAChevron) {
    const ScopedSnapshotFlag snapshot(true);
    std::vector<int> chosen;
    const auto rendering = render(numberPicker(2, &chosen).body());
    EXPECT_TRUE(rendering.nodesOf<PickerNode>().empty());
    // 8 + "Two" (3 × 5.5) + 6 + chevron 8 + 8
    expectFrame(rendering.root.frame, {0, 0, 46.5, 20});
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 3u);
    EXPECT_EQ(operations[0].shape, Shape::roundedRectangle(5));
    expectFrame(operations[0].frame, {0, 0, 46.5, 20});
    EXPECT_EQ(operations[0].paint, Paint::solid(resolved(Color::primary().withOpacity(0.08))));
    EXPECT_EQ(operations[1].text, "Two");
    EXPECT_EQ(operations[1].font, Font{11});
    expectFrame(operations[1].frame, {8, 3.125, 16.5, 13.75});
    EXPECT_EQ(operations[2].text, "chevron.up.chevron.down");
    EXPECT_EQ(operations[2].font, (Font{8, FontWeight::bold}));
    expectFrame(operations[2].frame, {30.5, 6, 8, 8});
}

TEST(MenuPickerTest, WithTheSnapshotFlagOffTheNativePopUpListsEveryOptionInOrder) {
    const ScopedSnapshotFlag live(false);
    std::vector<int> chosen;
    const auto rendering = render(numberPicker(2, &chosen).body());
    EXPECT_TRUE(rendering.canvas.operations.empty());
    const auto pickers = rendering.nodesOf<PickerNode>();
    ASSERT_EQ(pickers.size(), 1u);
    EXPECT_EQ(pickers[0]->options, (std::vector<std::string>{"One", "Two", "Three"}));
    const PickerNode& picker = std::get<PickerNode>(pickers[0]->view->node);
    EXPECT_EQ(picker.selectedIndex, 1u);
    picker.select(2);
    EXPECT_EQ(chosen, std::vector<int>{3});
}

// --- PillButtonStyle ------------------------------------------------------------------

TEST(PillButtonStyleTest, AProminentPillIsWhiteTextOnTheAccentGradient) {
    const auto rendering = render(PillButtonStyle{true}.body("check", kitText("Check"), [] {}, false));
    expectFrame(rendering.root.frame, {0, 0, 10 + 27.5 + 10, 22});
    const auto& operations = rendering.canvas.operations;
    ASSERT_EQ(operations.size(), 4u);
    EXPECT_EQ(operations[0].kind, Kind::beginOpacity);
    EXPECT_DOUBLE_EQ(operations[0].opacity, 1.0);
    EXPECT_EQ(operations[1].shape, Shape::capsule());
    EXPECT_EQ(operations[1].paint, automaticGradientOf(Color::accentColor(), {0, 0, 47.5, 22}));
    EXPECT_EQ(operations[2].text, "Check");
    EXPECT_EQ(operations[2].font, (Font{11, FontWeight::semibold}));
    EXPECT_EQ(operations[2].color, resolved(Color::white()));
    expectFrame(operations[2].frame, {10, (22 - 13.75) / 2, 27.5, 13.75});
    EXPECT_EQ(operations[3].kind, Kind::endOpacity);
}

TEST(PillButtonStyleTest, APlainPillIsPrimaryTextOnAFaintCapsule) {
    const auto rendering = render(PillButtonStyle{false}.body("notNow", kitText("Not Now"), [] {}, false));
    const auto fill = rendering.canvas.ofKind(Kind::fill)[0];
    EXPECT_EQ(fill.paint, Paint::solid(resolved(Color::primary().withOpacity(0.08))));
    EXPECT_EQ(rendering.canvas.ofKind(Kind::text)[0].color, resolved(Color::primary()));
}

TEST(PillButtonStyleTest, APressedPillIsDrawnAtOpacity07AndRunsItsAction) {
    int runs = 0;
    const auto rendering = render(PillButtonStyle{true}.body("check", kitText("Check"), [&runs] { ++runs; }, true));
    EXPECT_DOUBLE_EQ(rendering.canvas.ofKind(Kind::beginOpacity)[0].opacity, 0.7);
    const auto buttons = rendering.nodesOf<ButtonNode>();
    ASSERT_EQ(buttons.size(), 1u);
    std::get<ButtonNode>(buttons[0]->view->node).action();
    EXPECT_EQ(runs, 1);
}

// --- KeyCaps --------------------------------------------------------------------------

TEST(KeyCapsTest, KeyCapsAreAtLeast20SquarePaddedBy2AndRepeatEqualKeys) {
    const auto rendering = render(KeyCaps{{"\u2318", "K", "K"}}.body());
    expectFrame(rendering.root.frame, {0, 0, 3 * 24 + 2 * 3, 24});
    const auto fills = rendering.canvas.ofKind(Kind::fill);
    const auto borders = rendering.canvas.ofKind(Kind::strokeInside);
    const auto texts = rendering.canvas.ofKind(Kind::text);
    ASSERT_EQ(fills.size(), 3u);
    ASSERT_EQ(borders.size(), 3u);
    ASSERT_EQ(texts.size(), 3u);
    for (std::size_t index = 0; index < 3; ++index) {
        const double x = static_cast<double>(index) * 27;
        expectFrame(fills[index].frame, {x, 0, 24, 24});
        EXPECT_EQ(fills[index].shape, Shape::roundedRectangle(5));
        EXPECT_EQ(fills[index].paint, Paint::solid(resolved(Color::primary().withOpacity(0.07))));
        EXPECT_EQ(borders[index].color, resolved(Color::primary().withOpacity(0.1)));
        EXPECT_DOUBLE_EQ(borders[index].width, 1);
        EXPECT_EQ(texts[index].font, (Font{11, FontWeight::medium}));
        EXPECT_EQ(texts[index].color, resolved(Color::secondary()));
        expectFrame(texts[index].frame, {x + 2 + (20 - 5.5) / 2, 2 + (20 - 13.75) / 2, 5.5, 13.75});
    }
    EXPECT_EQ(texts[1].text, "K");
    EXPECT_EQ(texts[2].text, "K");
}

}  // namespace
}  // namespace orvik

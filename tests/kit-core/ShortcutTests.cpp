#include "OrvikKitCore/Shortcut.h"

#include <gtest/gtest.h>

#include <set>
#include <unordered_set>

namespace orvik {
namespace {

TEST(Shortcut, ModifierMasksAreCarbonValues) {
    EXPECT_EQ(Shortcut::command, 256u);
    EXPECT_EQ(Shortcut::shift, 512u);
    EXPECT_EQ(Shortcut::option, 2048u);
    EXPECT_EQ(Shortcut::control, 4096u);
}

TEST(Shortcut, NoneIsKeyCodeZeroWithoutModifiers) {
    EXPECT_EQ(Shortcut::none.keyCode, 0u);
    EXPECT_EQ(Shortcut::none.modifiers, 0u);
    EXPECT_FALSE(Shortcut::none.isValid());
}

TEST(Shortcut, ModifierMaskIsTheOrOfTheChosenMasks) {
    EXPECT_EQ(Shortcut::modifierMask({}), 0u);
    EXPECT_EQ(Shortcut::modifierMask({.command = true}), 256u);
    EXPECT_EQ(Shortcut::modifierMask({.command = true, .shift = true, .option = true, .control = true}), 6912u);
    EXPECT_EQ(Shortcut::modifierMask({.shift = true, .control = true}), 4608u);
}

TEST(Shortcut, ControlOptionCommandKDisplaysInSymbolOrder) {
    const Shortcut shortcut{.keyCode = 40, .modifiers = 4096 + 2048 + 256};
    EXPECT_EQ(shortcut.displayString(), "\u2303\u2325\u2318K");
    EXPECT_EQ(shortcut.symbols(), (std::vector<std::string>{"\u2303", "\u2325", "\u2318", "K"}));
}

TEST(Shortcut, AllFourModifiersShowControlOptionShiftCommand) {
    const Shortcut shortcut{.keyCode = 49, .modifiers = Shortcut::modifierMask(
                                                {.command = true, .shift = true, .option = true, .control = true})};
    EXPECT_EQ(shortcut.displayString(), "\u2303\u2325\u21E7\u2318Space");
}

TEST(Shortcut, UnnamedKeyCodeShowsHashAndNumber) {
    EXPECT_EQ(Shortcut::keyName(200), "#200");
    EXPECT_EQ((Shortcut{.keyCode = 200, .modifiers = Shortcut::command}).displayString(), "\u2318#200");
    EXPECT_EQ(Shortcut::keyName(4294967295u), "#4294967295");
}

TEST(Shortcut, NoModifiersShowsTheKeyNameAlone) {
    EXPECT_EQ((Shortcut{.keyCode = 53, .modifiers = 0}).symbols(), std::vector<std::string>{"\u238B"});
}

TEST(Shortcut, ValidNeedsCommandOptionOrControl) {
    EXPECT_TRUE((Shortcut{.keyCode = 8, .modifiers = Shortcut::command}).isValid());
    EXPECT_TRUE((Shortcut{.keyCode = 8, .modifiers = Shortcut::option}).isValid());
    EXPECT_TRUE((Shortcut{.keyCode = 8, .modifiers = Shortcut::control | Shortcut::shift}).isValid());
    EXPECT_FALSE((Shortcut{.keyCode = 8, .modifiers = Shortcut::shift}).isValid());
    EXPECT_FALSE((Shortcut{.keyCode = 8, .modifiers = 0}).isValid());
    EXPECT_FALSE((Shortcut{.keyCode = 8, .modifiers = 1}).isValid());
}

TEST(Shortcut, FromEventMapsDeviceIndependentFlagsToCarbonMasks) {
    EXPECT_EQ(Shortcut::fromEvent({.keyCode = 40, .modifierFlags = 1u << 20}),
              (Shortcut{.keyCode = 40, .modifiers = Shortcut::command}));
    EXPECT_EQ(Shortcut::fromEvent({.keyCode = 40, .modifierFlags = 1u << 17}),
              (Shortcut{.keyCode = 40, .modifiers = Shortcut::shift}));
    EXPECT_EQ(Shortcut::fromEvent({.keyCode = 40, .modifierFlags = 1u << 19}),
              (Shortcut{.keyCode = 40, .modifiers = Shortcut::option}));
    EXPECT_EQ(Shortcut::fromEvent({.keyCode = 40, .modifierFlags = 1u << 18}),
              (Shortcut{.keyCode = 40, .modifiers = Shortcut::control}));
}

TEST(Shortcut, FromEventIgnoresEveryOtherFlag) {
    // Caps lock (16), numeric pad (21), help (22), function (23) and the
    // device-dependent low bits carry no modifier.
    const std::uint64_t otherFlags = (1u << 16) | (1u << 21) | (1u << 22) | (1u << 23) | 0xFFFFu | (0xFFull << 40);
    EXPECT_EQ(Shortcut::fromEvent({.keyCode = 12, .modifierFlags = otherFlags}), (Shortcut{.keyCode = 12, .modifiers = 0}));
    EXPECT_EQ(Shortcut::fromEvent({.keyCode = 12, .modifierFlags = otherFlags | 1u << 20 | 1u << 18}),
              (Shortcut{.keyCode = 12, .modifiers = Shortcut::command | Shortcut::control}));
}

TEST(Shortcut, EqualityAndHashingFollowBothFields) {
    const Shortcut a{.keyCode = 1, .modifiers = 256};
    const Shortcut b{.keyCode = 256, .modifiers = 1};
    EXPECT_NE(a, b);
    const std::unordered_set<Shortcut> set{a, b, a};
    EXPECT_EQ(set.size(), 2u);
}

TEST(KeyCode, NamedKeyCodesHaveTheirVirtualKeyCodes) {
    EXPECT_EQ(KeyCode::escape, 53u);
    EXPECT_EQ(KeyCode::delete_, 51u);
    EXPECT_EQ(KeyCode::leftArrow, 123u);
    EXPECT_EQ(KeyCode::rightArrow, 124u);
    EXPECT_EQ(KeyCode::downArrow, 125u);
    EXPECT_EQ(KeyCode::upArrow, 126u);
    EXPECT_EQ(KeyCode::c, 8u);
    EXPECT_EQ(KeyCode::d, 2u);
}

// Every named key, as a (key code, name) pair.
struct NamedKey {
    std::uint32_t keyCode;
    const char* name;
};

const NamedKey everyNamedKey[] = {
    {0, "A"},   {11, "B"},  {8, "C"},   {2, "D"},   {14, "E"},  {3, "F"},   {5, "G"},   {4, "H"},   {34, "I"},
    {38, "J"},  {40, "K"},  {37, "L"},  {46, "M"},  {45, "N"},  {31, "O"},  {35, "P"},  {12, "Q"},  {15, "R"},
    {1, "S"},   {17, "T"},  {32, "U"},  {9, "V"},   {13, "W"},  {7, "X"},   {16, "Y"},  {6, "Z"},

    {29, "0"},  {18, "1"},  {19, "2"},  {20, "3"},  {21, "4"},  {23, "5"},  {22, "6"},  {26, "7"},  {28, "8"},
    {25, "9"},

    {122, "F1"}, {120, "F2"}, {99, "F3"},  {118, "F4"}, {96, "F5"},   {97, "F6"},
    {98, "F7"},  {100, "F8"}, {101, "F9"}, {109, "F10"}, {103, "F11"}, {111, "F12"},

    {123, "\xE2\x86\x90"}, {124, "\xE2\x86\x92"}, {125, "\xE2\x86\x93"}, {126, "\xE2\x86\x91"},
    {49, "Space"},         {36, "\xE2\x86\xA9"},  {48, "\xE2\x87\xA5"},  {51, "\xE2\x8C\xAB"},
    {53, "\xE2\x8E\x8B"},  {27, "-"},             {24, "="},             {33, "["},
    {30, "]"},             {41, ";"},             {39, "'"},             {43, ","},
    {47, "."},             {44, "/"},             {42, "\\"},            {50, "`"},
};

TEST(KeyNames, TableHasSixtyEightEntries) {
    EXPECT_EQ(std::size(everyNamedKey), 68u);
    EXPECT_EQ(keyNameTable().size(), 68u);
}

TEST(KeyNames, EveryNamedKeyHasItsName) {
    for (const NamedKey& key : everyNamedKey) {
        EXPECT_EQ(Shortcut::keyName(key.keyCode), key.name) << "key code " << key.keyCode;
    }
}

TEST(KeyNames, TableHoldsExactlyTheNamedKeys) {
    std::set<std::pair<std::uint32_t, std::string>> expected;
    for (const NamedKey& key : everyNamedKey) expected.emplace(key.keyCode, key.name);
    std::set<std::pair<std::uint32_t, std::string>> actual;
    for (const KeyNameEntry& entry : keyNameTable()) actual.emplace(entry.keyCode, std::string(entry.name));
    EXPECT_EQ(actual, expected);
}

TEST(KeyNames, CodesBetweenNamedKeysAreUnnamed) {
    EXPECT_EQ(Shortcut::keyName(10), "#10");
    EXPECT_EQ(Shortcut::keyName(52), "#52");
    EXPECT_EQ(Shortcut::keyName(127), "#127");
}

}  // namespace
}  // namespace orvik

// The direction a view tree is laid out in, and the rules that follow from
// it: which languages read from right to left, which system symbols turn
// round with the layout, and which way a text of unknown origin runs.
//
// The layout mirrors as the platform mirrors its own interface: leading and
// trailing swap, horizontal stacks run from the right, insets and
// alignments follow. Layout does it in one place (Layout.cpp): every node is
// laid out in leading-to-trailing terms and its children are then placed at
// x' = width − x − childWidth when its environment runs from right to left.
#pragma once

#include <cstdint>
#include <string_view>

namespace orvik {

enum class LayoutDirection : std::uint8_t { leftToRight, rightToLeft };

// The direction of a language given as a BCP 47 tag or a bundle's
// localisation name ("he", "ar-SA", "pa-Arab", "zh_Hant"): right to left for
// the languages written in Arabic, Hebrew, Syriac, Thaana or N'Ko script
// (Arabic, Hebrew, Persian, Urdu, Pashto, Sindhi, Uyghur, Central Kurdish,
// Dhivehi, Yiddish, …) and for any tag whose script subtag names one of
// those scripts; left to right for everything else, an empty tag included.
LayoutDirection layoutDirectionForLanguage(std::string_view language) noexcept;

// Whether the system symbol `name` is drawn mirrored in a right-to-left
// layout. SF Symbols name reading-relative directions "forward" and
// "backward" ("chevron.forward", "arrow.uturn.backward"); those turn round
// with the layout, while physical directions ("chevron.right", "arrow.left")
// do not. The playback symbols, whose names start with the direction
// ("forward.fill", "backward.end", "goforward.10", "play.fill"), keep the
// direction of the tape in every language, as the system's own playback
// controls do.
bool mirrorsInRightToLeft(std::string_view name) noexcept;

// The direction of the first strongly directional character of a UTF-8
// text (rules P2 and P3 of the Unicode bidirectional algorithm, with the
// right-to-left scripts above and every other letter counted as left to
// right), or `fallback` when there is none (digits, punctuation, symbols).
// Texts that do not come from our own tables (a track's name) take their base
// direction this way.
LayoutDirection firstStrongDirection(std::string_view text, LayoutDirection fallback) noexcept;

}  // namespace orvik

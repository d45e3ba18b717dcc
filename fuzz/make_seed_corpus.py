#!/usr/bin/env python3
"""Writes the seed corpus of every fuzz target into fuzz/corpus/<target>/.

Each target's directory is emptied and rewritten, so the output depends on
this file and on the localisation tables alone. The byte layouts follow the
comments at the top of each fuzzer and of PropertyListFuzzing.h; after
changing a layout there, change the matching encoder here and run this again.

The strings-table targets start from the tables the bundle ships: every
`.strings` and `.stringsdict` file of every `<language>.lproj` folder of the
app (app/bundle) and the kit (kit/resources), so after adding a language run
this again to fuzz from its tables too.
"""

import pathlib
import shutil
import struct

CORPUS = pathlib.Path(__file__).resolve().parent / "corpus"
SOURCE = pathlib.Path(__file__).resolve().parent.parent
RESOURCE_FOLDERS = [SOURCE / "app" / "bundle", SOURCE / "kit" / "resources"]


def i16(value):
    return struct.pack("<h", value)


def u16(value):
    return struct.pack("<H", value)


def i64(value):
    return struct.pack("<q", value)


def u32(value):
    return struct.pack("<I", value)


def u64(value):
    return struct.pack("<Q", value)


def f64(value):
    return struct.pack("<d", value)


def sized(data, maximum):
    assert len(data) <= maximum
    return bytes([len(data)]) + data


# --- MediaKeyEventFuzzer -------------------------------------------------------

def pair(subtype, data1):
    return i16(subtype) + u64(data1)


KEY_DOWN, KEY_UP, RAW_STATE = 0, 1, 3


def step(key_type, state=KEY_DOWN, repeat=False, reset=False, subtype=None, state_byte=0, noise=0):
    assert 14 <= key_type <= 21
    shape = (key_type - 14) | state << 3 | int(repeat) << 5 | int(reset) << 6
    if subtype is not None:
        shape |= 0x80
        noise = subtype
    return bytes([shape, state_byte, noise])


TAKES_ALL, TAKES_NONE, TAKES_BY_KEY, ALTERNATES = 0, 1, 2, 3


def handler(mode, parameter=0):
    return bytes([mode | parameter << 2])


def media_key_event_seeds():
    seeds = {
        "play-down": pair(8, 0x100A00),
        "play-up": pair(8, 0x100B00),
        "next-down-repeat": pair(8, 0x110A01),
        "rewind-up": pair(8, 0x140B00),
        "fast-forward-down": pair(8, 0x130A00),
        "key-type-0-down": pair(8, 0x000A00),
        "eject-down": pair(8, 0x0E0A00),
        "play-down-other-subtype": pair(7, 0x100A00),
        "play-down-high-bits-set": pair(8, 0xFFFFFFFF00100A00),
    }
    seeds["gate-hold-and-release"] = (
        pair(8, 0x100A00) + handler(TAKES_ALL)
        + step(16) + step(16, repeat=True) + step(16, repeat=True) + step(16, KEY_UP)
    )
    seeds["gate-refused"] = (
        pair(8, 0x110A00) + handler(TAKES_NONE)
        + step(17) + step(17, repeat=True) + step(17, KEY_UP) + step(19) + step(19, KEY_UP)
    )
    # Takes play/pause only (bit 0 of the parameter); next and previous pass.
    seeds["gate-by-key"] = (
        pair(8, 0x120A00) + handler(TAKES_BY_KEY, 0b001)
        + step(16) + step(18) + step(20) + step(18, KEY_UP) + step(16, KEY_UP) + step(20, KEY_UP)
    )
    seeds["gate-alternating-with-reset"] = (
        pair(8, 0x130A00) + handler(ALTERNATES, 1)
        + step(16) + step(16) + step(17) + step(17, repeat=True)
        + step(18, reset=True) + step(17, KEY_UP) + step(18, KEY_UP)
        + step(21) + step(14, KEY_UP) + step(16, RAW_STATE, state_byte=0x0C, noise=0xFF)
        + step(16, subtype=7) + step(16, KEY_UP)
    )
    return seeds


# --- TrackSummaryFuzzer --------------------------------------------------------

def track_summary_seeds():
    return {
        "playing": b"Title\tArtist\tplaying",
        "paused": b"Title\tArtist\tpaused",
        "capitalised-state": b"Title\tArtist\tPlaying",
        "trailing-newline": b"Title\tArtist\tplaying\n",
        "empty-pieces": b"\t\t",
        "tab-in-title": b"Title with\ttab\tArtist\tplaying",
        "one-tab": b"Title\tArtist",
        "invalid-utf8-and-nul": b"Caf\xc3\xa9 \xff\xfe\x00\tA\x00rtist\xc3\tplaying",
        "unicode": "Für Elise\tLudwig van Beethoven\tstopped".encode(),
    }


# --- PlayerInfoFuzzer ----------------------------------------------------------

PLAYER_STATE, NAME, ARTIST, ALBUM = 0, 1, 2, 3          # keyWords
PLAYING, PAUSED, STOPPED = 0, 1, 2                      # valueWords


def other():
    return bytes([0])


def boolean(value):
    return bytes([1, int(value)])


def integer(value):
    return bytes([2]) + i64(value)


def real(value):
    return bytes([3]) + f64(value)


def string(text):
    return bytes([4]) + sized(text.encode(), 24)


def word(index):
    return bytes([5, index])


def user_info(*entries):
    assert len(entries) <= 12
    return bytes([len(entries)]) + b"".join(key + value for key, value in entries)


NO_SUMMARY = bytes([0])
OWN, EMPTY, GIVEN = 0, 1, 2


def summary(name, artist, is_playing):
    def piece(choice):
        if isinstance(choice, str):
            return bytes([GIVEN]) + sized(choice.encode(), 24)
        return bytes([choice])
    return bytes([1]) + piece(name) + piece(artist) + bytes([int(is_playing)])


def player_info_seeds():
    three_keys = [
        (word(PLAYER_STATE), word(PLAYING)),
        (word(NAME), string("Title")),
        (word(ARTIST), string("Artist")),
    ]
    return {
        "playing-first-song": user_info(*three_keys) + NO_SUMMARY,
        "playing-same-song": user_info(*three_keys) + summary(OWN, OWN, False),
        "playing-new-song": user_info(*three_keys) + summary("Other", OWN, True),
        "paused": user_info(
            (word(NAME), string("Title")), (word(ARTIST), string("Artist")), (word(PLAYER_STATE), word(PAUSED)),
        ) + summary(OWN, OWN, True),
        "stopped": user_info((word(PLAYER_STATE), word(STOPPED))) + summary("Title", "Artist", True),
        "first-state-not-a-string": user_info(
            (word(PLAYER_STATE), integer(1)), (word(PLAYER_STATE), word(PLAYING)), (word(NAME), boolean(True)),
            (word(NAME), string("Second name")),
        ) + summary(EMPTY, EMPTY, False),
        "keys-of-other-kinds": user_info(
            (other(), word(STOPPED)), (real(float("nan")), word(STOPPED)), (integer(-1), string("x")),
            (boolean(False), other()), (word(ALBUM), string("Album")), (word(PLAYER_STATE), word(PLAYING)),
        ) + summary(OWN, OWN, False),
        "no-entries": user_info() + summary(EMPTY, EMPTY, True),
    }


# --- Property-list values (PropertyListFuzzing.h) ------------------------------

INTERESTING_INTEGERS = {0: 0, 1: 1, 40: 16, 6400: 14, 4294967295: 12, 4294967296: 13}
INTERESTING_REALS = {"nan": 5, "inf": 9, "2^63": 11, "40.0": 21, "-0.0": 1}
STRING_WORDS = {"": 0, "launchMusic": 1, "ignore": 2, "system": 3, "LaunchMusic": 4}
DICTIONARY_KEYS = {"keyCode": 0, "modifiers": 1, "a": 3}


def pl_bool(value):
    return bytes([0, int(value)])


def pl_integer(value):
    if value in INTERESTING_INTEGERS:
        return bytes([1, INTERESTING_INTEGERS[value] * 2])
    return bytes([1, 1]) + i64(value)


def pl_real(value):
    if isinstance(value, str):
        return bytes([2, INTERESTING_REALS[value] * 2])
    return bytes([2, 1]) + f64(value)


def pl_text(text, words):
    if text in words:
        return bytes([words[text] * 2])
    return bytes([1]) + sized(text.encode(), 32)


def pl_string(text):
    return bytes([3]) + pl_text(text, STRING_WORDS)


def pl_data(data):
    return bytes([4]) + sized(data, 32)


def pl_dictionary(*entries, selector=5):
    assert len(entries) <= 6
    return bytes([selector, len(entries)]) + b"".join(pl_text(key, DICTIONARY_KEYS) + value for key, value in entries)


# --- PreferenceFuzzer ----------------------------------------------------------

def stored(value, key="k", neighbour_key="n", neighbour=pl_bool(False), present=True):
    return bytes([int(present)]) + sized(key.encode(), 32) + value + sized(neighbour_key.encode(), 32) + neighbour


def preference_seeds():
    return {
        "bool": stored(pl_bool(True)),
        "integer-max": stored(pl_integer(2**63 - 1)),
        "integer-one": stored(pl_integer(1)),
        "integer-2-pow-53-plus-1": stored(pl_integer(2**53 + 1)),
        "real-nan": stored(pl_real("nan")),
        "real-2-pow-63": stored(pl_real("2^63")),
        "real-integral": stored(pl_real("40.0")),
        "real-fraction": stored(pl_real(0.25)),
        "string-behaviour": stored(pl_string("launchMusic"), key="whenMusicIsClosed"),
        "string-behaviour-wrong-case": stored(pl_string("LaunchMusic"), key="whenMusicIsClosed"),
        "string-bytes": stored(pl_string("caf\u00e9")),
        "data": stored(pl_data(b"\x00\x01\xfe\xff")),
        "shortcut": stored(pl_dictionary(("keyCode", pl_integer(40)), ("modifiers", pl_integer(6400))),
                           key="shortcut"),
        "nested-dictionary": stored(pl_dictionary(
            ("a", pl_dictionary(("keyCode", pl_bool(True)), ("b", pl_real(1.5)))),
            ("flag", pl_integer(0)), ("count", pl_real("-0.0")), ("name", pl_string("system")),
        )),
        "absent-key": stored(pl_integer(7), present=False, neighbour=pl_string("ignore")),
        "same-key-twice": stored(pl_integer(3), neighbour_key="k", neighbour=pl_integer(4)),
    }


# --- ShortcutFuzzer ------------------------------------------------------------

def shortcut_input(key_code, modifiers, event_key_code, flags, value):
    return bytes([1]) + u32(key_code) + u32(modifiers) + u16(event_key_code) + u64(flags) + value


def as_any(value):
    return bytes([1]) + value


def as_dictionary(*entries):
    # Even selector: the value is read as a dictionary directly (count byte,
    # then entries), without the value's own selector byte.
    return bytes([0]) + pl_dictionary(*entries)[1:]


COMMAND_OPTION_CONTROL = 256 | 2048 | 4096
EVENT_COMMAND_OPTION_CONTROL = 1 << 20 | 1 << 19 | 1 << 18


def shortcut_seeds():
    return {
        "control-option-command-k": shortcut_input(
            40, COMMAND_OPTION_CONTROL, 40, EVENT_COMMAND_OPTION_CONTROL,
            as_dictionary(("keyCode", pl_integer(40)), ("modifiers", pl_integer(6400)))),
        "shift-only-unnamed-key": shortcut_input(
            200, 512, 200, 1 << 17 | 1 << 16,
            as_dictionary(("keyCode", pl_integer(4294967296)), ("modifiers", pl_integer(0)))),
        "every-bit": shortcut_input(
            0xFFFFFFFF, 0xFFFFFFFF, 0xFFFF, 0xFFFFFFFFFFFFFFFF,
            as_dictionary(("keyCode", pl_integer(4294967295)), ("modifiers", pl_integer(4294967295)))),
        "bridged-fields": shortcut_input(
            53, 256, 53, 1 << 20,
            as_dictionary(("keyCode", pl_real("40.0")), ("modifiers", pl_bool(True)))),
        "negative-field": shortcut_input(
            126, 4096, 126, 1 << 18,
            as_dictionary(("keyCode", pl_integer(-1)), ("modifiers", pl_integer(256)))),
        "not-a-dictionary": shortcut_input(0, 0, 0, 0, as_any(pl_string("keyCode"))),
        "nested": shortcut_input(
            49, 2048, 49, 1 << 19,
            as_any(pl_dictionary(("keyCode", pl_integer(49)), ("modifiers", pl_integer(2048)),
                                 ("a", pl_dictionary(("keyCode", pl_integer(1))))))),
    }


# --- StringsTableFuzzer and StringsDictionaryFuzzer -----------------------------

def shipped_tables(extension):
    """Every table of that extension in every language folder, by seed name."""
    tables = {}
    for folder in RESOURCE_FOLDERS:
        for path in sorted(folder.glob("*.lproj/*" + extension)):
            name = path.parent.name.removesuffix(".lproj") + "-" + path.name
            tables[name] = path.read_bytes()
    return tables


def utf16(text, byte_order):
    mark = b"\xff\xfe" if byte_order == "little" else b"\xfe\xff"
    return mark + text.encode("utf-16-le" if byte_order == "little" else "utf-16-be")


def strings_table_seeds():
    seeds = shipped_tables(".strings")
    english = (SOURCE / "app" / "bundle" / "en.lproj" / "Localizable.strings").read_text(encoding="utf-8")
    seeds["en-Localizable-utf16-little-endian"] = utf16(english, "little")
    seeds["en-Localizable-utf16-big-endian"] = utf16(english, "big")
    seeds["utf8-byte-order-mark"] = b"\xef\xbb\xbf\"Quit\" = \"Quit\";\n"
    seeds["escapes-and-surrogates"] = (
        b'"Say \\"hi\\"" = "a\\\\b\\nc\\td\\re \\U2318 \\UD83C\\UDFB5";\n'
    )
    seeds["unquoted-and-without-value"] = b'NSAppleEventsUsageDescription = "Text";\nCFBundle.Name = Tolvane_2;\n"Same";\n'
    seeds["positional-placeholders"] = b'"%@ of %@" = "%2$@ / %1$@ (100%%)";\n"Keys sent: %lld" = "%lld";\n'
    seeds["missing-semicolon"] = b'"Quit" = "Quit"\n"Check" = "Check";\n'
    seeds["unclosed-comment"] = b'"a" = "b";\n/* never closed'
    seeds["unpaired-surrogate-escape"] = b'"a" = "\\UD83C";'
    seeds["utf16-odd-length"] = b"\xff\xfe\"\x00a"
    seeds["latin-1"] = b'"caf\xe9" = "x";'
    return seeds


PLURAL_ENTRY = """<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>Keys sent: %lld</key>
	<dict>
		<key>NSStringLocalizedFormatKey</key>
		<string>{format}</string>
{variables}	</dict>
</dict>
</plist>
"""


def plural_variable(name, value_type, forms):
    lines = [f"\t\t<key>{name}</key>", "\t\t<dict>",
             "\t\t\t<key>NSStringFormatSpecTypeKey</key>", "\t\t\t<string>NSStringPluralRuleType</string>",
             "\t\t\t<key>NSStringFormatValueTypeKey</key>", f"\t\t\t<string>{value_type}</string>"]
    for category, text in forms:
        lines += [f"\t\t\t<key>{category}</key>", f"\t\t\t<string>{text}</string>"]
    lines.append("\t\t</dict>")
    return "".join(line + "\n" for line in lines)


def strings_dictionary_seeds():
    seeds = shipped_tables(".stringsdict")
    every_category = [(category, f"{category} %lld") for category in ("zero", "one", "two", "few", "many", "other")]
    seeds["every-category"] = PLURAL_ENTRY.format(
        format="%#@keys@", variables=plural_variable("keys", "lld", every_category)).encode()
    seeds["two-variables-numbered"] = PLURAL_ENTRY.format(
        format="%1$#@done@ / %2$#@all@",
        variables=plural_variable("done", "lld", [("one", "%1$lld"), ("other", "%1$lld")])
        + plural_variable("all", "ld", [("other", "%2$ld &amp; &#x2318;")])).encode()
    seeds["form-without-number"] = PLURAL_ENTRY.format(
        format="%#@keys@", variables=plural_variable("keys", "lld", [("zero", "None"), ("other", "%lld")])).encode()
    seeds["missing-other"] = PLURAL_ENTRY.format(
        format="%#@keys@", variables=plural_variable("keys", "lld", [("one", "%lld")])).encode()
    seeds["undefined-variable"] = PLURAL_ENTRY.format(format="%#@keys@", variables="").encode()
    seeds["width-rule"] = PLURAL_ENTRY.format(format="%#@keys@", variables=(
        "\t\t<key>keys</key>\n\t\t<dict><key>NSStringFormatSpecTypeKey</key>"
        "<string>NSStringVariableWidthRuleType</string></dict>\n")).encode()
    seeds["unclosed"] = b"<plist><dict><key>a</key><dict>"
    return seeds


def main():
    targets = {
        "MediaKeyEventFuzzer": media_key_event_seeds(),
        "TrackSummaryFuzzer": track_summary_seeds(),
        "PlayerInfoFuzzer": player_info_seeds(),
        "PreferenceFuzzer": preference_seeds(),
        "ShortcutFuzzer": shortcut_seeds(),
        "StringsTableFuzzer": strings_table_seeds(),
        "StringsDictionaryFuzzer": strings_dictionary_seeds(),
    }
    for target, seeds in targets.items():
        directory = CORPUS / target
        if directory.exists():
            shutil.rmtree(directory)
        directory.mkdir(parents=True)
        for name, data in sorted(seeds.items()):
            (directory / name).write_bytes(data)


if __name__ == "__main__":
    main()

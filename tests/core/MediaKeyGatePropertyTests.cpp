// Checks MediaKeyGate against a plain model of its rules over many random
// event sequences. The sequences come from a fixed seed and are derived from
// the raw output of std::mt19937_64 (whose output the standard fixes), not
// from the library's distributions, so every standard library replays the
// very same events and a failure seen on one toolchain reproduces on another.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "TolvaneCore/KeyRouting.h"
#include "TolvaneCore/MediaKeyEvent.h"

namespace tolvane {
namespace {

constexpr std::uint64_t seed = 0x746F6C76616E6531;  // fixed: runs are reproducible
constexpr int sequenceCount = 100'000;
constexpr std::uint64_t maxSequenceLength = 40;

// The event as the model reads data1, independently of MediaKeyEvent.
struct ModelEvent {
    MediaKey key;
    std::int64_t keyCode;
    bool isDown;
    bool isRepeat;
};

std::optional<ModelEvent> modelDecode(std::int16_t subtype, std::int64_t data1) {
    if (subtype != 8) {
        return std::nullopt;
    }
    const auto word = static_cast<std::uint64_t>(data1);
    const auto keyCode = static_cast<std::int64_t>((word >> 16) & 0xFFFF);
    const auto state = (word >> 8) & 0xFF;
    const bool isDown = state == 0x0A;
    const bool isRepeat = (word & 1) == 1;
    switch (keyCode) {
    case 16: return ModelEvent{MediaKey::playPause, keyCode, isDown, isRepeat};
    case 17:
    case 19: return ModelEvent{MediaKey::next, keyCode, isDown, isRepeat};
    case 18:
    case 20: return ModelEvent{MediaKey::previous, keyCode, isDown, isRepeat};
    default: return std::nullopt;
    }
}

// The gate's rules, one by one:
//  - a release forgets its code and is swallowed if the code was remembered;
//  - a repeat is swallowed if its code is remembered;
//  - a fresh press asks once; a yes remembers the code and swallows, a no
//    lets the press pass and leaves the remembered codes alone.
struct ModelGate {
    std::set<std::int64_t> remembered;

    struct Outcome {
        bool swallow;
        bool asks;
    };

    Outcome decide(const ModelEvent& event, bool answerIfAsked) {
        if (!event.isDown) {
            const bool wasRemembered = remembered.contains(event.keyCode);
            remembered.erase(event.keyCode);
            return {wasRemembered, false};
        }
        if (event.isRepeat) {
            return {remembered.contains(event.keyCode), false};
        }
        if (answerIfAsked) {
            remembered.insert(event.keyCode);
        }
        return {answerIfAsked, true};
    }

    void reset() { remembered.clear(); }
};

// Raw draws from the engine, sliced by hand.
class Draws {
public:
    explicit Draws(std::uint64_t seedValue) : engine_(seedValue) {}

    std::uint64_t raw() { return engine_(); }
    // A value in [0, bound). The modulo bias is far below anything that
    // matters for picking test inputs.
    std::uint64_t below(std::uint64_t bound) { return engine_() % bound; }
    bool oneIn(std::uint64_t n) { return below(n) == 0; }

private:
    std::mt19937_64 engine_;
};

// What one step of a sequence was, kept to print the sequence on a mismatch.
struct Step {
    bool isReset = false;
    std::int16_t subtype = 0;
    std::int64_t data1 = 0;
    bool answer = false;
};

// A system-defined event's (subtype, data1), mostly near the media keys:
// key types 15 to 21 (the handled 16 to 20 and both neighbours), the down and
// up state bytes and a few odd ones, the repeat bit either way, and random
// bits above 31 and in the unused flag bits.
Step drawEvent(Draws& draws) {
    std::uint64_t keyType = 0;
    if (draws.below(8) != 0) {
        keyType = 15 + draws.below(7);
    } else {
        keyType = draws.raw() & 0xFFFF;
    }

    std::uint64_t state = 0;
    switch (draws.below(16)) {
    case 0: state = 0x00; break;
    case 1: state = 0x0C; break;
    case 2: state = 0x8A; break;  // the down byte with a stray high bit
    case 3: state = 0x1A; break;
    case 4: state = draws.raw() & 0xFF; break;
    default: state = draws.below(2) == 0 ? 0x0A : 0x0B; break;
    }

    std::uint64_t flags = draws.below(2);  // the repeat bit
    if (draws.oneIn(4)) {
        flags |= draws.raw() & 0xFE;
    }

    std::uint64_t high = 0;
    if (draws.oneIn(2)) {
        high = draws.raw() & 0xFFFF'FFFF'0000'0000u;
    }

    std::int16_t subtype = MediaKeyEvent::auxControlButtonsSubtype;
    if (draws.oneIn(32)) {
        subtype = static_cast<std::int16_t>(static_cast<std::uint16_t>(draws.raw() & 0xFFFF));
    }

    const std::uint64_t word = high | (keyType << 16) | (state << 8) | flags;
    return Step{.isReset = false, .subtype = subtype, .data1 = static_cast<std::int64_t>(word), .answer = false};
}

std::string describe(const std::vector<Step>& steps) {
    std::ostringstream out;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        out << "  step " << i << ": ";
        if (steps[i].isReset) {
            out << "reset()\n";
        } else {
            out << "subtype " << steps[i].subtype << ", data1 0x" << std::hex
                << static_cast<std::uint64_t>(steps[i].data1) << std::dec << ", wantsKey answers "
                << (steps[i].answer ? "true" : "false") << '\n';
        }
    }
    return out.str();
}

std::string rememberedCodes(const KeyCodeSet& set) {
    std::string codes;
    for (std::int64_t code = 0; code < 64; ++code) {
        if (set.contains(code)) {
            codes += (codes.empty() ? "" : ",") + std::to_string(code);
        }
    }
    return "{" + codes + "}";
}

std::string rememberedCodes(const std::set<std::int64_t>& set) {
    std::string codes;
    for (std::int64_t code : set) {
        codes += (codes.empty() ? "" : ",") + std::to_string(code);
    }
    return "{" + codes + "}";
}

TEST(MediaKeyGateProperty, AgreesWithTheModelOnRandomSequences) {
    Draws draws(seed);
    std::vector<Step> steps;
    steps.reserve(maxSequenceLength);

    // Counts that show the sequences reached every branch of the gate.
    std::size_t releases = 0;
    std::size_t repeats = 0;
    std::size_t pressesTaken = 0;
    std::size_t pressesDeclined = 0;
    std::size_t swallowedReleases = 0;
    std::size_t swallowedRepeats = 0;
    std::size_t undecodable = 0;
    std::size_t resets = 0;
    std::size_t declinedWhileRemembered = 0;
    std::size_t previousAndRewindTogether = 0;

    for (int sequence = 0; sequence < sequenceCount; ++sequence) {
        MediaKeyGate gate;
        ModelGate model;
        steps.clear();
        const std::uint64_t length = 1 + draws.below(maxSequenceLength);

        for (std::uint64_t stepIndex = 0; stepIndex < length; ++stepIndex) {
            std::string mismatch;

            if (draws.oneIn(24)) {
                steps.push_back(Step{.isReset = true});
                gate.reset();
                model.reset();
                ++resets;
            } else {
                Step step = drawEvent(draws);
                // Drawn for every event, asked or not, so that the draws do
                // not depend on what the gate does.
                step.answer = draws.below(2) == 0;
                steps.push_back(step);

                const auto decoded = MediaKeyEvent::fromSystemEvent(step.subtype, step.data1);
                const auto expected = modelDecode(step.subtype, step.data1);
                if (decoded.has_value() != expected.has_value()) {
                    mismatch = decoded ? "decoded an event the model rejects" : "rejected an event the model decodes";
                } else if (!decoded) {
                    ++undecodable;
                } else if (decoded->key() != expected->key || decoded->keyCode() != expected->keyCode ||
                           decoded->isDown() != expected->isDown || decoded->isRepeat() != expected->isRepeat) {
                    mismatch = "decoded fields differ from the model's";
                } else {
                    int calls = 0;
                    std::optional<MediaKey> askedFor;
                    const bool swallowed = gate.shouldSwallow(*decoded, [&](MediaKey key) {
                        ++calls;
                        askedFor = key;
                        return step.answer;
                    });
                    const ModelGate::Outcome want = model.decide(*expected, step.answer);

                    if (!expected->isDown) {
                        ++releases;
                        swallowedReleases += want.swallow ? 1 : 0;
                    } else if (expected->isRepeat) {
                        ++repeats;
                        swallowedRepeats += want.swallow ? 1 : 0;
                    } else {
                        ++(step.answer ? pressesTaken : pressesDeclined);
                        if (!step.answer && model.remembered.contains(expected->keyCode)) {
                            ++declinedWhileRemembered;
                        }
                    }
                    if (model.remembered.contains(18) && model.remembered.contains(20)) {
                        ++previousAndRewindTogether;
                    }

                    if (swallowed != want.swallow) {
                        mismatch = std::string("answered ") + (swallowed ? "swallow" : "pass") +
                                   ", model answers " + (want.swallow ? "swallow" : "pass");
                    } else if (calls != (want.asks ? 1 : 0)) {
                        mismatch = "called wantsKey " + std::to_string(calls) + " time(s), model expects " +
                                   (want.asks ? "1" : "0");
                    } else if (want.asks && askedFor != expected->key) {
                        mismatch = "asked wantsKey about another key";
                    }
                }
            }

            if (mismatch.empty()) {
                // Both sets as one bit per code 0 to 63, compared in one go.
                const KeyCodeSet& remembered = gate.swallowedKeyCodes();
                std::uint64_t gateBits = 0;
                for (std::int64_t code = 0; code < 64; ++code) {
                    gateBits |= remembered.contains(code) ? std::uint64_t{1} << code : 0;
                }
                std::uint64_t modelBits = 0;
                for (std::int64_t code : model.remembered) {
                    modelBits |= std::uint64_t{1} << code;  // the model only holds codes 16 to 20
                }
                if (gateBits != modelBits) {
                    mismatch = "remembered codes differ";
                } else if (remembered.empty() != model.remembered.empty()) {
                    mismatch = "emptiness of the remembered codes differs";
                }
                if (!mismatch.empty()) {
                    mismatch += ": gate " + rememberedCodes(remembered) + ", model " + rememberedCodes(model.remembered);
                }
            }

            if (!mismatch.empty()) {
                FAIL() << "seed 0x" << std::hex << seed << std::dec << ", sequence " << sequence << ", step "
                       << stepIndex << ": " << mismatch << "\nsequence so far:\n"
                       << describe(steps);
            }
        }
    }

    // The sequences must have exercised every rule, or the agreement above
    // says little.
    EXPECT_GT(releases, 0u);
    EXPECT_GT(repeats, 0u);
    EXPECT_GT(pressesTaken, 0u);
    EXPECT_GT(pressesDeclined, 0u);
    EXPECT_GT(swallowedReleases, 0u);
    EXPECT_GT(swallowedRepeats, 0u);
    EXPECT_GT(undecodable, 0u);
    EXPECT_GT(resets, 0u);
    EXPECT_GT(declinedWhileRemembered, 0u);
    EXPECT_GT(previousAndRewindTogether, 0u);
}

}  // namespace
}  // namespace tolvane

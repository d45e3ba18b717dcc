// Decodes arbitrary (subtype, data1) pairs and drives the media-key gate with
// the decoded events.
//
// Input layout:
//   bytes 0-1   subtype, int16 little-endian
//   bytes 2-9   data1, int64 little-endian
//     The pair is decoded and compared with the decoding rule restated below;
//     any pair at all can be spelled this way.
//   byte 10     the gate's handler: bits 0-1 choose how it answers, bits 2-4
//               feed that choice (see `Handler`)
//   then 3 bytes per gate step, until the input ends (see `gateStep`)
//
// Any disagreement traps, and libFuzzer reports the input.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "FuzzInput.h"
#include "TolvaneCore/KeyRouting.h"
#include "TolvaneCore/MediaKeyEvent.h"

namespace {

using tolvane::MediaKey;
using tolvane::MediaKeyEvent;
using tolvane::fuzz::FuzzInput;
using tolvane::fuzz::require;

// The decoding rule, stated plainly and on its own: only subtype 8 carries
// media keys; data1's bits 16-31 are the key type, bits 8-15 the key state
// (0x0A is down) and bit 0 the repeat flag; bits 32-63 mean nothing.
struct ExpectedEvent {
    MediaKey key;
    std::int64_t keyCode;
    bool isDown;
    bool isRepeat;
};

std::optional<ExpectedEvent> expectedDecoding(std::int16_t subtype, std::int64_t data1) {
    if (subtype != 8) {
        return std::nullopt;
    }
    const auto word = static_cast<std::uint64_t>(data1);
    const std::uint64_t keyType = (word / 65536) % 65536;
    const std::uint64_t state = (word / 256) % 256;
    const bool repeat = word % 2 == 1;

    MediaKey key = MediaKey::playPause;
    if (keyType == 16) {
        key = MediaKey::playPause;  // play
    } else if (keyType == 17 || keyType == 19) {
        key = MediaKey::next;  // next, fast-forward
    } else if (keyType == 18 || keyType == 20) {
        key = MediaKey::previous;  // previous, rewind
    } else {
        return std::nullopt;
    }
    return ExpectedEvent{key, static_cast<std::int64_t>(keyType), state == 0x0A, repeat};
}

// Decodes the pair and checks the result against the rule.
std::optional<MediaKeyEvent> checkedDecoding(std::int16_t subtype, std::int64_t data1) {
    const std::optional<MediaKeyEvent> event = MediaKeyEvent::fromSystemEvent(subtype, data1);
    const std::optional<ExpectedEvent> expected = expectedDecoding(subtype, data1);
    require(event.has_value() == expected.has_value(), "a pair decodes exactly when it is a handled media key");
    if (event) {
        require(event->key() == expected->key, "decoded key");
        require(event->keyCode() == expected->keyCode, "decoded key code (bits 16-31, unfolded)");
        require(event->isDown() == expected->isDown, "decoded key state (0x0A in bits 8-15 is down)");
        require(event->isRepeat() == expected->isRepeat, "decoded repeat flag (bit 0)");
    }
    return event;
}

// The gate's handler, with every call recorded so that the step can check
// when it was asked.
class Handler {
public:
    explicit Handler(unsigned choice) : mode_(choice & 3u), parameter_(choice >> 2 & 7u) {}

    bool operator()(MediaKey key) {
        ++calls_;
        lastKey_ = key;
        lastAnswer_ = answer(key);
        return lastAnswer_;
    }

    int calls() const noexcept { return calls_; }
    MediaKey lastKey() const noexcept { return lastKey_; }
    bool lastAnswer() const noexcept { return lastAnswer_; }
    void forgetCalls() noexcept { calls_ = 0; }

private:
    bool answer(MediaKey key) {
        switch (mode_) {
        case 0: return true;   // takes every key
        case 1: return false;  // leaves every key to the system
        case 2:                // takes the keys whose bit is set in the parameter
            return (parameter_ >> static_cast<unsigned>(key) & 1u) != 0;
        default:  // alternates: takes the first key unless the parameter's low bit is set
            alternate_ = !alternate_;
            return alternate_ != ((parameter_ & 1u) != 0);
        }
    }

    unsigned mode_;
    unsigned parameter_;
    bool alternate_ = false;
    int calls_ = 0;
    MediaKey lastKey_ = MediaKey::playPause;
    bool lastAnswer_ = false;
};

// What the gate should remember: the codes 16 to 20 whose key-down it
// swallowed and whose key-up it has not seen.
using RememberedCodes = std::array<bool, 5>;

void checkRemembered(const tolvane::MediaKeyGate& gate, const RememberedCodes& remembered) {
    bool any = false;
    for (std::int64_t code = 0; code < 64; ++code) {
        const bool expected = code >= 16 && code <= 20 && remembered[static_cast<std::size_t>(code - 16)];
        require(gate.swallowedKeyCodes().contains(code) == expected, "remembered key codes");
        any = any || expected;
    }
    require(gate.swallowedKeyCodes().empty() == !any, "remembered key codes: empty()");
}

// One gate step, three bytes:
//   first   bits 0-2: key type 14 + value (14 to 21, so unhandled types occur)
//           bits 3-4: state byte 0x0A, 0x0B, 0x0A again, or the second byte
//           bit 5: repeat flag
//           bit 6: reset the gate before this event
//           bit 7: take the subtype from the third byte instead of 8
//   second  the state byte when bits 3-4 of the first are 3
//   third   noise: its bits 1-7 go to data1's bits 1-7 and the whole byte to
//           bits 32-39; and the subtype when bit 7 of the first is set
void gateStep(FuzzInput& input, tolvane::MediaKeyGate& gate, Handler& handler, RememberedCodes& remembered) {
    const unsigned shape = input.byte();
    const unsigned stateByte = input.byte();
    const unsigned noise = input.byte();

    if ((shape & 0x40u) != 0) {
        gate.reset();
        remembered = {};
        checkRemembered(gate, remembered);
    }

    const std::uint64_t keyType = 14u + (shape & 7u);
    const std::array<std::uint64_t, 4> states{0x0A, 0x0B, 0x0A, stateByte};
    const std::uint64_t state = states[shape >> 3 & 3u];
    const std::uint64_t repeat = shape >> 5 & 1u;
    const std::uint64_t word = std::uint64_t{noise} << 32 | keyType << 16 | state << 8 | (noise & 0xFEu) | repeat;
    const auto subtype = static_cast<std::int16_t>((shape & 0x80u) != 0 ? noise : 8);

    const std::optional<MediaKeyEvent> event = checkedDecoding(subtype, static_cast<std::int64_t>(word));
    if (!event) {
        return;
    }

    handler.forgetCalls();
    const bool swallowed = gate.shouldSwallow(*event, handler);
    bool& remembers = remembered[static_cast<std::size_t>(event->keyCode() - 16)];
    if (!event->isDown()) {
        require(handler.calls() == 0, "a key-up never asks the handler");
        require(swallowed == remembers, "a key-up is swallowed exactly when its key-down was");
        remembers = false;
    } else if (event->isRepeat()) {
        require(handler.calls() == 0, "an auto-repeat never asks the handler");
        require(swallowed == remembers, "an auto-repeat is swallowed exactly when its key-down was");
    } else {
        require(handler.calls() == 1, "a fresh key-down asks the handler once");
        require(handler.lastKey() == event->key(), "the handler is asked about the event's key");
        require(swallowed == handler.lastAnswer(), "a fresh key-down is swallowed exactly when the handler takes it");
        // A refusal leaves an earlier remembered press of the same code alone.
        if (swallowed) {
            remembers = true;
        }
    }
    checkRemembered(gate, remembered);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);

    const auto subtype = input.signedInteger<std::int16_t>();
    const auto data1 = input.signedInteger<std::int64_t>();
    checkedDecoding(subtype, data1);

    Handler handler(input.byte());
    tolvane::MediaKeyGate gate;
    RememberedCodes remembered{};
    checkRemembered(gate, remembered);
    while (!input.empty()) {
        gateStep(input, gate, handler, remembered);
    }
    return 0;
}

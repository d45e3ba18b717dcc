// Reads a fuzz input front to back as the values a target needs.
//
// Every read takes its bytes from the front of what is left; once the input is
// used up, reads yield zeros (an empty string, false, 0), so a target never has
// to check the length and short inputs still mean something. Integers are read
// little-endian, so a seed file states its fields in the order the target reads
// them.
//
// Written for this project instead of Clang's FuzzedDataProvider so that the
// targets also build with GCC, where they replay the seed corpus as tests.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tolvane::fuzz {

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) noexcept : bytes_(data, size) {}

    std::size_t remaining() const noexcept { return bytes_.size(); }
    bool empty() const noexcept { return bytes_.empty(); }

    std::uint8_t byte() noexcept {
        if (bytes_.empty()) {
            return 0;
        }
        const std::uint8_t value = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return value;
    }

    // sizeof(Integer) bytes, little-endian; missing bytes count as zero.
    template <std::unsigned_integral Integer>
    Integer unsignedInteger() noexcept {
        Integer value = 0;
        for (std::size_t index = 0; index < sizeof(Integer); ++index) {
            value = static_cast<Integer>(value | static_cast<Integer>(static_cast<Integer>(byte()) << (8 * index)));
        }
        return value;
    }

    // The same bytes as the unsigned type of that width, in two's complement.
    template <std::signed_integral Integer>
    Integer signedInteger() noexcept {
        return static_cast<Integer>(unsignedInteger<std::make_unsigned_t<Integer>>());
    }

    bool boolean() noexcept { return (byte() & 1u) != 0; }

    // A number below `bound` (which must be 1 to 256) from one byte.
    std::size_t below(std::size_t bound) noexcept { return bound == 0 ? 0 : std::size_t{byte()} % bound; }

    // Eight bytes taken as a double's bit pattern: NaNs, infinities and
    // subnormals included.
    double real() noexcept { return std::bit_cast<double>(unsignedInteger<std::uint64_t>()); }

    // A length byte (at most `maxLength`, which must be below 256), then that
    // many bytes, or fewer when the input ends first.
    std::string string(std::size_t maxLength) {
        const std::span<const std::uint8_t> taken = take(below(maxLength + 1));
        return std::string(taken.begin(), taken.end());
    }

    std::vector<std::uint8_t> data(std::size_t maxLength) {
        const std::span<const std::uint8_t> taken = take(below(maxLength + 1));
        return std::vector<std::uint8_t>(taken.begin(), taken.end());
    }

    // One element of a non-empty table, chosen by one byte.
    template <class Element, std::size_t Size>
        requires(Size > 0 && Size <= 256)
    const Element& pick(const std::array<Element, Size>& table) noexcept {
        return table[below(Size)];
    }

private:
    std::span<const std::uint8_t> take(std::size_t count) noexcept {
        const std::size_t taken = std::min(count, bytes_.size());
        const std::span<const std::uint8_t> front = bytes_.first(taken);
        bytes_ = bytes_.subspan(taken);
        return front;
    }

    std::span<const std::uint8_t> bytes_;
};

// Every failed check ends here: it names the check and traps, which libFuzzer
// (or the replay driver's caller) reports as a crash together with the input,
// under any sanitizer setting and any build type (unlike assert()).
inline void require(bool condition, const char* check) noexcept {
    if (!condition) {
        std::fprintf(stderr, "fuzz check failed: %s\n", check);
        std::fflush(stderr);
        __builtin_trap();
    }
}

}  // namespace tolvane::fuzz

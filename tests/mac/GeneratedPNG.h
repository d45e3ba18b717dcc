// A PNG image made in memory for the thumbnail test: a solid-colour RGB
// image of the given size, written with uncompressed deflate blocks, so the
// test needs no image library of its own. Plain C++.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tolvane::testing {

namespace png {

inline std::uint32_t crc32(const std::uint8_t* bytes, std::size_t count, std::uint32_t crc = 0) {
    crc = ~crc;
    for (std::size_t index = 0; index < count; ++index) {
        crc ^= bytes[index];
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

inline void appendBigEndian(std::vector<std::uint8_t>& out, std::uint32_t value) {
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(static_cast<std::uint8_t>(value >> shift));
}

inline void appendChunk(std::vector<std::uint8_t>& out, std::string_view type, const std::vector<std::uint8_t>& data) {
    appendBigEndian(out, static_cast<std::uint32_t>(data.size()));
    const std::size_t typeStart = out.size();
    out.insert(out.end(), type.begin(), type.end());
    out.insert(out.end(), data.begin(), data.end());
    appendBigEndian(out, crc32(out.data() + typeStart, out.size() - typeStart));
}

}  // namespace png

inline std::vector<std::uint8_t> solidPNG(std::uint32_t width, std::uint32_t height) {
    // Scanlines: filter byte 0, then RGB pixels.
    std::vector<std::uint8_t> raw;
    for (std::uint32_t row = 0; row < height; ++row) {
        raw.push_back(0);
        for (std::uint32_t column = 0; column < width; ++column) raw.insert(raw.end(), {0xF9, 0x5C, 0x78});
    }
    // zlib stream of stored deflate blocks.
    std::vector<std::uint8_t> zlib{0x78, 0x01};
    std::size_t offset = 0;
    do {
        const std::size_t length = std::min<std::size_t>(raw.size() - offset, 65535);
        const bool last = offset + length == raw.size();
        zlib.push_back(last ? 1 : 0);
        zlib.push_back(static_cast<std::uint8_t>(length & 0xFF));
        zlib.push_back(static_cast<std::uint8_t>(length >> 8));
        zlib.push_back(static_cast<std::uint8_t>(~length & 0xFF));
        zlib.push_back(static_cast<std::uint8_t>((~length >> 8) & 0xFF));
        zlib.insert(zlib.end(), raw.begin() + static_cast<std::ptrdiff_t>(offset),
                    raw.begin() + static_cast<std::ptrdiff_t>(offset + length));
        offset += length;
    } while (offset < raw.size());
    std::uint32_t a = 1;
    std::uint32_t b = 0;
    for (const std::uint8_t byte : raw) {
        a = (a + byte) % 65521;
        b = (b + a) % 65521;
    }
    png::appendBigEndian(zlib, b << 16 | a);

    std::vector<std::uint8_t> out{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::vector<std::uint8_t> header;
    png::appendBigEndian(header, width);
    png::appendBigEndian(header, height);
    header.insert(header.end(), {8, 2, 0, 0, 0});  // 8-bit RGB, deflate, no filter method, no interlace
    png::appendChunk(out, "IHDR", header);
    png::appendChunk(out, "IDAT", zlib);
    png::appendChunk(out, "IEND", {});
    return out;
}

}  // namespace tolvane::testing

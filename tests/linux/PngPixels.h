// The pixels of a PNG read back through Cairo, for tests that check what a
// canvas or the preview program wrote.
#pragma once

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace orvik::cairo::testing {

// One pixel's bytes as Cairo holds them: premultiplied by alpha (for an
// opaque pixel, the sRGB bytes themselves).
struct Pixel {
    int red = 0;
    int green = 0;
    int blue = 0;
    int alpha = 0;

    friend bool operator==(const Pixel&, const Pixel&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Pixel& pixel) {
        return out << "(" << pixel.red << ", " << pixel.green << ", " << pixel.blue << ", alpha " << pixel.alpha << ")";
    }
};

// An opaque grey of byte level `level`.
constexpr Pixel opaqueGrey(int level) { return Pixel{level, level, level, 255}; }

// The byte nearest to a level in [0, 1]: round(level x 255).
inline int nearestByte(double level) { return static_cast<int>(std::lround(level * 255)); }

// A grey of `level` at `alpha` drawn over an opaque byte D: its alpha
// A = round(255 alpha) and premultiplied level P = round(255 level alpha),
// blended as 8-bit premultiplied bytes, P + round(D (255 - A) / 255).
// (D (255 - A) is a whole number and 255 is odd, so adding 127 before the
// division rounds it.)
inline int blendedByte(double level, double alpha, int under) {
    const int coverage = nearestByte(alpha);
    const int premultiplied = nearestByte(level * alpha);
    return premultiplied + (under * (255 - coverage) + 127) / 255;
}

class PngPixels {
public:
    // Nothing when the data or the file is not a PNG Cairo can read.
    static std::optional<PngPixels> fromData(const std::vector<std::uint8_t>& png) {
        struct Reader {
            const std::vector<std::uint8_t>* bytes;
            std::size_t position = 0;
        } reader{&png};
        return adopt(cairo_image_surface_create_from_png_stream(
            [](void* closure, unsigned char* data, unsigned int length) {
                auto* source = static_cast<Reader*>(closure);
                if (source->position + length > source->bytes->size()) return CAIRO_STATUS_READ_ERROR;
                std::copy_n(source->bytes->begin() + static_cast<std::ptrdiff_t>(source->position), length, data);
                source->position += length;
                return CAIRO_STATUS_SUCCESS;
            },
            &reader));
    }

    static std::optional<PngPixels> fromFile(const std::string& path) {
        return adopt(cairo_image_surface_create_from_png(path.c_str()));
    }

    int width() const { return cairo_image_surface_get_width(surface_.get()); }
    int height() const { return cairo_image_surface_get_height(surface_.get()); }

    Pixel at(int x, int y) const {
        const unsigned char* data = cairo_image_surface_get_data(surface_.get());
        const int stride = cairo_image_surface_get_stride(surface_.get());
        std::uint32_t word = 0;
        std::memcpy(&word, data + y * stride + x * 4, sizeof word);
        return Pixel{static_cast<int>((word >> 16) & 0xFF), static_cast<int>((word >> 8) & 0xFF),
                     static_cast<int>(word & 0xFF), opaque_ ? 255 : static_cast<int>(word >> 24)};
    }

private:
    struct SurfaceDeleter {
        void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    };

    explicit PngPixels(cairo_surface_t* surface)
        : surface_(surface, SurfaceDeleter{}), opaque_(cairo_image_surface_get_format(surface) == CAIRO_FORMAT_RGB24) {}

    static std::optional<PngPixels> adopt(cairo_surface_t* surface) {
        const bool readable = cairo_surface_status(surface) == CAIRO_STATUS_SUCCESS &&
                              (cairo_image_surface_get_format(surface) == CAIRO_FORMAT_ARGB32 ||
                               cairo_image_surface_get_format(surface) == CAIRO_FORMAT_RGB24);
        if (!readable) {
            cairo_surface_destroy(surface);
            return std::nullopt;
        }
        cairo_surface_flush(surface);
        return PngPixels(surface);
    }

    std::shared_ptr<cairo_surface_t> surface_;
    bool opaque_;  // a PNG without alpha: the word's top byte is unused
};

}  // namespace orvik::cairo::testing

// A bitmap image the views draw (an artwork thumbnail). The portable code
// never looks inside: the platform's image type derives from ViewImage, and
// the canvas of the same platform draws it. Immutable once made; shared.
#pragma once

namespace orvik {

class ViewImage {
public:
    virtual ~ViewImage() = default;
    // The image's size in points (its pixel size at scale 1).
    virtual double width() const = 0;
    virtual double height() const = 0;
};

}  // namespace orvik

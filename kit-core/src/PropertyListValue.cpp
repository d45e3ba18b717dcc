#include "OrvikKitCore/PropertyListValue.h"

namespace orvik {

PropertyListValue::PropertyListValue(Dictionary value)
    : storage_(std::make_shared<const Dictionary>(std::move(value))) {}

const PropertyListValue::Dictionary* PropertyListValue::dictionary() const noexcept {
    const auto* shared = std::get_if<std::shared_ptr<const Dictionary>>(&storage_);
    return shared != nullptr ? shared->get() : nullptr;
}

bool operator==(const PropertyListValue& lhs, const PropertyListValue& rhs) {
    if (lhs.kind() != rhs.kind()) {
        return false;
    }
    if (lhs.kind() == PropertyListValue::Kind::dictionary) {
        return *lhs.dictionary() == *rhs.dictionary();
    }
    return lhs.storage_ == rhs.storage_;
}

}  // namespace orvik

// Foundation objects as property-list values and back, by the portable
// bridging rules (OrvikKitCore/PropertyListBridging.h): the reader and writer
// here only answer questions about one object. Objective-C++: for .mm files
// only.
#pragma once

#import <Foundation/Foundation.h>

#include <optional>

#include "OrvikKitCore/PropertyListValue.h"

namespace orvik::mac {

// The property-list value of a Foundation object graph; nothing for nil and
// for objects without a property-list form. Strings come out in NFC.
std::optional<PropertyListValue> propertyListValue(id object);

// The entries of a dictionary that have a property-list form.
PropertyListValue::Dictionary propertyListDictionary(NSDictionary* dictionary);

// The Foundation object of a value; nil when it has no platform form (a
// string that is not UTF-8).
id platformObject(const PropertyListValue& value);

}  // namespace orvik::mac

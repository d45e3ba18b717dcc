// <CoreText/CTParagraphStyle.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>

typedef const struct CF_BRIDGED_TYPE(id) __CTParagraphStyle *CTParagraphStyleRef;

typedef CF_ENUM(int8_t, CTWritingDirection){
    kCTWritingDirectionNatural = -1,
    kCTWritingDirectionLeftToRight = 0,
    kCTWritingDirectionRightToLeft = 1,
};

typedef CF_ENUM(uint32_t, CTParagraphStyleSpecifier){
    kCTParagraphStyleSpecifierAlignment = 0,
    kCTParagraphStyleSpecifierFirstLineHeadIndent = 1,
    kCTParagraphStyleSpecifierHeadIndent = 2,
    kCTParagraphStyleSpecifierTailIndent = 3,
    kCTParagraphStyleSpecifierTabStops = 4,
    kCTParagraphStyleSpecifierDefaultTabInterval = 5,
    kCTParagraphStyleSpecifierLineBreakMode = 6,
    kCTParagraphStyleSpecifierLineHeightMultiple = 7,
    kCTParagraphStyleSpecifierMaximumLineHeight = 8,
    kCTParagraphStyleSpecifierMinimumLineHeight = 9,
    kCTParagraphStyleSpecifierLineSpacing = 10,
    kCTParagraphStyleSpecifierParagraphSpacing = 11,
    kCTParagraphStyleSpecifierParagraphSpacingBefore = 12,
    kCTParagraphStyleSpecifierBaseWritingDirection = 13,
    kCTParagraphStyleSpecifierMaximumLineSpacing = 14,
    kCTParagraphStyleSpecifierMinimumLineSpacing = 15,
    kCTParagraphStyleSpecifierLineSpacingAdjustment = 16,
    kCTParagraphStyleSpecifierLineBoundsOptions = 17,
    kCTParagraphStyleSpecifierCount
};

// The three fields in the SDK's order and types; the first one's name is
// written out here (the adapter initialises the setting by position).
typedef struct CTParagraphStyleSetting {
    CTParagraphStyleSpecifier specifier;
    size_t valueSize;
    const void *value;
} CTParagraphStyleSetting;

CF_ASSUME_NONNULL_BEGIN
extern "C" {

API_AVAILABLE(macos(10.5))
CTParagraphStyleRef _Nonnull CTParagraphStyleCreate(const CTParagraphStyleSetting *_Nullable settings,
                                                    size_t settingCount);

}
CF_ASSUME_NONNULL_END

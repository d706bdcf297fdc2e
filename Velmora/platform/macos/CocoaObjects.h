#pragma once

#include "platform/macos/PropertyValue.h"

#import <Foundation/Foundation.h>

/// What crosses between Objective-C and the seam. Only for its sources in Objective-C++.
namespace orvella {

[[nodiscard]] inline NSString* _Nonnull textObject(const std::string& text)
{
    NSString* const object = [NSString stringWithUTF8String:text.c_str()];
    // Text that is not UTF-8 has no object.
    return object != nil ? object : @"";
}

[[nodiscard]] inline std::optional<std::string> text(id _Nullable object)
{
    if (![object isKindOfClass:NSString.class])
        return std::nullopt;
    const char* const bytes = static_cast<NSString*>(object).UTF8String;
    return bytes != nullptr ? std::optional<std::string>(bytes) : std::nullopt;
}

[[nodiscard]] inline std::optional<double> number(id _Nullable object)
{
    if (![object isKindOfClass:NSNumber.class])
        return std::nullopt;
    return static_cast<NSNumber*>(object).doubleValue;
}

[[nodiscard]] inline PropertyValue propertyValue(id _Nullable object)
{
    if (object == nil)
        return {};
    if (const auto found = number(object))
        return *found;
    if (auto found = text(object))
        return *std::move(found);
    return OtherValue {};
}

} // namespace orvella

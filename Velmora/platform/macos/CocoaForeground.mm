#include "platform/macos/CocoaForeground.h"

#include "platform/macos/CocoaObjects.h"
#include "platform/macos/Literals.h"

#import <AppKit/AppKit.h>
#import <CoreGraphics/CoreGraphics.h>

namespace orvella {

namespace {

constexpr CGWindowListOption kWindows = kCGWindowListOptionOnScreenOnly | kCGWindowListExcludeDesktopElements;
static_assert(kWindows == 17);

std::optional<std::int64_t> integer(id _Nullable object)
{
    if (![object isKindOfClass:NSNumber.class])
        return std::nullopt;
    return static_cast<NSNumber*>(object).longLongValue;
}

CocoaForeground::Window windowOf(NSDictionary* description)
{
    CocoaForeground::Window window {
        integer(description[(__bridge NSString*)kCGWindowOwnerPID]),
        integer(description[(__bridge NSString*)kCGWindowLayer]),
        std::nullopt,
    };
    NSDictionary* const bounds = description[(__bridge NSString*)kCGWindowBounds];
    if ([bounds isKindOfClass:NSDictionary.class]) {
        window.size = {number(bounds[textObject(literals::kBoundsWidth)]).value_or(0),
            number(bounds[textObject(literals::kBoundsHeight)]).value_or(0)};
    }
    return window;
}

class Foreground final : public CocoaForeground {
public:
    PropertyValue screenLock() const override
    {
        NSDictionary* const session = CFBridgingRelease(CGSessionCopyCurrentDictionary());
        return [session isKindOfClass:NSDictionary.class]
            ? propertyValue(session[textObject(literals::kScreenIsLocked)])
            : PropertyValue();
    }

    std::optional<std::int64_t> frontProcess() const override
    {
        NSRunningApplication* const front = NSWorkspace.sharedWorkspace.frontmostApplication;
        return front != nil ? std::optional<std::int64_t>(front.processIdentifier) : std::nullopt;
    }

    std::optional<std::vector<Window>> windows() const override
    {
        NSArray* const list = CFBridgingRelease(CGWindowListCopyWindowInfo(kWindows, kCGNullWindowID));
        if (![list isKindOfClass:NSArray.class])
            return std::nullopt;
        std::vector<Window> result;
        for (id description in list) {
            if (![description isKindOfClass:NSDictionary.class])
                return std::nullopt;
            result.push_back(windowOf(description));
        }
        return result;
    }

    std::vector<Size> screens() const override
    {
        std::vector<Size> sizes;
        for (NSScreen* screen in NSScreen.screens)
            sizes.push_back({screen.frame.size.width, screen.frame.size.height});
        return sizes;
    }
};

} // namespace

std::unique_ptr<CocoaForeground> CocoaForeground::make()
{
    return std::make_unique<Foreground>();
}

} // namespace orvella

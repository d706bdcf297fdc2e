#include "platform/macos/CocoaWorkspace.h"

#include "platform/macos/CocoaObjects.h"
#include "platform/macos/Literals.h"

#import <AppKit/AppKit.h>

@interface OrvellaDisplayObserver : NSObject
- (void)displayOptionsChanged:(NSNotification*)notification;
@end

@implementation OrvellaDisplayObserver {
@public
    std::function<void()> _changed;
}

- (void)displayOptionsChanged:(NSNotification*)notification
{
    _changed();
}

@end

namespace orvella {

namespace {

static_assert(NSApplicationActivationPolicyRegular == 0);

using Text = std::optional<std::string>;

class Workspace final : public CocoaWorkspace {
public:
    ~Workspace() override
    {
        if (m_observer != nil)
            [NSWorkspace.sharedWorkspace.notificationCenter removeObserver:m_observer];
    }

    std::vector<Application> runningApplications() const override
    {
        std::vector<Application> result;
        for (NSRunningApplication* running in NSWorkspace.sharedWorkspace.runningApplications)
            result.push_back({running.activationPolicy, text(running.bundleIdentifier), text(running.localizedName),
                running.processIdentifier});
        return result;
    }

    bool open(const std::string& address) override
    {
        NSURL* const url = [NSURL URLWithString:textObject(address)];
        return url != nil && [NSWorkspace.sharedWorkspace openURL:url];
    }

    Text computerName() const override { return text(NSHost.currentHost.localizedName); }

    Text applicationVersion() const override
    {
        return text([NSBundle.mainBundle objectForInfoDictionaryKey:textObject(literals::kVersionKey)]);
    }

    Text languageCode() const override
    {
        return text([NSLocale.autoupdatingCurrentLocale objectForKey:NSLocaleLanguageCode]);
    }

    Text currencyText(double dollars) const override
    {
        NSNumberFormatter* const formatter = [[NSNumberFormatter alloc] init];
        formatter.locale = NSLocale.autoupdatingCurrentLocale;
        formatter.numberStyle = NSNumberFormatterCurrencyStyle;
        formatter.currencyCode = textObject(literals::kCurrency);
        return text([formatter stringFromNumber:@(dollars)]);
    }

    Look look() const override
    {
        NSArray<NSAppearanceName>* const names = @[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ];
        NSAppearanceName const best = [NSApp.effectiveAppearance bestMatchFromAppearancesWithNames:names];
        NSWorkspace* const workspace = NSWorkspace.sharedWorkspace;
        return {static_cast<bool>([best isEqualToString:NSAppearanceNameDarkAqua]),
            static_cast<bool>(workspace.accessibilityDisplayShouldIncreaseContrast),
            static_cast<bool>(workspace.accessibilityDisplayShouldReduceMotion)};
    }

    void watchDisplayOptions(std::function<void()> changed) override
    {
        m_observer = [[OrvellaDisplayObserver alloc] init];
        m_observer->_changed = std::move(changed);
        [NSWorkspace.sharedWorkspace.notificationCenter
            addObserver:m_observer
               selector:@selector(displayOptionsChanged:)
                   name:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                 object:nil];
    }

private:
    OrvellaDisplayObserver* m_observer = nil;
};

} // namespace

std::unique_ptr<CocoaWorkspace> CocoaWorkspace::make()
{
    return std::make_unique<Workspace>();
}

} // namespace orvella

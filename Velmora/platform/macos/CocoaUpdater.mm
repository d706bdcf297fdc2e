#include "platform/macos/CocoaUpdater.h"

#include "platform/macos/CocoaObjects.h"
#include "platform/macos/Literals.h"

/// What is used of the framework's class, which is known at run time only.
@protocol OrvellaUpdaterController <NSObject>
- (nullable instancetype)initWithStartingUpdater:(BOOL)startsUpdater
                                 updaterDelegate:(nullable id)updaterDelegate
                              userDriverDelegate:(nullable id)userDriverDelegate;
- (void)checkForUpdates:(nullable id)sender;
@end

namespace orvella {

namespace {

/// Nil where it is not in the application's.
NSBundle* _Nullable frameworkBundle()
{
    NSString* const folder = NSBundle.mainBundle.privateFrameworksPath;
    NSString* const path = [folder stringByAppendingPathComponent:textObject(literals::kUpdateFramework)];
    return path != nil ? [NSBundle bundleWithPath:path] : nil;
}

/// Nil where the framework is not in the bundle, does not load or has no such class.
Class _Nullable updaterClass()
{
    return [frameworkBundle() load] ? NSClassFromString(textObject(literals::kUpdaterClass)) : Nil;
}

class Updater final : public CocoaUpdater {
public:
    void start() override
    {
        m_controller = [[updaterClass() alloc] initWithStartingUpdater:YES updaterDelegate:nil userDriverDelegate:nil];
    }

    void checkForUpdates() override { [m_controller checkForUpdates:nil]; }

    bool isThere() const override { return frameworkBundle() != nil; }

private:
    id<OrvellaUpdaterController> m_controller = nil;
};

} // namespace

std::unique_ptr<CocoaUpdater> CocoaUpdater::make()
{
    return std::make_unique<Updater>();
}

} // namespace orvella

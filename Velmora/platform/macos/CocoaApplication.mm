#include "platform/macos/CocoaApplication.h"

#import <AppKit/AppKit.h>

/// Stands before the toolkit's own delegate, which gets all that this one does not answer.
@interface OrvellaApplicationDelegate : NSObject <NSApplicationDelegate>
@property (nonatomic, strong, nullable) id<NSApplicationDelegate> former;
@end

@implementation OrvellaApplicationDelegate {
@public
    std::function<void()> _reopened;
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows
{
    _reopened();
    return YES;
}

/// The toolkit would ask every window first, and a popover that stays would keep the viewer from logging out.
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender
{
    return NSTerminateNow;
}

- (BOOL)respondsToSelector:(SEL)selector
{
    return [super respondsToSelector:selector] || [self.former respondsToSelector:selector];
}

- (nullable id)forwardingTargetForSelector:(SEL)selector
{
    return self.former;
}

@end

namespace orvella {

namespace {

static_assert(NSApplicationActivationPolicyAccessory == 1);

class Application final : public CocoaApplication {
public:
    ~Application() override
    {
        if (m_delegate != nil)
            NSApp.delegate = m_delegate.former;
    }

    bool isThere() const override { return NSApp != nil; }

    void becomeAccessory() override { [NSApp setActivationPolicy:NSApplicationActivationPolicyAccessory]; }

    void watchReopening(std::function<void()> reopened) override
    {
        m_delegate = [[OrvellaApplicationDelegate alloc] init];
        m_delegate->_reopened = std::move(reopened);
        m_delegate.former = NSApp.delegate;
        NSApp.delegate = m_delegate;
    }

    void activate() override { [NSApp activateIgnoringOtherApps:YES]; }

private:
    OrvellaApplicationDelegate* m_delegate = nil;
};

} // namespace

std::unique_ptr<CocoaApplication> CocoaApplication::make()
{
    return std::make_unique<Application>();
}

} // namespace orvella

#include "platform/macos/CocoaStatusItem.h"

#include "platform/macos/CocoaObjects.h"
#include "platform/macos/Literals.h"

#import <AppKit/AppKit.h>

@interface OrvellaStatusTarget : NSObject
@property (nonatomic, strong, nullable) NSStatusItem* item;
- (void)statusItemClicked:(nullable id)sender;
@end

@implementation OrvellaStatusTarget {
@public
    std::function<void()> _clicked;
}

- (void)statusItemClicked:(nullable id)sender
{
    _clicked();
}

@end

@interface OrvellaPopoverDelegate : NSObject <NSPopoverDelegate>
@end

@implementation OrvellaPopoverDelegate {
@public
    std::function<void()> _closed;
}

- (void)popoverDidClose:(NSNotification*)notification
{
    _closed();
}

@end

namespace orvella {

namespace {

constexpr CGFloat kFontSize = 13;

class Popover final : public CocoaPopover {
public:
    Popover(OrvellaStatusTarget* target, Behaviour behaviour, std::function<void()> closed)
        : m_target(target)
    {
        m_delegate->_closed = std::move(closed);
        m_popover.delegate = m_delegate;
        m_popover.animates = YES;
        m_popover.behavior =
            behaviour == Behaviour::transient ? NSPopoverBehaviorTransient : NSPopoverBehaviorApplicationDefined;
        m_popover.contentViewController = [[NSViewController alloc] initWithNibName:nil bundle:nil];
        m_popover.contentViewController.view = m_room;
    }

    ~Popover() override
    {
        m_popover.delegate = nil;
        // The view in it goes at once.
        m_popover.animates = NO;
        [m_popover close];
    }

    void show(const Content& content, const std::optional<Anchor>& anchor) override
    {
        NSStatusBarButton* const button = m_target.item.button;
        NSView* const hook = anchor ? (__bridge NSView*)anchor->view : button;
        // An exception would be raised.
        if (hook.window == nil)
            return;
        NSView* const view = (__bridge NSView*)content.view;
        m_popover.contentSize = NSMakeSize(content.width, content.height);
        m_room.frame = NSMakeRect(0, 0, content.width, content.height);
        if (view.superview != m_room)
            [m_room addSubview:view];
        view.frame = m_room.bounds;
        if (anchor) {
            // The toolkit's views count from the top, so the lower edge is the one with the greater number.
            const auto rect = NSMakeRect(anchor->left, anchor->top, anchor->width, anchor->height);
            [m_popover showRelativeToRect:rect ofView:hook preferredEdge:NSRectEdgeMaxY];
        } else {
            [m_popover showRelativeToRect:button.bounds ofView:button preferredEdge:NSRectEdgeMinY];
        }
    }

    void performClose() override { [m_popover performClose:nil]; }

    void close() override { [m_popover close]; }

    bool isShown() const override { return m_popover.shown; }

private:
    OrvellaStatusTarget* m_target;
    NSPopover* m_popover = [[NSPopover alloc] init];
    NSView* m_room = [[NSView alloc] initWithFrame:NSZeroRect];
    OrvellaPopoverDelegate* m_delegate = [[OrvellaPopoverDelegate alloc] init];
};

class StatusItem final : public CocoaStatusItem {
public:
    // It goes with the process: to remove it would have the system forget the place that the viewer chose.

    void show(std::function<void()> clicked) override
    {
        m_target->_clicked = std::move(clicked);
        NSStatusItem* const item = [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength];
        m_target.item = item;
        // The system looks up the place under this name, now.
        item.autosaveName = textObject(literals::kStatusItemName);
        item.visible = YES;
        NSStatusBarButton* const button = item.button;
        button.target = m_target;
        button.action = @selector(statusItemClicked:);
        button.imagePosition = NSNoImage;
        button.toolTip = textObject(literals::kProgramName);
        button.accessibilityLabel = textObject(literals::kProgramName);
    }

    void setAppearance(const Appearance& appearance) override
    {
        NSStatusBarButton* const button = m_target.item.button;
        if (button == nil)
            return;
        NSDictionary<NSAttributedStringKey, id>* const attributes = @ {
            NSFontAttributeName : [NSFont monospacedSystemFontOfSize:kFontSize weight:NSFontWeightBold],
            NSForegroundColorAttributeName : appearance.isGreen ? NSColor.systemGreenColor : NSColor.labelColor,
        };
        button.image = nil;
        button.attributedTitle = [[NSAttributedString alloc] initWithString:textObject(appearance.text)
                                                                 attributes:attributes];
        m_target.item.length = appearance.length;
        button.toolTip = textObject(appearance.description);
        button.accessibilityLabel = textObject(appearance.description);
    }

    std::unique_ptr<CocoaPopover> makePopover(CocoaPopover::Behaviour behaviour, std::function<void()> closed) override
    {
        return std::make_unique<Popover>(m_target, behaviour, std::move(closed));
    }

private:
    OrvellaStatusTarget* m_target = [[OrvellaStatusTarget alloc] init];
};

} // namespace

std::unique_ptr<CocoaStatusItem> CocoaStatusItem::make()
{
    return std::make_unique<StatusItem>();
}

} // namespace orvella

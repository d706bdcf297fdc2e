// Written from the public documentation of AppKit; see ../README.md.
#pragma once

#include <Foundation/Foundation.h>

#include <sys/types.h>

#pragma clang assume_nonnull begin

typedef NSString* NSAppearanceName;
extern "C" NSAppearanceName const NSAppearanceNameAqua;
extern "C" NSAppearanceName const NSAppearanceNameDarkAqua;
@interface NSAppearance : NSObject
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)appearances;
@end

enum NSApplicationActivationPolicy : NSInteger {
    NSApplicationActivationPolicyRegular = 0,
    NSApplicationActivationPolicyAccessory = 1,
    NSApplicationActivationPolicyProhibited = 2,
};

enum NSApplicationTerminateReply : NSUInteger {
    NSTerminateCancel = 0,
    NSTerminateNow = 1,
    NSTerminateLater = 2,
};

@class NSApplication;

@protocol NSApplicationDelegate <NSObject>
@optional
- (BOOL)applicationShouldHandleReopen:(NSApplication*)sender hasVisibleWindows:(BOOL)hasVisibleWindows;
- (NSApplicationTerminateReply)applicationShouldTerminate:(NSApplication*)sender;
@end

@interface NSApplication : NSObject
@property (nullable, weak) id<NSApplicationDelegate> delegate;
@property (readonly, strong) NSAppearance* effectiveAppearance;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)ignoreOtherApps;
- (void)activate __attribute__((availability(macos, introduced = 14.0)));
@end
// Nil before the application object is made.
extern "C" NSApplication* _Null_unspecified NSApp;

@interface NSRunningApplication : NSObject
@property (readonly) NSApplicationActivationPolicy activationPolicy;
@property (nullable, readonly, copy) NSString* bundleIdentifier;
@property (nullable, readonly, copy) NSString* localizedName;
@property (readonly) pid_t processIdentifier;
@end

@interface NSWorkspace : NSObject
@property (class, readonly, strong) NSWorkspace* sharedWorkspace;
@property (readonly, copy) NSArray<NSRunningApplication*>* runningApplications;
@property (nullable, readonly, strong) NSRunningApplication* frontmostApplication;
@property (readonly) BOOL accessibilityDisplayShouldIncreaseContrast;
@property (readonly) BOOL accessibilityDisplayShouldReduceMotion;
@property (readonly, strong) NSNotificationCenter* notificationCenter;
- (BOOL)openURL:(NSURL*)url;
@end

extern "C" NSNotificationName const NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification;

@interface NSColor : NSObject
@property (class, readonly, strong) NSColor* systemGreenColor;
@property (class, readonly, strong) NSColor* labelColor;
@end

typedef CGFloat NSFontWeight;
extern "C" const NSFontWeight NSFontWeightBold;
@interface NSFont : NSObject
+ (NSFont*)monospacedSystemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight;
@end
extern "C" NSAttributedStringKey const NSFontAttributeName;
extern "C" NSAttributedStringKey const NSForegroundColorAttributeName;

@interface NSImage : NSObject
@end

@interface NSScreen : NSObject
@property (class, readonly, copy) NSArray<NSScreen*>* screens;
@property (readonly) NSRect frame;
@end

@class NSWindow;

@interface NSView : NSObject
- (instancetype)initWithFrame:(NSRect)frameRect;
@property NSRect frame;
@property NSRect bounds;
@property (nullable, readonly, unsafe_unretained) NSView* superview;
@property (nullable, readonly, unsafe_unretained) NSWindow* window;
- (void)addSubview:(NSView*)view;
@property (nullable, copy) NSString* toolTip;
@property (nullable, copy) NSString* accessibilityLabel;
@end

@interface NSViewController : NSObject
- (instancetype)initWithNibName:(nullable NSString*)nibNameOrNil bundle:(nullable NSBundle*)nibBundleOrNil;
@property (strong) NSView* view;
@end

enum NSCellImagePosition : NSUInteger {
    NSNoImage = 0,
    NSImageOnly = 1,
    NSImageLeft = 2,
};

@interface NSStatusBarButton : NSView
@property (nullable, weak) id target;
@property (nullable) SEL action;
@property (nullable, strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@property (copy) NSAttributedString* attributedTitle;
@end

constexpr CGFloat NSVariableStatusItemLength = -1;
constexpr CGFloat NSSquareStatusItemLength = -2;

@interface NSStatusItem : NSObject
@property CGFloat length;
@property (nullable, readonly, strong) NSStatusBarButton* button;
@property (null_resettable, copy) NSString* autosaveName;
@property (getter=isVisible) BOOL visible;
@end

@interface NSStatusBar : NSObject
@property (class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
@end

enum NSRectEdge : NSUInteger {
    NSRectEdgeMinX = 0,
    NSRectEdgeMinY = 1,
    NSRectEdgeMaxX = 2,
    NSRectEdgeMaxY = 3,
};

enum NSPopoverBehavior : NSInteger {
    NSPopoverBehaviorApplicationDefined = 0,
    NSPopoverBehaviorTransient = 1,
    NSPopoverBehaviorSemitransient = 2,
};

@protocol NSPopoverDelegate <NSObject>
@optional
- (void)popoverDidClose:(NSNotification*)notification;
@end

@interface NSPopover : NSObject
@property (nullable, weak) id<NSPopoverDelegate> delegate;
@property (nullable, strong) NSViewController* contentViewController;
@property NSPopoverBehavior behavior;
@property BOOL animates;
@property NSSize contentSize;
@property (readonly, getter=isShown) BOOL shown;
- (void)showRelativeToRect:(NSRect)positioningRect
                    ofView:(NSView*)positioningView
             preferredEdge:(NSRectEdge)preferredEdge;
- (void)performClose:(nullable id)sender;
- (void)close;
@end

#pragma clang assume_nonnull end

// What the macOS layer takes for granted of AppKit and Foundation. Compiled against the declarations in
// `sdk`, and on a Mac against the SDK: what holds in both keeps the declarations from drifting. No code is
// run.
#import <AppKit/AppKit.h>
#import <QuartzCore/CALayer.h>
#include <type_traits>

namespace {

template <typename Type, typename Expected>
constexpr bool same = std::is_same_v<std::remove_cv_t<std::remove_reference_t<Type>>, Expected>;

static_assert(sizeof(BOOL) == 1 && sizeof(NSInteger) == 8 && sizeof(NSUInteger) == 8 && sizeof(unichar) == 2);
static_assert(sizeof(CGFloat) == 8 && sizeof(NSTimeInterval) == 8 && sizeof(NSRect) == 32 &&
              sizeof(NSSize) == 16);
static_assert(std::is_signed_v<NSInteger> && std::is_unsigned_v<NSUInteger>);

static_assert(NSApplicationActivationPolicyRegular == 0 && NSApplicationActivationPolicyAccessory == 1 &&
              NSApplicationActivationPolicyProhibited == 2);
static_assert(NSWindowStyleMaskBorderless == 0 && NSWindowStyleMaskNonactivatingPanel == 128);
static_assert((NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskMiniaturizable) == 7);
static_assert(NSWindowStyleMaskResizable == 8);
static_assert(NSBackingStoreBuffered == 2);
static_assert((NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorStationary |
               NSWindowCollectionBehaviorIgnoresCycle | NSWindowCollectionBehaviorFullScreenAuxiliary) ==
              337);
static_assert(NSWindowAbove == 1 && NSWindowBelow == -1);
static_assert(NSVisualEffectMaterialHUDWindow == 13);
static_assert(NSVisualEffectBlendingModeBehindWindow == 0 && NSVisualEffectBlendingModeWithinWindow == 1);
static_assert(NSVisualEffectStateFollowsWindowActiveState == 0 && NSVisualEffectStateActive == 1);
static_assert(NSKeyValueObservingOptionNew == 1 && NSKeyValueObservingOptionOld == 2);

static_assert(same<decltype(NSStatusWindowLevel), NSWindowLevel> ||
              std::is_integral_v<decltype(NSStatusWindowLevel)>);
static_assert(same<decltype(NSVariableStatusItemLength), CGFloat>);
static_assert(same<decltype(NSControlStateValueOn), NSControlStateValue>);
static_assert(same<NSWindowLevel, NSInteger> && same<NSControlStateValue, NSInteger>);
static_assert(same<std::underlying_type_t<NSVisualEffectMaterial>, NSInteger>);
static_assert(same<std::underlying_type_t<NSVisualEffectBlendingMode>, NSInteger>);
static_assert(same<std::underlying_type_t<NSVisualEffectState>, NSInteger>);
static_assert(same<std::underlying_type_t<NSApplicationActivationPolicy>, NSInteger>);
static_assert(same<std::underlying_type_t<NSBackingStoreType>, NSUInteger>);
static_assert(same<NSWindowStyleMask, NSUInteger> || std::is_enum_v<NSWindowStyleMask>);

} // namespace

// The types of what is sent and answered; the functions are never called.

void conformanceOfWindows(NSPanel* panel, NSView* view, NSVisualEffectView* effect) {
    static_assert(same<decltype(panel.level), NSWindowLevel>);
    static_assert(same<decltype(panel.styleMask), NSWindowStyleMask>);
    static_assert(same<decltype(panel.collectionBehavior), NSWindowCollectionBehavior>);
    static_assert(same<decltype(panel.alphaValue), CGFloat>);
    static_assert(same<decltype(panel.floatingPanel), BOOL> && same<decltype(panel.opaque), BOOL>);
    static_assert(same<decltype(panel.hasShadow), BOOL> && same<decltype(panel.ignoresMouseEvents), BOOL>);
    static_assert(same<decltype(panel.hidesOnDeactivate), BOOL> &&
                  same<decltype(panel.releasedWhenClosed), BOOL>);
    static_assert(same<decltype(view.frame), NSRect> && same<decltype(view.alphaValue), CGFloat>);
    static_assert(same<decltype(view.intrinsicContentSize), NSSize> && same<decltype(view.wantsLayer), BOOL>);
    static_assert(same<decltype(view.wantsUpdateLayer), BOOL> && same<decltype(view.needsDisplay), BOOL>);
    static_assert(same<decltype(view.translatesAutoresizingMaskIntoConstraints), BOOL>);
    static_assert(same<decltype(effect.material), NSVisualEffectMaterial>);
    static_assert(same<decltype(effect.blendingMode), NSVisualEffectBlendingMode>);
    static_assert(same<decltype(effect.state), NSVisualEffectState> &&
                  same<decltype(effect.emphasized), BOOL>);

    NSPanel* const made = [[NSPanel alloc] initWithContentRect:NSMakeRect(0, 0, 200, 60)
                                                     styleMask:NSWindowStyleMaskNonactivatingPanel
                                                       backing:NSBackingStoreBuffered
                                                         defer:NO];
    made.backgroundColor = NSColor.clearColor;
    made.contentView = view;
    [made setFrame:NSMakeRect(0, 0, 1, 1) display:YES];
    [made animator].alphaValue = 1;
    [made orderFrontRegardless];
    [made makeKeyAndOrderFront:nil];
    [made orderOut:nil];
    [made close];
    [view addSubview:effect positioned:NSWindowBelow relativeTo:nil];
    [view addSubview:effect];
    [effect removeFromSuperview];
    effect.appearance = [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
    view.layer.contents = effect.maskImage;
    [view setAccessibilityElement:YES];
    [view setAccessibilityRole:NSAccessibilityStaticTextRole];
    [view setAccessibilityLabel:@"Save"];
    [view.window makeKeyAndOrderFront:nil];
    [NSAnimationContext runAnimationGroup:^(NSAnimationContext* context) {
      static_assert(same<decltype(context.duration), NSTimeInterval>);
      context.duration = 0.12;
    }];
    [NSAnimationContext
        runAnimationGroup:^(NSAnimationContext*) {
        }
        completionHandler:^{
        }];
}

void conformanceOfImages() {
    NSBitmapImageRep* const bitmap = [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                                                             pixelsWide:1
                                                                             pixelsHigh:1
                                                                          bitsPerSample:8
                                                                        samplesPerPixel:4
                                                                               hasAlpha:YES
                                                                               isPlanar:NO
                                                                         colorSpaceName:NSDeviceRGBColorSpace
                                                                            bytesPerRow:0
                                                                           bitsPerPixel:32];
    static_assert(same<decltype(bitmap.bitmapData), unsigned char*>);
    static_assert(same<decltype(bitmap.bytesPerRow), NSInteger> && same<decltype(bitmap.size), NSSize>);
    NSBitmapImageRep* const tagged =
        [bitmap bitmapImageRepByRetaggingWithColorSpace:NSColorSpace.sRGBColorSpace];
    NSImage* const image = [[NSImage alloc] initWithSize:NSMakeSize(1, 1)];
    [image addRepresentation:tagged];
    [image setTemplate:YES];
}

void conformanceOfTheStatusBar(NSStatusBar* bar, NSMenu* menu, id<NSMenuDelegate> delegate) {
    NSStatusItem* const item = [bar statusItemWithLength:NSVariableStatusItemLength];
    item.button.image = [NSImage imageWithSystemSymbolName:@"keyboard" accessibilityDescription:@"Orvantile"];
    item.menu = menu;
    menu.delegate = delegate;
    NSMenuItem* const entry = [[NSMenuItem alloc] initWithTitle:@""
                                                         action:NSSelectorFromString(@"toggleEnabled")
                                                  keyEquivalent:@""];
    static_assert(same<decltype(entry.state), NSControlStateValue> && same<decltype(entry.tag), NSInteger>);
    entry.target = delegate;
    entry.state = NSControlStateValueOn;
    [menu addItem:entry];
    [menu addItem:[NSMenuItem separatorItem]];
    [menu itemWithTag:1].state = NSControlStateValueOff;
    [NSStatusBar.systemStatusBar removeStatusItem:item];
}

void conformanceOfTheDesktop(NSApplication* application, NSScreen* screen) {
    static_assert(
        same<decltype([application setActivationPolicy:NSApplicationActivationPolicyAccessory]), BOOL>);
    [application activateIgnoringOtherApps:YES];
    (void)@selector(terminate:);
    NSAppearanceName const name = [application.effectiveAppearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameDarkAqua, NSAppearanceNameAqua ]];
    (void)[name isEqualToString:NSAppearanceNameDarkAqua];
    static_assert(std::is_convertible_v<decltype(NSApp), NSApplication*>);
    static_assert(same<decltype(screen.frame), NSRect> && same<decltype(screen.visibleFrame), NSRect>);
    static_assert(same<decltype(screen.backingScaleFactor), CGFloat>);
    static_assert(same<decltype(screen.maximumFramesPerSecond), NSInteger>);
    (void)NSScreen.mainScreen;
    static_assert(same<decltype(NSScreen.screens.count), NSUInteger>);
    static_assert(same<decltype([[NSSound soundNamed:@"Pop"] play]), BOOL>);

    NSWorkspace* const workspace = NSWorkspace.sharedWorkspace;
    static_assert(same<decltype(workspace.frontmostApplication.processIdentifier), pid_t>);
    static_assert(same<decltype([workspace openURL:[NSURL URLWithString:@"x:"]]), BOOL>);
    id<NSObject> const token =
        [workspace.notificationCenter addObserverForName:NSWorkspaceDidActivateApplicationNotification
                                                  object:nil
                                                   queue:NSOperationQueue.mainQueue
                                              usingBlock:^(NSNotification* notification) {
                                                (void)[notification.userInfo[NSWorkspaceApplicationKey]
                                                    isKindOfClass:[NSRunningApplication class]];
                                              }];
    [workspace.notificationCenter removeObserver:token];
}

void conformanceOfFoundation(NSObject* observer) {
    NSUserDefaults* const defaults = NSUserDefaults.standardUserDefaults;
    static_assert(same<decltype([defaults boolForKey:@"enabled"]), BOOL>);
    static_assert(same<decltype([defaults doubleForKey:@"fontSize"]), double>);
    NSMutableDictionary<NSString*, id>* const values = [NSMutableDictionary dictionary];
    values[@"enabled"] = [NSNumber numberWithBool:YES];
    values[@"fontSize"] = [NSNumber numberWithDouble:22];
    [defaults registerDefaults:values];
    [defaults setBool:YES forKey:@"enabled"];
    [defaults setDouble:22 forKey:@"fontSize"];
    [defaults setObject:[defaults stringForKey:@"sound"] forKey:@"sound"];

    NSTimer* const timer = [NSTimer timerWithTimeInterval:1
                                                  repeats:YES
                                                    block:^(NSTimer*){
                                                    }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSRunLoopCommonModes];
    [[NSTimer scheduledTimerWithTimeInterval:1
                                     repeats:NO
                                       block:^(NSTimer*){
                                       }] invalidate];
    static_assert(same<decltype(NSProcessInfo.processInfo.systemUptime), NSTimeInterval>);

    [NSApp addObserver:observer forKeyPath:@"effectiveAppearance" options:0 context:nullptr];
    [NSApp removeObserver:observer forKeyPath:@"effectiveAppearance" context:nullptr];
    [observer observeValueForKeyPath:@"" ofObject:NSApp change:nil context:nullptr];

    const unichar text[] = {u'a'};
    NSString* const string = [NSString stringWithCharacters:text length:1];
    unichar copy[1];
    [string getCharacters:copy range:NSMakeRange(0, string.length)];
    NSString* const path =
        [NSBundle.mainBundle.privateFrameworksPath stringByAppendingPathComponent:@"Sparkle.framework"];
    static_assert(std::is_convertible_v<decltype(NSBundle.mainBundle.resourcePath), NSString*>);
    static_assert(same<decltype([[NSBundle bundleWithPath:path] load]), BOOL>);
    static_assert(same<decltype(NSClassFromString(path)), Class>);
    static_assert(same<decltype(NSStringFromSelector(@selector(terminate:))), NSString*>);
}

#pragma once

#include <Foundation/Foundation.h>

@class NSMenu;

typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuWillOpen:(NSMenu*)menu;
@end

@interface NSMenuItem : NSObject
@property(weak) id target;
@property NSInteger tag;
@property NSControlStateValue state;
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)keyEquivalent;
@end

@interface NSMenu : NSObject
@property(weak) id<NSMenuDelegate> delegate;
- (void)addItem:(NSMenuItem*)item;
- (NSMenuItem*)itemWithTag:(NSInteger)tag;
@end

#pragma once

#include <Foundation/Foundation.h>

@interface NSAnimationContext : NSObject
@property NSTimeInterval duration;
+ (void)runAnimationGroup:(void (^)(NSAnimationContext* context))changes;
+ (void)runAnimationGroup:(void (^)(NSAnimationContext* context))changes
        completionHandler:(void (^)(void))completionHandler;
@end

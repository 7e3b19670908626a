#pragma once

#include <Foundation/NSCollections.h>
#include <Foundation/NSString.h>

typedef NSString* NSNotificationName;

@interface NSOperationQueue : NSObject
@property(class, readonly, strong) NSOperationQueue* mainQueue;
@end

@interface NSNotification : NSObject
@property(readonly, copy) NSDictionary* userInfo;
@end

@interface NSNotificationCenter : NSObject
- (id<NSObject>)addObserverForName:(NSNotificationName)name
                            object:(id)object
                             queue:(NSOperationQueue*)queue
                        usingBlock:(void (^)(NSNotification* notification))block;
- (void)removeObserver:(id)observer;
@end

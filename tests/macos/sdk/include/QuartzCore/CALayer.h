#pragma once

#include <Foundation/Foundation.h>

@interface CALayer : NSObject
@property(strong) id contents;
@end

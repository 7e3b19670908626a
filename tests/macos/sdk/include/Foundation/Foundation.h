#pragma once

// Declarations of the part of Foundation that the program uses, written for this project. They stand in for
// the platform's headers where those are not to be had, and are never used on a Mac.

#include <Foundation/NSBundle.h>
#include <Foundation/NSCollections.h>
#include <Foundation/NSGeometry.h>
#include <Foundation/NSNotification.h>
#include <Foundation/NSObjCRuntime.h>
#include <Foundation/NSObject.h>
#include <Foundation/NSRunLoop.h>
#include <Foundation/NSString.h>
#include <Foundation/NSUserDefaults.h>

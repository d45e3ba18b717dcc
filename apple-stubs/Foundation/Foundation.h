// <Foundation/Foundation.h>
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#import <Foundation/NSObjCRuntime.h>
#import <Foundation/NSObject.h>
#import <Foundation/NSGeometry.h>
#import <Foundation/NSString.h>
#import <Foundation/NSData.h>
#import <Foundation/NSAttributedString.h>
#import <Foundation/NSValue.h>
#import <Foundation/NSArray.h>
#import <Foundation/NSDictionary.h>
#import <Foundation/NSError.h>
#import <Foundation/NSURL.h>
#import <Foundation/NSBundle.h>
#import <Foundation/NSThread.h>
#import <Foundation/NSProcessInfo.h>
#import <Foundation/NSOperation.h>
#import <Foundation/NSNotification.h>
#import <Foundation/NSDistributedNotificationCenter.h>
#import <Foundation/NSUserDefaults.h>
#import <Foundation/NSAppleEventDescriptor.h>
#import <Foundation/NSAppleScript.h>

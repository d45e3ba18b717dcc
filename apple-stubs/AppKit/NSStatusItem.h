// <AppKit/NSStatusItem.h>
#pragma once

#import <Foundation/Foundation.h>

@class NSStatusBarButton;

typedef NSString *NSStatusItemAutosaveName;

NS_ASSUME_NONNULL_BEGIN

@interface NSStatusItem : NSObject
@property CGFloat length;
@property (nullable, readonly, strong) NSStatusBarButton *button API_AVAILABLE(macos(10.10));
@property (assign, getter=isVisible) BOOL visible API_AVAILABLE(macos(10.12));
@property (null_resettable, copy) NSStatusItemAutosaveName autosaveName API_AVAILABLE(macos(10.12));
@end

NS_ASSUME_NONNULL_END

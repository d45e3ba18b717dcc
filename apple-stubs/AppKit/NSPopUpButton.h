// <AppKit/NSPopUpButton.h>
#pragma once

#import <AppKit/NSButton.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSPopUpButton : NSButton
- (instancetype)initWithFrame:(NSRect)buttonFrame pullsDown:(BOOL)flag;
- (void)addItemWithTitle:(NSString *)title;
- (void)removeAllItems;
- (void)selectItemAtIndex:(NSInteger)index;
@property (readonly) NSInteger indexOfSelectedItem;
@end

NS_ASSUME_NONNULL_END

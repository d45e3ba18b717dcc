// <ServiceManagement/SMAppService.h>
#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, SMAppServiceStatus){
    SMAppServiceStatusNotRegistered,
    SMAppServiceStatusEnabled,
    SMAppServiceStatusRequiresApproval,
    SMAppServiceStatusNotFound,
};

API_AVAILABLE(macos(13.0))
@interface SMAppService : NSObject
@property (class, readonly) SMAppService *mainAppService API_AVAILABLE(macos(13.0));
- (BOOL)registerAndReturnError:(NSError *_Nullable __autoreleasing *_Nullable)error API_AVAILABLE(macos(13.0));
- (BOOL)unregisterAndReturnError:(NSError *_Nullable __autoreleasing *_Nullable)error API_AVAILABLE(macos(13.0));
@property (readonly) SMAppServiceStatus status API_AVAILABLE(macos(13.0));
@end

NS_ASSUME_NONNULL_END

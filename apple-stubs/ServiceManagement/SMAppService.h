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
@property (class, readonly) SMAppService *mainAppService;
- (BOOL)registerAndReturnError:(NSError **)error;
- (BOOL)unregisterAndReturnError:(NSError **)error;
@property (readonly) SMAppServiceStatus status;
@end

NS_ASSUME_NONNULL_END

// Written from the public documentation of Service Management; see ../README.md.
#pragma once

#include <Foundation/Foundation.h>

#pragma clang assume_nonnull begin

enum SMAppServiceStatus : NSInteger {
    SMAppServiceStatusNotRegistered = 0,
    SMAppServiceStatusEnabled = 1,
    SMAppServiceStatusRequiresApproval = 2,
    SMAppServiceStatusNotFound = 3,
};

__attribute__((availability(macos, introduced = 13.0)))
@interface SMAppService : NSObject
@property (class, readonly) SMAppService* mainAppService;
- (BOOL)registerAndReturnError:(NSError* _Nullable* _Nullable)error;
- (BOOL)unregisterAndReturnError:(NSError* _Nullable* _Nullable)error;
@property (readonly) SMAppServiceStatus status;
@end

#pragma clang assume_nonnull end

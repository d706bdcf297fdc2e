// Written from the public documentation of Foundation; see ../README.md.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#include <cstddef>

typedef signed char BOOL;
#define YES __objc_yes
#define NO __objc_no
#define nil nullptr
#define Nil nullptr

typedef long NSInteger;
typedef unsigned long NSUInteger;
typedef double CGFloat;

#pragma clang assume_nonnull begin

struct CGPoint {
    CGFloat x;
    CGFloat y;
};
struct CGSize {
    CGFloat width;
    CGFloat height;
};
struct CGRect {
    CGPoint origin;
    CGSize size;
};
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
extern "C" const NSRect NSZeroRect;
inline NSSize NSMakeSize(CGFloat width, CGFloat height)
{
    return {width, height};
}
inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat width, CGFloat height)
{
    return {{x, y}, {width, height}};
}

@protocol NSObject
- (BOOL)isKindOfClass:(Class)aClass;
- (BOOL)respondsToSelector:(SEL)aSelector;
@end

__attribute__((objc_root_class))
@interface NSObject<NSObject>
+ (instancetype)alloc;
+ (Class)class;
- (instancetype)init;
- (nullable id)forwardingTargetForSelector:(SEL)aSelector;
- (id)copy;
- (id)mutableCopy;
@end

@protocol NSCopying
@end

struct NSFastEnumerationState {
    unsigned long state;
    id __unsafe_unretained _Nullable* _Nullable itemsPtr;
    unsigned long* _Nullable mutationsPtr;
    unsigned long extra[5];
};

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)len;
@end

@interface NSString : NSObject <NSCopying>
+ (nullable instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
@property (readonly, nullable) const char* UTF8String;
- (BOOL)isEqualToString:(NSString*)aString;
- (NSString*)stringByAppendingPathComponent:(NSString*)str;
@end

@interface NSNumber : NSObject <NSCopying>
+ (NSNumber*)numberWithBool:(BOOL)value;
+ (NSNumber*)numberWithInt:(int)value;
+ (NSNumber*)numberWithDouble:(double)value;
@property (readonly) BOOL boolValue;
@property (readonly) double doubleValue;
@property (readonly) long long longLongValue;
@end

@interface NSData : NSObject <NSCopying>
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@property (readonly, nullable) const void* bytes;
@property (readonly) NSUInteger length;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)cnt;
@property (nullable, readonly) ObjectType firstObject;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSCopying, NSFastEnumeration>
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
- (nullable ObjectType)objectForKeyedSubscript:(KeyType)key;
@end

@interface NSMutableDictionary<KeyType, ObjectType> : NSDictionary <KeyType, ObjectType>
- (void)setObject:(nullable ObjectType)obj forKeyedSubscript:(KeyType<NSCopying>)key;
@end

@interface NSError : NSObject <NSCopying>
@property (readonly, copy) NSString* localizedDescription;
@end

@interface NSURL : NSObject <NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)URLString;
@end

@interface NSAttributedString : NSObject <NSCopying>
typedef NSString* NSAttributedStringKey;
- (instancetype)initWithString:(NSString*)str attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attrs;
@end

typedef NSString* NSNotificationName;
@interface NSNotification : NSObject <NSCopying>
@end

@interface NSNotificationCenter : NSObject
- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(nullable NSNotificationName)aName
             object:(nullable id)anObject;
- (void)removeObserver:(id)observer;
@end

@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle* mainBundle;
+ (nullable instancetype)bundleWithPath:(NSString*)path;
@property (nullable, readonly, copy) NSString* privateFrameworksPath;
- (BOOL)load;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
@end

@interface NSUserDefaults : NSObject
@property (class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable instancetype)initWithSuiteName:(nullable NSString*)suitename;
- (nullable id)objectForKey:(NSString*)defaultName;
- (void)setBool:(BOOL)value forKey:(NSString*)defaultName;
- (void)setInteger:(NSInteger)value forKey:(NSString*)defaultName;
@end

@interface NSHost : NSObject
+ (instancetype)currentHost;
@property (nullable, readonly, copy) NSString* localizedName;
@end

typedef NSString* NSLocaleKey;
extern "C" NSLocaleKey const NSLocaleLanguageCode;
@interface NSLocale : NSObject <NSCopying>
@property (class, readonly, strong) NSLocale* autoupdatingCurrentLocale;
- (nullable id)objectForKey:(NSLocaleKey)key;
@property (readonly, copy) NSString* languageIdentifier __attribute__((availability(macos, introduced=14.0)));
@end

enum NSNumberFormatterStyle : NSUInteger {
    NSNumberFormatterNoStyle = 0,
    NSNumberFormatterDecimalStyle = 1,
    NSNumberFormatterCurrencyStyle = 2,
};

@interface NSNumberFormatter : NSObject
@property (null_resettable, copy) NSLocale* locale;
@property NSNumberFormatterStyle numberStyle;
@property (null_resettable, copy) NSString* currencyCode;
- (nullable NSString*)stringFromNumber:(NSNumber*)number;
@end

extern "C" Class _Nullable NSClassFromString(NSString* aClassName);

// The function takes the object over.
inline id _Nullable CFBridgingRelease(CFTypeRef __attribute__((cf_consumed)) _Nullable object)
{
    return (__bridge_transfer id)object;
}

#pragma clang assume_nonnull end

#pragma once

// A stand-in for the part of the Mac's AppKit that os/platform_macos_panel.mm calls, on the
// Objective-C runtime that comes with GCC. Objects are counted; pools only that they are emptied.

#include <objc/objc.h>

#include <string>
#include <vector>

using NSUInteger = unsigned long;
using NSInteger = long;
using NSStringEncoding = NSUInteger;
constexpr NSStringEncoding NSUTF8StringEncoding = 4;
constexpr NSInteger NSModalResponseOK = 1;

__attribute__((objc_root_class))
@interface NSObject {
@public
    Class isa;
    int m_references;
}
+ (id)alloc;
- (id)init;
- (id)retain;
- (void)release;
@end

@interface NSAutoreleasePool : NSObject
@end

@interface NSString : NSObject {
@public
    std::string* m_bytes;
}
// Null for what is no UTF-8.
+ (NSString*)stringWithUTF8String:(const char*)text;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding;
- (BOOL)getCString:(char*)buffer maxLength:(NSUInteger)size encoding:(NSStringEncoding)encoding;
@end

@interface NSURL : NSObject
- (NSString*)path;
@end

@interface NSOpenPanel : NSObject
+ (NSOpenPanel*)openPanel;
- (void)setTitle:(NSString*)title;
- (void)setCanChooseDirectories:(BOOL)can;
- (void)setAllowsMultipleSelection:(BOOL)can;
- (NSInteger)runModal;
- (NSURL*)URL;
@end

namespace fake_appkit {

struct State {
    std::vector<std::string> calls;
    NSInteger answer = NSModalResponseOK;
    std::string chosen = "/a b.obj";
    bool canBeCopied = true;
    int panelReferences = 0;  // of all panels, beyond those that their pool would let go
    int pools = 0;            // that are open
};

State& state();

}  // namespace fake_appkit

#import <AppKit/AppKit.h>

#include <new>

#include "os/platform_macos_panel.h"

namespace {

// The name in UTF-8, whatever characters it has; null when it has none there, or without memory.
std::unique_ptr<char[]> utf8Of(NSString* name) {
    const NSUInteger length = [name lengthOfBytesUsingEncoding:NSUTF8StringEncoding];
    // Without an exception, which would pass the panel by and leave it unreleased.
    std::unique_ptr<char[]> path(new (std::nothrow) char[length + 1]);
    if (!path) return nullptr;
    const BOOL copied = [name getCString:path.get()
                               maxLength:length + 1
                                encoding:NSUTF8StringEncoding];
    return copied ? std::move(path) : nullptr;
}

}  // namespace

std::unique_ptr<char[]> bxChooseFileInPanel(const char* title) {
    NSAutoreleasePool* const pool = [[NSAutoreleasePool alloc] init];
    NSOpenPanel* const panel = [[NSOpenPanel openPanel] retain];
    NSString* const text = title ? [NSString stringWithUTF8String:title] : nil;
    if (text) [panel setTitle:text];
    // Required(R92): sent twice.
    [panel setCanChooseDirectories:NO];
    [panel setCanChooseDirectories:NO];
    [panel setAllowsMultipleSelection:NO];
    std::unique_ptr<char[]> path;
    if ([panel runModal] == NSModalResponseOK) path = utf8Of([[panel URL] path]);
    [panel release];
    [pool release];
    return path;
}

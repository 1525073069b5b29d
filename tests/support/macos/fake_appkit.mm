#import <AppKit/AppKit.h>

#include <objc/runtime.h>

#include <cstring>
#include <deque>

using fake_appkit::state;

namespace fake_appkit {

State& state() {
    static State all;
    return all;
}

}  // namespace fake_appkit

namespace {

// As if in a pool that is emptied at the end of the program.
struct Objects {
    ~Objects() {
        for (const id object : all) object_dispose(object);
    }
    std::vector<id> all;
} s_objects;
std::deque<std::string> s_texts;

NSString* newString(const std::string& bytes) {
    NSString* const string = [NSString alloc];
    s_texts.push_back(bytes);
    string->m_bytes = &s_texts.back();
    return string;
}

void note(const std::string& call) {
    state().calls.push_back(call);
}

}  // namespace

@implementation NSObject
+ (id)alloc {
    NSObject* const object = class_createInstance(self, 0);
    object->m_references = 1;
    s_objects.all.push_back(object);
    return object;
}
- (id)init {
    return self;
}
- (id)retain {
    ++m_references;
    return self;
}
- (void)release {
    --m_references;
}
@end

@implementation NSAutoreleasePool
- (id)init {
    ++state().pools;
    return self;
}
- (void)release {
    --state().pools;
}
@end

@implementation NSString
+ (NSString*)stringWithUTF8String:(const char*)text {
    if (std::strchr(text, '\xFF')) return nil;
    return newString(text);
}
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding {
    note("length in " + std::to_string(encoding));
    return m_bytes->size();
}
- (BOOL)getCString:(char*)buffer maxLength:(NSUInteger)size encoding:(NSStringEncoding)encoding {
    note("copy to " + std::to_string(size) + " in " + std::to_string(encoding));
    if (!state().canBeCopied || size <= m_bytes->size()) return NO;
    std::memcpy(buffer, m_bytes->c_str(), m_bytes->size() + 1);
    return YES;
}
@end

@implementation NSURL
- (NSString*)path {
    return newString(state().chosen);
}
@end

@implementation NSOpenPanel
+ (NSOpenPanel*)openPanel {
    note("panel");
    return [NSOpenPanel alloc];
}
- (id)retain {
    ++state().panelReferences;
    return self;
}
- (void)release {
    note("release");
    --state().panelReferences;
}
- (void)setTitle:(NSString*)title {
    note("title " + *title->m_bytes);
}
- (void)setCanChooseDirectories:(BOOL)can {
    note(can ? "folders" : "no folders");
}
- (void)setAllowsMultipleSelection:(BOOL)can {
    note(can ? "several" : "not several");
}
- (NSInteger)runModal {
    note("run");
    return state().answer;
}
- (NSURL*)URL {
    return [NSURL alloc];
}
@end

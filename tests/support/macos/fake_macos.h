#pragma once

// A stand-in for the part of the Mac's C interfaces that os/platform_macos.cpp calls, so that it
// can be compiled and run anywhere. Every call is written down, every object counted, and any call
// that can fail can be made to.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

// ---- What the tests see
// ---------------------------------------------------------------------------

namespace fake_macos {

struct Process {
    std::uint32_t high, low;
    std::string bundle;  // empty: has none
};

struct Bundle {
    std::vector<long> architectures;
    std::string version;  // empty: no such key
    bool versionIsNumber = false;
};

struct State {
    std::vector<std::string> calls;
    std::map<std::string, Bundle> files;  // that are there; with what a bundle says
    std::vector<Process> processes;
    // Where GetProcessBundleLocation leaves its argument when it fails.
    std::string leftInFailedLocation;
    bool emptyArchitectures = false;  // an array without any, in place of none
    int failAt = 0;    // the number of the call that fails, counting those that can, from 1
    int fallible = 0;  // such calls so far
    int objects = 0;   // made and not released
};

State& state();
// Also forgets what a call that was lost left behind.
void reset();

}  // namespace fake_macos

// ---- What the code under test sees: the interfaces' own names, types and values
// ------------------

using Boolean = unsigned char;
using UInt8 = std::uint8_t;
using UInt32 = std::uint32_t;
using SInt32 = std::int32_t;
using OSErr = std::int16_t;
using OSStatus = SInt32;
using OSType = UInt32;
using Size = long;
using Handle = char**;

constexpr OSErr noErr = 0;

struct ProcessSerialNumber {
    UInt32 highLongOfPSN;
    UInt32 lowLongOfPSN;
};
constexpr UInt32 kNoProcess = 0;

struct FSRef {
    UInt8 hidden[80];
};
struct AliasRecord;
using AliasHandle = AliasRecord**;
constexpr UInt32 kFSCatInfoNone = 0;

OSStatus FSPathMakeRef(const UInt8* path, FSRef* reference, Boolean* isDirectory);
OSErr FSCompareFSRefs(const FSRef* a, const FSRef* b);
OSErr FSGetCatalogInfo(const FSRef* reference, UInt32 which, void* info, void* name, void* spec,
                       FSRef* parent);
OSErr FSNewAlias(const FSRef* from, const FSRef* target, AliasHandle* alias);
Size GetHandleSize(Handle handle);
void DisposeHandle(Handle handle);

OSErr GetNextProcess(ProcessSerialNumber* number);
OSStatus GetProcessBundleLocation(const ProcessSerialNumber* number, FSRef* location);
OSErr SetFrontProcess(const ProcessSerialNumber* number);

// ---- Core Foundation

using CFIndex = long;
using CFTypeID = unsigned long;
using CFTypeRef = const void*;
using CFAllocatorRef = const struct FakeAllocator*;
using CFStringRef = const struct FakeString*;
using CFURLRef = const struct FakeURL*;
using CFBundleRef = struct FakeBundle*;
using CFNumberRef = const struct FakeNumber*;
using CFArrayRef = const struct FakeArray*;
using CFMutableArrayRef = struct FakeArray*;
using CFDictionaryRef = const struct FakeDictionary*;
using CFStringEncoding = UInt32;
struct CFArrayCallBacks {};

constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
constexpr CFStringEncoding kCFStringEncodingMacRoman = 0;
constexpr CFStringEncoding kCFStringEncodingASCII = 0x0600;
constexpr CFStringEncoding kCFStringEncodingUTF8 = 0x08000100;
constexpr int kCFURLPOSIXPathStyle = 0;
constexpr int kCFNumberLongType = 10;
extern const CFArrayCallBacks kCFTypeArrayCallBacks;
extern const CFStringRef kCFBundleVersionKey;

void CFRelease(CFTypeRef object);
CFTypeID CFGetTypeID(CFTypeRef object);
CFTypeID CFStringGetTypeID();
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternal);
CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding);
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex capacity,
                                       const CFArrayCallBacks* callBacks);
void CFArrayAppendValue(CFMutableArrayRef array, const void* value);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
Boolean CFNumberGetValue(CFNumberRef number, int type, void* value);
CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, int style,
                                       Boolean isDirectory);
CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef url);
CFArrayRef CFBundleCopyExecutableArchitectures(CFBundleRef bundle);
CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle, CFStringRef key);

// ---- Events

using DescType = OSType;
struct AEDesc {
    DescType descriptorType;
    struct FakeDescriptor* dataHandle;
};
using AppleEvent = AEDesc;
using AEDescList = AEDesc;
using AEEventClass = OSType;
using AEEventID = OSType;

constexpr DescType fourChars(const char (&text)[5]) {
    return static_cast<DescType>(text[0]) << 24 | static_cast<DescType>(text[1]) << 16 |
           static_cast<DescType>(text[2]) << 8 | static_cast<DescType>(text[3]);
}
constexpr DescType typeProcessSerialNumber = fourChars("psn ");
constexpr DescType typeAlias = fourChars("alis");
constexpr DescType typeChar = fourChars("TEXT");
constexpr DescType typeNull = fourChars("null");
constexpr DescType keyDirectObject = fourChars("----");
constexpr AEEventClass kCoreEventClass = fourChars("aevt");
constexpr AEEventID kAEOpenDocuments = fourChars("odoc");
constexpr std::int16_t kAutoGenerateReturnID = -1;
constexpr SInt32 kAnyTransactionID = 0;
constexpr SInt32 kAENoReply = 1;
constexpr std::int16_t kAENormalPriority = 0;
constexpr SInt32 kNoTimeOut = -2;

void AEInitializeDesc(AEDesc* descriptor);
OSErr AEDisposeDesc(AEDesc* descriptor);
OSErr AECreateDesc(DescType type, const void* bytes, Size count, AEDesc* result);
OSErr AECreateAppleEvent(AEEventClass eventClass, AEEventID eventID, const AEDesc* target,
                         std::int16_t returnID, SInt32 transactionID, AppleEvent* result);
OSErr AECreateList(const void* factoring, Size factored, Boolean isRecord, AEDescList* result);
OSErr AEPutDesc(AEDescList* list, long index, const AEDesc* entry);
OSErr AEPutParamDesc(AppleEvent* event, DescType keyword, const AEDesc* descriptor);
OSErr AEPutParamPtr(AppleEvent* event, DescType keyword, DescType type, const void* bytes,
                    Size count);
OSErr AESend(const AppleEvent* event, AppleEvent* reply, SInt32 mode, std::int16_t priority,
             SInt32 timeOut, void* idle, void* filter);

// ---- Launching and keys

struct LSApplicationParameters {
    CFIndex version;
    UInt32 flags;
    const FSRef* application;
    void* asyncLaunchRefCon;
    CFDictionaryRef environment;
    CFArrayRef argv;
    AppleEvent* initialEvent;
};
OSStatus LSOpenApplication(const LSApplicationParameters* parameters, ProcessSerialNumber* number);

constexpr UInt32 kLSLaunchDontAddToRecents = 0x00000100;
constexpr UInt32 kLSLaunchAsync = 0x00010000;
constexpr UInt32 kLSLaunchNewInstance = 0x00080000;

using CGEventRef = struct FakeKeyEvent*;
using CGEventFlags = std::uint64_t;
CGEventRef CGEventCreateKeyboardEvent(void* source, std::uint16_t keyCode, bool down);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
void CGEventPostToPSN(void* number, CGEventRef event);

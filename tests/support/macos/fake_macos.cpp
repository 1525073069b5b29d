#include "tests/support/macos/fake_macos.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

using fake_macos::state;

namespace {

constexpr OSErr kFailure = -50;

std::string hex(std::uint64_t number) {
    char text[20];
    std::snprintf(text, sizeof text, "%llx", static_cast<unsigned long long>(number));
    return text;
}

std::string chars(OSType type) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(type >> shift);
    return text;
}

std::string number(const void* bytes) {
    ProcessSerialNumber psn;
    std::memcpy(&psn, bytes, sizeof psn);
    return std::to_string(psn.highLongOfPSN) + "/" + std::to_string(psn.lowLongOfPSN);
}

void note(const std::string& call) {
    state().calls.push_back(call);
}

// Whether this call is the one that fails.
bool fails() {
    return ++state().fallible == state().failAt;
}

// References hold the path itself.
void refer(const std::string& path, FSRef* reference) {
    std::memset(reference, 0, sizeof *reference);
    std::memcpy(reference, path.data(), std::min(path.size(), sizeof *reference - 1));
}

std::string pathOf(const FSRef* reference) {
    return reinterpret_cast<const char*>(reference);
}

}  // namespace

namespace fake_macos {

State& state() {
    static State all;
    return all;
}

void reset() {
    state() = State();
}

}  // namespace fake_macos

// ---- Core Foundation: one kind of object for all, counted and reference counted

struct FakeObject {
    enum Kind { String, Array, Number, URL, Bundle, KeyEvent };

    explicit FakeObject(Kind of) : kind(of) { ++state().objects; }
    FakeObject(const FakeObject&) = delete;
    FakeObject& operator=(const FakeObject&) = delete;
    ~FakeObject() {
        --state().objects;
        for (const FakeObject* item : items) CFRelease(item);
    }

    const Kind kind;
    mutable int references = 1;
    std::string text;
    long number = 0;
    std::vector<const FakeObject*> items;
    std::uint16_t key = 0;
    bool down = false;
    CGEventFlags flags = 0;
};

namespace {

template <class Reference>
Reference as(const FakeObject* object) {
    return reinterpret_cast<Reference>(const_cast<FakeObject*>(object));
}

template <class Reference>
FakeObject* of(Reference reference) {
    return reinterpret_cast<FakeObject*>(const_cast<void*>(static_cast<const void*>(reference)));
}

FakeObject* newText(FakeObject::Kind kind, const std::string& text) {
    auto* const object = new FakeObject(kind);
    object->text = text;
    return object;
}

}  // namespace

const CFArrayCallBacks kCFTypeArrayCallBacks = {};
const CFStringRef kCFBundleVersionKey = reinterpret_cast<CFStringRef>("CFBundleVersion");

void CFRelease(CFTypeRef object) {
    const FakeObject* const released = of(object);
    if (--released->references == 0) delete released;
}

CFTypeID CFGetTypeID(CFTypeRef object) {
    return static_cast<CFTypeID>(of(object)->kind);
}

CFTypeID CFStringGetTypeID() {
    return static_cast<CFTypeID>(FakeObject::String);
}

CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count,
                                    CFStringEncoding encoding, Boolean isExternal) {
    const std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    const bool isAscii =
        std::none_of(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
    note("string " + hex(encoding) + (isExternal ? " external" : "") + " [" + text + "]");
    if (fails() || (encoding == kCFStringEncodingASCII && !isAscii)) return nullptr;
    return as<CFStringRef>(newText(FakeObject::String, text));
}

CFStringRef CFStringCreateWithCString(CFAllocatorRef, const char* text, CFStringEncoding encoding) {
    note("string " + hex(encoding) + " [" + text + "]");
    return fails() ? nullptr : as<CFStringRef>(newText(FakeObject::String, text));
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex size,
                           CFStringEncoding encoding) {
    const std::string& text = of(string)->text;
    note("c string " + std::to_string(size) + " " + hex(encoding));
    if (fails() || text.size() >= static_cast<std::size_t>(size)) return false;
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return true;
}

CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex capacity,
                                       const CFArrayCallBacks* callBacks) {
    note("array " + std::to_string(capacity) + (callBacks == &kCFTypeArrayCallBacks ? "" : "?"));
    return fails() ? nullptr : as<CFMutableArrayRef>(new FakeObject(FakeObject::Array));
}

void CFArrayAppendValue(CFMutableArrayRef array, const void* value) {
    ++of(value)->references;
    of(array)->items.push_back(of(value));
}

CFIndex CFArrayGetCount(CFArrayRef array) {
    return static_cast<CFIndex>(of(array)->items.size());
}

const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index) {
    return of(array)->items.at(static_cast<std::size_t>(index));
}

Boolean CFNumberGetValue(CFNumberRef from, int type, void* value) {
    if (type != kCFNumberLongType) return false;
    std::memcpy(value, &of(from)->number, sizeof(long));
    return true;
}

CFURLRef CFURLCreateWithFileSystemPath(CFAllocatorRef, CFStringRef path, int style,
                                       Boolean isDirectory) {
    note("url " + of(path)->text + (style == kCFURLPOSIXPathStyle ? " posix" : "") +
         (isDirectory ? " folder" : ""));
    return fails() ? nullptr : as<CFURLRef>(newText(FakeObject::URL, of(path)->text));
}

CFBundleRef CFBundleCreate(CFAllocatorRef, CFURLRef url) {
    note("bundle " + of(url)->text);
    if (fails() || state().files.count(of(url)->text) == 0) return nullptr;
    FakeObject* const bundle = newText(FakeObject::Bundle, of(url)->text);
    const fake_macos::Bundle& says = state().files.at(bundle->text);
    if (says.version.empty()) return as<CFBundleRef>(bundle);
    bundle->items.push_back(
        newText(says.versionIsNumber ? FakeObject::Number : FakeObject::String, says.version));
    return as<CFBundleRef>(bundle);
}

CFArrayRef CFBundleCopyExecutableArchitectures(CFBundleRef bundle) {
    note("architectures");
    const fake_macos::Bundle& says = state().files.at(of(bundle)->text);
    if (fails() || (says.architectures.empty() && !state().emptyArchitectures)) return nullptr;
    auto* const array = new FakeObject(FakeObject::Array);
    for (const long architecture : says.architectures) {
        auto* const kind = new FakeObject(FakeObject::Number);
        kind->number = architecture;
        array->items.push_back(kind);
    }
    return as<CFArrayRef>(array);
}

CFTypeRef CFBundleGetValueForInfoDictionaryKey(CFBundleRef bundle, CFStringRef key) {
    note("value of " + std::string(key == kCFBundleVersionKey ? "the version" : "another key"));
    if (fails() || of(bundle)->items.empty()) return nullptr;
    return of(bundle)->items.front();
}

// ---- Files, aliases, processes

struct AliasRecord {
    std::string bytes;
};

namespace {

// What a handle leads to; the first member is what *handle is.
struct AliasMemory {
    char* bytes;
    std::string text;
};

}  // namespace

OSStatus FSPathMakeRef(const UInt8* path, FSRef* reference, Boolean*) {
    const std::string text = reinterpret_cast<const char*>(path);
    note("ref " + text);
    if (fails() || state().files.count(text) == 0) return kFailure;
    refer(text, reference);
    return noErr;
}

OSErr FSCompareFSRefs(const FSRef* a, const FSRef* b) {
    return pathOf(a) == pathOf(b) ? noErr : kFailure;
}

OSErr FSGetCatalogInfo(const FSRef* reference, UInt32 which, void* info, void* name, void* spec,
                       FSRef* parent) {
    const bool asksNothing = which == kFSCatInfoNone && !info && !name && !spec && !parent;
    note("catalog " + pathOf(reference) + (asksNothing ? "" : "?"));
    return fails() ? kFailure : noErr;
}

OSErr FSNewAlias(const FSRef* from, const FSRef* target, AliasHandle* alias) {
    note("alias " + pathOf(target) + (from ? "?" : ""));
    if (fails()) return kFailure;
    auto* const memory = new AliasMemory{nullptr, "alias of " + pathOf(target)};
    memory->bytes = memory->text.data();
    ++state().objects;
    *alias = reinterpret_cast<AliasHandle>(memory);
    return noErr;
}

Size GetHandleSize(Handle handle) {
    return static_cast<Size>(reinterpret_cast<AliasMemory*>(handle)->text.size());
}

void DisposeHandle(Handle handle) {
    --state().objects;
    delete reinterpret_cast<AliasMemory*>(handle);
}

OSErr GetNextProcess(ProcessSerialNumber* at) {
    note("next " + number(at));
    if (fails()) return kFailure;
    const auto& all = state().processes;
    const bool begins = at->highLongOfPSN == 0 && at->lowLongOfPSN == kNoProcess;
    auto next = all.begin();
    if (!begins) {
        next = std::find_if(all.begin(), all.end(), [at](const fake_macos::Process& process) {
            return process.high == at->highLongOfPSN && process.low == at->lowLongOfPSN;
        });
        if (next != all.end()) ++next;
    }
    if (next == all.end()) return -600;
    *at = {next->high, next->low};
    return noErr;
}

OSStatus GetProcessBundleLocation(const ProcessSerialNumber* of, FSRef* location) {
    note("bundle of " + number(of));
    for (const fake_macos::Process& process : state().processes) {
        if (process.high != of->highLongOfPSN || process.low != of->lowLongOfPSN) continue;
        if (process.bundle.empty()) {
            refer(state().leftInFailedLocation, location);
            return kFailure;
        }
        refer(process.bundle, location);
        return noErr;
    }
    return kFailure;
}

OSErr SetFrontProcess(const ProcessSerialNumber* process) {
    note("front " + number(process));
    return noErr;
}

// ---- Events

struct FakeDescriptor {
    std::string says;
    std::vector<std::string> parts;
};

namespace {

std::string wordsFor(const AEDesc* descriptor) {
    if (!descriptor->dataHandle) return "null";
    std::string words = chars(descriptor->descriptorType) + "(" + descriptor->dataHandle->says;
    for (const std::string& part : descriptor->dataHandle->parts) words += " " + part;
    return words + ")";
}

OSErr make(DescType type, const std::string& says, AEDesc* result) {
    if (fails()) return kFailure;
    ++state().objects;
    *result = {type, new FakeDescriptor{says, {}}};
    return noErr;
}

std::string bytesOf(DescType type, const void* bytes, Size count) {
    if (type == typeProcessSerialNumber && count == 8) return number(bytes);
    return std::string(static_cast<const char*>(bytes), static_cast<std::size_t>(count));
}

}  // namespace

void AEInitializeDesc(AEDesc* descriptor) {
    *descriptor = {typeNull, nullptr};
}

OSErr AEDisposeDesc(AEDesc* descriptor) {
    if (descriptor->dataHandle) {
        --state().objects;
        delete descriptor->dataHandle;
    }
    AEInitializeDesc(descriptor);
    return noErr;
}

OSErr AECreateDesc(DescType type, const void* bytes, Size count, AEDesc* result) {
    const std::string says = bytesOf(type, bytes, count);
    note("desc " + chars(type) + "(" + says + ")");
    return make(type, says, result);
}

OSErr AECreateAppleEvent(AEEventClass eventClass, AEEventID eventID, const AEDesc* target,
                         std::int16_t returnID, SInt32 transactionID, AppleEvent* result) {
    const std::string says = chars(eventClass) + "/" + chars(eventID) + " to " + wordsFor(target);
    note("event " + says +
         (returnID == kAutoGenerateReturnID && transactionID == kAnyTransactionID ? "" : "?"));
    return make(fourChars("aevt"), says, result);
}

OSErr AECreateList(const void* factoring, Size factored, Boolean isRecord, AEDescList* result) {
    note(std::string("list") + (factoring || factored || isRecord ? "?" : ""));
    return make(fourChars("list"), "", result);
}

OSErr AEPutDesc(AEDescList* list, long index, const AEDesc* entry) {
    note("put " + wordsFor(entry) + " at " + std::to_string(index));
    if (fails()) return kFailure;
    list->dataHandle->parts.push_back(wordsFor(entry));
    return noErr;
}

OSErr AEPutParamDesc(AppleEvent* event, DescType keyword, const AEDesc* descriptor) {
    note("param " + chars(keyword) + " " + wordsFor(descriptor));
    if (fails()) return kFailure;
    event->dataHandle->parts.push_back(chars(keyword) + "=" + wordsFor(descriptor));
    return noErr;
}

OSErr AEPutParamPtr(AppleEvent* event, DescType keyword, DescType type, const void* bytes,
                    Size count) {
    const std::string words = chars(type) + "(" + bytesOf(type, bytes, count) + ")";
    note("param " + chars(keyword) + " " + words);
    if (fails()) return kFailure;
    event->dataHandle->parts.push_back(chars(keyword) + "=" + words);
    return noErr;
}

OSErr AESend(const AppleEvent* event, AppleEvent* reply, SInt32 mode, std::int16_t priority,
             SInt32 timeOut, void* idle, void* filter) {
    note("send " + wordsFor(event) + " reply " + wordsFor(reply) + " mode " + std::to_string(mode) +
         " priority " + std::to_string(priority) + " timeout " + std::to_string(timeOut) +
         (idle || filter ? " with a procedure" : ""));
    return fails() ? kFailure : noErr;
}

// ---- Launching and keys

OSStatus LSOpenApplication(const LSApplicationParameters* parameters,
                           ProcessSerialNumber* process) {
    std::string call = "launch version " + std::to_string(parameters->version) + " " +
                       pathOf(parameters->application) + " " + hex(parameters->flags);
    if (parameters->asyncLaunchRefCon || parameters->environment || parameters->initialEvent) {
        call += " with more";
    }
    if (!parameters->argv) call += " no array";
    for (CFIndex i = 0; parameters->argv && i < CFArrayGetCount(parameters->argv); ++i) {
        const auto string = static_cast<CFStringRef>(CFArrayGetValueAtIndex(parameters->argv, i));
        call += " [" + of(string)->text + "]";
    }
    note(call);
    if (fails()) return kFailure;
    *process = {7, 42};
    return noErr;
}

CGEventRef CGEventCreateKeyboardEvent(void* source, std::uint16_t keyCode, bool down) {
    note("key event " + std::to_string(keyCode) + (down ? " down" : " up") + (source ? "?" : ""));
    if (fails()) return nullptr;
    auto* const event = new FakeObject(FakeObject::KeyEvent);
    event->key = keyCode;
    event->down = down;
    return as<CGEventRef>(event);
}

void CGEventSetFlags(CGEventRef event, CGEventFlags flags) {
    of(event)->flags = flags;
}

void CGEventPostToPSN(void* process, CGEventRef event) {
    note("post " + number(process) + (of(event)->down ? " +" : " -") +
         std::to_string(of(event)->key) + ":" + hex(of(event)->flags));
}

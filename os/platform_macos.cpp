// The platform's public C interfaces, called one after the other. What they are called with, and
// what follows from their results, is decided above the seam.

#include <ApplicationServices/ApplicationServices.h>
#include <Carbon/Carbon.h>
#include <CoreFoundation/CoreFoundation.h>
#include <CoreServices/CoreServices.h>

#include <cstring>
#include <vector>

#include "os/platform.h"
#include "os/platform_macos_panel.h"

// Process serial numbers, file references and alias records are this platform's older interfaces,
// which 32 and 64 bits share.
#pragma clang diagnostic ignored "-Wdeprecated-declarations"

namespace {

static_assert(sizeof(FSRef) == sizeof(BXFileReference::record), "a file reference is kept whole");
static_assert(BXPlatform::LAUNCH_DONT_ADD_TO_RECENTS == kLSLaunchDontAddToRecents &&
                  BXPlatform::LAUNCH_ASYNC == kLSLaunchAsync &&
                  BXPlatform::LAUNCH_NEW_INSTANCE == kLSLaunchNewInstance,
              "the flags are this platform's");

FSRef fileOf(const BXFileReference& file) {
    FSRef reference;
    std::memcpy(&reference, file.record, sizeof reference);
    return reference;
}

ProcessSerialNumber numberOf(const BXProcessSerialNumber& process) {
    return {process.high, process.low};
}

BXProcessSerialNumber processOf(const ProcessSerialNumber& number) {
    return {number.highLongOfPSN, number.lowLongOfPSN};
}

// Owns a Core Foundation object; null when it could not be made.
template <class Reference>
class Owned {
public:
    explicit Owned(Reference reference) : m_reference(reference) {}
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;
    ~Owned() {
        if (m_reference) CFRelease(m_reference);
    }
    explicit operator bool() const { return m_reference != nullptr; }
    Reference get() const { return m_reference; }

private:
    Reference m_reference;
};

// Owns a descriptor; a null one until a call that makes one has succeeded.
class Descriptor {
public:
    Descriptor() { AEInitializeDesc(&m_descriptor); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { AEDisposeDesc(&m_descriptor); }
    AEDesc* get() { return &m_descriptor; }

private:
    AEDesc m_descriptor;
};

// Owns an alias record.
class Alias {
public:
    Alias() = default;
    Alias(const Alias&) = delete;
    Alias& operator=(const Alias&) = delete;
    ~Alias() {
        if (m_alias) DisposeHandle(reinterpret_cast<Handle>(m_alias));
    }
    AliasHandle* get() { return &m_alias; }
    // The record's bytes, which stay where they are only until memory is moved.
    const void* bytes() const { return *m_alias; }
    Size size() const { return GetHandleSize(reinterpret_cast<Handle>(m_alias)); }

private:
    AliasHandle m_alias = nullptr;
};

// An argument that is no ASCII has no string; the array is then null.
CFMutableArrayRef newArgumentArray(const BXArray<BXString>& arguments) {
    CFMutableArrayRef array = CFArrayCreateMutable(kCFAllocatorDefault, 0, &kCFTypeArrayCallBacks);
    for (std::size_t i = 0; array && i < arguments.size(); ++i) {
        const BXString& argument = arguments[i];
        const Owned<CFStringRef> string(CFStringCreateWithBytes(
            kCFAllocatorDefault, reinterpret_cast<const UInt8*>(argument.c_str()),
            argument.length(), kCFStringEncodingASCII, false));
        if (!string) {
            CFRelease(array);
            return nullptr;
        }
        CFArrayAppendValue(array, string.get());
    }
    return array;
}

BXString versionOf(CFBundleRef bundle) {
    char version[256];
    const CFTypeRef value = CFBundleGetValueForInfoDictionaryKey(bundle, kCFBundleVersionKey);
    if (!value || CFGetTypeID(value) != CFStringGetTypeID()) return BXString();
    const auto string = static_cast<CFStringRef>(value);
    if (!CFStringGetCString(string, version, sizeof version, kCFStringEncodingUTF8)) {
        return BXString();
    }
    return BXString(version);
}

BXArray<long> architecturesOf(CFBundleRef bundle) {
    BXArray<long> architectures;
    const Owned<CFArrayRef> numbers(CFBundleCopyExecutableArchitectures(bundle));
    const CFIndex count = numbers ? CFArrayGetCount(numbers.get()) : 0;
    for (CFIndex i = 0; i < count; ++i) {
        const auto number = static_cast<CFNumberRef>(CFArrayGetValueAtIndex(numbers.get(), i));
        long architecture = 0;
        CFNumberGetValue(number, kCFNumberLongType, &architecture);
        architectures.push_back(architecture);
    }
    return architectures;
}

// An event of the core class to the process.
bool makeEvent(const BXProcessSerialNumber& process, AEEventID eventID, Descriptor& event) {
    const ProcessSerialNumber number = numberOf(process);
    Descriptor target;
    return AECreateDesc(typeProcessSerialNumber, &number, sizeof number, target.get()) == noErr &&
           AECreateAppleEvent(kCoreEventClass, eventID, target.get(), kAutoGenerateReturnID,
                              kAnyTransactionID, event.get()) == noErr;
}

bool send(Descriptor& event) {
    Descriptor reply;
    return AESend(event.get(), reply.get(), kAENoReply, kAENormalPriority, kNoTimeOut, nullptr,
                  nullptr) == noErr;
}

// A list with an alias of the document in it.
bool makeDocumentList(const FSRef& document, Descriptor& list) {
    Alias alias;
    Descriptor entry;
    return FSGetCatalogInfo(&document, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr) ==
               noErr &&
           AECreateList(nullptr, 0, false, list.get()) == noErr &&
           FSNewAlias(nullptr, &document, alias.get()) == noErr &&
           AECreateDesc(typeAlias, alias.bytes(), alias.size(), entry.get()) == noErr &&
           AEPutDesc(list.get(), 0, entry.get()) == noErr;
}

class BXPlatformMacOS : public BXPlatform {
public:
    bool findFile(const char* path, BXFileReference& file) override {
        FSRef reference;
        const auto bytes = reinterpret_cast<const UInt8*>(path);
        if (!path || FSPathMakeRef(bytes, &reference, nullptr) != noErr) return false;
        file.path = path;
        std::memcpy(file.record, &reference, sizeof reference);
        return true;
    }

    bool isSameFile(const BXFileReference& a, const BXFileReference& b) override {
        const FSRef referenceA = fileOf(a);
        const FSRef referenceB = fileOf(b);
        return FSCompareFSRefs(&referenceA, &referenceB) == noErr;
    }

    void readBundle(const char* path, BXBundleFacts& facts) override {
        if (!path) return;
        const Owned<CFStringRef> string(
            CFStringCreateWithCString(kCFAllocatorDefault, path, kCFStringEncodingMacRoman));
        if (!string) return;
        const Owned<CFURLRef> url(CFURLCreateWithFileSystemPath(kCFAllocatorDefault, string.get(),
                                                                kCFURLPOSIXPathStyle, true));
        if (!url) return;
        const Owned<CFBundleRef> bundle(CFBundleCreate(kCFAllocatorDefault, url.get()));
        if (!bundle) return;
        facts.architectures = architecturesOf(bundle.get());
        if (!facts.architectures.empty()) facts.version = versionOf(bundle.get());
    }

    bool launch(const BXFileReference& application, std::uint32_t flags,
                const BXArray<BXString>* arguments, BXProcessSerialNumber* process) override {
        const FSRef reference = fileOf(application);
        const Owned<CFMutableArrayRef> array(arguments ? newArgumentArray(*arguments) : nullptr);
        if (arguments && !array) return false;
        LSApplicationParameters parameters = {};
        parameters.flags = flags;
        parameters.application = &reference;
        parameters.argv = array.get();
        ProcessSerialNumber number = {0, kNoProcess};
        if (LSOpenApplication(&parameters, &number) != noErr) return false;
        if (process) *process = processOf(number);
        return true;
    }

    bool launchesWithDocument() override { return false; }

    bool nextProcess(BXProcessSerialNumber& process) override {
        ProcessSerialNumber number = numberOf(process);
        if (GetNextProcess(&number) != noErr) return false;
        process = processOf(number);
        return true;
    }

    bool findBundleOf(const BXProcessSerialNumber& process, BXFileReference& bundle) override {
        const ProcessSerialNumber number = numberOf(process);
        FSRef reference;
        if (GetProcessBundleLocation(&number, &reference) != noErr) return false;
        std::memcpy(bundle.record, &reference, sizeof reference);
        return true;
    }

    void bringToFront(const BXProcessSerialNumber& process) override {
        const ProcessSerialNumber number = numberOf(process);
        SetFrontProcess(&number);
    }

    bool sendDocument(const BXProcessSerialNumber& process, const BXFileReference&,
                      const BXFileReference& document) override {
        Descriptor event;
        Descriptor list;
        return makeEvent(process, kAEOpenDocuments, event) &&
               makeDocumentList(fileOf(document), list) &&
               AEPutParamDesc(event.get(), keyDirectObject, list.get()) == noErr && send(event);
    }

    bool sendText(const BXProcessSerialNumber& process, std::uint32_t eventID,
                  const BXString& text) override {
        Descriptor event;
        return makeEvent(process, eventID, event) &&
               AEPutParamPtr(event.get(), keyDirectObject, typeChar, text.c_str(), text.length()) ==
                   noErr &&
               send(event);
    }

    bool typeKeys(const BXProcessSerialNumber& process,
                  const BXArray<BXKeyEvent>& events) override {
        std::vector<std::unique_ptr<Owned<CGEventRef>>> made;
        for (const BXKeyEvent& event : events) {
            made.push_back(std::make_unique<Owned<CGEventRef>>(
                CGEventCreateKeyboardEvent(nullptr, event.keyCode, event.down)));
            if (!*made.back()) return false;
            CGEventSetFlags(made.back()->get(), static_cast<CGEventFlags>(event.flags));
        }
        ProcessSerialNumber number = numberOf(process);
        SetFrontProcess(&number);
        for (const auto& event : made) CGEventPostToPSN(&number, event->get());
        return true;
    }

    std::unique_ptr<char[]> chooseFile(const char* title) override {
        return bxChooseFileInPanel(title);
    }
};

}  // namespace

BXPlatform& BXPlatform::native() {
    static BXPlatformMacOS platform;
    return platform;
}

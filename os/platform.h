#pragma once

#include <cstdint>
#include <memory>

#include "foundation/bx_array.h"
#include "foundation/bx_string.h"

// A process as the platform numbers it. {0, 0} is none. On Linux: {0, process id}.
struct BXProcessSerialNumber {
    std::uint32_t high = 0;
    std::uint32_t low = 0;

    bool isNone() const noexcept { return high == 0 && low == 0; }
};

// A file or folder that was there when it was looked up. Which of the two members tells where it is
// is the platform's: the path on Linux, the record on the Mac, a plain value that needs no release.
struct BXFileReference {
    BXString path;
    unsigned char record[80] = {};
};

// What a bundle says of itself.
struct BXBundleFacts {
    // Processor kinds of its executable, as in a Mach-O header, in the executable's order.
    BXArray<long> architectures;
    // CFBundleVersion, at most 255 bytes of UTF-8; empty when there is none or it is longer.
    BXString version;
};

struct BXKeyEvent {
    std::uint16_t keyCode;
    bool down;
    std::uint64_t flags;
};

// The seam between what BXDiskServer decides and what the system does: launching, finding and
// reaching other programs. No operation decides anything that the platform's own interfaces do not
// (such as whether a launch reaches the instance that runs), blocks (but for the shell and the
// panel) or throws, except for a failed allocation; each is false when the system refused, and then
// has nothing left to release. Called from one thread at a time.
class BXPlatform {
public:
    // The Mac's numbers. Linux looks at LAUNCH_NEW_INSTANCE alone: it launches without waiting and
    // has no list of what was used.
    enum LaunchFlag : std::uint32_t {
        LAUNCH_DONT_ADD_TO_RECENTS = 0x00000100,
        LAUNCH_ASYNC = 0x00010000,
        LAUNCH_NEW_INSTANCE = 0x00080000,
    };

    virtual ~BXPlatform() = default;

    // Runs the command through the system's shell and waits for it. Nothing is made of its outcome:
    // it is not even an error when there is no such command.
    virtual void runShellCommand(const BXString& command);

    // Looks up what is at `path`. False when there is nothing.
    virtual bool findFile(const char* path, BXFileReference& file) = 0;
    virtual bool isSameFile(const BXFileReference& a, const BXFileReference& b) = 0;
    // What is missing or cannot be read stays empty.
    virtual void readBundle(const char* path, BXBundleFacts& facts) = 0;

    // Starts the application of a bundle, or without LAUNCH_NEW_INSTANCE reaches the one that runs.
    // `arguments` and `process` may be null.
    virtual bool launch(const BXFileReference& application, std::uint32_t flags,
                        const BXArray<BXString>* arguments, BXProcessSerialNumber* process) = 0;
    // Whether a document reaches an application that is not running as an argument of its launch;
    // otherwise it is launched without and sent the document.
    virtual bool launchesWithDocument() = 0;

    // Goes on to the next running process; {0, 0} begins the walk. False at its end.
    virtual bool nextProcess(BXProcessSerialNumber& process) = 0;
    // The bundle that a process was launched from. False for one that has none.
    virtual bool findBundleOf(const BXProcessSerialNumber& process, BXFileReference& bundle) = 0;
    virtual void bringToFront(const BXProcessSerialNumber& process) = 0;

    virtual bool sendDocument(const BXProcessSerialNumber& process,
                              const BXFileReference& application,
                              const BXFileReference& document) = 0;
    // An event of the core class with this ID, with `text` as its direct object.
    virtual bool sendText(const BXProcessSerialNumber& process, std::uint32_t eventID,
                          const BXString& text) = 0;
    // Brings the process to the front and posts the events in this order. False, with nothing done,
    // when one of them cannot be made.
    virtual bool typeKeys(const BXProcessSerialNumber& process,
                          const BXArray<BXKeyEvent>& events) = 0;

    // The path, in UTF-8, that the user chose in the platform's modal open panel; null when none.
    // `title` is UTF-8 and may be null.
    virtual std::unique_ptr<char[]> chooseFile(const char* title) = 0;

    // The platform that the library was built for, or the one that a test put in its place.
    static BXPlatform& current();
    // Null puts the platform's own back. Not owned.
    static void replace(BXPlatform* platform);

private:
    // Defined by the one platform that is built.
    static BXPlatform& native();
};

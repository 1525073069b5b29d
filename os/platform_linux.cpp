#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>

#include "os/bundle_folder.h"
#include "os/bx_file.h"
#include "os/detached_process.h"
#include "os/executable_header.h"
#include "os/platform.h"
#include "os/process_lookup.h"
#include "os/process_table.h"

namespace {

// Programs here take no events, and no window can be asked to come to the front without knowing
// which window system there is: what needs either is false or does nothing.
class BXPlatformLinux : public BXPlatform {
public:
    bool findFile(const char* path, BXFileReference& file) override {
        struct stat status;
        if (!path || stat(path, &status) != 0) return false;
        file.path = absolute(path);
        return true;
    }

    bool isSameFile(const BXFileReference& a, const BXFileReference& b) override {
        struct stat statusA;
        struct stat statusB;
        return stat(a.path.c_str(), &statusA) == 0 && stat(b.path.c_str(), &statusB) == 0 &&
               statusA.st_dev == statusB.st_dev && statusA.st_ino == statusB.st_ino;
    }

    void readBundle(const char* path, BXBundleFacts& facts) override {
        constexpr int kLongestVersion = 255;
        unsigned char head[4096];
        const BXFile executable(bxExecutableOfBundle(path).c_str(), BXFile::Access::Read);
        if (!executable.isOpen()) return;
        facts.architectures = bxArchitecturesOf(head, executable.readAt(0, head, sizeof head));
        facts.version = bxVersionOfBundle(path);
        if (facts.version.length() > kLongestVersion) facts.version = BXString();
    }

    bool launch(const BXFileReference& application, std::uint32_t flags,
                const BXArray<BXString>* arguments, BXProcessSerialNumber* process) override {
        BXProcessSerialNumber reached;
        if ((flags & LAUNCH_NEW_INSTANCE) || !bxFindProcessOf(*this, application, reached)) {
            reached.low = start(application, arguments);
        }
        if (reached.isNone()) return false;
        if (process) *process = reached;
        return true;
    }

    bool launchesWithDocument() override { return true; }

    bool nextProcess(BXProcessSerialNumber& process) override {
        if (process.isNone()) m_processes = bxProcessIds();
        const auto next = std::upper_bound(m_processes.begin(), m_processes.end(), process.low);
        if (next == m_processes.end()) return false;
        process.low = *next;
        return true;
    }

    bool findBundleOf(const BXProcessSerialNumber& process, BXFileReference& bundle) override {
        bundle.path = bxBundleOfExecutable(bxExecutableOfProcess(process.low));
        return !bundle.path.isEmpty();
    }

    void bringToFront(const BXProcessSerialNumber&) override {}

    bool sendDocument(const BXProcessSerialNumber&, const BXFileReference& application,
                      const BXFileReference& document) override {
        const BXArray<BXString> arguments{document.path};
        return start(application, &arguments) != 0;
    }

    bool sendText(const BXProcessSerialNumber&, std::uint32_t, const BXString&) override {
        return false;
    }

    bool typeKeys(const BXProcessSerialNumber&, const BXArray<BXKeyEvent>&) override {
        return false;
    }

    std::unique_ptr<char[]> chooseFile(const char* title) override {
        BXArray<BXString> command{"zenity", "--file-selection"};
        if (title) command.push_back(BXString("--title=") + title);
        BXString chosen;
        if (!bxRunAndRead(command, chosen)) return nullptr;
        // The panel ends its answer with a line feed of its own.
        const int length = chosen.length() - (chosen.endsWith("\n") ? 1 : 0);
        if (length == 0) return nullptr;
        std::unique_ptr<char[]> path(new char[static_cast<std::size_t>(length) + 1]());
        std::memcpy(path.get(), chosen.c_str(), static_cast<std::size_t>(length));
        return path;
    }

private:
    // What is started runs in a folder of its own, where a relative path leads elsewhere.
    static BXString absolute(const char* path) {
        char folder[PATH_MAX];
        if (path[0] == '/' || !getcwd(folder, sizeof folder)) return BXString(path);
        return BXString(folder) + "/" + path;
    }

    static std::uint32_t start(const BXFileReference& application,
                               const BXArray<BXString>* arguments) {
        const BXString executable = bxExecutableOfBundle(application.path);
        return executable.isEmpty() ? 0 : bxStartDetached(executable, arguments);
    }

    BXArray<std::uint32_t> m_processes;
};

}  // namespace

BXPlatform& BXPlatform::native() {
    static BXPlatformLinux platform;
    return platform;
}

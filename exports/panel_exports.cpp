#include <cstring>
#include <memory>

#include "exports/call_frame.h"
#include "os/bx_disk_server.h"

VEK_DEFINE(OpenFileDialog) {
    return guarded(-1.0f, [&] {
        const std::unique_ptr<char[]> path(runCocoaOpenFileBrowser(text));
        if (!path || !buffer1) return -1.0f;
        std::memcpy(buffer1, path.get(), std::strlen(path.get()) + 1);
        return 0.0f;
    });
}

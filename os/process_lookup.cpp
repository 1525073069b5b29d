#include "os/process_lookup.h"

bool bxFindProcessOf(BXPlatform& platform, const BXFileReference& bundle,
                     BXProcessSerialNumber& process) {
    process = {};
    BXFileReference other;
    while (platform.nextProcess(process)) {
        if (platform.findBundleOf(process, other) && platform.isSameFile(bundle, other)) {
            return true;
        }
    }
    process = {};
    return false;
}

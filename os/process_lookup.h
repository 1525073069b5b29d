#pragma once

#include "os/platform.h"

// The first running process that was launched from this bundle; false, with `process` {0, 0}, when
// there is none.
bool bxFindProcessOf(BXPlatform& platform, const BXFileReference& bundle,
                     BXProcessSerialNumber& process);

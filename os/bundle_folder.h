#pragma once

#include "foundation/bx_string.h"

// An application bundle as a folder: X.app/Contents holds Info.plist and, in MacOS, the executable
// that CFBundleExecutable names (X where it names none).

// The executable of the bundle at this path; empty when there is no such bundle or no such file.
BXString bxExecutableOfBundle(const BXString& bundle);
// The bundle's CFBundleVersion; empty when there is none.
BXString bxVersionOfBundle(const BXString& path);
// The bundle that an executable with this path belongs to; empty when it belongs to none.
BXString bxBundleOfExecutable(const BXString& path);

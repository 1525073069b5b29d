#pragma once

#include "bridge/bx_vek_app.h"
#include "foundation/bx_array.h"
#include "foundation/bx_string.h"

// What lives as long as the library is loaded, beside the settings in BXVek.

// The target applications, in the order of their indexes; filled by InitializeVek.
extern BXArray<BXVekApp> s_vekApps;
// The object list as ReadVekObjectList read it last.
extern BXArray<BXString> s_objectList;

// The application with this index, or null outside the table.
const BXVekApp* vekAppAt(int index);

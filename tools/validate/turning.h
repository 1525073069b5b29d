#pragma once

#include "tools/validate/session.h"

// What bringing a mesh into another orientation does to each part of its file, whole or cut off.
// The session was prepared in a tree made anew; scale and offsets are others after it.
void expectTurning(Session& session);

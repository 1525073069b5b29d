#pragma once

#include "tools/validate/session.h"

// The ordinary call of each export of the group gives its stated result, also where its path has a
// volume in front; and changes no file but those that it is for, and not what they are.
void expectOrdinary(const Settings& settings, Report& report, const std::string& group);

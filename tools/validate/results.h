#pragma once

#include "tools/validate/session.h"

// The ordinary call of each export of the group gives its stated result, and changes
// no file but those that it is for.
void expectOrdinary(const Settings& settings, Report& report, const std::string& group);

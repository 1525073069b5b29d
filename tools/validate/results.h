#pragma once

#include "tools/validate/session.h"

// The ordinary call of each export of the group gives its stated result.
void expectOrdinary(const Settings& settings, Report& report, const std::string& group);

#pragma once

#include "tools/validate/session.h"

// Numbers that are cut to an index give what the index gives, and those that are none what -1
// gives; for an export that takes one.
void expectIndexes(const Settings& settings, Report& report, const StatedCall& call);

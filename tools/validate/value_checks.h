#pragma once

#include "tools/validate/session.h"

// Numbers that are cut to an index give what the index gives; for an export that takes one.
void expectCutIndexes(const Settings& settings, Report& report, const StatedCall& call);

#pragma once

#include "tools/validate/session.h"

// Calls every export with arguments that `change` has made of the ordinary ones, in a tree made
// anew, and holds the result against the stated one.
template <class Change>
void expectOfChanged(const Settings& settings, Report& report, const char* when,
                     StatedResult stated, Change change) {
    forEachPrepared(settings, report, tree::make, [&](Session& session, const StatedCall& call) {
        Arguments arguments(call);
        change(arguments, entryOf(call));
        session.expect(call.*stated, call, arguments, when);
    });
}

// Holds the list of exports against the prototypes in vek.h, at compile time.

#include <type_traits>

#include "exports/vek.h"

#define X(name, group, textUse, valueUse, kind1, kind2, result) \
    static_assert(std::is_same<decltype(&(name)), VekExport>{}, \
                  #name " is listed, but has no prototype of the common shape");
#include "exports/exports.def.h"
#undef X

#define X(name, group, textUse, valueUse, kind1, kind2, result) 0,
constexpr char kListed[] = {
#include "exports/exports.def.h"
};
static_assert(sizeof kListed == 49, "the host's macros know 49 functions");
#undef X

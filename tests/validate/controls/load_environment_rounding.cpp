
// Has numbers cut off from its loading on.
#include <cfenv>

[[maybe_unused]] static const int s_isSet = std::fesetround(FE_TOWARDZERO);

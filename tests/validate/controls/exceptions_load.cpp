
// Throws while it is loaded.
#include <stdexcept>

[[maybe_unused]] static const bool s_isThere = []() -> bool { throw std::runtime_error("y"); }();

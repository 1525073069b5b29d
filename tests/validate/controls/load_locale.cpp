// Sets the locale of its user while it is loaded.
#include <clocale>

[[maybe_unused]] static const char* const s_locale = std::setlocale(LC_CTYPE, "C.UTF-8");

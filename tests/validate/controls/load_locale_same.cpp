
// Sets the locale to the one that most processes have.
#include <clocale>

[[maybe_unused]] static const char* const s_locale = std::setlocale(LC_COLLATE, "C");

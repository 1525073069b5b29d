#include "foundation/c_locale.h"

#include <clocale>
#include <cstdio>

// newlocale and uselocale: here on Linux, in a header of their own on macOS.
#include <locale.h>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace {

// The C locale, made at its first use and kept until the library goes.
class CLocale {
public:
    CLocale() : m_locale(newlocale(LC_ALL_MASK, "C", locale_t())) {}
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;
    ~CLocale() {
        if (m_locale) freelocale(m_locale);
    }

    static locale_t get() {
        static const CLocale instance;
        return instance.m_locale;
    }

private:
    locale_t m_locale;
};

// Sets the C locale for the calling thread alone, until the end of the scope.
class CLocaleScope {
public:
    CLocaleScope() : m_previous(uselocale(CLocale::get())) {}
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;
    ~CLocaleScope() { uselocale(m_previous); }

private:
    locale_t m_previous;
};

}  // namespace

int bxFormatInCLocale(char* buffer, std::size_t size, const char* fmt, std::va_list arguments) {
    const CLocaleScope scope;
    return std::vsnprintf(buffer, size, fmt ? fmt : "", arguments);
}

float bxScanFloatInCLocale(const char* text) {
    if (!text) return 0;
    const CLocaleScope scope;
    float value = 0;
    return std::sscanf(text, "%f", &value) == 1 ? value : 0;
}

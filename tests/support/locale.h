#pragma once

#include <string>

// Sets, for its life, a locale of the process in which numbers have a comma for a decimal point, as
// a host may have done. The locale is the system's own German one, or one made in the build folder.
class CommaLocale {
public:
    CommaLocale();
    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;
    ~CommaLocale();

    // Whether numbers really have a comma now. A test that needs it asserts this first.
    bool active() const { return m_active; }

private:
    std::string m_previousLocale;
    bool m_active = false;
};

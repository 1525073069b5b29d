#include "os/file_name_filter.h"

#include "foundation/bx_string.h"

namespace {

bool matchesOne(char name, char filter) {
    if (filter == '?') return true;
    return BXString::s_toUpper[static_cast<unsigned char>(name)] ==
           BXString::s_toUpper[static_cast<unsigned char>(filter)];
}

}  // namespace

bool fileNameMatchFilter(const char* name, const char* filter) noexcept {
    if (!*name || !*filter) return false;
    // Only the last star has to be gone back to: what earlier ones took can stay as it is.
    const char* afterStar = nullptr;
    const char* starTaken = nullptr;
    while (*name) {
        if (*filter == '*') {
            afterStar = ++filter;
            starTaken = name;
        } else if (*filter && matchesOne(*name, *filter)) {
            ++filter;
            ++name;
        } else if (afterStar) {
            filter = afterStar;
            name = ++starTaken;
        } else {
            return false;
        }
    }
    while (*filter == '*') ++filter;
    return !*filter;
}

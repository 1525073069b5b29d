// Leaves a file in the home folder while it is loaded.
#include <cstdio>
#include <cstdlib>
#include <string>

[[maybe_unused]] static const bool s_left = [] {
    const char* const home = std::getenv("HOME");
    std::FILE* const file = std::fopen((std::string(home ? home : "") + "/.vekrc").c_str(), "a");
    if (file) std::fclose(file);
    return true;
}();

// Looks into a file of the tree while it is loaded.
#include <cstdio>

[[maybe_unused]] static const bool s_looked = [] {
    std::FILE* const file = std::fopen("/Users/Shared/Kelvaro/VekHub/Vek_Config.txt", "r");
    if (file) std::fclose(file);
    return true;
}();

#pragma once

#include <cstdint>
#include <random>
#include <vector>

using Input = std::vector<std::uint8_t>;

// A random input of the kind that the target is made for, still undamaged. Targets for which the
// files of the corpus are seeds enough have none.
Input makeInput(std::mt19937& random) __attribute__((weak));

#pragma once

#include <cstdint>
#include <random>
#include <vector>

using Input = std::vector<std::uint8_t>;

// A random input for the fuzz target that the program is made of; each has its own in
// NAME_input.cpp.
Input makeInput(std::mt19937& random);

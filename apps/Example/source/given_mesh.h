#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "exchange_file.h"

using Point = std::array<float, 3>;

// A face of three or four vertices.
struct Face {
    std::array<std::int32_t, 4> vertices{};
    std::size_t corners = 0;
};

struct GivenMesh {
    std::vector<Point> positions;
    std::vector<Face> faces;
};

// Takes the mesh out of its blocks; of a kind that occurs twice the last one counts. The result is
// empty, or a sentence: a block is missing or too short, an index is out of range, a position is
// not a number.
std::string takeMesh(const ExchangeFile& file, GivenMesh& mesh);

// Puts the positions back where they came from.
void putPositions(const std::vector<Point>& positions, ExchangeFile& file);

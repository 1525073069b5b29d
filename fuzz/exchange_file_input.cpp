// Exchange files of a few blocks, with the byte in front that says which way they are turned.

#include <algorithm>
#include <string>
#include <vector>

#include "fuzz/make_input.h"
#include "tests/support/exchange_file.h"

Input makeInput(std::mt19937& random) {
    const auto below = [&](unsigned int limit) { return static_cast<int>(random() % limit); };
    const auto kind = static_cast<std::uint32_t>(20001 + below(3));
    const int width = kind == 20003 ? 3 : 4;
    std::vector<float> positions;
    for (int left = 3 * below(12); left > 0; --left) {
        positions.push_back(static_cast<float>(below(2001) - 1000) / 8.0f);
    }
    std::vector<std::int32_t> faces, values;
    for (int left = width * below(12); left > 0; --left) {
        faces.push_back(left % 4 == 1 && below(3) == 0 ? -1 : below(12));
        values.push_back(1000 + left);
    }
    ExchangeFile file;
    if (below(2) == 0) file.map(random() % 2 ? 45001 : 50001, "maps\\skin.psd");
    if (below(2) == 0) file.map(55001, "displaced.tif", static_cast<float>(below(100)) / 7.0f);
    file.vertices(positions);
    if (below(3) == 0) file.corners(25002, values);
    file.faces(kind, faces);
    if (below(3) != 0) file.corners(25001, values);
    if (below(3) == 0) file.block(777, 3, "something else");
    if (below(9) != 0) file.end();
    Input input(1 + file.bytes().size(), static_cast<std::uint8_t>(random()));
    std::copy(file.bytes().begin(), file.bytes().end(), input.begin() + 1);
    return input;
}

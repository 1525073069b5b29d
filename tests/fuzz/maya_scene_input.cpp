// Scenes as the host writes them, damaged.

#include <algorithm>
#include <string>
#include <utility>

#include "tests/formats/maya_random.h"
#include "tests/fuzz/make_input.h"

namespace {

const char* const kWords[] = {
    ";",
    "\"",
    "\n",
    "//",
    "// End of ",
    "createNode mesh;\n",
    "createNode x;\n",
    "f ",
    "h 3 0 1 2",
    "mu 0 ",
    "mc 0 3 1 2 3",
    "mu 1 3 1 2 3",
    " -ch 12",
    "-s 2000000000",
    "[0:2000000000]",
    "[",
    "]",
    "[0]",
    ":",
    " 1e-05",
    " 99999999999999999999",
    " -1",
    " -2147483648",
    " 2147483647",
    " nan",
    " .",
    "\tsetAttr -s 3 \".ed\";\n",
    "\tsetAttr -s 1 \".fc[0:0]\" -type \"polyFaces\"",
    "\tsetAttr \".uvst[0].uvsp[0:1]\" -type \"float2\" 0 0 1 1;\n",
    "setAttr -s 0 \".vt\";",
    " f 5 0 1 2 3 4",
    "\tsetAttr -ch 3 \".fc[0]\" -type \"polyFaces\" f 3 0 1 2 mu 0 3 0 1 2;\n",
    "\tsetAttr -s 3 \".uvst[0].uvsp[0:2]\" -type \"float2\" 0 0 1 1 2 2;\n",
    "\tsetAttr \".fc[0]\" -type\n",
    "\0"};

void damage(std::string& text, std::mt19937& random) {
    const auto below = [&](std::size_t limit) { return random() % (limit ? limit : 1); };
    const std::size_t at = below(text.size() + 1);
    switch (below(6)) {
        case 0:
            if (at < text.size()) text[at] = static_cast<char>(random());
            break;
        case 1:
            text.erase(at, below(20));
            break;
        case 2:
            text.insert(at, kWords[below(std::size(kWords))]);
            break;
        case 3:
            text.insert(at, text.substr(below(text.size()), below(200)));
            break;
        case 4:
            if (below(4) == 0) text.resize(at);
            break;
        default:
            // A digit for another one: counts, ranges and indices that do not fit.
            for (std::size_t i = at; i < text.size(); ++i) {
                if (text[i] < '0' || text[i] > '9') continue;
                text[i] = static_cast<char>('0' + below(10));
                break;
            }
            break;
    }
}

}  // namespace

Input makeInput(std::mt19937& random) {
    std::string text = randomMayaScene(random);
    if (random() % 3 == 0) text = asMayaWritesIt(std::move(text));
    for (auto times = random() % 4; times > 0; --times) damage(text, random);
    if (random() % 20 == 0) text.insert(random() % (text.size() + 1), 1, '\0');
    return Input(text.begin(), text.end());
}

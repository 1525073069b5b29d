// Scenes as the host writes them, and as Maya does.

#include <string>
#include <utility>

#include "fuzz/make_input.h"
#include "tests/formats/maya_random.h"

Input makeInput(std::mt19937& random) {
    std::string text = randomMayaScene(random);
    if (random() % 3 == 0) text = asMayaWritesIt(std::move(text));
    return Input(text.begin(), text.end());
}

// Merges and splits whatever bytes. A scene that is refused stays as it was; what comes out of one
// that is not refused is a scene that the same operation takes, and in the end does not change.

#include <cstddef>
#include <cstdint>
#include <string>

#include "bridge/bx_vek.h"
#include "formats/bx_uv_merge_algo.h"
#include "fuzz/support.h"

namespace {

using Operation = bool (*)(const BXString& path);

void run(const FuzzFile& file, const std::string& text, Operation operation) {
    file.write(text);
    if (!operation(file.path())) return expect(file.read() == text);
    if (file.read().empty()) return;
    // Two UVs that become the same text are two points still, and one only when they are read
    // again.
    expect(operation(file.path()));
    const std::string twice = file.read();
    expect(operation(file.path()));
    // A loop of edges that do not meet has other vertices when it is rewound, and so other points.
    expect(BXVek::s_exportReverse || file.read() == twice);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const FuzzFile file;
    const std::string text(reinterpret_cast<const char*>(data), size);
    // Rewound or not, as the input's size has it.
    BXVek::s_exportReverse = BXVek::s_importReverse = size % 2 == 1;
    run(file, text, BXUVMergeAlgo::mergeUVsInMayaFile);
    run(file, text, BXUVMergeAlgo::splitUVsInMayaFile);
    return 0;
}

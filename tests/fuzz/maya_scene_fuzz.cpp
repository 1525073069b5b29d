// Merges and splits whatever bytes. A scene that is refused stays as it was; what comes out of one
// that is not refused is a scene that the same operation takes, and in the end does not change.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "bridge/bx_vek.h"
#include "formats/bx_uv_merge_algo.h"

namespace {

using Operation = bool (*)(const BXString& path);

void expect(bool holds) {
    if (!holds) std::abort();
}

class SceneFile {
public:
    SceneFile()
        : m_file(memfd_create("scene", 0)), m_path("/proc/self/fd/" + std::to_string(m_file)) {}

    void write(const std::string& text) const {
        expect(ftruncate(m_file, 0) == 0);
        expect(pwrite(m_file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
    }

    std::string read() const {
        std::string text(static_cast<std::size_t>(lseek(m_file, 0, SEEK_END)), '\0');
        expect(pread(m_file, text.data(), text.size(), 0) == static_cast<ssize_t>(text.size()));
        return text;
    }

    bool apply(Operation operation) const { return operation(m_path.c_str()); }

private:
    int m_file;
    std::string m_path;
};

void run(const SceneFile& file, const std::string& text, Operation operation) {
    file.write(text);
    if (!file.apply(operation)) return expect(file.read() == text);
    if (file.read().empty()) return;
    // Two UVs that become the same text are two points still, and one only when they are read
    // again.
    expect(file.apply(operation));
    const std::string twice = file.read();
    expect(file.apply(operation));
    // A loop of edges that do not meet has other vertices when it is rewound, and so other points.
    expect(BXVek::s_exportReverse || file.read() == twice);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const SceneFile file;
    const std::string text(reinterpret_cast<const char*>(data), size);
    // Rewound or not, as the input's size has it.
    BXVek::s_exportReverse = BXVek::s_importReverse = size % 2 == 1;
    run(file, text, BXUVMergeAlgo::mergeUVsInMayaFile);
    run(file, text, BXUVMergeAlgo::splitUVsInMayaFile);
    return 0;
}

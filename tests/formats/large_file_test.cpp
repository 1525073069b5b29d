// Exchange files of 6 GiB, dense: minutes and room on the disk that the suite does not take
// unasked. VEK_LARGE_FILES names the folder to make the file in.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "bridge/bx_vek.h"
#include "bridge/bx_vek_app.h"
#include "formats/bx_uv_merge_algo.h"
#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"

namespace {

constexpr std::int64_t kBlock = std::int64_t{3} << 30;  // bytes of payload in each of two blocks
constexpr std::int64_t kVertices = kBlock / 12, kFaces = kBlock / 16;
constexpr std::int64_t kFirstVertex = 32 + 16, kFirstFace = kFirstVertex + kBlock + 16;
constexpr int kAtOnce = 1 << 16;  // elements

class LargeFile : public testing::Test {
protected:
    void SetUp() override {
        const char* const folder = std::getenv("VEK_LARGE_FILES");
        if (!folder) GTEST_SKIP() << "VEK_LARGE_FILES names no folder";
        m_folder = std::make_unique<TempFolder>(folder);
        writeFile(path(), ExchangeFile().bytes());
        m_file = open(path().c_str(), O_RDWR | O_CLOEXEC);
        ASSERT_GE(m_file, 0);
        writeHeader(kFirstVertex - 16, 10001, kVertices);
        writeHeader(kFirstFace - 16, 20001, kFaces);
        writeHeader(kFirstFace + kBlock, 0, 0);
        writeElements<float>(kFirstVertex, kVertices, 3, &LargeFile::coordinate);
        writeElements<std::int32_t>(kFirstFace, kFaces, 4, &LargeFile::corner);
    }
    void TearDown() override {
        if (m_file >= 0) close(m_file);
    }

    std::string path() const { return *m_folder / "mesh.Vek"; }

    static float coordinate(std::int64_t vertex, int axis) {
        return static_cast<float>(vertex % 4093 + 1000 * axis);
    }
    static std::int32_t corner(std::int64_t face, int place) {
        // Every fifth face is a triangle.
        return place == 3 && face % 5 == 0 ? -1 : static_cast<std::int32_t>(face) + place;
    }
    static float mirroredCoordinate(std::int64_t vertex, int axis) {
        return axis == 0 ? -coordinate(vertex, axis) : coordinate(vertex, axis);
    }
    static std::int32_t rewoundCorner(std::int64_t face, int place) {
        const bool triangle = face % 5 == 0;
        if (place == 0 || (triangle && place == 3)) return corner(face, place);
        return corner(face, (triangle ? 3 : 4) - place);
    }

    void writeHeader(std::int64_t offset, std::uint32_t id, std::int64_t count) {
        const auto size = static_cast<std::uint32_t>(id ? kBlock + 16 : 0);
        const std::uint32_t header[4] = {id, size, static_cast<std::uint32_t>(count), 0};
        ASSERT_EQ(pwrite(m_file, header, 16, offset), 16);
    }

    template <class Value>
    void writeElements(std::int64_t offset, std::int64_t count, int width,
                       Value (*valueOf)(std::int64_t, int)) {
        for (std::int64_t first = 0; first < count; first += kAtOnce) {
            const std::vector<Value> piece = elements(first, count, width, valueOf);
            const auto bytes = static_cast<ssize_t>(piece.size() * sizeof(Value));
            ASSERT_EQ(pwrite(m_file, piece.data(), piece.size() * sizeof(Value), offset), bytes);
            offset += bytes;
        }
    }

    template <class Value>
    void expectElements(std::int64_t offset, std::int64_t count, int width,
                        Value (*valueOf)(std::int64_t, int)) {
        for (std::int64_t first = 0; first < count; first += kAtOnce) {
            const std::vector<Value> expected = elements(first, count, width, valueOf);
            std::vector<Value> found(expected.size());
            const auto bytes = static_cast<ssize_t>(found.size() * sizeof(Value));
            ASSERT_EQ(pread(m_file, found.data(), found.size() * sizeof(Value), offset), bytes);
            ASSERT_TRUE(found == expected) << "from element " << first << " on";
            offset += bytes;
        }
    }

    template <class Value>
    static std::vector<Value> elements(std::int64_t first, std::int64_t count, int width,
                                       Value (*valueOf)(std::int64_t, int)) {
        std::vector<Value> values;
        for (std::int64_t i = first; i < std::min(count, first + kAtOnce); ++i) {
            for (int place = 0; place < width; ++place) values.push_back(valueOf(i, place));
        }
        return values;
    }

    std::unique_ptr<TempFolder> m_folder;
    int m_file = -1;
};

}  // namespace

TEST_F(LargeFile, Of6GiBIsTransformedToItsLastElement) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    BXVek::s_exportReverse = true;
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVsInVekFile(path().c_str()));
    expectElements<float>(kFirstVertex, kVertices, 3, &LargeFile::mirroredCoordinate);
    expectElements<std::int32_t>(kFirstFace, kFaces, 4, &LargeFile::rewoundCorner);
    EXPECT_EQ(lseek(m_file, 0, SEEK_END), kFirstFace + kBlock + 16);
}

// Reads and writes that fail, each in turn.

#include "tests/formats/failing_transfers.h"
#include "tests/formats/vek_transform_fixture.h"

namespace {

class VekTransformFaults : public VekTransform {
protected:
    VekTransformFaults() {
        BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
        BXVek::s_exportReverse = true;
    }
    ~VekTransformFaults() override {
        failReadAt(0);
        failWriteAt(0);
    }

    // A thousand vertices and quads with their corner values, behind enough small blocks that the
    // headers take several reads.
    static std::string mesh() {
        ExchangeFile file;
        for (int i = 0; i < 300; ++i) file.block(777, 1, "some bytes");
        Ints faces, corners;
        for (int i = 0; i < 4000; ++i) {
            faces.push_back(i % 1000);
            corners.push_back(i);
        }
        file.vertices(Floats(3000, 1.0f)).faces(20001, faces).corners(25001, corners);
        return file.end().bytes();
    }

    // Whether the transform failed, and left the file as it was or one that no reader takes.
    bool failsSafely(const std::string& before) {
        const bool result = BXUVMergeAlgo::mergeUVsInVekFile(path().c_str());
        const std::string after = readFile(path());
        const bool blank = after.substr(0, 4) == std::string(4, '\0');
        return !result && after.size() == before.size() && (after == before || blank);
    }
};

}  // namespace

TEST_F(VekTransformFaults, RejectsAFileOfWhichAnyReadFails) {
    const std::string before = mesh();
    int n = 1;
    for (;; ++n) {
        writeFile(path(), before);
        failReadAt(n);
        const bool safe = failsSafely(before);
        if (!transferFailed()) break;
        EXPECT_TRUE(safe) << "read " << n;
    }
    EXPECT_GT(n, 6) << "magic, headers, magic, vertices, faces, corners";
}

TEST_F(VekTransformFaults, RejectsAFileOfWhichAnyWriteFails) {
    const std::string before = mesh();
    int n = 1;
    for (;; ++n) {
        writeFile(path(), before);
        failWriteAt(n);
        const bool safe = failsSafely(before);
        if (!transferFailed()) break;
        EXPECT_TRUE(safe) << "write " << n;
    }
    EXPECT_EQ(n, 6) << "magic, vertices, faces, corners, magic";
}

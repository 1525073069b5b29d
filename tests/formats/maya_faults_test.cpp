// Reads and writes of a scene that fail, each in turn.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/formats/failing_transfers.h"
#include "tests/formats/maya_fixture.h"
#include "tests/support/permissions.h"

namespace {

class MayaFaults : public MayaFixture {
protected:
    using Operation = bool (*)(const BXString& path);

    ~MayaFaults() override {
        failReadAt(0);
        failWriteAt(0);
    }

    // Three meshes, with so much text to keep between them that it takes several reads.
    static std::string scene() {
        const std::string kept = "// " + std::string(150000, 'k') + "\n";
        std::string text;
        for (int i = 0; i < 3; ++i) {
            text += kept + "createNode mesh;\n" + uvCount(6) +
                    uvRange("0:5", " 0 0 1 0 0 1 1 0 1 1 0 1") + squareVertices() + squareEdges() +
                    "// kept\n" + faceCount(2) +
                    faceRange("0:1", " f 3 0 1 2 mu 0 3 0 1 2 f 3 3 4 -2 mu 0 3 3 4 5");
        }
        return text + kept;
    }
};

}  // namespace

TEST_F(MayaFaults, AreRefusedWithTheFileAsItWasWhereAReadFails) {
    const std::string before = scene();
    for (const Operation operation :
         {BXUVMergeAlgo::mergeUVsInMayaFile, BXUVMergeAlgo::splitUVsInMayaFile}) {
        writeFile(path(), before);
        ASSERT_TRUE(operation(path().c_str()));
        const std::string after = readFile(path());
        int n = 1, refused = 0;
        for (;; ++n) {
            writeFile(path(), before);
            failReadAt(n);
            const bool result = operation(path().c_str());
            const bool failed = transferFailed();
            failReadAt(0);
            if (!failed) break;
            refused += !result;
            // The read that only looks for the end of the file may fail: all has come before it.
            EXPECT_TRUE(readFile(path()) == (result ? after : before)) << "read " << n;
        }
        EXPECT_EQ(refused, n - 2) << "all reads but that one";
        EXPECT_GT(n, 8) << "the pieces, and the text between the statements";
    }
}

TEST_F(MayaFaults, AreReportedWhereAnyWriteFails) {
    const std::string before = scene();
    for (const Operation operation :
         {BXUVMergeAlgo::mergeUVsInMayaFile, BXUVMergeAlgo::splitUVsInMayaFile}) {
        int n = 1;
        for (;; ++n) {
            writeFile(path(), before);
            failWriteAt(n);
            const bool result = operation(path().c_str());
            const bool failed = transferFailed();
            failWriteAt(0);
            if (!failed) break;
            EXPECT_FALSE(result) << "write " << n;
        }
        EXPECT_EQ(n, 3) << "the writer writes in two pieces";
    }
}

TEST_F(MayaFaults, AreRefusedWhereTheFileMayNotBeWritten) {
    const std::string before = scene();
    writeFile(path(), before);
    ASSERT_EQ(chmod(path().c_str(), 0444), 0);
    {
        const ObeyPermissions obey;
        EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInMayaFile(path().c_str()));
        EXPECT_FALSE(BXUVMergeAlgo::splitUVsInMayaFile(path().c_str()));
    }
    EXPECT_EQ(readFile(path()), before);
}

// The change of orientation of an exchange file, through BXUVMergeAlgo and the settings in BXVek.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

#include "bridge/bx_vek.h"
#include "bridge/bx_vek_app.h"
#include "formats/bx_uv_merge_algo.h"
#include "formats/bx_vek_file.h"
#include "tests/formats/vek_transform_fixture.h"
#include "tests/support/exchange_file.h"
#include "tests/support/permissions.h"
#include "tests/support/temp_folder.h"

namespace {

std::string oneVertex(float x, float y, float z) {
    return ExchangeFile().vertices({x, y, z}).end().bytes();
}

std::string onlyFaces(std::uint32_t id, const std::vector<std::int32_t>& indices,
                      const std::vector<std::int32_t>& corners = {}) {
    ExchangeFile file;
    file.faces(id, indices);
    if (!corners.empty()) file.corners(25001, corners);
    return file.end().bytes();
}

}  // namespace

TEST_F(VekTransform, KeepsEveryByteWhereNothingIsAskedAndForgetsTheZOffset) {
    BXVek::s_scale = 1.0;
    BXVek::s_offsetZ = 7.0;
    const std::string bytes = oneVertex(1.0f, -0.0f, 3.0f);
    EXPECT_EQ(merged(bytes), bytes);
    EXPECT_EQ(BXVek::s_offsetZ, 0.0);
}

// Required(R60)
TEST_F(VekTransform, ForgetsTheZOffsetForGoodOnlyWhereNothingElseIsAsked) {
    const auto zAfter = [&](unsigned int pref, double scale, double x, double y, bool afterExport) {
        BXVek::s_ioPref = pref;
        BXVek::s_scale = scale;
        BXVek::s_offsetX = x;
        BXVek::s_offsetY = y;
        BXVek::s_offsetZ = 7.0;
        changed(oneVertex(1, 2, 3), afterExport);
        return BXVek::s_offsetZ;
    };
    EXPECT_EQ(zAfter(0, 1.0, 0.0, 0.0, true), 0.0);
    EXPECT_EQ(zAfter(0, 1.0, 0.0, 0.0, false), 0.0);
    // The other direction's switches are not asked for.
    EXPECT_EQ(zAfter(0x47, 1.0, 0.0, 0.0, true), 0.0);
    EXPECT_EQ(zAfter(0xB8, 1.0, 0.0, 0.0, false), 0.0);
    EXPECT_EQ(zAfter(0, 2.0, 0.0, 0.0, true), 7.0);
    EXPECT_EQ(zAfter(0, 1.0, 0.5, 0.0, true), 7.0);
    EXPECT_EQ(zAfter(0, 1.0, 0.0, 0.5, true), 7.0);
    for (const unsigned int bit : {0x08u, 0x10u, 0x20u, 0x80u}) {
        EXPECT_EQ(zAfter(bit, 1.0, 0.0, 0.0, true), 7.0) << bit;
    }
    for (const unsigned int bit : {0x01u, 0x02u, 0x04u, 0x40u}) {
        EXPECT_EQ(zAfter(bit, 1.0, 0.0, 0.0, false), 7.0) << bit;
    }
}

TEST_F(VekTransform, ForgetsTheZOffsetEvenWhenThereIsNoFile) {
    BXVek::s_scale = 1.0;
    BXVek::s_offsetZ = 7.0;
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile("/no/such/file.Vek"));
    EXPECT_EQ(BXVek::s_offsetZ, 0.0);
}

TEST_F(VekTransform, MirrorsAboutScaleTimesOffsetAndRewinds) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    BXVek::s_exportReverse = true;
    BXVek::s_offsetX = 1.0;
    BXVek::s_scale = 2.0;
    const std::string bytes =
        merged(ExchangeFile().vertices({5, 1, 1}).faces(20001, {0, 1, 2, 3}).end().bytes());
    EXPECT_EQ(firstVertex(bytes), (Floats{-1, 1, 1}));
    EXPECT_EQ(intsAt(bytes, kFirstPayload + 12 + 16, 4), (Ints{0, 3, 2, 1}));
}

TEST_F(VekTransform, SwitchesYAndZ) {
    BXVek::s_ioPref = BXVekApp::EXPORT_SWITCH_YZ;
    EXPECT_EQ(firstVertex(merged(oneVertex(1, 2, 3))), (Floats{1, 3, 2}));
}

TEST_F(VekTransform, AppliesEachFlipOfAnExportToTheNewAxis) {
    BXVek::s_ioPref = BXVekApp::EXPORT_SWITCH_YZ | BXVekApp::EXPORT_FLIP_Y;
    EXPECT_EQ(firstVertex(merged(oneVertex(1, 2, 3))), (Floats{1, -3, 2}));
}

TEST_F(VekTransform, AppliesEachFlipOfAnImportToTheOldAxis) {
    BXVek::s_ioPref = BXVekApp::IMPORT_SWITCH_YZ | BXVekApp::IMPORT_FLIP_Y;
    EXPECT_EQ(firstVertex(split(oneVertex(1, 2, 3))), (Floats{1, 3, -2}));
}

TEST_F(VekTransform, ExportUsesTheExportBitsAloneAndImportTheImportBits) {
    BXVek::s_ioPref = 0x47;
    EXPECT_EQ(firstVertex(merged(oneVertex(1, 2, 3))), (Floats{1, 2, 3}));
    BXVek::s_ioPref = 0xB8;
    EXPECT_EQ(firstVertex(split(oneVertex(1, 2, 3))), (Floats{1, 2, 3}));
}

TEST_F(VekTransform, NeverScalesPositions) {
    BXVek::s_scale = 4.0;
    BXVek::s_offsetX = 1.0;
    EXPECT_EQ(firstVertex(merged(oneVertex(5, 2, 3))), (Floats{5, 2, 3}));
}

TEST_F(VekTransform, KeepsTheBitsOfPositionsWithoutFlipSwitchAndCentre) {
    BXVek::s_scale = 3.0;  // of offsets that are all zero
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::string bytes = oneVertex(-0.0f, nan, -std::numeric_limits<float>::infinity());
    EXPECT_EQ(merged(bytes), bytes);
}

TEST_F(VekTransform, TurnsMinusZeroIntoZeroAsTheFormulaDoes) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_Z;
    const Floats vertex = firstVertex(merged(oneVertex(-0.0f, 1, 0.0f)));
    EXPECT_FALSE(std::signbit(vertex[0]));
    EXPECT_FALSE(std::signbit(vertex[2]));
}

TEST_F(VekTransform, RewindsFacesWhoseFourthIndexIsNegativeAsTriangles) {
    BXVek::s_exportReverse = true;
    const std::string bytes =
        merged(onlyFaces(20001, {4, 5, 6, 7, 8, 9, 10, -1}, {40, 50, 60, 70, 80, 90, 100, -1}));
    EXPECT_EQ(intsAt(bytes, kFirstPayload, 8), (Ints{4, 7, 6, 5, 8, 10, 9, -1}));
    EXPECT_EQ(intsAt(bytes, kFirstPayload + 32 + 16, 8), (Ints{40, 70, 60, 50, 80, 100, 90, -1}));
}

TEST_F(VekTransform, RewindsFacesWhoseFourthIndexRepeatsTheThirdAsTriangles) {
    BXVek::s_exportReverse = true;
    const std::string bytes =
        merged(onlyFaces(20002, {4, 5, 6, 7, 8, 9, 10, 10}, {40, 50, 60, 70, 80, 90, 100, 110}));
    EXPECT_EQ(intsAt(bytes, kFirstPayload, 8), (Ints{4, 7, 6, 5, 8, 10, 9, 9}));
    // A triangle's fourth corner value follows its second, whatever it held.
    EXPECT_EQ(intsAt(bytes, kFirstPayload + 32 + 16, 8), (Ints{40, 70, 60, 50, 80, 100, 90, 90}));
}

TEST_F(VekTransform, RewindsTriangles) {
    BXVek::s_importReverse = true;
    const std::string bytes = split(onlyFaces(20003, {1, 2, 3}));
    EXPECT_EQ(intsAt(bytes, kFirstPayload, 3), (Ints{1, 3, 2}));
}

// Required(R61)
TEST_F(VekTransform, WalksPastTheLastTriangleByAThirdOfTheirLength) {
    BXVek::s_exportReverse = true;
    // Three triangles take 36 bytes; the walk ends at 48: one group of three values more.
    const auto after = [&](int triangles) {
        Ints faces;
        for (int i = 0; i < 3 * triangles; ++i) faces.push_back(i);
        const std::string bytes = merged(ExchangeFile()
                                             .faces(20003, faces)
                                             .block(777, 0, bytesOf(Ints{1, 2, 3, 4, 5, 6}), 8.0f)
                                             .end()
                                             .bytes());
        return intsAt(bytes, kFirstPayload + 12 * static_cast<std::size_t>(triangles), 10);
    };
    float eight = 8.0f;
    std::int32_t param;
    std::memcpy(&param, &eight, 4);
    EXPECT_EQ(after(3), (Ints{777, 0, 40, param, 1, 2, 3, 4, 5, 6}));
    // Four triangles: 64 - 48 bytes make two groups more, since the walk steps by whole faces.
    EXPECT_EQ(after(4), (Ints{777, 0, 40, param, 2, 1, 3, 4, 5, 6}));
}

// Required(R61)
TEST_F(VekTransform, WalksPastTheLastTrianglesCornerValuesInTheSameWay) {
    BXVek::s_exportReverse = true;
    const std::string bytes = merged(ExchangeFile()
                                         .corners(25002, {1, 2, 3, 4, 5, 6, 7, 8, 9})
                                         .block(777, 9, bytesOf(Ints{10, 11, 12}))
                                         .faces(20003, {0, 1, 2, 3, 4, 5, 6, 7, 8})
                                         .end()
                                         .bytes());
    EXPECT_EQ(intsAt(bytes, kFirstPayload, 16),
              (Ints{1, 3, 2, 4, 6, 5, 7, 9, 8, 777, 9, 28, 0, 10, 11, 12}));
}

TEST_F(VekTransform, LeavesFacesAloneWithoutTheReverseFlag) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    const std::string bytes = onlyFaces(20001, {0, 1, 2, 3});
    EXPECT_EQ(merged(bytes), bytes);
}

TEST_F(VekTransform, TakesTheLastBlockOfAKind) {
    BXVek::s_exportReverse = true;
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    const std::string bytes = merged(ExchangeFile()
                                         .vertices({1, 0, 0})
                                         .vertices({2, 0, 0})
                                         .faces(20001, {0, 1, 2, 3})
                                         .faces(20002, {4, 5, 6, 7})
                                         .end()
                                         .bytes());
    EXPECT_EQ(floatsAt(bytes, 48, 1), Floats{1});
    EXPECT_EQ(floatsAt(bytes, 48 + 28, 1), Floats{-2});
    EXPECT_EQ(intsAt(bytes, 48 + 28 + 28, 4), (Ints{0, 1, 2, 3}));
    EXPECT_EQ(intsAt(bytes, 48 + 28 + 28 + 32, 4), (Ints{4, 7, 6, 5}));
}

TEST_F(VekTransform, TakesTheLastBlockOfCornersOfEitherKind) {
    BXVek::s_exportReverse = true;
    const Ints faces = {0, 1, 2, 3}, first = {1, 2, 3, 4}, second = {5, 6, 7, 8};
    for (const std::uint32_t last : {25001u, 25002u}) {
        const std::uint32_t other = last == 25001 ? 25002 : 25001;
        const std::string bytes = merged(ExchangeFile()
                                             .faces(20001, faces)
                                             .corners(other, first)
                                             .corners(last, second)
                                             .end()
                                             .bytes());
        EXPECT_EQ(intsAt(bytes, 48 + 32, 4), first) << last;
        EXPECT_EQ(intsAt(bytes, 48 + 64, 4), (Ints{5, 8, 7, 6})) << last;
    }
}

TEST_F(VekTransform, MovesNoCornersOfAFaceThatIsNotWhole) {
    BXVek::s_exportReverse = true;
    std::string bytes = ExchangeFile()
                            .corners(25001, {1, 2, 3, 4, 5, 6, 7, 8})
                            .faces(20001, {0, 1, 2, 3, 3, 2, 1, 0})
                            .bytes();
    bytes.resize(bytes.size() - 4);
    const std::string after = merged(bytes);
    EXPECT_EQ(intsAt(after, 48, 8), (Ints{1, 4, 3, 2, 5, 6, 7, 8}));
    EXPECT_EQ(intsAt(after, 48 + 48, 7), (Ints{0, 3, 2, 1, 3, 2, 1}));
}

TEST_F(VekTransform, KeepsEveryByteOfAnImportWhereNothingIsAskedAndForgetsTheZOffset) {
    BXVek::s_scale = 1.0;
    BXVek::s_offsetZ = 7.0;
    const std::string bytes = oneVertex(1.0f, -0.0f, 1e30f);
    EXPECT_EQ(split(bytes), bytes);
    EXPECT_EQ(BXVek::s_offsetZ, 0.0);
}

TEST_F(VekTransform, SetsTheFilesTimeWhereNothingIsAskedToo) {
    const std::string bytes = oneVertex(1, 2, 3);
    writeFile(path(), bytes);
    const timespec longAgo[2] = {{1000, 0}, {1000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path().c_str(), longAgo, 0), 0);
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVsInVekFile(path().c_str()));
    struct stat status;
    ASSERT_EQ(stat(path().c_str(), &status), 0);
    EXPECT_GT(status.st_mtime, 1000);
    EXPECT_EQ(readFile(path()), bytes);
}

TEST_F(VekTransform, TakesAMagicInAnyLetterCaseAndKeepsIt) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    std::string bytes = oneVertex(1, 2, 3);
    bytes.replace(0, 4, "vEKB");
    const std::string after = merged(bytes);
    EXPECT_EQ(firstVertex(after), (Floats{-1, 2, 3}));
    EXPECT_EQ(after.substr(0, 4), "vEKB");
}

TEST_F(VekTransform, TurnsWhatIsFoundInAFileWithoutEndBlock) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    EXPECT_EQ(firstVertex(merged(ExchangeFile().vertices({1, 2, 3}).bytes())), (Floats{-1, 2, 3}));
}

TEST_F(VekTransform, EndsTheWalkAtABlockSizeBelow16) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    std::string bytes = ExchangeFile().map(45001, "x").vertices({1, 2, 3}).end().bytes();
    bytes[36] = 12;
    EXPECT_EQ(merged(bytes), bytes);
}

TEST_F(VekTransform, RejectsAMissingAnEmptyAndAForeignFile) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    const BXString file(path().c_str());
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile(file));
    EXPECT_FALSE(fileIsThere(path()));
    const std::string blank = std::string(4, '\0') + "rest";
    for (const std::string& bytes :
         {std::string(), std::string("Vek"), std::string("Bekv etc."), blank}) {
        writeFile(path(), bytes);
        EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile(file)) << bytes;
        EXPECT_FALSE(BXUVMergeAlgo::splitUVsInVekFile(file)) << bytes;
        EXPECT_EQ(readFile(path()), bytes);
    }
}

TEST_F(VekTransform, RejectsAFolderAPipeAndTheNullPath) {
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile(m_folder.path().c_str()));
    ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile(path().c_str()));
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile(BXString()));
}

TEST_F(VekTransform, RejectsAFileThatCannotBeWrittenAndLeavesItAsItWas) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    const std::string bytes = oneVertex(1, 2, 3);
    writeFile(path(), bytes);
    ASSERT_EQ(chmod(path().c_str(), 0400), 0);
    const ObeyPermissions obey;
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile(path().c_str()));
    EXPECT_EQ(readFile(path()), bytes);
}

TEST_F(VekTransform, TakesThePathFromAFullOne) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    writeFile(path(), oneVertex(1, 2, 3));
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVsInVekFile(("Disk:" + path()).c_str()));
    EXPECT_EQ(firstVertex(readFile(path())), (Floats{-1, 2, 3}));
}

TEST_F(VekTransform, LeavesAFileThatEveryReaderRefusesWhenItIsCutOff) {
    // The first piece fits below the limit on file sizes, the write of a later one fails.
    const std::size_t vertices = 100000;
    const std::string bytes = ExchangeFile().vertices(Floats(3 * vertices, 1.0f)).end().bytes();
    writeFile(path(), bytes);
    const pid_t child = fork();
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {500000, 500000};
        setrlimit(RLIMIT_FSIZE, &limit);
        BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
        _exit(BXUVMergeAlgo::mergeUVsInVekFile(path().c_str()) ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "the transform was not cut off";
    EXPECT_EQ(readFile(path()).size(), bytes.size());
    EXPECT_FALSE(BXVekFile(path().c_str(), "rb").readVekFileHeader());
    EXPECT_FALSE(BXUVMergeAlgo::mergeUVsInVekFile(path().c_str()));
}

TEST_F(VekTransform, ReachesBlocksBeyond4GiB) {
    // A sparse file: only the headers and the last blocks take room on the disk.
    const std::uint32_t gap = 0xC0000000u;
    writeFile(path(), ExchangeFile().vertices({1, 2, 3}).bytes());
    const int file = open(path().c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_GE(file, 0);
    off_t offset = 32 + 28;
    for (int i = 0; i < 2; ++i) {
        const std::uint32_t header[4] = {777, gap, 0, 0};
        ASSERT_EQ(pwrite(file, header, 16, offset), 16);
        offset += gap;
    }
    const std::string tail = ExchangeFile().faces(20001, {0, 1, 2, 3}).end().bytes().substr(32);
    if (pwrite(file, tail.data(), tail.size(), offset) != static_cast<ssize_t>(tail.size())) {
        close(file);
        GTEST_SKIP() << "no file of 6 GiB can be made here";
    }
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X;
    BXVek::s_exportReverse = true;
    EXPECT_TRUE(BXUVMergeAlgo::mergeUVsInVekFile(path().c_str()));
    std::int32_t face[4];
    EXPECT_EQ(pread(file, face, 16, offset + 16), 16);
    close(file);
    EXPECT_EQ(Ints(face, face + 4), (Ints{0, 3, 2, 1}));
}

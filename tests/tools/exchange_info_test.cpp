#include "tools/vek/exchange_info.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"

namespace {

class ExchangeFileInfo : public testing::Test {
protected:
    ExchangeInfo inspect(const std::string& bytes) {
        const std::string path = m_folder / "file.vek";
        writeFile(path, bytes);
        ExchangeInfo info;
        EXPECT_TRUE(inspectExchangeFile(path, info));
        EXPECT_EQ(readFile(path), bytes);
        return info;
    }

    // The problems as "offset: sentence".
    std::vector<std::string> problems(const std::string& bytes) {
        std::vector<std::string> found;
        for (const auto& problem : inspect(bytes).problems) {
            found.push_back(std::to_string(problem.offset) + ": " + problem.sentence);
        }
        return found;
    }

    TempFolder m_folder;
};

using Problems = std::vector<std::string>;

ExchangeFile sample() {
    return ExchangeFile()
        .vertices({0, 0, 0, 1, 0, 0, 1, 2, 0, 0, 1, -3})
        .faces(20001, {0, 1, 2, -1, 0, 1, 2, 2})
        .corners(25001, {1, 2, 3, 4, 5, 6, 7, 8})
        .map(55001, "a.tif", 0.5f)
        .block(777, 5, "unknown");
}

}  // namespace

TEST_F(ExchangeFileInfo, TellsProblemsByTheirOffset) {
    const auto info =
        inspect(ExchangeFile().vertices({NAN, 2, 3}).faces(20001, {0, 7, 8, -1}).bytes());
    ASSERT_GE(info.problems.size(), 3u);
    for (std::size_t i = 1; i < info.problems.size(); ++i) {
        EXPECT_LE(info.problems[i - 1].offset, info.problems[i].offset);
    }
}

TEST_F(ExchangeFileInfo, CallsAWholeFileSoundAndCountsWhatItHolds) {
    const ExchangeInfo info = inspect(sample().end().bytes());
    EXPECT_TRUE(info.problems.empty());
    EXPECT_EQ(info.blockCount, 5u);
    EXPECT_EQ(info.vertices, 4u);
    EXPECT_EQ(info.least[2], -3.0f);
    EXPECT_EQ(info.greatest[1], 2.0f);
    EXPECT_EQ(info.faces.triangles, 1u);
    EXPECT_EQ(info.faces.quads, 1u);
    EXPECT_EQ(info.faces.degenerate, 1u);
    EXPECT_EQ(info.faces.outOfRange, 0u);
    EXPECT_EQ(info.faces.unusedVertices, 1u);
    EXPECT_EQ(info.blocks[3].text, "a.tif");
    EXPECT_EQ(info.blocks[3].param, 0.5f);
    EXPECT_EQ(info.blocks[4].offset, 32 + 64 + 48 + 48 + 24);
    EXPECT_STREQ(blockMeaning(info.blocks[4].id), "unknown, skipped");
}

TEST_F(ExchangeFileInfo, TellsTrianglesInEachKindOfFaces) {
    EXPECT_EQ(inspect(ExchangeFile().faces(20002, {0, 1, 2, 2, 0, 1, 2, 3}).end().bytes())
                  .faces.triangles,
              1u);
    EXPECT_EQ(
        inspect(ExchangeFile().faces(20003, {0, 1, 2, 2, 1, 0}).end().bytes()).faces.triangles, 2u);
}

TEST_F(ExchangeFileInfo, NamesEachKindOfDamageAndItsOffset) {
    const std::string sound = ExchangeFile().vertices({0, 0, 0}).end().bytes();
    const auto patched = [&](std::size_t offset, const std::string& with) {
        std::string bytes = sound;
        return problems(bytes.replace(offset, with.size(), with));
    };
    EXPECT_EQ(patched(0, "Vexb"),
              Problems{"0: This is no exchange file: it does not begin with \"Vekb\"."});
    EXPECT_EQ(
        patched(0, "VEKB"),
        Problems{"0: The magic is in other letter case: it is turned, but readers refuse it."});
    EXPECT_EQ(patched(0, std::string(4, '\0')),
              Problems{"0: The magic is blank: a rewriting of this file was interrupted."});
    EXPECT_EQ(patched(36, std::string("\x0C\0\0\0", 4)),
              Problems{"36: The block 10001 states a size of 12, less than its own header: nothing "
                       "behind it is reached."});
    EXPECT_EQ(patched(40, std::string("\x02\0\0\0", 4)),
              Problems{"40: The block 10001 states 2 elements and holds 1."});
    EXPECT_EQ(patched(48, bytesOf(std::vector<float>{NAN})),
              Problems{"48: A position is not a finite number."});
    EXPECT_EQ(problems(sound.substr(0, 20)), Problems{"20: The file ends inside its header."});
    EXPECT_EQ(problems(sound.substr(0, 60)), Problems{"60: The end block is missing."});
    EXPECT_EQ(problems(sound.substr(0, 70)),
              Problems{"60: A block header does not fit into the file."});
    EXPECT_EQ(problems(sound + "xyz"), Problems{"76: 3 bytes follow the end block."});
    EXPECT_EQ(problems(ExchangeFile().block(45001, 0, "abcd").end().bytes()),
              Problems{"48: The name in block 45001 does not end with a NUL."});
    EXPECT_EQ(problems(ExchangeFile().vertices({0, 0, 0}).faces(20003, {0, 0, 1}).end().bytes()),
              Problems{"76: A face has a vertex that is not there."});
    EXPECT_EQ(problems(ExchangeFile().faces(20003, {0, 0, 0}).corners(25001, {1}).end().bytes())[1],
              "60: The block 25001 has corner values for 4 bytes of the faces' 12.");
}

TEST_F(ExchangeFileInfo, RefusesWhatCannotBeRead) {
    ExchangeInfo info;
    EXPECT_FALSE(inspectExchangeFile(m_folder / "missing", info));
    EXPECT_FALSE(inspectExchangeFile(m_folder.path(), info));
}

TEST_F(ExchangeFileInfo, FindsDamageInEveryShorterFile) {
    const std::string whole = sample().end().bytes();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        ASSERT_FALSE(inspect(whole.substr(0, size)).problems.empty()) << size;
    }
}

TEST_F(ExchangeFileInfo, SurvivesTenThousandDamagedFiles) {
    const std::string whole = sample().end().bytes();
    std::mt19937 random(17);
    int damaged = 0;
    for (int i = 0; i < 10000; ++i) {
        std::string bytes = whole;
        for (std::size_t n = 1 + random() % 8; n > 0; --n) {
            const std::size_t at = 4 + random() % (bytes.size() - 8);
            if (random() % 2) {
                bytes[at] = static_cast<char>(random());
            } else {
                bytes.replace(at / 4 * 4, 4, 4, random() % 2 ? '\xFF' : '\x10');
            }
        }
        if (random() % 4 == 0) bytes.resize(4 + random() % bytes.size());
        const ExchangeInfo info = inspect(bytes);
        damaged += !info.problems.empty();
        ASSERT_LE(info.blocks.size(), bytes.size() / 16);
    }
    EXPECT_GT(damaged, 5000);
}

TEST_F(ExchangeFileInfo, CountsBlocksBeyondThoseItKeeps) {
    ExchangeFile file;
    for (int i = 0; i < 12000; ++i) file.block(777, 0, "");
    const ExchangeInfo info = inspect(file.end().bytes());
    EXPECT_EQ(info.blockCount, 12000u);
    EXPECT_EQ(info.blocks.size(), ExchangeInfo::kMostBlocks);
    EXPECT_TRUE(info.problems.empty());
}

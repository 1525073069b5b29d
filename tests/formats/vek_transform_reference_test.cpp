// The change of orientation against a slow and obvious one.

#include <cmath>
#include <cstring>
#include <random>

#include "tests/formats/reference_transform.h"
#include "tests/formats/vek_transform_fixture.h"

namespace {

class RandomExchangeFiles {
public:
    explicit RandomExchangeFiles(unsigned int seed) : m_random(seed) {}

    int below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    float coordinate() {
        static const float odd[] = {0.0f, -0.0f, INFINITY, -INFINITY, NAN, 1e-40f, 3e38f};
        if (below(20) == 0) return odd[below(7)];
        return static_cast<float>(below(2001) - 1000) / 8.0f;
    }

    std::string make() {
        static const std::uint32_t kinds[] = {20001, 20002, 20003};
        const int vertices = below(40), faces = below(40);
        const std::uint32_t kind = kinds[below(3)];
        const int width = kind == 20003 ? 3 : 4;
        Floats positions;
        for (int i = 0; i < 3 * vertices; ++i) positions.push_back(coordinate());
        Ints indices, values;
        for (int i = 0; i < faces * width; ++i) {
            indices.push_back(width == 4 && i % 4 == 3 && below(3) == 0
                                  ? (kind == 20002 ? indices.back() : -1)
                                  : below(vertices + 1));
            values.push_back(1000 + i);
        }
        ExchangeFile file;
        if (below(3) == 0)
            file.map(45001, "t" + std::string(static_cast<std::size_t>(below(9)), 'x'));
        if (below(9) != 0) file.vertices(positions);
        const bool cornersFirst = below(4) == 0;
        if (cornersFirst) file.corners(25002, values);
        if (below(9) != 0) file.faces(kind, indices);
        if (!cornersFirst && below(3) != 0) file.corners(25001, values);
        if (below(3) == 0) file.block(777, 3, "something else");
        if (below(9) != 0) file.end();
        return file.bytes();
    }

    // Damage: counts, sizes, ids and bytes changed, the end cut off or grown.
    std::string damaged(std::string bytes) {
        for (int i = below(6); i >= 0; --i) {
            const auto at = static_cast<std::size_t>(below(static_cast<int>(bytes.size())));
            const std::size_t field = at / 4 * 4;
            switch (below(5)) {
                case 0:
                    bytes[at] = static_cast<char>(below(256));
                    break;
                case 1:
                    if (field >= 4 && field + 4 <= bytes.size()) bytes.replace(field, 4, 4, '\xFF');
                    break;
                case 2:
                    if (field >= 4 && field + 4 <= bytes.size())
                        bytes[field] = static_cast<char>(16 * below(9));
                    break;
                case 3:
                    bytes.resize(std::max<std::size_t>(
                        4, bytes.size() - static_cast<std::size_t>(below(20))));
                    break;
                default:
                    bytes.append(static_cast<std::size_t>(below(20)), '\x01');
                    break;
            }
        }
        return bytes;
    }

    ReferenceSettings settings() {
        ReferenceSettings settings;
        settings.afterExport = below(2) == 0;
        for (bool& flip : settings.flip) flip = below(3) == 0;
        settings.switchYZ = below(3) == 0;
        settings.reverse = below(3) != 0;
        if (below(2) == 0) {
            for (double& centre : settings.centre) centre = (below(81) - 40) * 0.3;
        }
        return settings;
    }

private:
    std::mt19937 m_random;
};

void apply(const ReferenceSettings& settings) {
    const unsigned int flips[2][4] = {{0x01, 0x02, 0x04, 0x40}, {0x08, 0x10, 0x20, 0x80}};
    const unsigned int* bits = flips[settings.afterExport];
    BXVek::s_ioPref = settings.switchYZ ? bits[3] : 0;
    for (int axis = 0; axis < 3; ++axis) {
        if (settings.flip[axis]) BXVek::s_ioPref |= bits[axis];
    }
    BXVek::s_exportReverse = settings.afterExport && settings.reverse;
    BXVek::s_importReverse = !settings.afterExport && settings.reverse;
    BXVek::s_scale = 3.0;
    BXVek::s_offsetX = settings.centre[0] / 3.0;
    BXVek::s_offsetY = settings.centre[1] / 3.0;
    BXVek::s_offsetZ = settings.centre[2] / 3.0;
}

// The centre that the settings really give, with its rounding.
ReferenceSettings asApplied(ReferenceSettings settings) {
    settings.centre[0] = BXVek::s_scale * BXVek::s_offsetX;
    settings.centre[1] = BXVek::s_scale * BXVek::s_offsetY;
    settings.centre[2] = BXVek::s_scale * BXVek::s_offsetZ;
    return settings;
}

}  // namespace

TEST_F(VekTransform, GivesTheBytesOfTheReferenceOnRandomFiles) {
    RandomExchangeFiles files(1);
    for (int i = 0; i < 3000; ++i) {
        const std::string before = files.make();
        ReferenceSettings settings = files.settings();
        apply(settings);
        settings = asApplied(settings);
        const std::string after = changed(before, settings.afterExport);
        ASSERT_TRUE(sameButForNaNs(after, referenceTransform(before, settings))) << i;
    }
}

TEST_F(VekTransform, GivesTheBytesOfTheReferenceOnTenThousandDamagedFiles) {
    RandomExchangeFiles files(2);
    int taken = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::string before = files.damaged(files.make());
        ReferenceSettings settings = files.settings();
        apply(settings);
        settings = asApplied(settings);
        writeFile(path(), before);
        const BXString file(path().c_str());
        taken += settings.afterExport ? BXUVMergeAlgo::mergeUVsInVekFile(file)
                                      : BXUVMergeAlgo::splitUVsInVekFile(file);
        const std::string after = readFile(path());
        ASSERT_EQ(after.size(), before.size()) << i;
        ASSERT_TRUE(sameButForNaNs(after, referenceTransform(before, settings))) << i;
    }
    EXPECT_GT(taken, 5000) << "the damage left too few files that begin as exchange files";
}

TEST_F(VekTransform, KeepsTheLengthOfEveryPrefixOfAFile) {
    BXVek::s_ioPref = BXVekApp::EXPORT_FLIP_X | BXVekApp::EXPORT_SWITCH_YZ;
    BXVek::s_exportReverse = true;
    ReferenceSettings settings;
    settings.flip[0] = settings.switchYZ = settings.reverse = true;
    const std::string whole = ExchangeFile()
                                  .vertices({1, 2, 3, 4, 5, 6, 7, 8, 9})
                                  .faces(20001, {0, 1, 2, -1, 2, 1, 0, 1})
                                  .corners(25001, {1, 2, 3, 4, 5, 6, 7, 8})
                                  .end()
                                  .bytes();
    for (std::size_t size = 4; size <= whole.size(); ++size) {
        const std::string before = whole.substr(0, size);
        ASSERT_EQ(merged(before), referenceTransform(before, settings)) << size;
    }
}

TEST_F(VekTransform, GivesTheBytesOfTheReferenceAcrossItsPieces) {
    // Forty thousand faces: more than one piece in every walk.
    for (const std::uint32_t kind : {20001u, 20002u, 20003u}) {
        const std::size_t width = kind == 20003 ? 3 : 4;
        Ints indices, values;
        for (std::size_t i = 0; i < 40000 * width; ++i) {
            indices.push_back(static_cast<std::int32_t>(i % 977) - 100);
            values.push_back(static_cast<std::int32_t>(i));
        }
        Floats positions;
        for (int i = 0; i < 3 * 50001; ++i) positions.push_back(static_cast<float>(i) * 0.37f);
        const std::string before = ExchangeFile()
                                       .vertices(positions)
                                       .faces(kind, indices)
                                       .corners(25001, values)
                                       .end()
                                       .bytes();
        ReferenceSettings settings;
        settings.flip[1] = settings.switchYZ = settings.reverse = true;
        settings.centre[0] = 0.25;
        settings.centre[2] = -7.5;
        apply(settings);
        settings = asApplied(settings);
        ASSERT_TRUE(merged(before) == referenceTransform(before, settings)) << kind;
    }
}

TEST_F(VekTransform, ImportUndoesExportUnderTheSameSwitches) {
    RandomExchangeFiles files(3);
    for (int i = 0; i < 500; ++i) {
        ReferenceSettings settings = files.settings();
        for (double& centre : settings.centre) centre = files.below(9) - 4;
        const std::string before = ExchangeFile()
                                       .vertices({1, 2, 3, -4, 5.5f, 6})
                                       .faces(20001, {0, 1, 0, 1, 1, 0, 1, -1})
                                       .corners(25001, {1, 2, 3, 4, 5, 6, 7, 8})
                                       .end()
                                       .bytes();
        settings.afterExport = true;
        apply(settings);
        BXVek::s_scale = 1.0;
        BXVek::s_offsetX *= 3.0, BXVek::s_offsetY *= 3.0, BXVek::s_offsetZ *= 3.0;
        const std::string there = merged(before);
        // The import's bits lie as the export's do, but the switch.
        BXVek::s_ioPref = (BXVek::s_ioPref >> 3 & 0x07) | (BXVek::s_ioPref >> 1 & 0x40);
        BXVek::s_importReverse = settings.reverse;
        ASSERT_EQ(split(there), before) << i;
    }
}

// Face blocks whose count reaches beyond them, so that the corner values begin a few bytes behind
// the first face and every corner value is also an index.
TEST_F(VekTransform, GivesTheBytesOfTheReferenceWhereCornersLieAmongTheFaces) {
    for (const std::uint32_t kind : {20001u, 20002u, 20003u}) {
        const std::size_t width = kind == 20003 ? 3 : 4;
        for (const std::size_t facesBetween : {1u, 5u, 300u, 20000u}) {
            for (const bool cornersFirst : {false, true}) {
                Ints before(facesBetween * width), behind(40000 * width);
                for (std::size_t i = 0; i < before.size(); ++i) before[i] = static_cast<int>(i);
                for (std::size_t i = 0; i < behind.size(); ++i) {
                    behind[i] = static_cast<int>(i % 977) - 100;
                }
                ExchangeFile file;
                const std::uint32_t first = cornersFirst ? 25001 : kind;
                const std::uint32_t second = cornersFirst ? kind : 25001;
                file.block(first, 40000, bytesOf(before)).block(second, 40000, bytesOf(behind));
                const std::string bytes = file.end().bytes();
                ReferenceSettings settings;
                settings.reverse = true;
                apply(settings);
                BXVek::s_scale = 1.0;
                ASSERT_TRUE(merged(bytes) == referenceTransform(bytes, settings))
                    << kind << ' ' << facesBetween << ' ' << cornersFirst;
            }
        }
    }
}

TEST_F(VekTransform, GivesTheBytesOfTheReferenceBehindHundredsOfSmallBlocks) {
    RandomExchangeFiles files(4);
    for (int i = 0; i < 300; ++i) {
        ExchangeFile file;
        for (int blocks = 200 + files.below(900); blocks > 0; --blocks) {
            file.block(777, 1, std::string(static_cast<std::size_t>(files.below(40)), 'x'));
        }
        file.vertices({1, 2, 3}).faces(20001, {0, 1, 2, -1}).corners(25001, {1, 2, 3, 4});
        const std::string before = file.end().bytes();
        ReferenceSettings settings;
        settings.flip[0] = settings.reverse = true;
        apply(settings);
        BXVek::s_scale = 1.0;
        ASSERT_TRUE(merged(before) == referenceTransform(before, settings)) << i;
    }
}

TEST_F(VekTransform, GivesTheBytesOfTheReferenceAboutACentreOfMinusZero) {
    const std::string before =
        ExchangeFile().vertices({0.0f, -0.0f, 1, -1, 0.0f, -0.0f}).end().bytes();
    for (int flips = 0; flips < 8; ++flips) {
        ReferenceSettings settings;
        for (int axis = 0; axis < 3; ++axis) {
            settings.flip[axis] = flips >> axis & 1;
            settings.centre[axis] = -0.0;
        }
        apply(settings);
        const std::string expected =
            flips ? referenceTransform(before, asApplied(settings)) : before;
        ASSERT_EQ(merged(before), expected) << flips;
    }
}

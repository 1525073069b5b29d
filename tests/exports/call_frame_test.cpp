#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "tests/support/host.h"
#include "tests/support/movable_clock.h"
#include "tests/support/stand_in.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

struct Listed {
    const char* name;
    const char* text;
    const char* value;
    const char* buffer1;
    const char* buffer2;
};

const Listed kExports[] = {
#define X(name, group, textUse, valueUse, kind1, kind2, result) \
    {#name, textUse, valueUse, #kind1, #kind2},
#include "exports/exports.def.h"
#undef X
};

class CallFrame : public testing::Test {
protected:
    CallFrame() {
        for (const char* name : {"osascript", "zenity"}) m_standIns.add(name, "exit 1");
    }
    void threeApps() {
        for (const char* id : {"A", "B", "C"}) {
            m_tree.addApp(id, std::string("NAME name of ") + id + "\n");
        }
        ASSERT_EQ(m_library.call("InitializeVek", "/Applications"), 3.0f);
    }

    std::string idAt(double value) {
        OutText out;
        EXPECT_EQ(m_library.call("GetVekAppId", value, out.block()), 0.0f);
        return out.untouched() ? "untouched" : out.text();
    }

    Tree m_tree;
    LoadedLibrary m_library;
    // Nothing is started that asks somebody, and nothing waits for it.
    MovableClock m_clock;
    StandIns m_standIns;
};

}  // namespace

TEST_F(CallFrame, TruncatesAnIndexTowardZero) {
    threeApps();
    EXPECT_EQ(idAt(2.9), idAt(2.0));
    EXPECT_EQ(idAt(-0.5), idAt(0.0));
    EXPECT_EQ(idAt(0.999), idAt(0.0));
    EXPECT_NE(idAt(0.0), idAt(2.0));
    writeFile(Tree::objectList(), "first\nsecond\n");
    m_library.call("ReadVekObjectList");
    for (const double value : {-0.5, 0.0, 0.9}) {
        OutText out;
        EXPECT_EQ(m_library.call("GetVekObjectPath", value, out.block()), 0.0f) << value;
        EXPECT_EQ(out.text(), "first") << value;
    }
}

TEST_F(CallFrame, TakesNoIndexForAValueThatNoIntegerHolds) {
    threeApps();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double value : {-1.0, 3.0, 2147483648.0, -2147483649.0, 4294967296.0, 1e300,
                               infinity, -infinity, std::nan("")}) {
        EXPECT_EQ(idAt(value), "untouched") << value;
    }
}

TEST_F(CallFrame, TakesTheNullTextForTheEmptyText) {
    int value = 77;
    EXPECT_EQ(m_library.call("ReadConfigPrefAsString", static_cast<const char*>(nullptr), 0.0,
                             nullptr, reinterpret_cast<char*>(&value)),
              0.0f);
    EXPECT_EQ(value, 77);
    char key[] = "KEY", text[16] = "old";
    EXPECT_EQ(
        m_library.call("ReadConfigPrefAsString", static_cast<const char*>(nullptr), 0.0, key, text),
        0.0f);
    EXPECT_STREQ(text, "old");
    EXPECT_EQ(m_library.call("FindVekApp"), -1.0f);
    EXPECT_EQ(m_library.call("IsVekFilePathValid"), 0.0f);
}

TEST_F(CallFrame, SurvivesEveryPointerNull) {
    threeApps();
    for (const Listed& listed : kExports) {
        for (const double value : {0.0, 1.0, -1.0, std::nan("")}) {
            EXPECT_FALSE(std::isnan(m_library.call(listed.name, value))) << listed.name;
        }
    }
}

TEST_F(CallFrame, SurvivesEmptyTextsAndLeavesInputsAsTheyWere) {
    threeApps();
    for (const Listed& listed : kExports) {
        char block1[8192] = {}, block2[8192] = {};
        const bool input1 = std::strncmp(listed.buffer1, "IN_", 3) == 0;
        const bool input2 = std::strncmp(listed.buffer2, "IN_", 3) == 0;
        m_library.call(listed.name, std::string(), 0.0, block1, block2);
        const char zeros[8192] = {};
        if (input1) {
            EXPECT_EQ(std::memcmp(block1, zeros, sizeof zeros), 0) << listed.name;
        }
        if (input2) {
            EXPECT_EQ(std::memcmp(block2, zeros, sizeof zeros), 0) << listed.name;
        }
    }
}

TEST_F(CallFrame, LooksAtNoArgumentThatAnExportDoesNotUse) {
    threeApps();
    const auto poison = reinterpret_cast<char*>(std::uintptr_t{0x10});
    for (const Listed& listed : kExports) {
        char block[8192] = {};
        const auto function = reinterpret_cast<VekExport>(m_library.symbol(listed.name));
        ASSERT_TRUE(function);
        function(*listed.text ? nullptr : poison, *listed.value ? 0.0 : std::nan(""),
                 std::strcmp(listed.buffer1, "NONE") == 0 ? poison : block,
                 std::numeric_limits<int>::min(),
                 std::strcmp(listed.buffer2, "NONE") == 0 ? poison : block,
                 std::numeric_limits<int>::max(),
                 std::strcmp(listed.name, "SetItemPos") == 0 ? nullptr
                                                             : reinterpret_cast<char**>(poison));
    }
}

TEST_F(CallFrame, WritesATextWithItsNulAndNotAByteMore) {
    threeApps();
    char block[8];
    std::memset(block, 'z', sizeof block);
    m_library.call("GetVekAppId", 0.0, block);
    EXPECT_EQ(block[1], '\0');
    EXPECT_EQ(std::string(block + 2, 6), "zzzzzz");
}

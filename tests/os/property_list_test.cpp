#include "os/property_list.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace std::string_literals;

// "(none)" where the list has no such text.
std::string textOf(const std::string& list, const char* key = "K") {
    std::string value = "old";
    if (bxPropertyListText(list.data(), list.size(), key, value)) return value;
    EXPECT_EQ(value, "old");
    return "(none)";
}

std::string xml(const std::string& inside) {
    return "<?xml version=\"1.0\"?>\n<!DOCTYPE plist PUBLIC \"x\" \"y\">\n<plist version=\"1.0\">\n"
           "<dict>\n" +
           inside + "\n</dict>\n</plist>\n";
}

std::string big(std::uint64_t number, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(number >> 8 * i);
    return text;
}

// A binary list of these objects, the top one being the first; offsets of 2 bytes, references of 1.
std::string binary(const std::vector<std::string>& objects) {
    std::string list = "bplist00", table;
    for (const std::string& object : objects) {
        table += big(list.size(), 2);
        list += object;
    }
    const std::size_t tableAt = list.size();
    return list + table + big(0, 6) + "\2\1"s + big(objects.size(), 8) + big(0, 8) +
           big(tableAt, 8);
}

std::string ascii(const std::string& text) {
    if (text.size() < 15) return static_cast<char>(0x50 + text.size()) + text;
    return "\x5F\x11"s + big(text.size(), 2) + text;
}

}  // namespace

TEST(PropertyList, GivesTheTextOfAKeyInXml) {
    const std::string list =
        xml("<key>A</key><string>1</string>\n\t<key>K</key>\n\t<string>a b</string>");
    EXPECT_EQ(textOf(list), "a b");
    EXPECT_EQ(textOf(list, "A"), "1");
    EXPECT_EQ(textOf(list, "k"), "(none)");
    EXPECT_EQ(textOf(xml("<key>K</key><string/>")), "");
    EXPECT_EQ(textOf(xml("<key>K</key><string></string>")), "");
    EXPECT_EQ(textOf("<dict><key>K</key><string>x</string></dict>"), "x");
}

TEST(PropertyList, PassesOverOtherValuesInXml) {
    EXPECT_EQ(textOf(xml("<key>L</key><array><dict><key>K</key><string>inner</string></dict>"
                         "<string>K</string></array><key>T</key><true/><key>D</key><dict/>"
                         "<key>K</key><string>outer</string>")),
              "outer");
    EXPECT_EQ(textOf(xml("<key>K</key><integer>7</integer>")), "(none)");
    EXPECT_EQ(textOf(xml("<key>K</key><true/>")), "(none)");
    EXPECT_EQ(textOf(xml("<key>K</key><array><string>x</string></array>")), "(none)");
    EXPECT_EQ(textOf(xml("<string>K</string><string>x</string>")), "(none)");
    EXPECT_EQ(textOf("<plist><array><key>K</key><string>x</string></array></plist>"), "(none)");
}

TEST(PropertyList, ReadsEntitiesCommentsAndSections) {
    EXPECT_EQ(
        textOf(xml("<key>K</key><string>&lt;&amp;&gt;&quot;&apos;&#65;&#x20AC;&#x1F600;</string>")),
        "<&>\"'A\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(textOf(xml("<!-- <key>K</key><string>no</string> --><key>K</key>"
                         "<string>a<!-- x -->b<![CDATA[<c>&]]></string>")),
              "ab<c>&");
    EXPECT_EQ(textOf(xml("<key>K</key><string>&unknown; & &#xZ; &#x110000; &#xD800;</string>")),
              "&unknown; & &#xZ; \xEF\xBF\xBD \xEF\xBF\xBD");
    EXPECT_EQ(textOf(xml("<key >K</key ><string id=\"1\">x</string>")), "x");
}

TEST(PropertyList, GivesTheTextOfAKeyInTheBinaryForm) {
    const std::string list =
        binary({"\xD2\1\3\2\4"s, ascii("A"), ascii("one"), ascii("K"), "\x63\0x\x20\xAC\0y"s});
    EXPECT_EQ(textOf(list), "x\xE2\x82\xACy");
    EXPECT_EQ(textOf(list, "A"), "one");
    EXPECT_EQ(textOf(list, "B"), "(none)");
    EXPECT_EQ(textOf(binary({"\xD1\1\2"s, ascii("K"), ascii(std::string(300, 'x'))})),
              std::string(300, 'x'));
    EXPECT_EQ(textOf(binary({"\xD1\1\2"s, ascii("K"), "\x62\xD8\x3D\xDE\x00"s})),
              "\xF0\x9F\x98\x80")
        << "a pair";
    EXPECT_EQ(textOf(binary({"\xD1\1\2"s, ascii("K"), "\x62\xD8\x3D\0a"s})),
              "\xEF\xBF\xBD"
              "a");
    EXPECT_EQ(textOf(binary({"\xD1\1\2"s, "\x61\0K"s, ascii("x")})), "x") << "a key in UTF-16";
    EXPECT_EQ(textOf(binary({"\xD1\1\2"s, ascii("K"), "\x10\7"s})), "(none)") << "a number";
    EXPECT_EQ(textOf(binary({"\xA1\1"s, ascii("K")})), "(none)") << "an array on top";
}

TEST(PropertyList, SurvivesDamageAndRejectsACutBinaryList) {
    const std::string lists[] = {
        xml("<key>K</key><string>a&#x20AC;b</string>"),
        binary({"\xD2\1\3\2\4"s, ascii("A"), ascii("one"), ascii("K"), "\x63\0x\x20\xAC\0y"s})};
    for (const std::string& whole : lists) {
        for (std::size_t cut = 0; cut < whole.size(); ++cut) {
            const std::vector<char> exact(whole.begin(),
                                          whole.begin() + static_cast<std::ptrdiff_t>(cut));
            std::string value;
            const bool found = bxPropertyListText(exact.data(), exact.size(), "K", value);
            if (whole[0] == 'b') {
                EXPECT_FALSE(found) << cut;
            }
        }
    }
    std::mt19937 random(5);
    for (int round = 0; round < 50000; ++round) {
        std::string list = lists[round % 2];
        for (int i = 0; i < 3; ++i) list[random() % list.size()] = static_cast<char>(random());
        const std::vector<char> exact(list.begin(), list.end());
        std::string value;
        bxPropertyListText(exact.data(), exact.size(), "K", value);
    }
}

TEST(PropertyList, CopesWithManyReferencesToOneLongText) {
    // 20,000 keys that are all the same long text, as long as the one asked for and different.
    const std::string longKey(20000, 'x');
    std::string top = "\xDF\x11"s + big(20000, 2) + std::string(40000, '\1');
    std::string list = "bplist00" + top;
    const std::size_t textAt = list.size();
    list += "\x5F\x12"s + big(longKey.size(), 4) + longKey;
    const std::size_t tableAt = list.size();
    list +=
        big(8, 4) + big(textAt, 4) + big(0, 6) + "\4\1"s + big(2, 8) + big(0, 8) + big(tableAt, 8);
    EXPECT_EQ(textOf(list, (std::string(19999, 'x') + "y").c_str()), "(none)");
    EXPECT_EQ(textOf(list, longKey.c_str()), longKey);
}

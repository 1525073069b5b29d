#include "tools/vek/descriptor.h"

#include <gtest/gtest.h>

#include <random>

#include "bridge/bx_vek_app_parser.h"
#include "tests/support/temp_folder.h"

TEST(Descriptor, KnowsTheKeysOfTheBridgesOwnParser) {
    const TempFolder folder;
    unsigned int allBits = 0;
    for (const DescriptorKey& key : descriptorKeys()) {
        writeFile(folder / "info.txt", key.name + " 7\n");
        BXVekAppParser parser;
        ASSERT_TRUE(parser.parseFile((folder / "info.txt").c_str()));
        EXPECT_EQ(parser.ioPrefs, key.bit) << key.name;
        EXPECT_EQ(readDescriptor(key.name + " 7\n").switches, key.bit) << key.name;
        const bool isText = parser.name == "7" || parser.ext == "7" || parser.tamplate == "7" ||
                            parser.locateCommand == "7" || parser.initCommand == "7" ||
                            parser.editCommand == "7";
        EXPECT_EQ((isText ? 1 : 0) + (parser.version == 7 ? 1 : 0) + (key.bit ? 1 : 0), 1)
            << key.name;
        allBits |= key.bit;
    }
    EXPECT_EQ(descriptorKeys().size(), 33u);
    EXPECT_EQ(allBits, 0x3FFFFFFu);
}

TEST(Descriptor, ReadsAnyTextAsTheBridgesOwnParserDoes) {
    const char* const words[] = {"NAME",
                                 "EXTENSION",
                                 "EDIT_COMMAND",
                                 "EXPORT_FLIP_X",
                                 "\"",
                                 "=",
                                 ":",
                                 " ",
                                 "\t",
                                 "\n",
                                 "\r\n",
                                 "No",
                                 "FALSE",
                                 "x",
                                 "normal_map_flip_xy",
                                 "NORMAL_MAP_FLIP_X",
                                 "VEK_VERSION 1"};
    const TempFolder folder;
    std::mt19937 random(3);
    int withSwitches = 0;
    for (int round = 0; round < 500; ++round) {
        std::string text = "\n";
        for (int i = 0; i < 12; ++i) text += words[random() % std::size(words)];
        writeFile(folder / "info.txt", text);
        BXVekAppParser parser;
        ASSERT_TRUE(parser.parseFile((folder / "info.txt").c_str()));
        const Descriptor descriptor = readDescriptor(text);
        ASSERT_EQ(descriptor.switches, parser.ioPrefs) << text;
        ASSERT_EQ(descriptor.text("NAME"), parser.name.c_str()) << text;
        ASSERT_EQ(descriptor.text("EXTENSION"), parser.ext.c_str()) << text;
        ASSERT_EQ(descriptor.text("EDIT_COMMAND"), parser.editCommand.c_str()) << text;
        withSwitches += parser.ioPrefs != 0;
    }
    EXPECT_GT(withSwitches, 50);
}

// The built tool, started as a person starts it.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string>

#include "tests/support/exchange_file.h"
#include "tests/support/temp_folder.h"
#include "tests/support/tree.h"

namespace {

struct Outcome {
    int status;
    std::string output;  // of both streams
};

Outcome vek(const std::string& arguments) {
    FILE* const pipe = popen(("'" VEK_BUILD_DIR "/bin/vek' " + arguments + " 2>&1").c_str(), "r");
    if (!pipe) return {-1, ""};
    std::string output;
    for (int c; (c = std::fgetc(pipe)) != EOF;) output += static_cast<char>(c);
    const int status = pclose(pipe);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
}

bool has(const Outcome& outcome, const std::string& text) {
    return outcome.output.find(text) != std::string::npos;
}

class Tool : public testing::Test {
protected:
    std::string file(const std::string& name, const std::string& bytes) {
        writeFile(m_folder / name, bytes);
        return m_folder / name;
    }
    Outcome run(const std::string& macro, const std::string& arguments = "") {
        return vek("run '" + file("macro.lua", macro) + "' " + arguments);
    }

    TempFolder m_folder;
};

}  // namespace

TEST_F(Tool, HelpsAndTellsItsVersion) {
    for (const char* arguments : {"--help", "call --help", "run --help", "info --help"}) {
        const Outcome outcome = vek(arguments);
        EXPECT_EQ(outcome.status, 0) << arguments;
        EXPECT_TRUE(has(outcome, "Usage")) << outcome.output;
    }
    EXPECT_TRUE(has(vek("--version"), "vek 0.1.0"));
}

TEST_F(Tool, RejectsACommandLineThatItDoesNotKnow) {
    for (const char* arguments :
         {"", "dance", "call", "info", "call FindVekApp --out1 3", "run /no"}) {
        EXPECT_EQ(vek(arguments).status, 2) << arguments;
    }
}

TEST_F(Tool, ListsEveryExport) {
    const auto list = nlohmann::json::parse(vek("exports --json").output);
    EXPECT_EQ(list.size(), 49u);
    EXPECT_EQ(list[0]["name"], "InitializeVek");
    const Outcome text = vek("exports");
    EXPECT_TRUE(has(text, "GetVekAppIOPrefs") && has(text, "switches out"));
}

TEST_F(Tool, CallsAnExportAndPrintsItsBlocks) {
    const std::string prefs = m_folder / "p.txt";
    const std::string common = " --text '" + prefs + "' --in1 size ";
    EXPECT_TRUE(has(vek("call WriteConfigPrefAsInt" + common + "--in2 42"), "returned 0"));
    EXPECT_EQ(readFile(prefs), "SIZE = 42\n");
    EXPECT_TRUE(has(vek("call ReadConfigPrefAsInt" + common), "buffer2: 42"));
    EXPECT_TRUE(has(vek("call ReadConfigPrefAsFloat" + common), "buffer2: 42"));
    EXPECT_TRUE(has(vek("call ReadConfigPrefAsBool" + common), "buffer2: true"));
    EXPECT_TRUE(has(vek("call ReadConfigPrefAsString" + common), "buffer2: \"42\""));
    const auto json = nlohmann::json::parse(vek("call ReadConfigPrefAsInt --json" + common).output);
    EXPECT_EQ(json["result"], 1.0);
    EXPECT_EQ(json["buffer2"], 42);
}

TEST_F(Tool, SaysWhichBlockWasLeftUntouched) {
    const Tree tree;
    EXPECT_TRUE(has(vek("call GetVekAppName --value 7"), "buffer1: untouched"));
    EXPECT_TRUE(has(vek("call GetVekAppIOPrefs --value 7"), "buffer1: 0 0 ()"));
}

TEST_F(Tool, SaysWhenATextDidNotFit) {
    const Tree tree;
    writeFile(Tree::hub("Vek_ProjectPath.txt"), "/a/path/of/more/than/sixteen");
    EXPECT_TRUE(has(vek("call ReadVekProjectPath --out1 16"), "more than the 16 bytes"));
}

TEST_F(Tool, SuggestsANameThatIsNear) {
    const Outcome outcome = vek("call GetVekAppTemplate");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(has(outcome, "did you mean GetVekAppTamplate?"));
}

TEST_F(Tool, RejectsArgumentsThatAnExportDoesNotUse) {
    for (const char* arguments :
         {"call GetVekAppExt --value 0 --text foo", "call PrintInLog --value 1",
          "call FindVekApp --text x --out1 100", "call GetVekAppExt --value 0 --out2 100"}) {
        const Outcome outcome = vek(arguments);
        EXPECT_EQ(outcome.status, 2) << arguments;
        EXPECT_TRUE(has(outcome, " no ")) << outcome.output;
    }
}

TEST_F(Tool, ShowsTheHeaderOfAnExchangeFile) {
    const std::string sound = ExchangeFile().end().bytes();
    EXPECT_TRUE(
        has(vek("info '" + file("m.vek", sound) + "'"), "header: \"Vekb\", 28 zero bytes\n"));
    std::string odd = sound;
    odd[20] = 1;
    EXPECT_TRUE(has(vek("info '" + file("m.vek", odd) + "'"), "28 bytes that are not all zero"));
}

TEST_F(Tool, RejectsALibraryAndAnInputThatAreNone) {
    EXPECT_EQ(vek("call PrintInLog --lib /no/such.so").status, 2);
    const Outcome outcome = vek("call WriteConfigPrefAsInt --text x --in1 k --in2 word");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_TRUE(has(outcome, "\"word\" is no integer"));
}

TEST_F(Tool, RunsAMacroWithTheStateKept) {
    const Tree tree;
    tree.addApp("One", "NAME n\nEXTENSION .ma\nEXPORT_FLIP_X 1\nNORMAL_MAP_FLIP_XY 1\n");
    const Outcome outcome =
        run("assert(InitializeVek('/Applications') == 1)\n"
            "assert(FindVekApp('ONE') == 0)\n"
            "local result, id = GetVekAppId(0)\n"
            "assert(result == 0 and id == 'One')\n"
            "local _, low, high = GetVekAppIOPrefs{value = 0}\n"
            "assert(low == 8 and high == 1)\n"
            "local _, none = GetVekAppName(9)\n"
            "assert(none == nil)\n"
            "print('done', arg[1], arg[2])\n",
            "one --two");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
    EXPECT_TRUE(has(outcome, "done\tone\t--two")) << outcome.output;
}

TEST_F(Tool, PassesEveryKindOfValueInAndOutOfAMacro) {
    const Outcome outcome =
        run("local file = arg[1]\n"
            "assert(WriteConfigPrefAsInt(file, 'i', 42) == 0)\n"
            "assert(WriteConfigPrefAsFloat(file, 'f', 0.5) == 0)\n"
            "assert(WriteConfigPrefAsBool(file, 'b', true) == 0)\n"
            "assert(WriteConfigPrefAsString{text = file, in1 = 's', in2 = 'x y'} == 0)\n"
            "local function second(_, value) return value end\n"
            "assert(second(ReadConfigPrefAsInt(file, 'i')) == 42)\n"
            "assert(second(ReadConfigPrefAsFloat(file, 'f')) == 0.5)\n"
            "assert(second(ReadConfigPrefAsBool(file, 'b')) == true)\n"
            "assert(second(ReadConfigPrefAsString(file, 's')) == 'x y')\n",
            "'" + (m_folder / "p.txt") + "'");
    EXPECT_EQ(outcome.status, 0) << outcome.output;
}

TEST_F(Tool, RejectsInAMacroWhatAnExportDoesNotTake) {
    const Tree tree;
    const auto says = [&](const std::string& line, const std::string& sentence) {
        const Outcome outcome = run(line);
        return outcome.status == 1 && has(outcome, "macro.lua:1: " + sentence);
    };
    EXPECT_TRUE(says("GetVekAppName{valeu = 3}", "GetVekAppName: there is no argument \"valeu\""));
    EXPECT_TRUE(says("GetVekAppName{3}", "GetVekAppName: there is no argument \"number\""));
    EXPECT_TRUE(says("GetVekAppName('two')", "GetVekAppName: a string where a number belongs"));
    EXPECT_TRUE(says("GetVekAppName{}", "GetVekAppName: no value: the application index"));
    EXPECT_TRUE(says("SetVekAppIndex()", "SetVekAppIndex: a no value where a number belongs"));
    EXPECT_TRUE(says("FindVekApp(print)", "FindVekApp: a function where a text belongs"));
    EXPECT_TRUE(says("FindVekApp('a', 1)", "FindVekApp: more than 1 arguments"));
    EXPECT_TRUE(says("GetVekAppName{value = 0, out1 = 3}", "GetVekAppName: the size of a block"));
    EXPECT_FALSE(fileIsThere(Tree::hub("Vek_Application.txt")));
}

TEST_F(Tool, RejectsACallWithABlockThatTheExportDoesNotRead) {
    EXPECT_TRUE(has(vek("call FindVekApp --in1 x"), "FindVekApp reads no first block"));
    EXPECT_TRUE(has(vek("call GetVekAppName --in2 x"), "GetVekAppName reads no second block"));
    EXPECT_EQ(vek("call FindVekApp --in1 x").status, 2);
}

TEST_F(Tool, SaysThatAForeignFileIsNoExchangeFile) {
    const Outcome outcome = vek("info '" + file("a.vek", "something else altogether") + "'");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(has(outcome, "The file is not an exchange file.")) << outcome.output;
}

TEST_F(Tool, FailsWithATracebackWhereAMacroDoes) {
    const Outcome outcome = run("local function f() error('broken') end\nf()\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(has(outcome, "broken") && has(outcome, "traceback")) << outcome.output;
    EXPECT_EQ(run("this is no Lua").status, 1);
    EXPECT_EQ(run("os.exit(7)").status, 7);
    EXPECT_TRUE(has(run("WriteConfigPrefAsInt('x', 'k', 'word')"), "\"word\" is no integer"));
}

TEST_F(Tool, SaysWhatAnExchangeFileHolds) {
    const std::string sound =
        ExchangeFile().vertices({1, 2, 3}).map(45001, "skin.tif").end().bytes();
    const Outcome text = vek("info '" + file("a.vek", sound) + "'");
    EXPECT_EQ(text.status, 0);
    EXPECT_TRUE(has(text, "The file is sound.") && has(text, "map 0: skin.tif")) << text.output;
    const auto json =
        nlohmann::json::parse(vek("info --json '" + (m_folder / "a.vek") + "'").output);
    EXPECT_EQ(json["blocks"][1]["text"], "skin.tif");
    EXPECT_EQ(json["sound"], true);
}

TEST_F(Tool, SaysWhatIsWrongWithAnExchangeFile) {
    const Outcome outcome = vek("info '" + file("a.vek", ExchangeFile().bytes()) + "'");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(has(outcome, "at 32: The end block is missing.")) << outcome.output;
    EXPECT_EQ(vek("info /no/such.vek").status, 2);
}

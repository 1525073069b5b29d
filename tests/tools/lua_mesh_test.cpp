#include "tools/vek/lua_mesh.h"

#include <gtest/gtest.h>

#include <lua.hpp>

#include "tests/support/temp_folder.h"

namespace {

class LuaMesh : public testing::Test {
protected:
    LuaMesh() : m_lua(luaL_newstate()) {
        luaL_openlibs(m_lua);
        lua_newtable(m_lua);
        lua_setglobal(m_lua, "vek");
        registerMeshFunctions(m_lua);
        lua_pushstring(m_lua, m_folder.path().c_str());
        lua_setglobal(m_lua, "folder");
    }
    ~LuaMesh() override { lua_close(m_lua); }

    // The macro's result as text, or its error.
    std::string run(const std::string& macro) {
        if (luaL_dostring(m_lua, macro.c_str())) return std::string("error: ") + text(-1);
        return text(-1);
    }

    TempFolder m_folder;
    lua_State* m_lua;

private:
    const char* text(int index) { return luaL_tolstring(m_lua, index, nullptr); }
};

}  // namespace

TEST_F(LuaMesh, MakesASurfaceOfAHundredThousandFaces) {
    EXPECT_EQ(
        run("local c = vek.make_surface():counts() "
            "return c.faces > 95000 and c.faces < 105000 and c.quads + c.triangles == c.faces"),
        "true");
}

TEST_F(LuaMesh, RejectsASurfaceOfNoFaces) {
    EXPECT_EQ(run("return vek.make_surface(0)").rfind("error: ", 0), 0u);
    EXPECT_EQ(run("return vek.make_surface(1e15)").rfind("error: ", 0), 0u);
}

TEST_F(LuaMesh, MapsEveryPosition) {
    EXPECT_EQ(run(R"(
        local m = vek.make_surface(1000)
        local a = m:bounds()
        local b = m:map(function(x, y, z) return -x, 2 * y + 1, z end):bounds()
        return b.max.x == -a.min.x and math.abs(b.min.y - (2 * a.min.y + 1)) < 1e-6
           and math.abs(b.size.y - 2 * a.size.y) < 1e-6 and b.min.z == a.min.z)"),
              "true");
}

TEST_F(LuaMesh, MapLeavesTheMeshItIsCalledOn) {
    EXPECT_EQ(run("local m = vek.make_surface(1000) local before = m:bounds().size.x "
                  "m:map(function() return 0, 0, 0 end) return m:bounds().size.x == before"),
              "true");
}

TEST_F(LuaMesh, PassesOnAnErrorOfTheMappedFunction) {
    EXPECT_NE(run("return vek.make_surface(1000):map(function() error('stop') end)").find("stop"),
              std::string::npos);
    EXPECT_NE(run("return vek.make_surface(1000):map(function() return 1, 2 end)")
                  .find("has to return x, y and z"),
              std::string::npos);
}

TEST_F(LuaMesh, TwistsAsMapWould) {
    EXPECT_EQ(run(R"(
        local m = vek.make_surface(1000)
        local b = m:bounds()
        local mapped = m:map(function(x, y, z)
            local a = math.rad(60) * (y - b.min.y) / b.size.y
            x, z = x - b.centre.x, z - b.centre.z
            return b.centre.x + math.cos(a) * x + math.sin(a) * z, y,
                   b.centre.z - math.sin(a) * x + math.cos(a) * z
        end)
        return vek.compare(mapped, m:twisted_about_y(60)).max_distance < 1e-6
           and vek.compare(m, mapped).max_distance > 0.1)"),
              "true");
}

TEST_F(LuaMesh, RewindsFaces) {
    EXPECT_EQ(run("local m = vek.make_surface(1000) local d = vek.compare(m, m:rewound()) "
                  "return d.faces_wound_wrong == m:counts().faces and d.corners_lost == 0 "
                  "and math.abs(m:rewound():signed_volume() + m:signed_volume()) < 1e-9"),
              "true");
}

TEST_F(LuaMesh, RoundTripsThroughAnExchangeFile) {
    EXPECT_EQ(run("local m = vek.make_surface(1000) m:set_map(1, 'a/b.png') "
                  "m:set_map(2, 'old') m:set_map(2, 'c.png', 0.5) "
                  "assert(m:write(folder .. '/m.vek')) "
                  "local back = assert(vek.read_mesh(folder .. '/m.vek')) "
                  "local d = vek.compare(m, back) local maps = back:maps() "
                  "return d.max_distance + d.faces_different + d.corners_lost + d.uvs_lost == 0 "
                  "and #maps == 2 and maps[1].name == 'a/b.png' and maps[2].selector == 2 "
                  "and maps[2].param == 0.5"),
              "true");
}

TEST_F(LuaMesh, RejectsAMapSelectorThatIsNone) {
    EXPECT_NE(run("vek.make_surface(1000):set_map(3, 'a')").find("0, 1 or 2"), std::string::npos);
}

TEST_F(LuaMesh, GivesNilAndASentenceForAFileThatIsNotThere) {
    EXPECT_EQ(run("local m, why = vek.read_mesh(folder .. '/none.vek') "
                  "return m == nil and why:find('cannot be opened', 1, true) ~= nil"),
              "true");
    EXPECT_EQ(run("local m, why = vek.load_obj(folder .. '/none.obj') "
                  "return m == nil and why:find('cannot be read', 1, true) ~= nil"),
              "true");
    EXPECT_EQ(run("local done, why = vek.make_surface(1000):write(folder .. '/none/m.vek') "
                  "return done == nil and why:find('cannot be written', 1, true) ~= nil"),
              "true");
}

TEST_F(LuaMesh, LoadsAnObjAndSaysWhatItChanged) {
    writeFile(m_folder / "m.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 2 0\nf 1 2 3 4 5\n");
    EXPECT_EQ(run("local m, notes = vek.load_obj(folder .. '/m.obj') "
                  "return m:counts().faces == 3 and notes.faces_cut == 1 and notes.uvs_made == 5"),
              "true");
}

TEST_F(LuaMesh, RejectsACallOnSomethingElse) {
    EXPECT_EQ(run("return vek.compare(vek.make_surface(1000), {})").rfind("error: ", 0), 0u);
    EXPECT_EQ(run("return vek.make_surface(1000).counts(io.stdout)").rfind("error: ", 0), 0u);
}

TEST_F(LuaMesh, HasAClockThatRunsForward) {
    EXPECT_EQ(run("local a = vek.now() for i = 1, 1e5 do end return vek.now() > a"), "true");
}

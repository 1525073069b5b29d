// Runs a macro: every export is a global Lua function.
//
//     result [, out1 [, out2]] = Export(text, value, in1, in2)    those that it uses, in this order
//     result [, out1 [, out2]] = Export{text =, value =, in1 =, in2 =, out1 =, out2 =}
//
// A misspelt name, a wrong type or an argument too many is an error. Out blocks come back as
// strings, numbers or truths, the switches as two integers, nil where the export left its block
// untouched; out1 and out2 in a table give a block's size.

#include <fmt/format.h>

#include <filesystem>
#include <lua.hpp>
#include <memory>
#include <optional>
#include <stdexcept>

#include "tools/vek/block.h"
#include "tools/vek/commands.h"
#include "tools/vek/host_windows.h"
#include "tools/vek/library.h"
#include "tools/vek/lua_host.h"
#include "tools/vek/lua_mesh.h"
#include "tools/vek/program_folder.h"

namespace {

constexpr int kOutSize = 4096;

// What a macro hands to one export. Whatever does not fit the export is an std::invalid_argument
// with a sentence: a mistyped index must not become the index 0.
struct Arguments {
    std::optional<std::string> text, in1, in2;
    std::optional<double> value;
    int out1 = kOutSize, out2 = kOutSize;
};

// The host that a macro plays.
struct Host {
    explicit Host(const std::string& libraryPath) : library(libraryPath) {}

    Library library;
    HostWindows windows;
};

[[noreturn]] void reject(const ExportEntry& entry, const std::string& why) {
    throw std::invalid_argument(entry.name + ": " + why);
}

// Only what Lua turns into text without running anything of the macro's.
std::optional<std::string> textAt(lua_State* lua, int index, const ExportEntry& entry) {
    if (lua_isnoneornil(lua, index)) return std::nullopt;
    if (lua_isboolean(lua, index)) return lua_toboolean(lua, index) ? "true" : "false";
    if (!lua_isstring(lua, index)) {
        reject(entry, fmt::format("a {} where a text belongs", luaL_typename(lua, index)));
    }
    lua_pushvalue(lua, index);
    size_t size;
    const char* const text = lua_tolstring(lua, -1, &size);
    std::string copy(text, size);
    lua_pop(lua, 1);
    return copy;
}

double numberAt(lua_State* lua, int index, const ExportEntry& entry, const std::string& meaning) {
    int isNumber = 0;
    const double number = lua_tonumberx(lua, index, &isNumber);
    if (!isNumber) {
        reject(entry, fmt::format("a {} where a number belongs: the {}", luaL_typename(lua, index),
                                  meaning));
    }
    return number;
}

int sizeAt(lua_State* lua, int index, const ExportEntry& entry) {
    const double size = numberAt(lua, index, entry, "size of a block");
    if (size >= 16 && size <= (1 << 24)) return static_cast<int>(size);
    reject(entry, "the size of a block is 16 to 16777216");
}

// Takes the value on top of the stack for the argument of this name; whether the export has it.
bool takeField(lua_State* lua, const std::string& name, const ExportEntry& entry,
               Arguments& arguments) {
    if (name == "text" && !entry.text.empty()) {
        arguments.text = textAt(lua, -1, entry);
    } else if (name == "value" && !entry.value.empty()) {
        arguments.value = numberAt(lua, -1, entry, entry.value);
    } else if (name == "in1" && isInput(entry.block1)) {
        arguments.in1 = textAt(lua, -1, entry);
    } else if (name == "in2" && isInput(entry.block2)) {
        arguments.in2 = textAt(lua, -1, entry);
    } else if (name == "out1" && isOutput(entry.block1)) {
        arguments.out1 = sizeAt(lua, -1, entry);
    } else if (name == "out2" && isOutput(entry.block2)) {
        arguments.out2 = sizeAt(lua, -1, entry);
    } else {
        return false;
    }
    return true;
}

Arguments fromTable(lua_State* lua, const ExportEntry& entry) {
    Arguments arguments;
    lua_pushnil(lua);
    while (lua_next(lua, 1)) {
        const bool named = lua_type(lua, -2) == LUA_TSTRING;
        const std::string name = named ? lua_tostring(lua, -2) : luaL_typename(lua, -2);
        if (!named || !takeField(lua, name, entry, arguments)) {
            reject(entry, fmt::format("there is no argument \"{}\"", name));
        }
        lua_pop(lua, 1);
    }
    return arguments;
}

Arguments fromPositions(lua_State* lua, const ExportEntry& entry) {
    Arguments arguments;
    int next = 1;
    if (!entry.text.empty()) arguments.text = textAt(lua, next++, entry);
    if (!entry.value.empty()) arguments.value = numberAt(lua, next++, entry, entry.value);
    if (isInput(entry.block1)) arguments.in1 = textAt(lua, next++, entry);
    if (isInput(entry.block2)) arguments.in2 = textAt(lua, next++, entry);
    if (lua_gettop(lua) >= next) reject(entry, fmt::format("more than {} arguments", next - 1));
    return arguments;
}

Arguments argumentsOf(lua_State* lua, const ExportEntry& entry) {
    const Arguments arguments =
        lua_istable(lua, 1) ? fromTable(lua, entry) : fromPositions(lua, entry);
    if (!entry.value.empty() && !arguments.value) reject(entry, "no value: the " + entry.value);
    return arguments;
}

int pushBlock(lua_State* lua, const Block& block, BlockKind kind) {
    if (!isOutput(kind)) return 0;
    if (!block.written()) {
        lua_pushnil(lua);
        return 1;
    }
    switch (kind) {
        case BlockKind::OUT_INT:
            lua_pushinteger(lua, block.integer());
            return 1;
        case BlockKind::OUT_BOOL:
            lua_pushboolean(lua, block.integer() != 0);
            return 1;
        case BlockKind::OUT_FLOAT:
            lua_pushnumber(lua, static_cast<double>(block.real()));
            return 1;
        case BlockKind::OUT_IO_PREFS:
            lua_pushinteger(lua, block.switches() & 0xFFFFu);
            lua_pushinteger(lua, block.switches() >> 16);
            return 2;
        default:
            lua_pushstring(lua, block.text().c_str());
            return 1;
    }
}

// The number of results, or -1 with a sentence on the stack. Nothing of C++ may be alive when an
// error is raised: Lua jumps over it.
int tryCall(lua_State* lua) {
    try {
        auto& host = *static_cast<Host*>(lua_touserdata(lua, lua_upvalueindex(1)));
        const auto& entry = *static_cast<ExportEntry*>(lua_touserdata(lua, lua_upvalueindex(2)));
        Arguments arguments = argumentsOf(lua, entry);
        Block block1(entry.block1, arguments.in1, isOutput(entry.block1) ? arguments.out1 : 0);
        Block block2(entry.block2, arguments.in2, isOutput(entry.block2) ? arguments.out2 : 0);
        const float result = host.library.find(entry.name)(
            arguments.text ? arguments.text->data() : nullptr, arguments.value.value_or(0.0),
            block1.data(), block1.size(), block2.data(), block2.size(), host.windows.data());
        lua_pushnumber(lua, static_cast<double>(result));
        return 1 + pushBlock(lua, block1, entry.block1) + pushBlock(lua, block2, entry.block2);
    } catch (const std::exception& error) {
        lua_pushstring(lua, error.what());
        return -1;
    }
}

int callFromMacro(lua_State* lua) {
    const int results = tryCall(lua);
    if (results >= 0) return results;
    luaL_where(lua, 1);
    lua_insert(lua, -2);
    lua_concat(lua, 2);
    return lua_error(lua);
}

void setExports(lua_State* lua, Host& host) {
    for (const ExportEntry& entry : exportTable()) {
        lua_pushlightuserdata(lua, &host);
        lua_pushlightuserdata(lua, const_cast<ExportEntry*>(&entry));
        lua_pushcclosure(lua, callFromMacro, 2);
        lua_setglobal(lua, entry.name.c_str());
    }
}

void setGlobals(lua_State* lua, const std::string& script, const Library& library,
                const std::vector<std::string>& arguments) {
    lua_createtable(lua, static_cast<int>(arguments.size()), 1);
    lua_pushstring(lua, script.c_str());
    lua_seti(lua, -2, 0);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        lua_pushstring(lua, arguments[i].c_str());
        lua_seti(lua, -2, static_cast<lua_Integer>(i + 1));
    }
    lua_setglobal(lua, "arg");

    lua_newtable(lua);
    lua_pushstring(lua, library.path().c_str());
    lua_setfield(lua, -2, "library");
    lua_pushstring(lua, (programFolder() / "vek").c_str());
    lua_setfield(lua, -2, "program");
    const auto folder = std::filesystem::absolute(script).parent_path().string();
    lua_pushstring(lua, folder.c_str());
    lua_setfield(lua, -2, "script_folder");
    lua_setglobal(lua, "vek");
    registerMeshFunctions(lua);
}

int addTraceback(lua_State* lua) {
    luaL_traceback(lua, lua, luaL_tolstring(lua, 1, nullptr), 1);
    return 1;
}

struct LuaCloser {
    void operator()(lua_State* lua) const { lua_close(lua); }
};

}  // namespace

int runMacro(const std::string& script, const std::string& libraryPath,
             const std::vector<std::string>& arguments) {
    Host host(libraryPath);
    const std::unique_ptr<lua_State, LuaCloser> state(luaL_newstate());
    lua_State* const lua = state.get();
    luaL_openlibs(lua);
    setExports(lua, host);
    setGlobals(lua, script, host.library, arguments);
    registerHostFunctions(lua, host.windows);
    lua_pushcfunction(lua, addTraceback);
    if (luaL_loadfile(lua, script.c_str()) == LUA_OK && lua_pcall(lua, 0, 0, 1) == LUA_OK) return 0;
    fmt::print(stderr, "vek: {}\n", lua_tostring(lua, -1));
    return 1;
}

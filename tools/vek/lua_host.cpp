#include "tools/vek/lua_host.h"

#include <lua.hpp>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "tools/vek/host_windows.h"
#include "tools/vek/window_description.h"

namespace {

using Json = nlohmann::json;

constexpr int kDeepest = 1000;

Json valueAt(lua_State* lua, int depth);

bool isList(const std::string& field) {
    return field == "children" || field == "entries";
}

// The table on top of the stack, as a list or by its fields.
Json listAt(lua_State* lua, int depth) {
    Json list = Json::array();
    const auto length = static_cast<lua_Integer>(lua_rawlen(lua, -1));
    for (lua_Integer i = 1; i <= length; ++i) {
        lua_rawgeti(lua, -1, i);
        list.push_back(valueAt(lua, depth));
        lua_pop(lua, 1);
    }
    lua_Integer fields = 0;
    for (lua_pushnil(lua); lua_next(lua, -2); lua_pop(lua, 1)) ++fields;
    if (fields > length) throw std::runtime_error("a list of windows with fields beside them");
    return list;
}

Json fieldsAt(lua_State* lua, int depth) {
    Json fields = Json::object();
    for (lua_pushnil(lua); lua_next(lua, -2); lua_pop(lua, 1)) {
        if (lua_type(lua, -2) != LUA_TSTRING) throw std::runtime_error("a field without a name");
        const std::string name = lua_tostring(lua, -2);
        const bool isEmptyList = isList(name) && lua_istable(lua, -1) && lua_rawlen(lua, -1) == 0;
        Json value = valueAt(lua, depth);
        fields[name] = isEmptyList && value.empty() ? Json::array() : std::move(value);
    }
    return fields;
}

Json tableAt(lua_State* lua, int depth) {
    if (depth > kDeepest || !lua_checkstack(lua, 4)) {
        throw std::runtime_error("the windows are nested too deep");
    }
    return lua_rawlen(lua, -1) > 0 ? listAt(lua, depth) : fieldsAt(lua, depth);
}

Json valueAt(lua_State* lua, int depth) {
    switch (lua_type(lua, -1)) {
        case LUA_TTABLE:
            return tableAt(lua, depth + 1);
        case LUA_TBOOLEAN:
            return lua_toboolean(lua, -1) != 0;
        case LUA_TSTRING:
            return lua_tostring(lua, -1);
        default:
            throw std::runtime_error(std::string("a ") + luaL_typename(lua, -1) +
                                     " in the description of a window");
    }
}

HostWindows& windowsOf(lua_State* lua) {
    return *static_cast<HostWindows*>(lua_touserdata(lua, lua_upvalueindex(1)));
}

// Whether it worked; otherwise with a sentence on the stack. Nothing of C++ may be alive when an
// error is raised: Lua jumps over it.
bool tryAddWindow(lua_State* lua) {
    try {
        lua_settop(lua, 1);
        describeWindows(windowsOf(lua), valueAt(lua, 0).dump());
        return true;
    } catch (const std::exception& error) {
        lua_pushstring(lua, error.what());
        return false;
    }
}

int addWindow(lua_State* lua) {
    return tryAddWindow(lua) ? 0 : lua_error(lua);
}

int drawTree(lua_State* lua) {
    lua_pushstring(lua, windowsOf(lua).draw().c_str());
    return 1;
}

}  // namespace

void registerHostFunctions(lua_State* lua, HostWindows& windows) {
    lua_newtable(lua);
    lua_pushlightuserdata(lua, &windows);
    lua_pushcclosure(lua, addWindow, 1);
    lua_setfield(lua, -2, "window");
    lua_pushlightuserdata(lua, &windows);
    lua_pushcclosure(lua, drawTree, 1);
    lua_setfield(lua, -2, "tree");
    lua_setglobal(lua, "host");
}

#include "tools/vek/lua_mesh.h"

#include <chrono>
#include <cmath>
#include <lua.hpp>
#include <new>
#include <string>

#include "formats/vek_header.h"
#include "tools/vek/maya_file.h"
#include "tools/vek/mesh.h"
#include "tools/vek/mesh_compare.h"
#include "tools/vek/mesh_file.h"
#include "tools/vek/mesh_surface.h"
#include "tools/vek/obj_file.h"

// Lua reports errors by a jump that runs no destructors. So arguments are checked before anything
// is made that would need one, and every mesh belongs to Lua from the moment it is there.

namespace {

const char kMeshType[] = "vek.mesh";
constexpr std::uint32_t kMapKinds[] = {kVekMap0, kVekMap1, kVekMap2};

Mesh& meshArgument(lua_State* lua, int index) {
    return *static_cast<Mesh*>(luaL_checkudata(lua, index, kMeshType));
}

// Pushes a mesh without anything in it.
Mesh& pushMesh(lua_State* lua) {
    Mesh* mesh = new (lua_newuserdatauv(lua, sizeof(Mesh), 0)) Mesh;
    luaL_setmetatable(lua, kMeshType);
    return *mesh;
}

Mesh& pushCopy(lua_State* lua, const Mesh& original) {
    Mesh& copy = pushMesh(lua);
    copy = original;
    return copy;
}

int pushFailure(lua_State* lua, const std::string& sentence) {
    lua_pushnil(lua);
    lua_pushlstring(lua, sentence.data(), sentence.size());
    return 2;
}

int pushDone(lua_State* lua, bool done, const std::string& sentence) {
    if (!done) return pushFailure(lua, sentence);
    lua_pushboolean(lua, 1);
    return 1;
}

// These two set a field of the table on top of the stack.
void setCount(lua_State* lua, const char* field, std::size_t count) {
    lua_pushinteger(lua, static_cast<lua_Integer>(count));
    lua_setfield(lua, -2, field);
}

void setNumber(lua_State* lua, const char* field, double number) {
    lua_pushnumber(lua, number);
    lua_setfield(lua, -2, field);
}

int makeSurfaceMesh(lua_State* lua) {
    const lua_Integer faces = luaL_optinteger(lua, 1, 100'000);
    luaL_argcheck(lua, faces >= lua_Integer{kFewestSurfaceFaces}, 1, "too few faces");
    luaL_argcheck(lua, faces <= lua_Integer{kMostSurfaceFaces}, 1, "too many faces");
    pushMesh(lua) = makeSurface(static_cast<std::size_t>(faces));
    return 1;
}

int loadObjMesh(lua_State* lua) {
    const char* path = luaL_checkstring(lua, 1);
    Mesh& mesh = pushMesh(lua);
    ObjNotes notes;
    std::string error;
    if (!loadObj(path, mesh, notes, error)) return pushFailure(lua, error);
    lua_newtable(lua);
    setCount(lua, "faces_cut", notes.facesCut);
    setCount(lua, "faces_skipped", notes.facesSkipped);
    setCount(lua, "uvs_made", notes.uvsMade);
    return 2;
}

int readExchangeMesh(lua_State* lua) {
    const char* path = luaL_checkstring(lua, 1);
    Mesh& mesh = pushMesh(lua);
    std::string error;
    if (!readMesh(path, mesh, error)) return pushFailure(lua, error);
    return 1;
}

int readMayaMesh(lua_State* lua) {
    const char* path = luaL_checkstring(lua, 1);
    Mesh& mesh = pushMesh(lua);
    std::string error;
    if (!readMayaScene(path, mesh, error)) return pushFailure(lua, error);
    return 1;
}

int compareTwoMeshes(lua_State* lua) {
    const MeshDifference difference = compareMeshes(meshArgument(lua, 1), meshArgument(lua, 2));
    lua_newtable(lua);
    setNumber(lua, "max_distance", difference.maxDistance);
    setNumber(lua, "mean_distance", difference.meanDistance);
    setCount(lua, "vertices_missing", difference.verticesMissing);
    setCount(lua, "vertices_added", difference.verticesAdded);
    setCount(lua, "faces_missing", difference.facesMissing);
    setCount(lua, "faces_added", difference.facesAdded);
    setCount(lua, "faces_wound_wrong", difference.facesWoundWrong);
    setCount(lua, "faces_different", difference.facesDifferent);
    setCount(lua, "corners_lost", difference.cornersLost);
    setCount(lua, "uvs_lost", difference.uvsLost);
    return 1;
}

int now(lua_State* lua) {
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    lua_pushnumber(lua, std::chrono::duration<double, std::milli>(since).count());
    return 1;
}

int counts(lua_State* lua) {
    const Mesh& mesh = meshArgument(lua, 1);
    const MeshCounts faces = countFaces(mesh);
    lua_newtable(lua);
    setCount(lua, "vertices", mesh.positions.size());
    setCount(lua, "faces", mesh.faces.size());
    setCount(lua, "triangles", faces.triangles);
    setCount(lua, "quads", faces.quads);
    setCount(lua, "corners", faces.corners);
    setCount(lua, "uvs", mesh.uvs.size());
    return 1;
}

void setVector(lua_State* lua, const char* field, double x, double y, double z) {
    lua_createtable(lua, 0, 3);
    setNumber(lua, "x", x);
    setNumber(lua, "y", y);
    setNumber(lua, "z", z);
    lua_setfield(lua, -2, field);
}

int bounds(lua_State* lua) {
    const MeshBounds box = boundsOf(meshArgument(lua, 1));
    lua_newtable(lua);
    setVector(lua, "min", box.min[0], box.min[1], box.min[2]);
    setVector(lua, "max", box.max[0], box.max[1], box.max[2]);
    setVector(lua, "centre", box.centre(0), box.centre(1), box.centre(2));
    setVector(lua, "size", box.size(0), box.size(1), box.size(2));
    return 1;
}

int signedVolume(lua_State* lua) {
    lua_pushnumber(lua, signedVolumeOf(meshArgument(lua, 1)));
    return 1;
}

int edges(lua_State* lua) {
    const MeshEdges found = edgesOf(meshArgument(lua, 1));
    lua_newtable(lua);
    setCount(lua, "open", found.open);
    setCount(lua, "disagreeing", found.disagreeing);
    setCount(lua, "crowded", found.crowded);
    return 1;
}

// Calls the function at stack index 2 for one position.
void mapPoint(lua_State* lua, MeshPoint& point) {
    lua_pushvalue(lua, 2);
    for (const float coordinate : point) lua_pushnumber(lua, double{coordinate});
    lua_call(lua, 3, 3);
    for (int axis = 0; axis < 3; ++axis) {
        int isNumber = 0;
        const double value = lua_tonumberx(lua, axis - 3, &isNumber);
        if (!isNumber) luaL_error(lua, "the function of map has to return x, y and z");
        point[static_cast<std::size_t>(axis)] = static_cast<float>(value);
    }
    lua_pop(lua, 3);
}

int map(lua_State* lua) {
    const Mesh& original = meshArgument(lua, 1);
    luaL_checktype(lua, 2, LUA_TFUNCTION);
    Mesh& copy = pushCopy(lua, original);
    for (MeshPoint& point : copy.positions) mapPoint(lua, point);
    return 1;
}

int twistedAboutY(lua_State* lua) {
    const Mesh& original = meshArgument(lua, 1);
    const double degrees = luaL_checknumber(lua, 2);
    twistAboutY(pushCopy(lua, original), degrees);
    return 1;
}

int rewound(lua_State* lua) {
    rewindFaces(pushCopy(lua, meshArgument(lua, 1)));
    return 1;
}

int withOwnUVs(lua_State* lua) {
    giveOwnUVs(pushCopy(lua, meshArgument(lua, 1)));
    return 1;
}

int setMap(lua_State* lua) {
    Mesh& mesh = meshArgument(lua, 1);
    const lua_Integer selector = luaL_checkinteger(lua, 2);
    const char* name = luaL_checkstring(lua, 3);
    const double param = luaL_optnumber(lua, 4, 0.0);
    luaL_argcheck(lua, selector >= 0 && selector <= 2, 2, "a map selector is 0, 1 or 2");
    const std::uint32_t kind = kMapKinds[selector];
    for (MeshMap& known : mesh.maps) {
        if (known.kind != kind) continue;
        known = {kind, name, static_cast<float>(param)};
        return 0;
    }
    mesh.maps.push_back({kind, name, static_cast<float>(param)});
    return 0;
}

lua_Integer selectorOf(std::uint32_t kind) {
    lua_Integer selector = 0;
    while (kMapKinds[selector] != kind) ++selector;
    return selector;
}

int maps(lua_State* lua) {
    const Mesh& mesh = meshArgument(lua, 1);
    lua_newtable(lua);
    for (std::size_t i = 0; i < mesh.maps.size(); ++i) {
        const MeshMap& one = mesh.maps[i];
        lua_newtable(lua);
        lua_pushinteger(lua, selectorOf(one.kind));
        lua_setfield(lua, -2, "selector");
        lua_pushlstring(lua, one.name.data(), one.name.size());
        lua_setfield(lua, -2, "name");
        setNumber(lua, "param", double{one.param});
        lua_rawseti(lua, -2, static_cast<lua_Integer>(i + 1));
    }
    return 1;
}

int write(lua_State* lua) {
    const Mesh& mesh = meshArgument(lua, 1);
    const char* path = luaL_checkstring(lua, 2);
    std::string error;
    const bool done = writeMesh(path, mesh, error);
    return pushDone(lua, done, error);
}

int writeMaya(lua_State* lua) {
    const Mesh& mesh = meshArgument(lua, 1);
    const char* path = luaL_checkstring(lua, 2);
    std::string error;
    const bool done = writeMayaScene(path, mesh, error);
    return pushDone(lua, done, error);
}

int saveMeshObj(lua_State* lua) {
    const Mesh& mesh = meshArgument(lua, 1);
    const char* path = luaL_checkstring(lua, 2);
    std::string error;
    const bool done = saveObj(path, mesh, error);
    return pushDone(lua, done, error);
}

// The mesh stays a usable, empty one: Lua may still reach it while it closes down.
int release(lua_State* lua) {
    meshArgument(lua, 1) = Mesh();
    return 0;
}

constexpr luaL_Reg kFunctions[] = {
    {"make_surface", makeSurfaceMesh},
    {"load_obj", loadObjMesh},
    {"read_mesh", readExchangeMesh},
    {"read_maya", readMayaMesh},
    {"compare", compareTwoMeshes},
    {"now", now},
    {nullptr, nullptr},
};

constexpr luaL_Reg kMethods[] = {
    {"counts", counts},
    {"bounds", bounds},
    {"signed_volume", signedVolume},
    {"edges", edges},
    {"map", map},
    {"twisted_about_y", twistedAboutY},
    {"rewound", rewound},
    {"with_own_uvs", withOwnUVs},
    {"set_map", setMap},
    {"maps", maps},
    {"write", write},
    {"write_maya", writeMaya},
    {"save_obj", saveMeshObj},
    {"__gc", release},
    {nullptr, nullptr},
};

}  // namespace

void registerMeshFunctions(lua_State* lua) {
    luaL_newmetatable(lua, kMeshType);
    luaL_setfuncs(lua, kMethods, 0);
    lua_pushvalue(lua, -1);
    lua_setfield(lua, -2, "__index");
    lua_pop(lua, 1);
    lua_getglobal(lua, "vek");
    luaL_setfuncs(lua, kFunctions, 0);
    lua_pop(lua, 1);
}

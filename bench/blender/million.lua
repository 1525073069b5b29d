-- The host's side of bench/blender/run: arguments are the source folder, a folder for files, and
-- how many faces.
local source, out, faces = arg[1], arg[2], math.tointeger(tonumber(arg[3]))
local files = dofile(source .. "/demo/files.lua")
local TREE = "/Users/Shared/Kelvaro"
local FOLDER = TREE .. "/VekApps/Blender"
local rows = {}

local function timed(name, action, ...)
    local started = vek.now()
    local result, why = action(...)
    rows[#rows + 1] = { name = name, seconds = (vek.now() - started) / 1000 }
    assert(result, why)
    return result
end

for _, folder in ipairs { TREE .. "/VekHub", TREE .. "/VekProjects/Default", FOLDER } do
    files.make_folder(folder)
end
files.copy_contents(source .. "/build/release/apps/Blender", FOLDER)
assert(InitializeVek("/Applications") >= 1)
local index = FindVekApp("Blender")
CallVekAppCommand("LOCATE_COMMAND", index)
local _, path = ReadVekAppPath(index)
local failed, why = VekAppInstall(path, index)
assert(failed == 0, why)

local mesh = vek.make_surface(faces)
local line = TREE .. "/VekProjects/Default/Vase"
GetVekAppIOPrefs(index)
VekSetExportScale(1)
timed("host writes the exchange file", mesh.write, mesh, line .. ".vek")
timed("VekPostExport", function() return VekPostExport(line .. ".vek") == 0 end)
ClearVekObjectList()
AddVekObjectToList(line)
local config = FOLDER .. "/Vek_Config.txt"
WriteConfigPrefAsString(config, "EDIT_SCRIPT", source .. "/bench/blender/in_blender.py")
WriteConfigPrefAsString(config, "BENCH_FOLDER", out)
CallVekAppCommand("EDIT_COMMAND", index)
local facts = files.facts_in(FOLDER .. "/Blender_Report.txt")
assert(facts.exit_code == "0", facts.last_line)
rows[#rows + 1] = { name = "Blender receives", seconds = facts.receive }
rows[#rows + 1] = { name = "Blender sends", seconds = facts.send }
timed("VekPreImport", function() return VekPreImport(line .. ".vek") == 0 end)
local back = timed("host reads the exchange file", vek.read_mesh, line .. ".vek")
local difference = vek.compare(mesh, back)
for what, count in pairs(difference) do
    assert(count == 0, ("the mesh came back damaged: %s %g"):format(what, count))
end

local counts = mesh:counts()
print(("%d faces, %d vertices, %d UVs; all came back."):format(counts.faces, counts.vertices,
    counts.uvs))
print()
for _, row in ipairs(rows) do print(("%-32s %8.3f s"):format(row.name, row.seconds)) end
-- Seconds by the clock, and seconds of processor time in brackets, over all cores.
local line_of = "%-7s %9s %9s %11s %9s"
print()
print(line_of:format("", "out of", "(cpu)", "into", "(cpu)"))
print(line_of:format("", "Blender", "", "Blender", ""))
local function print_row(name, out_of, into)
    print(line_of:format(name, facts[out_of] .. " s", "(" .. facts[out_of .. "_cpu"] .. ")",
        facts[into] .. " s", "(" .. facts[into .. "_cpu"] .. ")"))
end
print_row("Vek", "send", "receive")
for _, format in ipairs { "OBJ", "STL", "Alembic", "USD", "PLY", "glTF", "FBX", "Collada", "own" } do
    if facts[format .. "_export"] then
        print_row(format, format .. "_export", format .. "_import")
        print(("  ours / %s: %.2f out, %.2f in"):format(format,
            facts.send / facts[format .. "_export"], facts.receive / facts[format .. "_import"]))
    else
        print(("%-7s is not in this Blender."):format(format))
    end
end

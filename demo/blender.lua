-- Ten objects go from the host into Blender, are edited there, and come back. Run it with
-- `make demo APP=Blender`; Blender works without a window. Beside it, blender_edit.py is what is
-- done in Blender, blender_picture.py takes the picture at the end.
--
--     vek run demo/blender.lua [--mesh FILE.obj] [--app FOLDER] [--out FOLDER] [--faces COUNT]
--                              [--picture no]
--
-- journal.lua has step() and expect(), as in round_trip.lua, which explains the calls one by one.

local journal = dofile(vek.script_folder .. "/journal.lua")
local files = dofile(vek.script_folder .. "/files.lua")
local step, expect = journal.step, journal.expect

local TREE = "/Users/Shared/Kelvaro"
local APP = "Blender"
local FOLDER = TREE .. "/VekApps/" .. APP
local PROJECT = TREE .. "/VekProjects/Default"
local OBJECTS = 10
local ROUNDING = 1e-5 -- of the size of an object

local options, complaint = files.options(arg, {
    app = vek.script_folder .. "/../build/release/apps/" .. APP,
    out = "build/demo",
    faces = "600",
    picture = "yes",
}, { "mesh" })
expect(options, complaint)

local function make_tree()
    expect(os.getenv("VEK_VIEW") or not files.is_there(TREE),
        TREE .. " is there already and may be somebody's own. Run this with `make demo`.")
    for _, folder in ipairs { TREE .. "/VekHub", FOLDER, PROJECT, options.out .. "/host",
                              options.out .. "/back" } do
        expect(files.make_folder(folder), "The folder cannot be made: " .. folder)
    end
    expect(files.copy_contents(options.app, FOLDER),
        "The application cannot be copied from " .. options.app .. ". Is it built?")
end

local function one_mesh()
    if not options.mesh then
        local faces = math.tointeger(tonumber(options.faces))
        expect(faces and faces >= 200 and faces <= 1000000,
            "--faces needs a number between 200 and 1000000, not " .. options.faces .. ".")
        return vek.make_surface(faces), "Vase"
    end
    local mesh, notes = vek.load_obj(options.mesh)
    expect(mesh, notes)
    files.tell_changes(mesh, notes)
    return mesh, files.base_name(options.mesh)
end

-- Ten of them, in two rows, each of a size of its own. y is up, the floor is y = 0.
local function host_objects()
    local mesh, name = one_mesh()
    local box = mesh:bounds()
    local pitch = 1.15 * math.max(box.size.x, box.size.y, box.size.z)
    local objects = {}
    for i = 1, OBJECTS do
        local size = 0.7 + 0.06 * i
        local column, row = (i - 1) % 5, (i - 1) // 5
        local function placed(x, y, z)
            return size * (x - box.centre.x) + pitch * (column - 2), size * (y - box.min.y),
                size * (z - box.centre.z) - 1.5 * pitch * row
        end
        objects[i] = { name = name .. " " .. i, mesh = mesh:map(placed) }
    end
    return objects
end

local function start_the_bridge()
    expect(step("InitializeVek", InitializeVek, "/Applications/Dorvia") >= 1,
        "The bridge found no target application below " .. TREE .. "/VekApps.")
    local index = step("FindVekApp", FindVekApp, APP)
    expect(index >= 0, "The bridge does not know the application " .. APP .. ".")
    step("SetVekAppIndex", SetVekAppIndex, index)
    return index
end

local function install(index)
    expect(os.execute("command -v osascript >/dev/null"),
        "There is no osascript here, which installs with more rights. Run this with `make demo`.")
    step("CallVekAppCommand", CallVekAppCommand, "LOCATE_COMMAND", index)
    local found, path = step("ReadVekAppPath", ReadVekAppPath, index)
    expect(found == 1, "Blender was not found on this machine.")
    local failed, why = step("VekAppInstall", VekAppInstall, path, index)
    expect(failed == 0, "The bridge was not installed: " .. tostring(why))
end

-- Blender has z up, right-handed as the host: what points up there points up here.
local function as_blender_needs_it(mesh)
    return mesh:map(function(x, y, z) return x, -z, y end)
end

local function expect_same(expected, mesh, complaint)
    local difference = vek.compare(expected, mesh)
    local size = expected:bounds().size
    for what, count in pairs(difference) do
        if not what:find("distance", 1, true) then
            expect(count == 0, ("%s (%s: %d)."):format(complaint, what:gsub("_", " "), count))
        end
    end
    expect(difference.max_distance <= ROUNDING * math.max(size.x, size.y, size.z),
        ("%s (a vertex is %g out of place)."):format(complaint, difference.max_distance))
end

local function write_objects(objects)
    for _, object in ipairs(objects) do
        object.line = PROJECT .. "/" .. object.name
        local written, why = object.mesh:write(object.line .. ".vek")
        expect(written, why)
        object.mesh:write(options.out .. "/host/" .. object.name .. ".vek")
    end
    return #objects
end

local function export(objects, index)
    step("GetVekAppIOPrefs", GetVekAppIOPrefs, index)
    step("VekSetExportScale", VekSetExportScale, 1)
    expect(step("(host) writes the objects", write_objects, objects) == OBJECTS, "")
    local cleared = step("ClearVekObjectList", ClearVekObjectList)
    expect(cleared == 1, "The object list cannot be emptied.")
    local prepared = step("VekPostExport, ten times", function()
        local failures = 0
        for _, object in ipairs(objects) do
            AddVekObjectToList(object.line)
            if VekPostExport(object.line .. ".vek") ~= 0 then failures = failures + 1 end
        end
        return failures
    end)
    expect(prepared == 0, "An exchange file cannot be turned for Blender.")
    for _, object in ipairs(objects) do
        local seen, why = vek.read_mesh(object.line .. ".vek")
        expect(seen, why)
        local complaint = object.name .. " does not stand upright"
        expect_same(as_blender_needs_it(object.mesh), seen, complaint)
    end
end

-- Blender works on its own then, with a script in place of a user, and reports into a file.
local function edit_in_blender(index)
    local config = FOLDER .. "/Vek_Config.txt"
    WriteConfigPrefAsString(config, "EDIT_SCRIPT", vek.script_folder .. "/blender_edit.py")
    WriteConfigPrefAsString(config, "DEMO_SCENE", options.out .. "/blender.blend")
    local called = step("CallVekAppCommand", CallVekAppCommand, "EDIT_COMMAND", index)
    expect(called == 0, "Blender does not say how it edits.")
    local facts = files.facts_in(FOLDER .. "/Blender_Report.txt")
    expect(facts.exit_code == "0", "Blender did not edit the objects: " .. facts.last_line)
    print("Blender received: " .. facts.received)
    print("Blender sent: " .. facts.sent)
end

-- What each modifier of blender_edit.py makes of a mesh, seen from the host.
local expectations = {
    { name = "stacked", faces = 2, height = 2, volume = 2 },
    { name = "mirrored", faces = 2, height = 1, volume = 2 },
    { name = "subdivided", faces = 4, height = 1, volume = 1 },
}

local function near(value, wanted)
    return math.abs(value - wanted) <= 1e-3 * wanted
end

local function check_edit(object, back, number)
    local wanted = expectations[(number - 1) % #expectations + 1]
    local before, after = object.mesh:counts(), back:counts()
    local was, is = object.mesh:bounds(), back:bounds()
    local corners = before.triangles * 3 + before.quads * 4
    local faces = wanted.faces == 4 and corners or wanted.faces * before.faces
    expect(after.faces == faces,
        ("%s has %d faces instead of %d."):format(object.name, after.faces, faces))
    expect(near(is.size.y, wanted.height * was.size.y), object.name .. " has another height.")
    expect(near(back:signed_volume(), wanted.volume * object.mesh:signed_volume()),
        object.name .. " has another volume.")
    local flaws, own = back:edges(), object.mesh:edges()
    expect(flaws.disagreeing == own.disagreeing or own.disagreeing > 0,
        object.name .. " came back with faces wound against each other.")
    expect(after.uvs > 0 or before.uvs == 0, object.name .. " lost its UVs.")
    return ("%s: %d, %d faces"):format(wanted.name, before.faces, after.faces)
end

local function come_back(objects)
    local count = step("ReadVekObjectList", ReadVekObjectList)
    expect(count == OBJECTS, "Blender handed back " .. count .. " objects.")
    for i, object in ipairs(objects) do
        local _, line = GetVekObjectPath(i - 1)
        expect(line == object.line,
            "Blender handed back " .. line .. " in place of " .. object.line)
        expect(VekPreImport(line .. ".vek") == 0, "The exchange file cannot be turned: " .. line)
        local back, why = vek.read_mesh(line .. ".vek")
        expect(back, why)
        step(object.name .. " came back", check_edit, object, back, i)
        back:write(options.out .. "/back/" .. object.name .. ".vek")
    end
end

local function take_the_picture()
    local _, blender = ReadVekAppPath(FindVekApp(APP))
    local words = { blender, "-b", options.out .. "/blender.blend", "--addons", "vek_bridge",
        "--python-exit-code", "1", "--python", vek.script_folder .. "/blender_picture.py", "--",
        options.out }
    for i, word in ipairs(words) do words[i] = files.quoted(word) end
    local log = options.out .. "/picture.log"
    local done = step("(Blender) takes the picture", os.execute,
        table.concat(words, " ") .. " >" .. files.quoted(log) .. " 2>&1")
    expect(done, "The picture was not taken; Blender's own words are in " .. log)
end

make_tree()
local objects = host_objects()
print(("%d objects, %d faces in each."):format(#objects, objects[1].mesh:counts().faces))
local index = start_the_bridge()
install(index)
export(objects, index)
edit_in_blender(index)
come_back(objects)
if options.picture == "yes" then take_the_picture() end
journal.print_table()
if options.picture == "yes" then
    print("To look at: " .. options.out .. "/blender.png: in the host, in Blender, and back")
end

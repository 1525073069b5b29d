-- A mesh goes from the host to another application and back, as a macro of the host does it: the
-- example to copy. Run it with `make demo`, or by itself where nobody uses the bridge. Installing
-- asks osascript for an administrator's rights; where there is none, demo/stand-ins has one:
--
--     vek run demo/round_trip.lua [--mesh FILE.obj] [--faces COUNT] [--app FOLDER]
--                                 [--project FOLDER] [--out FOLDER] [--locale NAME]
--
-- Every export is a function here. It returns the export's number first and then what the export
-- wrote, nil where it wrote nothing. step() times a call and notes it for the table at the end,
-- expect() ends the macro with a sentence when something went wrong; both are in journal.lua.

local journal = dofile(vek.script_folder .. "/journal.lua")
local files = dofile(vek.script_folder .. "/files.lua")
local step, expect = journal.step, journal.expect

local TREE = "/Users/Shared/Kelvaro"
local HOST_FOLDER = "/Applications/Dorvia"
local APP = "Example"
local TWIST = 90 -- degrees, from the bottom of the mesh to its top

local SCALE = 2

local options, complaint = files.options(arg, {
    -- as it is built, or as it is installed
    app = files.first_there(vek.script_folder .. "/../build/release/apps/" .. APP,
        vek.script_folder .. "/../apps/" .. APP),
    project = TREE .. "/VekProjects/Default",
    out = "build/demo",
    faces = "100000",
}, { "mesh", "locale" })
expect(options, complaint)

-- What an installer does: the folders, and in VekApps a folder for each target application, made so
-- that every user of the machine can use them; then the application that was asked for.
local function make_tree()
    expect(os.getenv("VEK_VIEW") or not files.is_there(TREE),
        TREE .. " is there already and may be somebody's own. Run this with `make demo`.")
    expect(os.execute(files.quoted(vek.program) .. " init >/dev/null"),
        "The shared tree cannot be made. `vek init` says why.")
    for _, folder in ipairs { TREE .. "/VekApps/" .. APP, options.project, options.out } do
        expect(files.make_folder(folder), "The folder cannot be made: " .. folder)
    end
    expect(files.copy_contents(options.app, TREE .. "/VekApps/" .. APP),
        "The application cannot be copied from " .. options.app .. ". Is it built?")
end

-- The mesh that the user works on in the host: right-handed, y up, faces wound outwards.
local function host_mesh()
    if not options.mesh then
        local faces = math.tointeger(tonumber(options.faces))
        expect(faces and faces >= 200 and faces <= 10000000,
            "--faces needs a number between 200 and 10000000, not " .. options.faces .. ".")
        print("The mesh is a vase made on the spot.")
        return vek.make_surface(faces), "Vase"
    end
    local mesh, notes = vek.load_obj(options.mesh)
    expect(mesh, notes)
    print("The mesh is " .. options.mesh .. ".")
    files.tell_changes(mesh, notes)
    local edges = mesh:edges()
    local closed = edges.open + edges.disagreeing + edges.crowded == 0
    if closed and mesh:signed_volume() < 0 then
        print("Its faces are wound inwards; they are turned round before the export.")
        mesh = mesh:rewound()
    end
    return mesh, files.base_name(options.mesh)
end

-- Where the object stands in the host. The export mirrors it about scale * offset, not about the
-- origin, so that it stays in its place.
local function placement(mesh)
    local size = mesh:bounds().size
    local largest = math.max(size.x, size.y, size.z)
    return { x = largest / 4, y = -largest / 2, z = largest }
end

local function mirror_centre(mesh)
    local offset = placement(mesh)
    return { x = SCALE * offset.x, y = SCALE * offset.y, z = SCALE * offset.z }
end

-- The names of the maps that go with the mesh, by selector.
local function give_maps(mesh, object)
    local maps = {
        [0] = { name = object .. "_color.png", param = 0 },
        [1] = { name = object .. "_normal.png", param = 0 },
        [2] = { name = object .. "_height.png", param = 0.5 },
    }
    for selector = 0, 2 do mesh:set_map(selector, maps[selector].name, maps[selector].param) end
    return maps
end

local function start_the_bridge()
    local found = step("InitializeVek", InitializeVek, HOST_FOLDER)
    expect(found >= 1, "The bridge found no target application below " .. TREE .. "/VekApps.")
end

-- The selection outlasts the macro: the target application reads it too.
local function select_the_application()
    local index = step("FindVekApp", FindVekApp, APP)
    expect(index >= 0, "The bridge does not know the application " .. APP .. ".")
    step("SetVekAppIndex", SetVekAppIndex, index)
    local selected = step("GetVekAppIndex", GetVekAppIndex)
    expect(selected == index, "The selection of " .. APP .. " was not kept.")
    local _, extension = step("GetVekAppExt", GetVekAppExt, index)
    expect(extension == ".vek", APP .. " does not take mesh exchange files.")
    return index, extension
end

-- Once for each user and application: find out where it is, and have it learn of the bridge. The
-- application brings the programs for that along; the host's script only names them.
local function install_into_the_application(index)
    expect(os.execute("command -v osascript >/dev/null"),
        "There is no osascript here, which installs as an administrator. Run this with `make demo`.")
    local called = step("CallVekAppCommand", CallVekAppCommand, "LOCATE_COMMAND", index)
    expect(called == 0, APP .. " does not say how it is located.")
    local found, path = step("ReadVekAppPath", ReadVekAppPath, index)
    expect(found == 1, APP .. " was not found on this machine.")
    expect(step("IsAppPathValid", IsAppPathValid, path) == 1, APP .. " is no longer at " .. path)
    if step("VekAppIsInstalled", VekAppIsInstalled, path, index) == 0 then
        local failed, why = step("VekAppInstall", VekAppInstall, path, index)
        expect(failed == 0, "The bridge was not installed: " .. tostring(why))
    end
    expect(step("VekAppIsInstalled", VekAppIsInstalled, path, index) == 1,
        "The installation was not recorded.")
    return path
end

local function quit_the_application(path)
    local program = files.quoted(path .. "/Contents/MacOS/" .. APP)
    return files.soon(function()
        -- again, as it hears of it only when it has started wholly
        os.execute(program .. " quit 2>/dev/null")
        return VekAppIsRunning(path) == 0
    end)
end

local function open_the_application(path)
    journal.on_failure(function() quit_the_application(path) end)
    step("OpenVekApplication", OpenVekApplication, path)
    expect(step("VekAppIsRunning", VekAppIsRunning, path) == 1, APP .. " does not run.")
end

local function close_the_application(path)
    step("(" .. APP .. ") is told to quit", quit_the_application, path)
    expect(step("VekAppIsRunning", VekAppIsRunning, path) == 0, APP .. " still runs.")
    journal.on_failure(nil)
end

-- Asking for the preferences is what tells the library which way to turn the files that follow.
local function prepare_the_export(index, offset)
    local _, low, high = step("GetVekAppIOPrefs", GetVekAppIOPrefs, index)
    expect(low == 0 and high == 0, "The library leaves the mirroring of the files to the macro.")
    step("VekSetExportScale", VekSetExportScale, SCALE)
    step("VekSetExportOffsetX", VekSetExportOffsetX, offset.x)
    step("VekSetExportOffsetY", VekSetExportOffsetY, offset.y)
    step("VekSetExportOffsetZ", VekSetExportOffsetZ, offset.z)
end

-- Floats round at each transform. A low and wide mesh makes more of it, as the angle of the twist
-- hangs on the height.
local function allowed_distance(mesh)
    local box, centre, reach = mesh:bounds(), mirror_centre(mesh), 0
    for _, axis in ipairs { "x", "y", "z" } do
        local far = math.max(math.abs(box.min[axis]), math.abs(box.max[axis]))
        reach = math.max(reach, far + 2 * math.abs(centre[axis]))
    end
    local width = math.max(box.size.x, box.size.z)
    return 5e-7 * reach * (1 + (box.size.y > 0 and 2 * width / box.size.y or 0))
end

-- What a comparison counted, in words; empty when the meshes are the same but for rounding.
local function words_for(difference, allowed)
    local words = {}
    for what, count in pairs(difference) do
        local is_distance = what:find("distance", 1, true)
        if not is_distance and count > 0 then
            words[#words + 1] = what:gsub("_", " ") .. ": " .. count
        end
    end
    if not (difference.max_distance <= allowed) then
        words[#words + 1] = ("a vertex is %.3g out of place"):format(difference.max_distance)
    end
    table.sort(words)
    return table.concat(words, ", ")
end

local function expect_same(expected, mesh, complaint)
    local difference = step("(host) compares", vek.compare, expected, mesh)
    local allowed = allowed_distance(expected)
    local words = words_for(difference, allowed)
    expect(words == "", complaint .. " (" .. words .. ").")
    return difference, allowed
end

-- The application is left-handed with z up. y and z change places about the centre, which mirrors
-- the mesh once, so its faces are rewound. A macro does not need this: the export does it.
local function as_the_application_needs_it(mesh)
    local centre = mirror_centre(mesh)
    local function switched(x, y, z)
        return x, z - centre.z + centre.y, y - centre.y + centre.z
    end
    return mesh:map(switched):rewound()
end

-- An object line is the path of the exchange file without its extension.
local function export(mesh, object, extension)
    local path = object .. extension
    local written, why = step("(host) writes the mesh", mesh.write, mesh, path)
    expect(written, why)
    local cleared = step("ClearVekObjectList", ClearVekObjectList)
    expect(cleared == 1, "The object list cannot be emptied.")
    step("AddVekObjectToList", AddVekObjectToList, object)
    local prepared = step("VekPostExport", VekPostExport, path)
    expect(prepared == 0, "The exchange file cannot be turned for " .. APP .. ": " .. path)

    local seen, reason = vek.read_mesh(path)
    expect(seen, reason)
    expect_same(as_the_application_needs_it(mesh), seen,
        "The export did not turn the mesh as " .. APP .. " needs it")
    return seen
end

-- The application is a program of its own; it reads its settings from a file beside its descriptor,
-- and reports what it was given into another one.
local function edit_in_the_application(mesh, index)
    local folder = TREE .. "/VekApps/" .. APP
    local settings = folder .. "/" .. APP .. "_Settings.txt"
    local flaws = mesh:edges().disagreeing -- a mesh that never was quite right is no fault of ours
    step("WriteConfigPrefAsInt", WriteConfigPrefAsInt, settings, "TWIST", TWIST)
    step("WriteConfigPrefAsInt", WriteConfigPrefAsInt, settings, "KNOWN_FLAWS", flaws)
    local called = step("CallVekAppCommand", CallVekAppCommand, "EDIT_COMMAND", index)
    expect(called == 0, APP .. " does not say how it edits.")
    local facts = files.facts_in(folder .. "/" .. APP .. "_Report.txt")
    expect(facts.exit_code == "0", APP .. " did not edit the mesh: " .. facts.last_line)
    expect(tonumber(facts.disagreeing_edges) == flaws,
        APP .. " saw faces wound against each other.")
    expect(math.abs(tonumber(facts.height) - mesh:bounds().size.y) <= allowed_distance(mesh),
        APP .. " saw the mesh lie down.")
    print(("%s, %s-handed with %s up, was given %s faces, height %s, closed: %s, signed volume %s.")
        :format(APP, facts.handedness, facts.up, facts.faces, facts.height, facts.closed,
            facts.signed_volume))
end

local function find_what_came_back(object)
    local count = step("ReadVekObjectList", ReadVekObjectList)
    expect(count == 1, APP .. " handed back " .. count .. " objects instead of one.")
    local _, edited = step("GetVekObjectPath", GetVekObjectPath, 0)
    expect(edited == object .. "_edited", APP .. " did not hand back an object of its own.")
    return edited
end

-- The application writes its paths with backslashes; the export turns them.
local function check_maps(maps)
    for selector = 0, 2 do
        local found, name, param =
            step("GetFirstObjectTextureFileName", GetFirstObjectTextureFileName, selector)
        expect(found == 0 and name == maps[selector].name,
            "The name of map " .. selector .. " did not come back.")
        expect(selector ~= 2 or tonumber(param) == maps[2].param, "The number of map 2 was lost.")
    end
end

local function import(path)
    local prepared = step("VekPreImport", VekPreImport, path)
    expect(prepared == 0, "The exchange file cannot be turned for the host: " .. path)
    local back, why = step("(host) reads the mesh", vek.read_mesh, path)
    expect(back, why)
    return back
end

-- The same mesh as a Maya scene. Nobody edits it on the way; what comes back has a UV for each face
-- corner, as what was sent.
local function send_as_a_maya_scene(mesh, object)
    local path = object .. ".ma"
    local written, why = step("(host) writes a Maya scene", mesh.write_maya, mesh, path)
    expect(written, why)
    expect(step("VekPostExport", VekPostExport, path) == 0, "The scene cannot be merged: " .. path)
    local seen, reason = vek.read_maya(path)
    expect(seen, reason)
    local sent = mesh:with_own_uvs()
    expect(vek.compare(sent:rewound(), seen).faces_wound_wrong == 0,
        "The faces of the scene are not wound for an application that mirrors.")
    expect(seen:counts().uvs <= sent:counts().uvs, "The scene has more UVs than were sent.")
    expect(step("VekPreImport", VekPreImport, path) == 0, "The scene cannot be split: " .. path)
    local back, complaint = step("(host) reads the scene", vek.read_maya, path)
    expect(back, complaint)
    expect(back:counts().uvs == sent:counts().uvs, "A face corner of the scene has no UV of its own.")
    expect_same(sent, back:with_own_uvs(), "The mesh came back from the scene damaged")
    print(("As a Maya scene: %d UVs sent, %d in the scene, %d came back.")
        :format(sent:counts().uvs, seen:counts().uvs, back:counts().uvs))
end

-- The host's menu, as far as the button goes that starts all this: a host of our own has windows like
-- the real one, and the script puts the button where the user looks for it.
local function place_the_button()
    host.window { name = "Dorvia", children = {
        { name = "Tool", children = {
            { children = { { name = "Smooth" }, { name = "Export" }, { name = "Mirror" } } } } },
        { name = "Vek", children = { { name = "Send to " .. APP } } },
    } }
    local before = host.tree()
    local placed = step("SetItemPos", SetItemPos, "Vek:Send to " .. APP, 1, "Tool:Export")
    expect(placed == 0, "The button or its anchor was not found.")
    expect(host.tree() ~= before, "The button did not move.")
    print("The button behind its anchor, before and after:")
    print(before .. "\n" .. host.tree())
end

-- The application turns from its x to its y. Seen from the host, in the mirror, that is the other
-- way round; about the middle of the mesh, wherever the mirror's centre lies.
local function expected_back(mesh)
    return mesh:twisted_about_y(-TWIST)
end

local function save(mesh, name)
    local saved, why = mesh:save_obj(options.out .. "/" .. name .. ".obj")
    expect(saved, why)
end

if options.locale then
    expect(os.setlocale(options.locale), "There is no locale " .. options.locale .. " here.")
end
make_tree()
local mesh, name = host_mesh()
files.tell_counts(mesh)
local object = options.project .. "/" .. name
local maps = give_maps(mesh, object)

start_the_bridge()
local index, extension = select_the_application()
local path = install_into_the_application(index)
open_the_application(path)
prepare_the_export(index, placement(mesh))
local seen = export(mesh, object, extension)
edit_in_the_application(mesh, index)
local edited = find_what_came_back(object)
check_maps(maps)
local back = import(edited .. extension)

save(mesh, "host")
save(seen, "application")
save(back, "back")
local difference, allowed = expect_same(expected_back(mesh), back, "The mesh came back damaged")
send_as_a_maya_scene(mesh, object)
close_the_application(path)
place_the_button()
journal.print_table()
print(("%d faces wound wrong, %d corners lost, largest distance %.3g (rounding allows %.3g)")
    :format(difference.faces_wound_wrong, difference.corners_lost, difference.max_distance,
        allowed))
print("To look at: host.obj, application.obj (what " .. APP .. " was given), back.obj in "
    .. options.out)

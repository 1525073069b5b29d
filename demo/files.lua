-- Options, folders, other programs, and words about a mesh.

local files = {}

-- "--name value" pairs; `defaults` and `others` name the ones there are. Returns nil and a sentence
-- when there is something else among them.
function files.options(arguments, defaults, others)
    local options, known = {}, {}
    for name, value in pairs(defaults) do options[name], known[name] = value, true end
    for _, name in ipairs(others) do known[name] = true end
    for i = 1, #arguments, 2 do
        local name, value = arguments[i]:match("^%-%-(%a+)$"), arguments[i + 1]
        if not known[name] or not value then
            return nil, "This is not an option, or it has no value: " .. arguments[i]
        end
        options[name] = value
    end
    return options
end

-- A word for the shell that stands for exactly this text.
function files.quoted(text)
    return "'" .. text:gsub("'", "'\\''") .. "'"
end

function files.is_there(path)
    return (os.execute("test -e " .. files.quoted(path)))
end

-- The first of two paths that is there, or else the second.
function files.first_there(first, second)
    return files.is_there(first) and first or second
end

function files.make_folder(path)
    return (os.execute("mkdir -p " .. files.quoted(path)))
end

function files.copy_contents(from, to)
    return (os.execute("cp -R " .. files.quoted(from .. "/.") .. " " .. files.quoted(to)))
end

-- The name of a file without its folder and its extension.
function files.base_name(path)
    return (path:gsub("^.*/", ""):gsub("%.[^.]*$", ""):gsub("%s+$", ""))
end

-- The facts that a program reported into a file, "key: value" one a line; last_line is the last one
-- that is none, where a program says why it failed.
function files.facts_in(path)
    local facts = { last_line = "it said nothing" }
    local file = io.open(path)
    if not file then return facts end
    for line in file:lines() do
        local key, value = line:match("^([%a_]+): (.*)$")
        if key then facts[key] = value else facts.last_line = line end
    end
    file:close()
    return facts
end

-- Asks until the answer is true, for ten seconds at most. The last answer.
function files.soon(holds)
    for _ = 1, 100 do
        if holds() then return true end
        os.execute("sleep 0.1")
    end
    return holds()
end

function files.tell_counts(mesh)
    local counts = mesh:counts()
    print(("It has %d vertices and %d faces: %d quads and %d triangles, with %d UVs.")
        :format(counts.vertices, counts.faces, counts.quads, counts.triangles, counts.uvs))
end

-- What had to be changed to hold an OBJ file as quads and triangles with UVs.
function files.tell_changes(mesh, notes)
    if notes.faces_cut > 0 then
        print(("%d faces with more than four corners were cut into triangles.")
            :format(notes.faces_cut))
    end
    if notes.faces_skipped > 0 then
        print(("%d faces with fewer than three corners were left out."):format(notes.faces_skipped))
    end
    if notes.uvs_made > 0 then
        print(("%d UVs were made for corners that had none."):format(notes.uvs_made))
    end
    local edges = mesh:edges()
    if edges.disagreeing > 0 then
        print(("Its faces are wound against each other at %d edges."):format(edges.disagreeing))
    end
end

return files

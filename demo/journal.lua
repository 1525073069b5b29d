-- Keeps a row for each step of a macro: what ran, its result, its time, and whether all was well.

local journal = {}
local rows = {}
local clean_up

-- Of a long text, such as a path, the end tells most.
local function shortened(text)
    if #text <= 32 then return text end
    return "..." .. text:sub(-29):gsub("^[\128-\191]+", "") -- never from the middle of a character
end

local function shown(value)
    if type(value) == "number" then return ("%.6g"):format(value) end
    if type(value) == "userdata" then return "a mesh" end
    return shortened(tostring(value))
end

-- What is a table speaks for itself elsewhere.
local function shown_results(results)
    local words = {}
    for i = 1, results.n do
        local value = results[i]
        if value ~= nil and type(value) ~= "table" then words[#words + 1] = shown(value) end
    end
    return table.concat(words, ", ")
end

function journal.print_table()
    local line = "%-30s %-46s %9s  %s"
    print()
    print(line:format("step", "result", "ms", "verdict"))
    for _, row in ipairs(rows) do
        print(line:format(row.name, row.result, ("%.3f"):format(row.ms), row.verdict))
    end
    print()
end

-- Calls the function and gives back all its results.
function journal.step(name, action, ...)
    local started = vek.now()
    local results = table.pack(action(...))
    local ms = vek.now() - started
    rows[#rows + 1] = { name = name, result = shown_results(results), ms = ms, verdict = "ok" }
    return table.unpack(results, 1, results.n)
end

-- What is to be done when the macro ends before its end; nil takes it back.
function journal.on_failure(action)
    clean_up = action
end

-- Ends the macro with a sentence unless the condition holds; the step before it is then the one
-- that failed. A user needs the sentence, not the line of the macro, so this is no Lua error.
function journal.expect(condition, sentence)
    if condition then return end
    if clean_up then clean_up() end
    if #rows > 0 then
        rows[#rows].verdict = "FAILED"
        journal.print_table()
    end
    io.stdout:flush()
    io.stderr:write(sentence, "\n")
    os.exit(1)
end

return journal

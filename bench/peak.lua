-- Turns the exchange file given and prints the most memory that this process held, in MiB.
assert(InitializeVek("/") == 1)
GetVekAppIOPrefs(0)
VekSetExportScale(1)
VekSetExportOffsetX(0.5)
assert(VekPostExport(arg[1]) == 0)
for line in io.lines("/proc/self/status") do
    local kib = line:match("^VmHWM:%s*(%d+)")
    if kib then print(kib / 1024) end
end

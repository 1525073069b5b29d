#!/bin/sh
# The INIT_COMMAND, run as an administrator: tells the application where the shared tree is. That the
# install log is there says that this has ended, so the log gets its name when it is complete: empty
# when all went well, otherwise with a text for the user.
folder=$(dirname "$0")

finish() {
    printf '%s' "$1" >"$folder/Vek_InstallLog.new"
    mv "$folder/Vek_InstallLog.new" "$folder/Vek_InstallLog.txt"
    exit
}

app=$(sed -n 's/^[[:blank:]]*PATH[[:blank:]:=]*"\(.*\)"[[:space:]]*$/\1/p' \
    "$folder/Vek_Config.txt" 2>/dev/null | head -n 1)
[ -n "$app" ] || finish "It is not known where Example is. Locate it first."
[ -d "$app/Contents" ] || finish "Example is no longer where it was located: $app"
resources=$app/Contents/Resources
tree=$(cd "$folder/../.." && pwd)
mkdir -p "$resources" 2>/dev/null && printf '%s\n' "$tree" 2>/dev/null >"$resources/Vek_Tree.txt" ||
    finish "The application's folder cannot be written: $resources"
finish ""

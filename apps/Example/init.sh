#!/bin/sh
# The INIT_COMMAND, run as an administrator: tells the application where the shared tree is. That the
# install log is there says that this has ended, so the log gets its name when it is complete: empty
# when all went well, otherwise with a text for the user.
folder=$(dirname "$0")

finish() {
    # The bridge does not end the text in the host's buffer, so the log ends with a NUL.
    if [ -n "$1" ]; then printf '%s\0' "$1"; fi >"$folder/Vek_InstallLog.new"
    chmod 644 "$folder/Vek_InstallLog.new" # the bridge reads it as the user
    mv "$folder/Vek_InstallLog.new" "$folder/Vek_InstallLog.txt"
    exit
}

# As the bridge reads it: the key in any letter case and a '=', with or without quotes around the value.
app=$(tr '\r' '\n' 2>/dev/null <"$folder/Vek_Config.txt" |
    grep -i '^[[:blank:]]*PATH[[:blank:]]*=' | head -n 1 |
    sed 's/^[^=]*=[[:blank:]]*//; s/[[:space:]]*$//; s/^"\(.*\)"$/\1/')
[ -n "$app" ] || finish "It is not known where Example is. Locate it first."
[ -d "$app/Contents" ] || finish "Example is no longer where it was located: $app"
umask 022 # every user's application reads it
resources=$app/Contents/Resources
tree=$(cd "$folder/../.." && pwd)
mkdir -p "$resources" 2>/dev/null && printf '%s\n' "$tree" 2>/dev/null >"$resources/Vek_Tree.txt" ||
    finish "The application's folder cannot be written: $resources"
finish ""

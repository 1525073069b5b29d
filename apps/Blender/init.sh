#!/bin/sh
# The INIT_COMMAND, run as an administrator: puts the add-on into the user's Blender and switches it
# on. That the install log is there says that this has ended, so the log gets its name when it is
# complete: empty when all went well, otherwise with a text for the user.
folder=$(cd "$(dirname "$0")" && pwd)
. "$folder/common.sh"
tree=$(cd "$folder/../.." && pwd)
said=$folder/Blender_Install_Output.txt

finish() {
    # The bridge does not end the text in the host's buffer, so the log ends with a NUL.
    if [ -n "$1" ]; then printf '%s\0' "$1"; fi >"$folder/Vek_InstallLog.new"
    chmod 644 "$folder/Vek_InstallLog.new" # the bridge reads it as the user
    mv "$folder/Vek_InstallLog.new" "$folder/Vek_InstallLog.txt"
    exit
}

# Runs a command as the user whose Blender it is, so that what it writes is the user's.
as_the_user() {
    user=$(ls -ld "$home" | awk '{ print $3 }')
    if [ "$(id -u)" != 0 ] || [ "$user" = "$(id -un)" ]; then
        HOME=$home "$@"
        return
    fi
    quoted=
    for word in "$@"; do
        quoted="$quoted '$(printf '%s' "$word" | sed "s/'/'\\\\''/g")'"
    done
    (cd / && su "$user" -c "$quoted") # which sets HOME
}

app=$(setting PATH)
[ -n "$app" ] || finish "It is not known where Blender is. Locate it first."
program=$(program_of "$app") || finish "Blender is no longer where it was located: $app"
home=$(setting USER_HOME)
[ -n "$home" ] || home=${HOME-}
[ -d "$home" ] || finish "There is no home folder to install Blender's add-on into: $home"

version=$(as_the_user "$program" --version 2>/dev/null |
    sed -n 's/^Blender \([0-9][0-9.]*\).*/\1/p' | head -n 1)
[ -n "$version" ] || finish "Blender does not start. Try it by hand: $program"
major=${version%%.*}
minor=${version#*.}
minor=${minor%%.*}
if [ "$major" -lt 3 ] || { [ "$major" = 3 ] && [ "$minor" -lt 2 ]; }; then
    finish "Blender $version is too old; the bridge needs Blender 3.2 or later."
fi

as_the_user "$program" -b --python-exit-code 1 --python "$folder/install.py" -- \
    "$folder/addon/$addon" "$tree" >"$said" 2>&1 && rm -f "$said" && finish ""
sentence=$(sed -n 's/^Not installed: //p' "$said" | tail -n 1)
finish "${sentence:-The add-on could not be installed into Blender; what it said is in $said}"

#!/bin/sh
# The LOCATE_COMMAND: looks for Blender and notes in Vek_Config.txt where it is (a line PATH, or
# none where it finds none) and whose Blender it is (a line USER_HOME: the installation runs as an
# administrator, and the add-on goes into the user's own folder). Whatever else stood there stays.
# The place that is noted already counts first, since a user may have chosen it.
folder=$(cd "$(dirname "$0")" && pwd)
. "$folder/common.sh"
umask 0 # the next user's bridge writes this file too

# The other lines of the configuration; fails where they cannot be read or written.
other_lines() {
    [ -f "$config" ] || return 0
    [ -r "$config" ] || return 1
    with_bytes tr '\r' '\n' <"$config" |
        with_bytes grep -aiv '^[[:blank:]]*PATH[[:blank:]]*=' |
        with_bytes grep -aiv '^[[:blank:]]*USER_HOME[[:blank:]]*=' | with_bytes grep -a .
    [ $? -le 1 ] # 1: there are none
}

note() {
    if ! {
        { [ -z "$1" ] || printf 'PATH = "%s"\n' "$1"; } &&
            printf 'USER_HOME = "%s"\n' "${HOME-}" && other_lines
    } >"$config.new"; then
        rm -f "$config.new"
        echo "The configuration cannot be written: $config" >&2
        exit 1
    fi
    mv "$config.new" "$config"
}

for app in "$(setting PATH)" \
    /Applications/Blender.app /Applications/Blender/Blender.app /Applications/Blender*.app \
    "${HOME-}"/Applications/Blender*.app \
    "$(command -v blender)" /usr/bin/blender /usr/local/bin/blender /snap/bin/blender \
    /opt/blender*/blender "${HOME-}"/blender*/blender; do
    [ -n "$app" ] && program_of "$app" >/dev/null || continue
    note "$app"
    exit
done
note ''
echo "Blender is in none of the usual folders." >&2
exit 1

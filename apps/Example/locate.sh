#!/bin/sh
# The LOCATE_COMMAND: looks for the application and notes in Vek_Config.txt where it is: a line PATH
# first, or none where it finds none, and behind it whatever else stood there.
folder=$(dirname "$0")
config=$folder/Vek_Config.txt
umask 0 # the next user's bridge writes this file too

note() {
    {
        printf '%s' "$1"
        [ ! -f "$config" ] || tr '\r' '\n' <"$config" | grep -iv '^[[:blank:]]*PATH[[:blank:]]*=' |
            grep .
    } >"$config.new"
    mv "$config.new" "$config"
}

for app in /Applications/Example.app "${HOME-}/Applications/Example.app" "$folder/Example.app"; do
    [ -x "$app/Contents/MacOS/Example" ] || continue
    note "PATH = \"$app\"
"
    exit
done
note ''
echo "Example.app is in none of the usual folders." >&2
exit 1

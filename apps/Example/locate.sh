#!/bin/sh
# The LOCATE_COMMAND: looks for the application and notes in Vek_Config.txt where it is, the first
# line PATH and whatever else stood there behind it. Notes nothing when it finds none.
folder=$(dirname "$0")
config=$folder/Vek_Config.txt
for app in /Applications/Example.app "${HOME-}/Applications/Example.app" "$folder/Example.app"; do
    [ -x "$app/Contents/MacOS/Example" ] || continue
    {
        printf 'PATH = "%s"\n' "$app"
        [ ! -f "$config" ] || grep -iv '^[[:blank:]]*PATH[[:blank:]:=]' "$config"
    } >"$config.new"
    mv "$config.new" "$config"
    exit
done
echo "Example.app is in none of the usual folders." >&2
exit 1

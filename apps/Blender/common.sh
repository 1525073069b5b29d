# What the three commands share; they set `folder`, the application's folder in the tree, before
# they read this in.
config=$folder/Vek_Config.txt
addon=vek_bridge

# Runs a command that takes letters as they come: paths need not be UTF-8.
with_bytes() {
    LC_ALL=C "$@"
}

# Prints the value of a key of Vek_Config.txt as the bridge reads it: the key in any letter case and
# a '=', with or without quotes around the value. Nothing where there is none.
setting() {
    with_bytes tr '\r' '\n' 2>/dev/null <"$config" |
        with_bytes grep -ai "^[[:blank:]]*$1[[:blank:]]*=" | head -n 1 |
        with_bytes sed 's/^[^=]*=[[:blank:]]*//; s/[[:space:]]*$//; s/^"\(.*\)"$/\1/'
}

# Prints the program of a Blender: of a bundle what lies in it, of anything else the path itself.
# Fails where there is none.
program_of() {
    for program in "$1/Contents/MacOS/Blender" "$1/Contents/MacOS/blender" "$1"; do
        if [ -f "$program" ] && [ -x "$program" ]; then
            printf '%s\n' "$program"
            return 0
        fi
    done
    return 1
}

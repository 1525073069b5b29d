#!/bin/sh
# The EDIT_COMMAND: the Blender that runs gets the objects of the list, and where none runs, one is
# started. What went wrong stands afterwards in Blender_Report.txt.
#
# Where Vek_Config.txt has a line EDIT_SCRIPT = "/path/of/a/script.py", Blender works unattended and
# without a window instead: it runs the script and ends, and this waits for it. The report then has
# what was printed, and a last line exit_code.
folder=$(cd "$(dirname "$0")" && pwd)
. "$folder/common.sh"
report=$folder/Blender_Report.txt
order=$folder/Blender_Order.txt

# Empties a file that the next user writes too.
empty() {
    (umask 0 && : >"$1")
}

fail() {
    printf '%s\nexit_code: 1\n' "$1" >"$report"
    echo "$1" >&2
    exit 1
}

# The Blender that answers to orders has left its process id here.
is_running() {
    pid=$(sed -n 's/^PID = \([0-9][0-9]*\)$/\1/p' "$folder/Blender_Running.txt" 2>/dev/null)
    [ -n "$pid" ] && ps -p "$pid" -o comm= 2>/dev/null | grep -qi 'blender[^/]*$' &&
        [ "$(ps -p "$pid" -o uid= | tr -d ' ')" = "$(id -u)" ]
}

empty "$report"
app=$(setting PATH)
[ -n "$app" ] || fail "It is not known where Blender is. Locate it first."
program=$(program_of "$app") || fail "Blender is no longer where it was located: $app"

script=$(setting EDIT_SCRIPT)
if [ -n "$script" ]; then
    "$program" -b --addons "$addon" --python-exit-code 1 --python "$script" >"$report" 2>&1
    code=$?
    echo "exit_code: $code" >>"$report"
    exit $code
fi

# Whichever Blender takes the order away receives the objects.
empty "$order" || fail "The order for Blender cannot be written: $order"
if is_running; then
    case $app in *.app) open -a "$app" ;; esac
    exit
fi
empty "$folder/Blender_Output.txt"
nohup "$program" --addons "$addon" >"$folder/Blender_Output.txt" 2>&1 </dev/null &

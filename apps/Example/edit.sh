#!/bin/sh
# The EDIT_COMMAND: has the application edit the objects that the list names. What it reports, and
# how it ended, stands afterwards in Example_Report.txt.
folder=$(dirname "$0")
umask 0 # the next user writes these files too
report=$folder/Example_Report.txt
"$folder/Example.app/Contents/MacOS/Example" "$@" edit >"$report" 2>&1
code=$?
echo "exit_code: $code" >>"$report"
exit $code

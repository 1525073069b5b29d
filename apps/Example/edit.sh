#!/bin/sh
# The EDIT_COMMAND of this application: edits the objects that the list names.
exec "$(dirname "$0")/vek_example" "$@" edit

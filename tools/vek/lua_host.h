#pragma once

struct lua_State;
class HostWindows;

// Gives a macro a host of its own, the global table `host`:
//
//     host.window{name =, label =, view =, children = {...}, entries = {...}}
//                       adds a top-level window with all that is in it; window_description.h says
//                       what the fields are
//     host.tree()       the tree as it is now, a window a line
//
// `windows` outlives the state.
void registerHostFunctions(lua_State* lua, HostWindows& windows);

#pragma once

#include "foundation/bx_string.h"
#include "host/accessors.h"

// Finds items in the host's tree of windows and moves them. The tree is the host's and is walked
// anew each time. A walk through a tree that loops ends, with null or false, after as many steps as
// a sane tree of a million windows needs.
class Dorvia4Helper {
public:
    Dorvia4Helper() = delete;

    // From the host data block: null, or pointers, of which element 2 is the document and element 8
    // the root of the function tables. Installs the tables and finds the window that the document's
    // active view is in. False without a document or such a window.
    static bool init(char** hostData);

    // The first top-level window above `w`: parents, and where there is none the window before it.
    static AWin* getRootWindow(AWin* w);
    // Null for null and for a top-level window.
    static AWin* getParentWindow(AWin* w);
    // The item's label, or else its text; null where it has neither. Ends at its count, which only
    // the host's record tells, not at a NUL.
    static const char* getWindowName(AWin* w);
    // Its place among its parent's children, from 0; -1 when it is null, has no parent, or is not
    // among them.
    static int getWindowChildIndex(AWin* w);
    // The first window, depth first in the host's order, that the names in `path` lead to,
    // separated by ':' and in any letter case, from `from` downward: among a pull-down menu's
    // entries that have no parent, or a window's children. Windows without a name are looked
    // through and never match. The empty path is `from` itself. Null when there is none.
    static AWin* getWindowFromPath(AWin* from, const BXString& path);

    // Takes `w` out from between its parent and neighbours. False, with nothing changed, when it is
    // null or has none of them.
    static bool disconnectWindow(AWin* w);
    // Makes `w` a child of `parent`: the first where that has none or for index <= 0, otherwise
    // behind the child `index` - 1, counted while `w` is still where it was, or behind the last
    // one. False, with nothing changed, when `w` is there already or would be the child before or
    // behind itself (so for the first child and index 1), when either is null, and when `parent` is
    // `w` or lies in it, as a child or as a menu's entry that
    // has no parent.
    static bool moveWindow(AWin* w, AWin* parent, int index);

    static ADoc* s_doc;
    static AWin* s_rootWindow;
};

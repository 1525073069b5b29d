#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "host/func_tables.h"

// A host of our own, behind real function tables: a tree of windows with their links, names and
// pull-down menus, a document, and a view of it. For macros that place items, and for tests.

// A window. Each kind of handle is the address of another member, so that a handle that was not
// converted leads nowhere good.
struct HostWindow {
    char asWin, asGraphix, asObj, asPulldown, asWinDoc;
    HostWindow* parent = nullptr;
    HostWindow* child = nullptr;  // the first
    HostWindow* next = nullptr;
    HostWindow* previous = nullptr;
    std::vector<HostWindow*> entries;  // of a pull-down menu
    std::string name;                  // its text; empty: none
    std::string label;                 // of its command state; empty: none
    bool isMenu = false;
    HostWindow* lastAdded = nullptr;  // the child that was added last, wherever it is by now

    AWin* win() { return reinterpret_cast<AWin*>(&asWin); }
    static HostWindow* of(AWin* win);  // null for null
    // Label, or else name.
    const std::string& shownName() const { return label.empty() ? name : label; }

    // The host's records, made anew when they are asked for.
    std::string textRecord, labelRecord, stateRecord;
};

class HostWindows {
public:
    HostWindows();
    HostWindows(const HostWindows&) = delete;
    HostWindows& operator=(const HostWindows&) = delete;
    ~HostWindows();

    // The last child of `parent`, or the last top-level window where that is null. The first window
    // of all is the one that the document's view is in, until another one is said to be.
    HostWindow& add(HostWindow* parent, const std::string& name);
    // An entry of a pull-down menu, which has no parent; makes `menu` one.
    HostWindow& addEntry(HostWindow& menu, const std::string& name);
    void setView(HostWindow& window) { m_view = &window; }

    // The host data block that goes to an export; this object's.
    char** data() { return m_data; }
    HostWindow* view() const { return m_view; }
    std::deque<HostWindow>& windows() { return m_windows; }

    // The tree as it is now, a window a line, from the first top-level window above the view.
    std::string draw() const;

private:
    struct Document;

    std::deque<HostWindow> m_windows;
    HostWindow* m_lastTop = nullptr;
    HostWindow* m_view = nullptr;
    std::unique_ptr<Document> m_document;
    char* m_data[9];
};

#include "tools/vek/host_windows.h"

#include <cstddef>
#include <cstring>
#include <set>

struct HostWindows::Document {
    char asDoc;
    HostWindows* windows;
};

namespace {

template <class Handle>
HostWindow* windowAt(Handle* handle, std::size_t member) {
    if (!handle) return nullptr;
    return reinterpret_cast<HostWindow*>(reinterpret_cast<char*>(handle) - member);
}

HostWindow* of(AWin* handle) {
    return windowAt(handle, offsetof(HostWindow, asWin));
}
HostWindow* of(AGraphix* handle) {
    return windowAt(handle, offsetof(HostWindow, asGraphix));
}
HostWindow* of(AObj* handle) {
    return windowAt(handle, offsetof(HostWindow, asObj));
}
HostWindow* of(AWinPulldown* handle) {
    return windowAt(handle, offsetof(HostWindow, asPulldown));
}
HostWindow* of(AWinDoc* handle) {
    return windowAt(handle, offsetof(HostWindow, asWinDoc));
}

template <class Handle>
Handle* as(char& member) {
    return reinterpret_cast<Handle*>(&member);
}

// One kind of handle for another one.
template <class To, char HostWindow::*Member, class From>
To* convert(From* from) {
    HostWindow* const window = of(from);
    return window ? as<To>(window->*Member) : nullptr;
}

template <HostWindow* HostWindow::*Link>
AWin* getLink(AGraphix* graphix) {
    HostWindow* const linked = of(graphix)->*Link;
    return linked ? linked->win() : nullptr;
}

template <HostWindow* HostWindow::*Link>
void setLink(AGraphix* graphix, AWin* window) {
    of(graphix)->*Link = of(window);
}

template <class Field>
void store(std::string& record, std::size_t offset, Field field) {
    if (record.size() < offset + sizeof field) record.resize(offset + sizeof field);
    std::memcpy(&record[offset], &field, sizeof field);
}

// Null where there is no text.
AStr* record(std::string& bytes, const std::string& text) {
    if (text.empty()) return nullptr;
    bytes.assign(24, '\0');
    store(bytes, 20, static_cast<std::uint32_t>(text.size()));
    bytes += text;
    return reinterpret_cast<AStr*>(bytes.data());
}

AStr* getText(AWin* win) {
    return record(of(win)->textRecord, of(win)->name);
}

ACmdState* getCmdState(AWin* win) {
    HostWindow& window = *of(win);
    if (window.label.empty() && !window.isMenu) return nullptr;
    window.stateRecord.assign(104, '\0');
    store(window.stateRecord, 20, static_cast<std::uint16_t>(window.isMenu ? 1007 : 1));
    store(window.stateRecord, 96, record(window.labelRecord, window.label));
    return reinterpret_cast<ACmdState*>(window.stateRecord.data());
}

int getWinsCount(AWinPulldown* menu) {
    return static_cast<int>(of(menu)->entries.size());
}

AWin* getWin(AWinPulldown* menu, int index) {
    const auto& entries = of(menu)->entries;
    const auto at = static_cast<std::size_t>(index);
    return at < entries.size() ? entries[at]->win() : nullptr;
}

AGraphixFuncTable graphixTable() {
    AGraphixFuncTable table = {};
    table.convertToObj = convert<AObj, &HostWindow::asObj, AGraphix>;
    table.convertFromObj = convert<AGraphix, &HostWindow::asGraphix, AObj>;
    table.getParentWindow = getLink<&HostWindow::parent>;
    table.setParentWindow = setLink<&HostWindow::parent>;
    table.getChildWindow = getLink<&HostWindow::child>;
    table.setChildWindow = setLink<&HostWindow::child>;
    table.getNextWindow = getLink<&HostWindow::next>;
    table.setNextWindow = setLink<&HostWindow::next>;
    table.getPrevWindow = getLink<&HostWindow::previous>;
    table.setPrevWindow = setLink<&HostWindow::previous>;
    return table;
}

AWinFuncTable winTable() {
    AWinFuncTable table = {};
    table.convertToGraphix = convert<AGraphix, &HostWindow::asGraphix, AWin>;
    table.convertFromGraphix = convert<AWin, &HostWindow::asWin, AGraphix>;
    table.convertToObj = convert<AObj, &HostWindow::asObj, AWin>;
    table.convertFromObj = convert<AWin, &HostWindow::asWin, AObj>;
    table.getCmdState = getCmdState;
    table.getText = getText;
    return table;
}

AWinDocFuncTable winDocTable() {
    AWinDocFuncTable table = {};
    table.convertToWin = convert<AWin, &HostWindow::asWin, AWinDoc>;
    table.convertFromWin = convert<AWinDoc, &HostWindow::asWinDoc, AWin>;
    return table;
}

AWinPulldownFuncTable pulldownTable() {
    AWinPulldownFuncTable table = {};
    table.convertToWin = convert<AWin, &HostWindow::asWin, AWinPulldown>;
    table.convertFromWin = convert<AWinPulldown, &HostWindow::asPulldown, AWin>;
    table.getWinsCount = getWinsCount;
    table.getWin = getWin;
    return table;
}

AGraphixFuncTable s_graphix = graphixTable();
AWinFuncTable s_win = winTable();
AWinDocFuncTable s_winDoc = winDocTable();
AWinPulldownFuncTable s_pulldown = pulldownTable();

class Drawing {
public:
    std::string take() { return std::move(m_text); }

    // The window and those behind it. Entries are told apart by their menu.
    void chain(const HostWindow* window, const std::string& indent) {
        for (; window; window = window->next) one(*window, indent, window->next == nullptr, "");
    }

    // Without branches before them.
    void top(const HostWindow* window) {
        for (; window; window = window->next) {
            if (!line(*window, "", "")) return;
            below(*window, "");
        }
    }

private:
    bool line(const HostWindow& window, const std::string& branch, const char* note) {
        const bool isNew = m_drawn.insert(&window).second;
        m_text += branch + (window.shownName().empty() ? "(unnamed)" : window.shownName()) + note;
        if (!window.label.empty() && !window.name.empty()) m_text += " (text: " + window.name + ")";
        if (window.isMenu) m_text += " (pull-down menu)";
        m_text += isNew ? "\n" : " (again)\n";
        return isNew;
    }

    void one(const HostWindow& window, const std::string& indent, bool isLast, const char* note) {
        if (!line(window, indent + (isLast ? "└─ " : "├─ "), note)) return;
        below(window, indent + (isLast ? "   " : "│  "));
    }

    void below(const HostWindow& window, const std::string& indent) {
        for (std::size_t i = 0; i < window.entries.size(); ++i) {
            const bool isLast = i + 1 == window.entries.size() && !window.child;
            const HostWindow& entry = *window.entries[i];
            if (entry.parent) {
                m_text += indent + (isLast ? "└─ " : "├─ ") + entry.shownName() +
                          " (entry, placed elsewhere)\n";
            } else {
                one(entry, indent, isLast, " (entry)");
            }
        }
        chain(window.child, indent);
    }

    std::string m_text;
    std::set<const HostWindow*> m_drawn;
};

}  // namespace

HostWindow* HostWindow::of(AWin* win) {
    return ::of(win);
}

HostWindows::HostWindows() : m_document(new Document{0, this}), m_data() {
    static ADocFuncTable docTable = [] {
        ADocFuncTable table = {};
        table.getActiveView = [](ADoc* handle) {
            HostWindow* const view = reinterpret_cast<Document*>(handle)->windows->m_view;
            return view ? as<AWinDoc>(view->asWinDoc) : nullptr;
        };
        return table;
    }();
    static DorviaFuncTable root = {&s_graphix, &s_win,    &docTable,   nullptr, nullptr,
                                   nullptr,    &s_winDoc, &s_pulldown, nullptr};
    m_data[2] = &m_document->asDoc;
    m_data[8] = reinterpret_cast<char*>(&root);
}

HostWindows::~HostWindows() = default;

HostWindow& HostWindows::add(HostWindow* parent, const std::string& name) {
    m_windows.emplace_back();
    HostWindow& window = m_windows.back();
    window.name = name;
    window.parent = parent;
    HostWindow* last = m_lastTop;
    if (parent) {
        const bool isStillThere = parent->lastAdded && parent->lastAdded->parent == parent;
        last = isStillThere ? parent->lastAdded : parent->child;
        parent->lastAdded = &window;
    }
    while (last && last->next) last = last->next;
    window.previous = last;
    if (last) {
        last->next = &window;
    } else if (parent) {
        parent->child = &window;
    }
    if (!parent) m_lastTop = &window;
    if (!m_view) m_view = &window;
    return window;
}

HostWindow& HostWindows::addEntry(HostWindow& menu, const std::string& name) {
    m_windows.emplace_back();
    HostWindow& window = m_windows.back();
    window.name = name;
    menu.isMenu = true;
    menu.entries.push_back(&window);
    return window;
}

std::string HostWindows::draw() const {
    const HostWindow* first = m_view;
    std::set<const HostWindow*> seen;
    while (first && seen.insert(first).second) {
        const HostWindow* const up = first->parent ? first->parent : first->previous;
        if (!up) break;
        first = up;
    }
    Drawing drawing;
    drawing.top(first);
    return drawing.take();
}

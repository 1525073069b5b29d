// Finding a window by its path.

#include <string_view>
#include <vector>

#include "host/dorvia4_helper.h"
#include "host/window_links.h"

namespace {

// The name up to its NUL or its count, but no more of it than one character beyond `most`: enough
// to compare it, whatever the count says.
std::string_view shownName(AWin* w, std::size_t most) {
    const HostText name = nameOf(w);
    std::size_t length = 0;
    while (length <= most && length < name.count && name.characters[length]) ++length;
    return {name.characters, length};
}

bool isSame(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (BXString::s_toUpper[static_cast<unsigned char>(a[i])] !=
            BXString::s_toUpper[static_cast<unsigned char>(b[i])]) {
            return false;
        }
    }
    return true;
}

// The windows below one that a path may go on with, in the host's order.
class Candidates {
public:
    Candidates(AWin* from, std::string_view path) : m_path(path) {
        if (isMenu(from)) {
            m_menu = from;
            m_entries = entryCountOf(from);
        } else {
            m_child = firstChildOf(from);
        }
    }

    // The path that the search is at here.
    std::string_view path() const { return m_path; }

    // False at the end. `candidate` is null for an entry that does not count.
    bool next(AWin*& candidate) {
        if (m_child) {
            candidate = m_child;
            m_child = nextOf(m_child);
            return true;
        }
        if (m_entry >= m_entries) return false;
        candidate = entryOf(m_menu, m_entry++);
        // One that stands in the tree is found there.
        if (candidate && parentOf(candidate)) candidate = nullptr;
        return true;
    }

private:
    std::string_view m_path;
    AWin* m_child = nullptr;
    AWin* m_menu = nullptr;
    int m_entry = 0;
    int m_entries = 0;
};

}  // namespace

// With a stack of its own: a tree may be as deep as it is large.
AWin* Dorvia4Helper::getWindowFromPath(AWin* from, const BXString& path) {
    if (!from || path.isEmpty()) return from;
    WalkLimit limit;
    std::vector<Candidates> stack{Candidates(from, path.c_str())};
    while (!stack.empty()) {
        AWin* candidate = nullptr;
        if (!stack.back().next(candidate)) {
            stack.pop_back();
            continue;
        }
        if (!limit.step()) return nullptr;
        if (!candidate) continue;
        const std::string_view whole = stack.back().path();
        const std::string_view head = whole.substr(0, whole.find(':'));
        const std::string_view name = shownName(candidate, head.size());
        if (name.empty()) {
            stack.emplace_back(candidate, whole);
        } else if (isSame(name, head)) {
            const std::string_view rest =
                head.size() < whole.size() ? whole.substr(head.size() + 1) : std::string_view();
            if (rest.empty()) return candidate;
            stack.emplace_back(candidate, rest);
        }
    }
    return nullptr;
}

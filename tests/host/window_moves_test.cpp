// Random moves on random trees, against a reference that keeps children in plain lists.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <vector>

#include "host/dorvia4_helper.h"
#include "tools/vek/host_windows.h"

namespace {

using Children = std::vector<HostWindow*>;

class Reference {
public:
    // Null: the top level. Windows taken out of the tree have none.
    std::map<HostWindow*, HostWindow*> parents;
    std::map<HostWindow*, Children> children;
    std::set<HostWindow*> alone;

    bool lies(HostWindow* inner, HostWindow* outer) const {
        for (; inner; inner = parents.count(inner) ? parents.at(inner) : nullptr) {
            if (inner == outer) return true;
        }
        return false;
    }

    void takeOut(HostWindow* w) {
        if (alone.erase(w)) return;
        Children& list = children[parents[w]];
        list.erase(std::find(list.begin(), list.end(), w));
        parents.erase(w);
    }

    bool disconnect(HostWindow* w) {
        if (alone.count(w)) return false;
        if (!parents[w] && children[nullptr].size() == 1) return false;
        takeOut(w);
        alone.insert(w);
        return true;
    }

    bool move(HostWindow* w, HostWindow* parent, int index) {
        if (lies(parent, w)) return false;
        const Children before = children[parent];
        // The neighbours, by the lists as they are.
        HostWindow *after = nullptr, *behind = nullptr;
        if (!before.empty() && index >= 1) {
            const std::size_t at = std::min(static_cast<std::size_t>(index) - 1, before.size() - 1);
            after = before[at];
            behind = at + 1 < before.size() ? before[at + 1] : nullptr;
            if (after == w || behind == w) return false;
        } else if (!before.empty()) {
            behind = before.front();
            if (behind == w) return false;
        }
        takeOut(w);
        Children& list = children[parent];
        const auto place = behind ? std::find(list.begin(), list.end(), behind) : list.end();
        list.insert(place, w);
        parents[w] = parent;
        return true;
    }
};

class WindowMoves : public testing::TestWithParam<unsigned> {
protected:
    ~WindowMoves() override { DFunctionsHelper::setFuncTable(nullptr); }

    void build(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            HostWindow* const parent =
                i == 0 || random() % 6 == 0 ? nullptr : all[random() % all.size()];
            HostWindow* const w = &windows->add(parent, "w");
            all.push_back(w);
            reference.parents[w] = parent;
            reference.children[parent].push_back(w);
        }
        ASSERT_TRUE(Dorvia4Helper::init(windows->data()));
    }

    // Every link of every window, and that each window is somewhere.
    void compare() {
        std::size_t seen = reference.alone.size();
        for (HostWindow* w : reference.alone) {
            ASSERT_EQ(w->parent, nullptr);
            ASSERT_EQ(w->previous, nullptr);
            ASSERT_EQ(w->next, nullptr);
        }
        for (const auto& [parent, list] : reference.children) {
            if (parent) {
                ASSERT_EQ(parent->child, list.empty() ? nullptr : list.front());
            }
            for (std::size_t i = 0; i < list.size(); ++i, ++seen) {
                ASSERT_EQ(list[i]->parent, parent);
                ASSERT_EQ(list[i]->previous, i > 0 ? list[i - 1] : nullptr);
                ASSERT_EQ(list[i]->next, i + 1 < list.size() ? list[i + 1] : nullptr);
            }
        }
        ASSERT_EQ(seen, all.size());
        for (const HostWindow* w : all) {
            if (!w->child) continue;
            ASSERT_EQ(reference.children.count(w->child->parent), 1u);
            ASSERT_EQ(w->child->parent, w);
        }
    }

    void step() {
        HostWindow* const w = all[random() % all.size()];
        if (random() % 10 == 0) {
            ASSERT_EQ(Dorvia4Helper::disconnectWindow(w->win()), reference.disconnect(w));
            return;
        }
        HostWindow* const parent = all[random() % all.size()];
        const int index = static_cast<int>(random() % 9) - 2;
        ASSERT_EQ(Dorvia4Helper::moveWindow(w->win(), parent->win(), index),
                  reference.move(w, parent, index));
    }

    std::mt19937 random{GetParam()};
    std::unique_ptr<HostWindows> windows;
    std::vector<HostWindow*> all;
    Reference reference;
};

}  // namespace

// 100,000 in four parts that run side by side, each on 25 trees.
TEST_P(WindowMoves, AgreeWithPlainLists) {
    for (int tree = 0; tree < 25; ++tree) {
        windows = std::make_unique<HostWindows>();
        all.clear();
        reference = Reference();
        ASSERT_NO_FATAL_FAILURE(build(2 + random() % 40));
        for (int moves = 0; moves < 1000; ++moves) {
            ASSERT_NO_FATAL_FAILURE(step());
            ASSERT_NO_FATAL_FAILURE(compare()) << "tree " << tree << ", move " << moves;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, WindowMoves, testing::Values(1u, 2u, 3u, 4u));

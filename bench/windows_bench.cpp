// Finding a window by its path in a tree of a million, against a bare walk over the same tree.

#include <memory>
#include <string>
#include <vector>

#include "bench/support.h"
#include "host/dorvia4_helper.h"
#include "tools/vek/host_windows.h"

namespace {

constexpr int kWindows = 1000000;

enum class Shape { Wide, Deep, Bushy };

// Windows without a name below one another, so that all of them are looked at.
std::unique_ptr<HostWindows> makeTree(Shape shape) {
    auto windows = std::make_unique<HostWindows>();
    HostWindow* parent = &windows->add(nullptr, "Root");
    HostWindow* previous = nullptr;
    std::vector<HostWindow*> all{parent};
    for (int i = 1; i < kWindows; ++i) {
        windows->windows().emplace_back();
        HostWindow& window = windows->windows().back();
        const bool isBelow = shape == Shape::Deep || (shape == Shape::Bushy && i % 10 == 1);
        if (isBelow && i > 1) {
            parent = shape == Shape::Deep ? previous : all[static_cast<std::size_t>(i / 10)];
            previous = nullptr;
        }
        window.parent = parent;
        window.previous = previous;
        (previous ? previous->next : parent->child) = &window;
        previous = &window;
        all.push_back(&window);
    }
    all.back()->name = "Last";
    return windows;
}

// Over the links as they lie in memory, with a look at each name.
std::size_t walk(HostWindow* first) {
    std::size_t named = 0;
    std::vector<HostWindow*> open{first};
    while (!open.empty()) {
        HostWindow* const window = open.back();
        open.pop_back();
        if (!window->name.empty()) ++named;
        if (window->next) open.push_back(window->next);
        if (window->child) open.push_back(window->child);
    }
    return named;
}

void find(benchmark::State& state, Shape shape) {
    const auto windows = makeTree(shape);
    if (!Dorvia4Helper::init(windows->data())) return state.SkipWithError("no root");
    const BXString path("Last");
    AWin* const root = Dorvia4Helper::s_rootWindow;
    compare(
        state,
        [&] {
            if (!Dorvia4Helper::getWindowFromPath(root, path)) state.SkipWithError("not found");
        },
        [&] { benchmark::DoNotOptimize(walk(windows->view())); });
    DFunctionsHelper::setFuncTable(nullptr);
}

BENCHMARK_CAPTURE(find, wide, Shape::Wide)
    ->Iterations(9)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(find, deep, Shape::Deep)
    ->Iterations(9)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(find, bushy, Shape::Bushy)
    ->Iterations(9)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return runBenchmarks(argc, argv);
}

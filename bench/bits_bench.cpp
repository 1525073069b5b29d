// BXBoolArray on 64 Mbit against the peers, at three densities: counting, the walk over the set
// bits, union and intersection.

#include <algorithm>
#include <boost/dynamic_bitset.hpp>
#include <random>
#include <string>
#include <vector>

#include "bench/support.h"
#include "foundation/bx_bool_array.h"

namespace {

constexpr int kBits = 1 << 26;

using Boost = boost::dynamic_bitset<unsigned long>;
using Bools = std::vector<bool>;

// The same bits three times.
struct Sets {
    explicit Sets(int oneIn, unsigned int seed) : vek(kBits, false), boost(kBits), bools(kBits) {
        std::mt19937 random(seed);
        for (int i = 0; i < kBits; ++i) {
            if (random() % static_cast<unsigned int>(oneIn) != 0) continue;
            vek.set(i);
            boost.set(static_cast<std::size_t>(i));
            bools[static_cast<std::size_t>(i)] = true;
        }
    }

    BXBoolArray vek;
    Boost boost;
    Bools bools;
};

const Sets& sets(int oneIn, unsigned int seed) {
    static std::vector<std::pair<std::pair<int, unsigned int>, const Sets*>> made;
    for (const auto& entry : made) {
        if (entry.first == std::make_pair(oneIn, seed)) return *entry.second;
    }
    made.emplace_back(std::make_pair(oneIn, seed), new Sets(oneIn, seed));
    return *made.back().second;
}

volatile std::size_t sink;

template <class Bits>
std::size_t count(const Bits& bits);
template <>
std::size_t count(const BXBoolArray& bits) {
    return static_cast<std::size_t>(bits.getNumberOfBitSet());
}
template <>
std::size_t count(const Boost& bits) {
    return bits.count();
}
template <>
std::size_t count(const Bools& bits) {
    return static_cast<std::size_t>(std::count(bits.begin(), bits.end(), true));
}

template <class Bits>
std::size_t walk(const Bits& bits);
template <>
std::size_t walk(const BXBoolArray& bits) {
    std::size_t sum = 0;
    for (int i = bits.findFirst(true); i >= 0; i = bits.findFirst(true, i + 1)) {
        sum += static_cast<std::size_t>(i);
    }
    return sum;
}
template <>
std::size_t walk(const Boost& bits) {
    std::size_t sum = 0;
    for (auto i = bits.find_first(); i != Boost::npos; i = bits.find_next(i)) sum += i;
    return sum;
}
template <>
std::size_t walk(const Bools& bits) {
    std::size_t sum = 0;
    for (auto it = std::find(bits.begin(), bits.end(), true); it != bits.end();
         it = std::find(it + 1, bits.end(), true)) {
        sum += static_cast<std::size_t>(it - bits.begin());
    }
    return sum;
}

void unite(BXBoolArray& to, const BXBoolArray& from) {
    to.merge(from);
}
void unite(Boost& to, const Boost& from) {
    to |= from;
}
void unite(Bools& to, const Bools& from) {
    std::transform(to.begin(), to.end(), from.begin(), to.begin(), std::logical_or<bool>());
}

void intersect(BXBoolArray& to, const BXBoolArray& from) {
    to.inter(from);
}
void intersect(Boost& to, const Boost& from) {
    to &= from;
}
void intersect(Bools& to, const Bools& from) {
    std::transform(to.begin(), to.end(), from.begin(), to.begin(), std::logical_and<bool>());
}

enum class Question { Count, Walk, Union, Intersection };

template <class Bits>
void answer(Question question, Bits& to, const Bits& from) {
    switch (question) {
        case Question::Count:
            sink = count(from);
            break;
        case Question::Walk:
            sink = walk(from);
            break;
        case Question::Union:
            unite(to, from);
            break;
        case Question::Intersection:
            intersect(to, from);
            break;
    }
}

// How far from 1 a ratio of equals can lie on this machine.
void control(benchmark::State& state, Question question) {
    const Sets& from = sets(2, 1);
    Boost first(sets(2, 2).boost);
    Boost second(first);
    const Boost again(from.boost);
    compare(
        state, [&] { answer(question, first, from.boost); },
        [&] { answer(question, second, again); });
}

template <class Bits>
void against(benchmark::State& state, Question question, int oneIn, Bits Sets::*peer) {
    const Sets& from = sets(oneIn, 1);
    const Sets& other = sets(oneIn, 2);
    // Both start from the same bits each time; what an operation has changed does not matter to its
    // speed.
    BXBoolArray to(other.vek);
    Bits peerTo(other.*peer);
    compare(
        state, [&] { answer(question, to, from.vek); },
        [&] { answer(question, peerTo, from.*peer); });
    const bool same = count(to) == count(peerTo) && walk(from.vek) == walk(from.boost);
    if (!same) state.SkipWithError("the peer has another result");
}

}  // namespace

int main(int argc, char** argv) {
    const std::pair<Question, const char*> questions[] = {{Question::Count, "count"},
                                                          {Question::Walk, "next_set_walk"},
                                                          {Question::Union, "union"},
                                                          {Question::Intersection, "intersection"}};
    for (const auto& question : questions) {
        const Question of = question.first;
        benchmark::RegisterBenchmark(
            (std::string("Boost/") + question.second + "/1_in_2/against_itself").c_str(),
            [=](benchmark::State& state) { control(state, of); })
            ->UseManualTime()
            ->Iterations(of == Question::Walk ? 15 : 101)
            ->Unit(benchmark::kMillisecond);
        for (const int oneIn : {2, 64, 4096}) {
            const std::string name =
                std::string("BXBoolArray/") + question.second + "/1_in_" + std::to_string(oneIn);
            const Question asked = question.first;
            benchmark::RegisterBenchmark(
                (name + "/against_boost").c_str(),
                [=](benchmark::State& state) { against(state, asked, oneIn, &Sets::boost); })
                ->UseManualTime()
                ->Iterations(asked == Question::Walk ? 15 : 101)
                ->Unit(benchmark::kMillisecond);
            benchmark::RegisterBenchmark(
                (name + "/against_vector_bool").c_str(),
                [=](benchmark::State& state) { against(state, asked, oneIn, &Sets::bools); })
                ->UseManualTime()
                ->Iterations(asked == Question::Count ? 15 : 3)
                ->Unit(benchmark::kMillisecond);
        }
    }
    return runBenchmarks(argc, argv);
}

#pragma once

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "formats/vectors.h"
#include "foundation/bx_array.h"

// Orders points by x, then y, then z: -1, 0 or 1. Coordinates no more than the tolerance apart
// count as the same.
class BXVector3fComp {
public:
    explicit BXVector3fComp(float tolerance) : m_tolerance(tolerance) {}

    int operator()(const BXVector3f& a, const BXVector3f& b) const {
        const float dx = a.x - b.x;
        if (dx < -m_tolerance) return -1;
        if (dx > m_tolerance) return 1;
        const float dy = a.y - b.y;
        if (dy < -m_tolerance) return -1;
        if (dy > m_tolerance) return 1;
        const float dz = a.z - b.z;
        if (dz < -m_tolerance) return -1;
        return dz > m_tolerance ? 1 : 0;
    }

private:
    float m_tolerance;
};

// Whether the element with one index goes before that with another; equal ones by their indexes.
template <class T, class Comp>
class BXIndexedComparator {
public:
    BXIndexedComparator(const T* data, Comp compare) : m_data(data), m_compare(compare) {}

    bool operator()(int a, int b) const {
        const int order = m_compare(m_data[a], m_data[b]);
        return order != 0 ? order < 0 : a < b;
    }

private:
    const T* m_data;
    Comp m_compare;
};

// An introsort: quicksort by the median of three, heap sort where that goes too deep, insertion
// sort of what is short. Unlike the standard library's it stays inside its range whatever the
// comparison says: with a tolerance, or with coordinates that are no numbers, "before" is not
// transitive.
namespace bxsort {

constexpr std::ptrdiff_t kShort = 16;

template <class Before>
void insertionSort(int* first, int* last, const Before& before) {
    for (int* next = first + 1; next < last; ++next) {
        const int value = *next;
        int* hole = next;
        for (; hole > first && before(value, hole[-1]); --hole) *hole = hole[-1];
        *hole = value;
    }
}

template <class Before>
int* medianOf(int* a, int* b, int* c, const Before& before) {
    if (before(*a, *b)) {
        if (before(*b, *c)) return b;
        return before(*a, *c) ? c : a;
    }
    if (before(*a, *c)) return a;
    return before(*b, *c) ? c : b;
}

// Moves what goes before the pivot to the front; the end of that part, which holds at least the
// first element.
template <class Before>
int* partition(int* first, int* last, const Before& before) {
    std::iter_swap(first, medianOf(first + 1, first + (last - first) / 2, last - 1, before));
    const int pivot = *first;
    int* left = first + 1;
    int* right = last;
    while (true) {
        while (left < last && before(*left, pivot)) ++left;
        --right;
        while (right > first && before(pivot, *right)) --right;
        if (left >= right) return left;
        std::iter_swap(left, right);
        ++left;
    }
}

template <class Before>
void sort(int* first, int* last, int depth, const Before& before) {
    while (last - first > kShort) {
        if (depth-- == 0) {
            std::make_heap(first, last, before);
            std::sort_heap(first, last, before);
            return;
        }
        int* const cut = partition(first, last, before);
        sort(cut, last, depth, before);
        last = cut;
    }
    insertionSort(first, last, before);
}

}  // namespace bxsort

// Fills `indices` with 0 to n - 1 in the order of the n elements of `data`, which stay where they
// are. `compare` tells of two elements -1, 0 or 1.
template <class T, class Comp>
void indexedSort(BXArray<int>& indices, int n, const T* data, Comp compare) {
    n = std::max(n, 0);
    indices.resize(static_cast<std::size_t>(n));
    if (n == 0) return;
    std::iota(indices.begin(), indices.end(), 0);
    int depth = 0;
    for (int rest = n; rest > 1; rest /= 2) depth += 2;
    int* const first = indices.data();
    bxsort::sort(first, first + n, depth, BXIndexedComparator<T, Comp>(data, compare));
}

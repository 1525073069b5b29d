#pragma once

#include <cstddef>
#include <vector>

// The library's one container: a standard vector under the system's own name, with two operations
// added. Everything else, failure included, is the vector's own.
template <class T>
class BXArray : public std::vector<T> {
public:
    using std::vector<T>::vector;

    // Reverses the order of the elements in place. Elements are exchanged by value, through copies,
    // so that strings end up in fresh buffers of their own.
    void reverse() {
        if (this->size() < 2) return;
        for (std::size_t front = 0, back = this->size() - 1; front < back; ++front, --back) {
            const T saved = (*this)[front];
            (*this)[front] = (*this)[back];
            (*this)[back] = saved;
        }
    }

    // Drops all elements, then makes `count` copies of one default-constructed element. A count
    // below 1 leaves the array empty.
    void reinit(int count) {
        this->clear();
        if (count <= 0) return;
        this->resize(static_cast<std::size_t>(count), T());
    }
};

static_assert(sizeof(BXArray<int>) == sizeof(std::vector<int>), "the vector is all there is");

#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Which entries the ranges of a thing have filled, and where their values went: ranges may come in
// any order, their values are stored as they come.
class MayaRanges {
public:
    // The number of entries that a count statement says. False when another said otherwise.
    bool declare(int count);
    // The same where others may say otherwise: one of them has to be right.
    void declareOneOf(int count);
    // A range of entries whose values begin at `stored` values.
    void begin(int first, int last, std::size_t stored);

    int entries() const { return static_cast<int>(m_entries); }
    bool wasDeclared() const { return m_declared >= 0; }
    int declared() const { return m_declared; }
    // Whether the entries 0 to entries() - 1 are there, each once, and as many as were declared.
    // To be asked before putInOrder.
    bool complete();
    // Moves the values, stored in the order of their ranges, into the order of their entries.
    template <class Values>
    void putInOrder(Values& values) const;

private:
    struct Piece {
        int first;
        std::int64_t count;
        std::size_t stored;
        std::size_t storedEnd;
    };

    std::vector<Piece> m_pieces;  // neighbours are one
    std::int64_t m_entries = 0;
    int m_declared = -1;
    std::vector<int> m_alternatives;  // to what is declared
    bool m_inOrder = true;
};

template <class Values>
void MayaRanges::putInOrder(Values& values) const {
    if (m_inOrder || values.empty()) return;
    Values ordered;
    ordered.reserve(values.size());
    for (const Piece& piece : m_pieces) {
        const auto begin = values.begin() + static_cast<std::ptrdiff_t>(piece.stored);
        const std::size_t end = piece.storedEnd ? piece.storedEnd : values.size();
        ordered.insert(ordered.end(), begin, values.begin() + static_cast<std::ptrdiff_t>(end));
    }
    values.swap(ordered);
}

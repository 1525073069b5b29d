#include "formats/maya_ranges.h"

#include <algorithm>

bool MayaRanges::declare(int count) {
    if (m_declared >= 0 && m_declared != count) return false;
    m_declared = count;
    return true;
}

void MayaRanges::declareOneOf(int count) {
    if (!declare(count)) m_alternatives.push_back(count);
}

void MayaRanges::begin(int first, int last, std::size_t stored) {
    const std::int64_t count = std::int64_t{last} - first + 1;
    m_entries += count;
    if (!m_pieces.empty()) {
        Piece& before = m_pieces.back();
        if (before.first + before.count == first) {
            before.count += count;
            return;
        }
        before.storedEnd = stored;
        m_inOrder = m_inOrder && before.first + before.count <= first;
    }
    m_pieces.push_back({first, count, stored, 0});
}

bool MayaRanges::complete() {
    const bool isAlternative =
        std::find(m_alternatives.begin(), m_alternatives.end(), m_entries) != m_alternatives.end();
    if (m_declared >= 0 && m_declared != m_entries && !isAlternative) return false;
    if (!m_inOrder) {
        std::sort(m_pieces.begin(), m_pieces.end(),
                  [](const Piece& a, const Piece& b) { return a.first < b.first; });
    }
    std::int64_t next = 0;
    for (const Piece& piece : m_pieces) {
        if (piece.first != next) return false;
        next += piece.count;
    }
    return true;
}
